// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "signaltreewidget.h"

#include "rowremoval.h"

#include <QDropEvent>
#include <QItemSelection>
#include <QMouseEvent>

namespace MOLK {

signalTreeWidget::signalTreeWidget(QWidget *parent)
    : QTreeWidget(parent)
{
}

void signalTreeWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        QTreeWidget::mousePressEvent(event);
    else
        event->ignore();
}

void signalTreeWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (currentItem() && !currentItem()->parent())
        QTreeWidget::mouseMoveEvent(event);
    else
        event->ignore();
}

void signalTreeWidget::dragMoveEvent(QDragMoveEvent *event)
{
    QTreeWidget::dragMoveEvent(event);
}

void signalTreeWidget::dropEvent(QDropEvent *event)
{
    QTreeWidgetItem *target = itemAt(event->pos());
    QList<QTreeWidgetItem *> moved;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (topLevelItem(i)->isSelected())
            moved.append(topLevelItem(i));
    }

    if (!target) {
        moveToEnd(moved);
        event->setDropAction(Qt::MoveAction);
        event->accept();
        emit itemDragged();
        return;
    }
    if (target->parent() || target->isSelected()) {
        event->setDropAction(Qt::IgnoreAction);
        event->accept();
        return;
    }
    moveBeside(target, event->pos(), moved);
    // The event stays unaccepted: the old rows are gone, and the view, which would take an accepted
    // drop for a move, must not remove what is selected by now.
    event->setDropAction(Qt::CopyAction);
    emit itemDragged();
}

static QList<QTreeWidgetItem *> clones(const QList<QTreeWidgetItem *> &rows)
{
    QList<QTreeWidgetItem *> copies;
    for (const QTreeWidgetItem *row : rows)
        copies.append(row->clone());
    return copies;
}

// The old rows are left to the view, which removes what is selected when it learns of the move. It
// removes whole ranges of the selection with all that lies in them, excluded rows and selected bits
// of other buses too.
void signalTreeWidget::moveToEnd(const QList<QTreeWidgetItem *> &moved)
{
    selectExactly(moved);
    addTopLevelItems(clones(moved));
}

void signalTreeWidget::moveBeside(QTreeWidgetItem *target, const QPoint &position,
                                  const QList<QTreeWidgetItem *> &moved)
{
    const QRect rect = visualItemRect(target);
    const int offset = position.y() - rect.y();
    const int half = rect.size().height() / 2;
    const int index = indexOfTopLevelItem(target);
    insertTopLevelItems(offset < half ? index : index + 1, clones(moved));

    QVector<int> old;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (topLevelItem(i)->isSelected())
            old.append(i);
    }
    removeTopLevelRows(this, old);
}

void signalTreeWidget::selectExactly(const QList<QTreeWidgetItem *> &rows)
{
    QItemSelection selection;
    for (QTreeWidgetItem *row : rows) {
        const QModelIndex index = indexFromItem(row);
        selection.append(QItemSelectionRange(index));
    }
    clearSelection();
    selectionModel()->select(selection, QItemSelectionModel::Select);
}

} // namespace MOLK
