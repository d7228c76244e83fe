// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "probedialog.h"

#include "ui_probedialog.h"

#include "modal.h"
#include "molksignalselectdialog.h"
#include "probein.h"
#include "retirement.h"
#include "rowmovingkeys.h"
#include "rowremoval.h"
#include "signaldisplay.h"
#include "signaltree.h"

#include <QPointer>

namespace MOLK {

static const int mostSignals = 256;

ProbeDialog::ProbeDialog(ProbeIn *port, FATHOM::RtlNetlist *design, int direction, QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::ProbeDialog)
    , probe(port)
    , netlist(design)
    , type(direction)
{
    ui->setupUi(this);
    ui->btnRemove->setEnabled(false);
    ui->treeWidget->setStyleSheet("QTreeWidget::item { height: 20px;}");
    ui->treeWidget->setTextElideMode(Qt::ElideMiddle);
    addSignalRows(ui->treeWidget, probe->getSignalNet(), 0);
    setWindowTitle(type == 0 ? QString("Probe In Port") : QString("Probe Out Port"));
    connect(ui->btnAdd, SIGNAL(clicked()), this, SLOT(onAdd()));
    connect(ui->btnRemove, SIGNAL(clicked()), this, SLOT(onRemove()));
    new RowMovingKeys(ui->treeWidget);
}

ProbeDialog::~ProbeDialog()
{
    delete ui;
}

void ProbeDialog::onAdd()
{
    const QPointer<ProbeDialog> self(this);
    const QList<SignalItem> picked = MolkSignalSelectDialog::getSignals(netlist.get(), type, this);
    if (!isRetired(self))
        addPicked(ui->treeWidget, picked);
}

void ProbeDialog::onRemove()
{
    removeSelectedRows(ui->treeWidget);
}

void ProbeDialog::on_treeWidget_itemSelectionChanged()
{
    const QList<QTreeWidgetItem *> selected = ui->treeWidget->selectedItems();
    const bool hasBits =
        std::any_of(selected.cbegin(), selected.cend(),
                    [](const QTreeWidgetItem *row) { return row->parent() != nullptr; });
    ui->btnRemove->setEnabled(!selected.isEmpty() && !hasBits);
}

void ProbeDialog::accept()
{
    // The port may be gone already.
    if (isRetired(this))
        return reject();
    QList<SignalItem> items;
    int width = 0;
    for (int i = 0; i < ui->treeWidget->topLevelItemCount(); ++i) {
        const SignalItem item = signalOfRow(ui->treeWidget->topLevelItem(i));
        width += item.members.isEmpty() ? 1 : item.members.size();
        items.append(item);
    }
    if (width > mostSignals) {
        showMessage(this, QMessageBox::Warning, "Warning", "Support 256 signals at most.");
        return;
    }
    probe->setSignalNet(items);
    QDialog::accept();
}

void ProbeDialog::closeWidget()
{
    emit closeOldSearchDialog();
    close();
}

} // namespace MOLK
