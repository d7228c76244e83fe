// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "rowkeys.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>

namespace Workbench {

RowKeys::RowKeys(QWidget *documents)
    : QObject(documents)
    , area(documents)
{
    qApp->installEventFilter(this);
}

static bool isActivation(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int key = event->key();
    return modifiers == Qt::NoModifier
        && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2);
}

static void sendMouse(QWidget *target, QEvent::Type type, QPoint place, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, place, target->mapToGlobal(place), Qt::LeftButton, buttons,
                      Qt::NoModifier);
    QApplication::sendEvent(target, &event);
}

// The whole sequence of a real double click, because views look at its parts. What it opens may
// take the view away.
static void doubleClickCurrentRow(QAbstractItemView *view)
{
    view->scrollTo(view->currentIndex());
    const QPointer<QWidget> viewport = view->viewport();
    const QPoint place =
        view->visualRect(view->currentIndex()).intersected(viewport->rect()).center();
    sendMouse(viewport, QEvent::MouseButtonPress, place, Qt::LeftButton);
    for (QEvent::Type type :
         {QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        if (viewport) {
            const bool isDown = type == QEvent::MouseButtonDblClick;
            sendMouse(viewport, type, place, isDown ? Qt::LeftButton : Qt::NoButton);
        }
    }
}

// A key that a widget inside a row has left alone comes by the view too, but isn't meant for it.
bool RowKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || watched != QApplication::focusWidget())
        return QObject::eventFilter(watched, event);

    auto *view = qobject_cast<QAbstractItemView *>(watched);
    const bool counts = view && area->isAncestorOf(view) && view->window() == area->window()
        && view->currentIndex().isValid() && isActivation(static_cast<QKeyEvent *>(event));
    if (!counts)
        return QObject::eventFilter(watched, event);
    doubleClickCurrentRow(view);
    return true;
}

} // namespace Workbench
