// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "rowrebuilding.h"

#include <QItemSelection>
#include <QScrollBar>
#include <QSet>
#include <QSignalBlocker>
#include <QTreeWidget>

namespace MOLK {

using Rows = QSet<const QTreeWidgetItem *>;

static void collectSelected(const QTreeWidgetItem *row, Rows *selected)
{
    if (row->isSelected())
        selected->insert(row);
    for (int k = 0; k < row->childCount(); ++k)
        collectSelected(row->child(k), selected);
}

static void appendRange(QItemSelection *selection, const QModelIndex &parent,
                        const QAbstractItemModel *model, int first, int last)
{
    if (first <= last)
        selection->append({model->index(first, 0, parent), model->index(last, 0, parent)});
}

// One range for each run of neighbours.
static void appendRanges(QItemSelection *selection, const QModelIndex &parent,
                         const QTreeWidgetItem *parentRow, const Rows &selected,
                         const QAbstractItemModel *model)
{
    int first = 0;
    for (int k = 0; k < parentRow->childCount(); ++k) {
        const QTreeWidgetItem *row = parentRow->child(k);
        if (!selected.contains(row)) {
            appendRange(selection, parent, model, first, k - 1);
            first = k + 1;
        }
        if (row->childCount() > 0)
            appendRanges(selection, model->index(k, 0, parent), row, selected, model);
    }
    appendRange(selection, parent, model, first, parentRow->childCount() - 1);
}

// One selection for all rows: selecting row by row compares each with all before it.
static void selectRows(QTreeWidget *tree, const Rows &selected)
{
    if (selected.isEmpty())
        return;
    QItemSelection selection;
    appendRanges(&selection, QModelIndex(), tree->invisibleRootItem(), selected, tree->model());
    tree->selectionModel()->select(selection, QItemSelectionModel::Select);
}

// Telling of the end of the selection makes the tree go through all selected rows. Those that stay
// are selected again, which tells it all the same; to those that go it makes no difference.
static bool clearSelectionQuietly(QTreeWidget *tree)
{
    const bool hadSelection = tree->selectionModel()->hasSelection();
    const QSignalBlocker blocker(tree->selectionModel());
    tree->selectionModel()->clearSelection();
    return hadSelection;
}

void clearRows(QTreeWidget *tree)
{
    const bool hadSelection = clearSelectionQuietly(tree);
    tree->clear();
    if (hadSelection)
        emit tree->itemSelectionChanged();
}

void rebuildTopLevelRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &kept,
                         const QList<QTreeWidgetItem *> &doomed, QTreeWidgetItem *current)
{
    const int scrolled = tree->verticalScrollBar()->value();
    QList<QTreeWidgetItem *> expanded;
    Rows selected;
    for (QTreeWidgetItem *row : kept) {
        collectSelected(row, &selected);
        if (row->childCount() > 0 && row->isExpanded())
            expanded.append(row);
    }

    const bool hadSelection = clearSelectionQuietly(tree);
    tree->invisibleRootItem()->takeChildren();
    qDeleteAll(doomed);
    tree->addTopLevelItems(kept);
    for (QTreeWidgetItem *row : qAsConst(expanded))
        row->setExpanded(true);
    if (current)
        tree->setCurrentItem(current, 0, QItemSelectionModel::NoUpdate);
    selectRows(tree, selected);
    if (hadSelection && selected.isEmpty())
        emit tree->itemSelectionChanged();
    if (scrolled > 0) {
        tree->doItemsLayout();
        tree->verticalScrollBar()->setValue(scrolled);
    }
}

} // namespace MOLK
