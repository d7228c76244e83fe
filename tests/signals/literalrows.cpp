// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "literalrows.h"

#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"

#include <QApplication>
#include <QBrush>
#include <QPalette>
#include <QTreeWidget>

namespace Literal {

SignalItem itemOf(const FATHOM::RtlNet *net)
{
    SignalItem item;
    item.name = net->fullPathName();
    item.selectable = !net->noProbeOut;
    item.kind = 0;
    return item;
}

SignalItem itemOf(const FATHOM::RtlNetBus *bus)
{
    SignalItem item;
    item.name = bus->fullBusName();
    item.selectable = !bus->noProbeOut;
    item.kind = 1;
    const QList<FATHOM::RtlNet *> bits = bus->nets();
    for (const FATHOM::RtlNet *bit : bits) {
        item.members.append(itemOf(bit));
        item.members.last().kind = 1;
    }
    return item;
}

static void applyName(QTreeWidgetItem *row, const SignalItem &item)
{
    const QString text = item.alias != "" ? item.alias : item.name;
    row->setText(0, text);
    row->setToolTip(0, text);
}

static void applyFont(QTreeWidgetItem *row, const SignalItem &item)
{
    if (item.alias.isEmpty())
        return;
    QFont font = row->font(0);
    font.setStyle(QFont::StyleItalic);
    row->setFont(0, font);
}

void applyLook(QTreeWidgetItem *row, const SignalItem &item)
{
    const Qt::ItemFlags both = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (!item.selectable) {
        row->setForeground(0, Qt::gray);
        row->setFlags(row->flags() & ~both);
    } else if (item.found) {
        row->setForeground(0, QApplication::palette().brush(QPalette::WindowText));
        row->setFlags(row->flags() | both);
    } else {
        row->setForeground(0, Qt::red);
        row->setFlags(row->flags() | both);
    }
}

void addSignalRow(QTreeWidget *tree, SignalItem item, int rowType)
{
    if (!tree)
        return;
    auto *row = new QTreeWidgetItem(tree, rowType);
    row->setData(0, Qt::UserRole, QVariant::fromValue(item));
    applyName(row, item);
    applyFont(row, item);
    for (const SignalItem &bit : qAsConst(item.members)) {
        auto *bitRow = new QTreeWidgetItem(row, rowType);
        applyName(bitRow, bit);
        applyFont(bitRow, bit);
        applyLook(bitRow, bit);
    }
    applyLook(row, item);
}

void addNamedSignalRow(QTreeWidgetItem *parent, SignalItem item, QStringList names, int rowType)
{
    if (!parent || names.size() != item.members.size() + 1)
        return;
    auto *row = new QTreeWidgetItem(parent, rowType);
    row->setData(0, Qt::UserRole, QVariant::fromValue(item));
    row->setText(0, names.first());
    row->setToolTip(0, names.first());
    applyFont(row, item);
    for (int k = 0; k < item.members.size(); ++k) {
        const SignalItem bit = item.members.at(k);
        auto *bitRow = new QTreeWidgetItem(row, rowType);
        bitRow->setData(0, Qt::UserRole, QVariant::fromValue(bit));
        bitRow->setText(0, names.at(k + 1));
        bitRow->setToolTip(0, names.at(k + 1));
        applyFont(bitRow, bit);
        applyLook(bitRow, bit);
    }
    applyLook(row, item);
}

static SignalItem itemOfRow(const QTreeWidgetItem *row)
{
    return row->data(0, Qt::UserRole).value<SignalItem>();
}

static void storeBack(QTreeWidgetItem *row, const SignalItem &item)
{
    row->setData(0, Qt::UserRole, QVariant::fromValue(item));
}

void reconcileBusRow(QTreeWidget *tree, int &row, QList<SignalItem> &buses)
{
    QTreeWidgetItem *treeRow = tree->topLevelItem(row);
    const SignalItem existing = itemOfRow(treeRow);
    if (existing.members.isEmpty()) {
        for (int i = 0; i < buses.size(); ++i) {
            if (buses.at(i).name == existing.name) {
                buses.removeAt(i);
                storeBack(treeRow, existing);
                return;
            }
            if (busContains(buses.at(i), existing)) {
                delete treeRow;
                --row;
                return;
            }
        }
        return;
    }
    for (int i = 0; i < buses.size();) {
        if (buses.at(i).name == existing.name) {
            buses.removeAt(i);
            storeBack(treeRow, existing);
            return;
        }
        bool held = false;
        for (const SignalItem &member : existing.members)
            held = held || member.name == buses.at(i).name;
        if (held) {
            buses.removeAt(i);
            storeBack(treeRow, existing);
        } else {
            ++i;
        }
    }
}

void reconcileTree(QTreeWidget *tree, QList<SignalItem> &buses, QList<SignalItem> &singles)
{
    for (int row = 0; row < tree->topLevelItemCount(); ++row) {
        const SignalItem existing = itemOfRow(tree->topLevelItem(row));
        if (existing.kind != 0) {
            reconcileBusRow(tree, row, buses);
            continue;
        }
        for (int i = 0; i < singles.size(); ++i) {
            if (singles.at(i).name == existing.name) {
                singles.removeAt(i);
                break;
            }
        }
        storeBack(tree->topLevelItem(row), existing);
    }
}

void addPicked(QTreeWidget *tree, const QList<SignalItem> &picked)
{
    QList<SignalItem> buses;
    QList<SignalItem> singles;
    partitionSignals(picked, buses, singles);
    reconcileTree(tree, buses, singles);
    for (const SignalItem &item : qAsConst(buses))
        addSignalRow(tree, item, 0);
    for (const SignalItem &item : qAsConst(singles))
        addSignalRow(tree, item, 0);
}

QStringList rowDump(const QTreeWidgetItem *row, int depth)
{
    const QVariant user = row->data(0, Qt::UserRole);
    QStringList parts{
        QString(depth * 2, ' ') + row->text(0),
        row->data(0, Qt::EditRole).toString(),
        row->toolTip(0),
        QString("type %1").arg(row->type()),
        QString("flags %1").arg(int(row->flags())),
        QString("disabled %1").arg(row->isDisabled()),
        QString("font %1").arg(row->data(0, Qt::FontRole).isValid() ? row->font(0).toString() : ""),
        QString("brush %1").arg(row->foreground(0).color().name()),
        QString("user %1").arg(user.isValid() ? itemDump(user.value<SignalItem>()) : "none"),
    };
    // Nothing else may be set.
    for (int role : {int(Qt::DecorationRole), int(Qt::StatusTipRole), int(Qt::WhatsThisRole),
                     int(Qt::TextAlignmentRole), int(Qt::BackgroundRole), int(Qt::CheckStateRole),
                     int(Qt::SizeHintRole), Qt::UserRole + 1}) {
        parts.append(row->data(0, role).toString());
    }
    QStringList lines{parts.join(" / ")};
    for (int k = 0; k < row->childCount(); ++k)
        lines += rowDump(row->child(k), depth + 1);
    return lines;
}

QStringList treeDump(const QTreeWidget *tree)
{
    QStringList lines;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        lines += rowDump(tree->topLevelItem(i));
    return lines;
}

} // namespace Literal
