// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "rowremoval.h"

#include "rowrebuilding.h"

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

static void removeByRebuilding(QTreeWidget *tree, const QVector<int> &rows)
{
    QVector<bool> goes(tree->topLevelItemCount(), false);
    for (int row : rows)
        goes[row] = true;

    QList<QTreeWidgetItem *> kept;
    QList<QTreeWidgetItem *> doomed;
    for (int i = 0; i < goes.size(); ++i)
        (goes.at(i) ? doomed : kept).append(tree->topLevelItem(i));
    rebuildTopLevelRows(tree, kept, doomed, currentAfterRemoval(tree, goes));
}

void removeTopLevelRows(QTreeWidget *tree, const QVector<int> &rows)
{
    if (rows.size() > fewRows) {
        if (rows.size() == tree->topLevelItemCount())
            clearRows(tree);
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
    const QTreeWidgetItem *root = tree->invisibleRootItem();
    QVector<int> rows;
    for (int i = 0; i < root->childCount(); ++i) {
        const QTreeWidgetItem *row = root->child(i);
        if (row->isSelected() && (row->flags() & choosable) == choosable)
            rows.append(i);
    }
    removeTopLevelRows(tree, rows);
}

} // namespace MOLK
