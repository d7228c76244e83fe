// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "hands.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>

namespace Hands {

// A user goes on when the window in front has the focus. A window manager gives it to the window
// that is clicked, and to the one behind when a dialog closes; not every platform has one.
static QWindow *activated(QWidget *topLevel)
{
    if (!topLevel->isActiveWindow() && !QApplication::activePopupWidget()) {
        topLevel->activateWindow();
        if (!QTest::qWaitForWindowActive(topLevel))
            qWarning("a window doesn't become active: %s", qPrintable(topLevel->windowTitle()));
    }
    return topLevel->windowHandle();
}

static QWindow *windowOf(const QWidget *widget)
{
    return activated(widget->window());
}

// The modal window in front, or else the main window.
static QWindow *windowForKeys()
{
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

bool canDrag()
{
    return QGuiApplication::platformName() != "offscreen";
}

// The third move starts the drag, and with it an event loop in which the timers go on. Each step is
// a timer of its own, since none fires again while its own slot runs.
void dragRow(QTreeWidget *tree, QTreeWidgetItem *item, QPoint to)
{
    QWindow *window = windowOf(tree);
    if (!window || !item)
        return;
    const QPoint start = placeInWindow(tree->viewport(), placeOfRow(tree, item));
    const QPoint goal = placeInWindow(tree->viewport(), to);
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    QTest::mouseMove(window, start + QPoint(1, 0));

    bool released = false;
    QTimer::singleShot(0, tree, [=] { QTest::mouseMove(window, goal - QPoint(0, 1)); });
    QTimer::singleShot(0, tree, [=] { QTest::mouseMove(window, goal); });
    QTimer::singleShot(0, tree, [=, &released] {
        QTest::mouseRelease(window, Qt::LeftButton, {}, goal);
        released = true;
    });
    QTest::mouseMove(window, start + QPoint(QApplication::startDragDistance() + 2, 0));
    if (!QTest::qWaitFor([&] { return released; }))
        qWarning("a drag doesn't end");
}

void key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (QWindow *window = windowForKeys())
        QTest::keyClick(window, key, modifiers);
}

void type(const QString &text)
{
    for (const QChar letter : text) {
        if (QWindow *window = windowForKeys())
            QTest::sendKeyEvent(QTest::Click, window, Qt::Key(letter.toUpper().unicode()),
                                QString(letter), Qt::NoModifier);
    }
}

} // namespace Hands
