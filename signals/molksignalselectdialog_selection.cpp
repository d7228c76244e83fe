// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molksignalselectdialog.h"

#include "ui_molksignalselectdialog.h"

#include "rowremoval.h"
#include "signaldisplay.h"
#include "signalset.h"
#include "signaltree.h"

#include <QTreeWidgetItemIterator>

namespace MOLK {

// A row that carries no signal stands for the bit, or whatever else, that its text names.
static void pickRow(PickedSignals *picked, const QTreeWidgetItem *row)
{
    if (carriesSignal(row)) {
        picked->add(signalOfRow(row));
        return;
    }
    SignalItem item;
    item.name = row->text(0);
    item.kind = 1;
    picked->add(item);
}

void MolkSignalSelectDialog::onAddSignal()
{
    PickedSignals picked;
    for (QTreeWidgetItemIterator it(ui->treeWidget); *it; ++it) {
        if ((*it)->isSelected())
            pickRow(&picked, *it);
    }
    addPicked(ui->treeWidgetAddSignal, picked);
}

void MolkSignalSelectDialog::onAddAllSignal()
{
    PickedSignals picked;
    for (QTreeWidgetItemIterator it(ui->treeWidget); *it; ++it)
        pickRow(&picked, *it);
    addPicked(ui->treeWidgetAddSignal, picked);
}

void MolkSignalSelectDialog::onDelSignal()
{
    removeSelectedRows(ui->treeWidgetAddSignal);
}

void MolkSignalSelectDialog::onDelAllSignal()
{
    ui->treeWidgetAddSignal->clear();
}

QList<SignalItem> MolkSignalSelectDialog::selectedSignals() const
{
    QList<SignalItem> items;
    for (QTreeWidgetItemIterator it(ui->treeWidgetAddSignal); *it; ++it) {
        if (carriesSignal(*it))
            items.append(signalOfRow(*it));
    }
    return items;
}

QString MolkSignalSelectDialog::selectedSignalName() const
{
    const QList<SignalItem> items = selectedSignals();
    if (items.isEmpty())
        return QString();
    const SignalItem &first = items.first();
    if (first.members.isEmpty())
        return first.name;
    for (const SignalItem &bit : first.members) {
        if (bit.selectable)
            return bit.name;
    }
    return QString();
}

} // namespace MOLK
