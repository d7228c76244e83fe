// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "rowmoving.h"

#include "rowrebuilding.h"

#include <QSet>
#include <QTreeWidget>

#include <algorithm>
#include <utility>

namespace MOLK {

using Rows = QList<QTreeWidgetItem *>;

// The rows from `begin` on, each selected one ahead of the unselected one that stood before it.
// Going through them backwards moves rows down.
template<typename Iterator>
static void moveForward(Iterator begin, Iterator end, const QSet<QTreeWidgetItem *> &selected)
{
    for (Iterator row = std::next(begin); row != end; ++row) {
        if (selected.contains(*row) && !selected.contains(*std::prev(row)))
            std::swap(*row, *std::prev(row));
    }
}

static void moveSelectedRows(QTreeWidget *tree, bool down)
{
    const Rows selected = tree->selectedItems();
    const bool hasBits =
        std::any_of(selected.cbegin(), selected.cend(),
                    [](const QTreeWidgetItem *row) { return row->parent() != nullptr; });
    if (selected.isEmpty() || hasBits)
        return;

    Rows before;
    before.reserve(tree->topLevelItemCount());
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        before.append(tree->topLevelItem(i));
    Rows after = before;
    const QSet<QTreeWidgetItem *> moving(selected.cbegin(), selected.cend());
    if (down)
        moveForward(after.rbegin(), after.rend(), moving);
    else
        moveForward(after.begin(), after.end(), moving);
    if (after == before)
        return;

    QTreeWidgetItem *current = tree->currentItem();
    rebuildTopLevelRows(tree, after, {}, current);
    tree->scrollToItem(current ? current : selected.first());
}

void moveSelectedRowsUp(QTreeWidget *tree)
{
    moveSelectedRows(tree, false);
}

void moveSelectedRowsDown(QTreeWidget *tree)
{
    moveSelectedRows(tree, true);
}

} // namespace MOLK
