// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "signaltree.h"

#include "rowremoval.h"
#include "signaldisplay.h"
#include "signalset.h"

#include <QTreeWidget>

namespace MOLK {

void addSignalRow(QTreeWidget *tree, const SignalItem &item, int rowType)
{
    if (tree)
        tree->addTopLevelItem(makeSignalRow(item, rowType));
}

void addSignalRows(QTreeWidget *tree, const QList<SignalItem> &items, int rowType)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(items.size());
    for (const SignalItem &item : items)
        rows.append(makeSignalRow(item, rowType));
    tree->addTopLevelItems(rows);
}

void addNamedSignalRow(QTreeWidgetItem *parent, const SignalItem &item, const QStringList &names,
                       int rowType)
{
    if (parent && names.size() == item.members.size() + 1)
        parent->addChild(makeNamedSignalRow(item, names, rowType));
}

void reconcileTree(QTreeWidget *tree, QList<SignalItem> &buses, QList<SignalItem> &singles)
{
    QVector<int> replaced;
    {
        IncomingSignals incoming(buses, singles);
        for (int row = 0; row < tree->topLevelItemCount(); ++row) {
            if (!incoming.meet(signalOfRow(tree->topLevelItem(row))))
                replaced.append(row);
        }
    }
    removeTopLevelRows(tree, replaced);
}

void reconcileBusRow(QTreeWidget *tree, int &row, QList<SignalItem> &buses)
{
    QList<SignalItem> singles;
    IncomingSignals incoming(buses, singles);
    if (incoming.meetBus(signalOfRow(tree->topLevelItem(row))))
        return;
    delete tree->topLevelItem(row);
    --row;
}

void addPicked(QTreeWidget *tree, const QList<SignalItem> &picked)
{
    PickedSignals split;
    for (const SignalItem &item : picked)
        split.add(item);
    addPicked(tree, split);
}

void addPicked(QTreeWidget *tree, const PickedSignals &picked)
{
    QList<SignalItem> buses = picked.buses();
    QList<SignalItem> singles = picked.singles();
    reconcileTree(tree, buses, singles);
    addSignalRows(tree, buses + singles, 0);
}

} // namespace MOLK
