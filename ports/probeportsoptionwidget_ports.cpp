// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "probeportsoptionwidget.h"

#include "ui_probeportsoptionwidget.h"

#include "initialvalueline.h"
#include "modal.h"
#include "molkcore.h"
#include "portrows.h"
#include "probedialog.h"
#include "retirement.h"

#include <QPointer>

namespace MOLK {

constexpr int MostPorts = 64; // of each direction

static QTreeWidgetItem *portRowOf(QTreeWidgetItem *row)
{
    while (row->type() == SignalRowType)
        row = row->parent();
    return row;
}

void ProbePortsOptionWidget::appendProbeInRow(int number)
{
    auto *row = new QTreeWidgetItem(PortRowType);
    row->setText(0, QString("Probe In%1").arg(number));
    ui->treeProbeIn->addTopLevelItem(row);
}

InitialValueLine *ProbePortsOptionWidget::appendProbeOutRows(int number)
{
    auto *portRow = new QTreeWidgetItem(PortRowType);
    portRow->setText(0, QString("Probe Out%1").arg(number));
    ui->treeProbeOut->addTopLevelItem(portRow);

    auto *valueRow = new QTreeWidgetItem(PortRowType);
    ui->treeValue->addTopLevelItem(valueRow);
    auto *line = new InitialValueLine(number, this, nullptr);
    ui->treeValue->setItemWidget(valueRow, 0, line);
    return line;
}

void ProbePortsOptionWidget::warn(const QString &text)
{
    showMessage(this, QMessageBox::Warning, "Warning", text);
}

void ProbePortsOptionWidget::onAddProbeIn()
{
    const int count = core->getAllProbeIns().size();
    if (count >= MostPorts) {
        warn("Support 64 Probe Ins at most.");
        return;
    }
    core->addProbeIn(count);
    appendProbeInRow(count);
    emit modified();
}

void ProbePortsOptionWidget::onAddProbeOut()
{
    const int count = core->getAllProbeOuts().size();
    if (count >= MostPorts) {
        warn("Support 64 Probe Outs at most.");
        return;
    }
    core->addProbeOut(count);
    appendProbeOutRows(count);
    const QPointer<ProbePortsOptionWidget> self = this;
    refreshProbeOutSignals();
    if (!isRetired(self))
        emit modified();
}

// A dialog on a port must not outlive the port, and the row that it was opened on goes as well.
static void cancelDialogs(const QWidget *page)
{
    const auto dialogs = page->findChildren<ProbeDialog *>(QString(), Qt::FindDirectChildrenOnly);
    for (ProbeDialog *dialog : dialogs)
        dialog->reject();
}

void ProbePortsOptionWidget::onRemoveProbeIn()
{
    if (core->getAllProbeIns().size() == 1) {
        warn("Support 1 Probe In at least.");
        return;
    }

    cancelDialogs(this);
    // A signal row goes from the tree alone: the core, given -1, keeps the signal.
    const QList<QTreeWidgetItem *> selected = ui->treeProbeIn->selectedItems();
    for (QTreeWidgetItem *row : selected) {
        core->removeProbeIn(ui->treeProbeIn->indexOfTopLevelItem(row));
        delete row;
    }
    for (int i = 0; i < ui->treeProbeIn->topLevelItemCount(); ++i)
        ui->treeProbeIn->topLevelItem(i)->setText(0, QString("Probe In%1").arg(i));
    core->updateProbeIn();
    emit modified();
}

void ProbePortsOptionWidget::onRemoveProbeOut()
{
    if (core->getAllProbeOuts().size() == 1) {
        warn("Support 1 Probe Out at least.");
        return;
    }

    cancelDialogs(this);
    const QList<QTreeWidgetItem *> selected = ui->treeProbeOut->selectedItems();
    for (QTreeWidgetItem *row : selected) {
        const int index = ui->treeProbeOut->indexOfTopLevelItem(row);
        if (index < 0)
            return;
        core->removeProbeOut(index);
        removeProbeOutRows(index);
    }
    for (int i = 0; i < ui->treeProbeOut->topLevelItemCount(); ++i) {
        ui->treeProbeOut->topLevelItem(i)->setText(0, QString("Probe Out%1").arg(i));
        valueLine(i)->index = i;
    }
    core->updateProbeOut();
    emit modified();
}

void ProbePortsOptionWidget::removeProbeOutRows(int index)
{
    QTreeWidgetItem *portRow = ui->treeProbeOut->topLevelItem(index);
    ui->treeProbeOut->setItemWidget(portRow, 0, nullptr);
    delete portRow;

    // The order is line, labels, rows. The line is deleted ahead of its labels then and takes them
    // along; and no label may be left on a row that goes, or the tree would keep it on record.
    QTreeWidgetItem *valueRow = ui->treeValue->topLevelItem(index);
    const QList<QLabel *> labels = valueLine(index)->labels;
    ui->treeValue->setItemWidget(valueRow, 0, nullptr);
    ui->treeValue->releaseLabels(labels);
    qDeleteAll(valueRow->takeChildren());
    delete valueRow;
}

void ProbePortsOptionWidget::editProbeIn(QTreeWidgetItem *item, int col)
{
    Q_UNUSED(col)
    if (!item)
        return;
    QTreeWidgetItem *row = portRowOf(item);
    ProbeIn *port = core->getProbeIn(ui->treeProbeIn->indexOfTopLevelItem(row));
    if (!port)
        return;

    const QPointer<ProbePortsOptionWidget> self = this;
    const int result = execAndDelete(new ProbeDialog(port, netlist, 0, this));
    if (isRetired(self) || result != QDialog::Accepted)
        return;
    refreshProbeInSignals();
    ui->treeProbeIn->setCurrentItem(row);
    ui->treeProbeIn->expandItem(row);
    emit modified();
}

void ProbePortsOptionWidget::editProbeOut(QTreeWidgetItem *item, int col)
{
    Q_UNUSED(col)
    if (!item)
        return;
    QTreeWidgetItem *row = portRowOf(item);
    ProbeOut *port = core->getProbeOut(ui->treeProbeOut->indexOfTopLevelItem(row));
    if (!port)
        return;

    // Another netlist closes this dialog as if cancelled; one on a Probe In stays open.
    auto *dialog = new ProbeDialog(port, netlist, 1, this);
    connect(this, SIGNAL(netlistChanged()), dialog, SLOT(closeWidget()));
    const QPointer<ProbePortsOptionWidget> self = this;
    const int result = execAndDelete(dialog);
    if (isRetired(self) || result != QDialog::Accepted)
        return;
    refreshProbeOutSignals();
    if (isRetired(self))
        return;
    row = ui->treeProbeOut->topLevelItem(core->getAllProbeOuts().indexOf(port));
    ui->treeProbeOut->setCurrentItem(row);
    ui->treeProbeOut->expandItem(row);
    emit modified();
}

} // namespace MOLK
