// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

/// Mouse and keyboard of a scripted user.
///
/// All events go to windows, as they come from a display, and not to widgets: so the window decides
/// which widget gets them, modal windows block what they block, focus and double clicks are the
/// toolkit's own doing. Each operation returns when its events have been handled, and so, if they
/// open a modal dialog, when that dialog has ended.
namespace Hands {

/// Clicks at \a pos in \a widget, or in its middle if \a pos is null.
void click(QWidget *widget, QPoint pos = QPoint(), Qt::KeyboardModifiers modifiers = {});

void doubleClick(QWidget *widget, QPoint pos = QPoint());

/// Clicks the row \a item of \a tree in the middle of what is seen of it, after scrolling to it.
/// Nothing happens if it is null.
void clickRow(QTreeWidget *tree, QTreeWidgetItem *item, Qt::KeyboardModifiers modifiers = {});

void doubleClickRow(QTreeWidget *tree, QTreeWidgetItem *item);

/// Whether dragRow() can do something: the offscreen platform has no drags.
bool canDrag();

/// Drags the row \a item of \a tree to the place \a to of its viewport, and drops it there.
void dragRow(QTreeWidget *tree, QTreeWidgetItem *item, QPoint to);

/// Presses and releases a key in the window in front.
void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});

/// Types \a text into whatever has the focus in the window in front.
void type(const QString &text);

} // namespace Hands
