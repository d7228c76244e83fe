// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "retirement.h"

#include <QAbstractItemView>
#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QVector>
#include <QWidget>

namespace MOLK {

static const char retiredProperty[] = "molkRetired";

// The windows of the loops that run now, the innermost last.
static QVector<QPointer<QWidget>> &loops()
{
    static QVector<QPointer<QWidget>> windows;
    return windows;
}

// The parent of all that is retired; null while nothing is.
static QPointer<QWidget> &home()
{
    static QPointer<QWidget> widget;
    return widget;
}

// Cancels the window of the innermost loop if it is retired. The call waits for the event loop: a
// dialog may be about to start its loop, and would never leave it if it were hidden before.
static void cancelInnermost()
{
    QWidget *window = loops().last();
    if (!window || !isRetired(window))
        return;
    const char *slot = qobject_cast<QDialog *>(window) ? "reject" : "close";
    QMetaObject::invokeMethod(window, slot, Qt::QueuedConnection);
}

// The slots of pages and dialogs follow the model; those of the widgets in them don't.
static void silence(QWidget *widget)
{
    QList<QWidget *> widgets = widget->findChildren<QWidget *>();
    widgets.append(widget);
    for (QWidget *each : qAsConst(widgets)) {
        const bool isOurs = QByteArray(each->metaObject()->className()).startsWith("MOLK::");
        if (!isOurs || qobject_cast<QAbstractItemView *>(each) || qobject_cast<QLineEdit *>(each))
            continue;
        each->blockSignals(true);
        const QList<QObject *> senders = each->findChildren<QObject *>();
        for (const QObject *sender : senders)
            QObject::disconnect(sender, nullptr, each, nullptr);
    }
}

NestedLoop::NestedLoop(QWidget *window)
{
    loops().append(window);
}

NestedLoop::~NestedLoop()
{
    loops().removeLast();
    if (!home())
        return;
    if (!loops().isEmpty()) {
        cancelInnermost();
        return;
    }
    home()->deleteLater();
    home().clear();
}

// A new parent hides a window, which ends the loop of a dialog, but not a loop that is still to
// start: it has to find the dialog as it was left.
static void moveWindow(QWidget *window)
{
    const bool wasVisible = window->isVisible();
    window->setParent(home(), window->windowFlags());
    if (!wasVisible)
        return;
    window->setAttribute(Qt::WA_DontShowOnScreen);
    window->show();
}

bool retire(QWidget *widget)
{
    if (loops().isEmpty())
        return false;
    if (!home())
        home() = new QWidget;

    // Ahead of all else, since a line that loses the focus must not ask about its value any more.
    widget->setProperty(retiredProperty, true);
    silence(widget);
    if (widget->isWindow())
        moveWindow(widget);
    else
        widget->setParent(home());
    cancelInnermost();
    return true;
}

void retireChildren(QWidget *parent)
{
    const auto children = parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children)
        retire(child);
}

bool isRetired(const QWidget *widget)
{
    if (!widget)
        return true;
    for (; widget; widget = widget->parentWidget()) {
        if (widget->property(retiredProperty).toBool())
            return true;
    }
    return false;
}

} // namespace MOLK
