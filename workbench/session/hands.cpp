// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "hands.h"

#include <QApplication>
#include <QTest>
#include <QTreeWidget>
#include <QWindow>

namespace Hands {

// A window manager gives the focus to the window that is clicked, and to the one behind when a
// dialog closes. The offscreen platform leaves both to its user.
static QWindow *activated(QWidget *topLevel)
{
    QWindow *window = topLevel ? topLevel->windowHandle() : nullptr;
    if (window && QGuiApplication::focusWindow() != window && !QApplication::activePopupWidget()) {
        topLevel->activateWindow();
        QApplication::processEvents();
    }
    return window;
}

static QWindow *windowOf(const QWidget *widget)
{
    return activated(widget->window());
}

static QWindow *windowWithFocus()
{
    if (QWindow *window = QGuiApplication::focusWindow())
        return window;
    if (QWidget *modal = QApplication::activeModalWidget())
        return activated(modal);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && window->windowType() == Qt::Window)
            return activated(window);
    }
    return nullptr;
}

static QPoint placeInWindow(const QWidget *widget, QPoint pos)
{
    return widget->mapTo(widget->window(), pos.isNull() ? widget->rect().center() : pos);
}

void click(QWidget *widget, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    if (QWindow *window = windowOf(widget))
        QTest::mouseClick(window, Qt::LeftButton, modifiers, placeInWindow(widget, pos));
}

void doubleClick(QWidget *widget, QPoint pos)
{
    if (QWindow *window = windowOf(widget))
        QTest::mouseDClick(window, Qt::LeftButton, {}, placeInWindow(widget, pos));
}

// The row may be wider than the view.
static QPoint placeOfRow(QTreeWidget *tree, QTreeWidgetItem *item)
{
    tree->scrollToItem(item);
    return tree->visualItemRect(item).intersected(tree->viewport()->rect()).center();
}

void clickRow(QTreeWidget *tree, QTreeWidgetItem *item, Qt::KeyboardModifiers modifiers)
{
    if (item)
        click(tree->viewport(), placeOfRow(tree, item), modifiers);
}

void doubleClickRow(QTreeWidget *tree, QTreeWidgetItem *item)
{
    if (item)
        doubleClick(tree->viewport(), placeOfRow(tree, item));
}

void key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (QWindow *window = windowWithFocus())
        QTest::keyClick(window, key, modifiers);
}

void type(const QString &text)
{
    for (const QChar letter : text) {
        if (QWindow *window = windowWithFocus())
            QTest::sendKeyEvent(QTest::Click, window, Qt::Key(letter.toUpper().unicode()),
                                QString(letter), Qt::NoModifier);
    }
}

} // namespace Hands
