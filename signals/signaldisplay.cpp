// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "signaldisplay.h"

#include "signalrow.h"

namespace MOLK {

const QString &shownName(const SignalItem &item)
{
    return item.alias.isEmpty() ? item.name : item.alias;
}

QTreeWidgetItem *makeSignalRow(const SignalItem &item, int rowType, BitRows bits)
{
    auto *row = new SignalItemRow(item, shownName(item), rowType);
    if (bits == BitRows::None)
        return row;
    QList<QTreeWidgetItem *> bitRows;
    bitRows.reserve(item.members.size());
    for (const SignalItem &bit : item.members)
        bitRows.append(new SignalRow(bit, shownName(bit), rowType, item.selectable));
    row->addChildren(bitRows);
    return row;
}

QTreeWidgetItem *makeNamedSignalRow(const SignalItem &item, const QStringList &names, int rowType)
{
    Q_ASSERT(names.size() == item.members.size() + 1);
    auto *row = new SignalItemRow(item, names.first(), rowType);
    QList<QTreeWidgetItem *> bitRows;
    bitRows.reserve(item.members.size());
    for (int k = 0; k < item.members.size(); ++k) {
        bitRows.append(
            new SignalItemRow(item.members.at(k), names.at(k + 1), rowType, item.selectable));
    }
    row->addChildren(bitRows);
    return row;
}

// The signal of a row of ours at once, null for any other row.
static const SignalItem *directSignal(const QTreeWidgetItem *row)
{
    const auto *signalRow = dynamic_cast<const SignalRow *>(row);
    return signalRow ? signalRow->signal() : nullptr;
}

bool carriesSignal(const QTreeWidgetItem *row)
{
    return directSignal(row) || row->data(0, Qt::UserRole).canConvert<SignalItem>();
}

SignalItem signalOfRow(const QTreeWidgetItem *row)
{
    const SignalItem *item = directSignal(row);
    return item ? *item : signalFromVariant(row->data(0, Qt::UserRole));
}

} // namespace MOLK
