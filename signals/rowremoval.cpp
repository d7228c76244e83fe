// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "rowremoval.h"

#include <QItemSelection>
#include <QScrollBar>
#include <QSet>
#include <QSignalBlocker>
#include <QTreeWidget>

namespace MOLK {

// Up to here rows are deleted where they stand. Each deletion moves the rows behind it, the
// selection and the current row, so more of them are faster deleted by taking all rows out once.
static const int fewRows = 32;

static QTreeWidgetItem *topLevelRow(QTreeWidgetItem *row)
{
    while (row && row->parent())
        row = row->parent();
    return row;
}

// The row that is current once the rows marked in `goes` are gone.
static QTreeWidgetItem *currentAfterRemoval(const QTreeWidget *tree, const QVector<bool> &goes)
{
    QTreeWidgetItem *current = tree->currentItem();
    const int top = tree->indexOfTopLevelItem(topLevelRow(current));
    if (top < 0 || !goes.at(top))
        return current;
    if (current->parent())
        return nullptr;
    for (int above = top - 1; above >= 0; --above) {
        if (!goes.at(above))
            return tree->topLevelItem(above);
    }
    for (int below = top + 1; below < goes.size(); ++below) {
        if (!goes.at(below))
            return tree->topLevelItem(below);
    }
    return nullptr;
}

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
// are selected again, which tells it all the same.
static bool clearSelectionQuietly(QTreeWidget *tree)
{
    const bool hadSelection = tree->selectionModel()->hasSelection();
    const QSignalBlocker blocker(tree->selectionModel());
    tree->selectionModel()->clearSelection();
    return hadSelection;
}

static void removeByRebuilding(QTreeWidget *tree, const QVector<int> &rows)
{
    QVector<bool> goes(tree->topLevelItemCount(), false);
    for (int row : rows)
        goes[row] = true;

    QTreeWidgetItem *current = currentAfterRemoval(tree, goes);
    const int scrolled = tree->verticalScrollBar()->value();
    QList<QTreeWidgetItem *> kept;
    QList<QTreeWidgetItem *> expanded;
    Rows selected;
    for (int i = 0; i < goes.size(); ++i) {
        QTreeWidgetItem *row = tree->topLevelItem(i);
        if (goes.at(i))
            continue;
        kept.append(row);
        collectSelected(row, &selected);
        if (row->childCount() > 0 && row->isExpanded())
            expanded.append(row);
    }

    const bool hadSelection = clearSelectionQuietly(tree);
    const QList<QTreeWidgetItem *> taken = tree->invisibleRootItem()->takeChildren();
    for (int i = 0; i < goes.size(); ++i) {
        if (goes.at(i))
            delete taken.at(i);
    }
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

void removeTopLevelRows(QTreeWidget *tree, const QVector<int> &rows)
{
    if (rows.size() > fewRows) {
        if (rows.size() == tree->topLevelItemCount())
            tree->clear();
        else
            removeByRebuilding(tree, rows);
        return;
    }
    for (int i = rows.size() - 1; i >= 0; --i)
        delete tree->topLevelItem(rows.at(i));
}

void removeSelectedRows(QTreeWidget *tree)
{
    // Excluded rows may lie inside a selected range, but don't count as selected.
    const Qt::ItemFlags choosable = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    QVector<int> rows;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *row = tree->topLevelItem(i);
        if (row->isSelected() && (row->flags() & choosable) == choosable)
            rows.append(i);
    }
    removeTopLevelRows(tree, rows);
}

} // namespace MOLK
