// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The two Probe Out trees look like one table. Rows are paired by position alone, and what happens
// to one tree is copied to the other. Each copy comes back as an echo, which ends by itself since
// the trees raise nothing when they are in the wanted state already.

#include "probeportsoptionwidget.h"

#include "ui_probeportsoptionwidget.h"

#include "portrows.h"

#include <QScrollBar>

namespace MOLK {

static void selectPartner(const QTreeWidgetItem *item, QTreeWidget *tree)
{
    if (!item)
        return;
    if (item->type() == SignalRowType) {
        QTreeWidgetItem *portRow = item->parent();
        const int index = portRow->treeWidget()->indexOfTopLevelItem(portRow);
        const int child = portRow->indexOfChild(const_cast<QTreeWidgetItem *>(item));
        tree->clearSelection();
        tree->topLevelItem(index)->child(child)->setSelected(true);
    } else if (item->type() == PortRowType) {
        const int index =
            item->treeWidget()->indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(item));
        tree->clearSelection();
        tree->topLevelItem(index)->setSelected(true);
    }
}

static QTreeWidgetItem *partner(const QTreeWidget *tree, QTreeWidgetItem *item,
                                const QTreeWidget *other)
{
    // Unfolding all rows of a tree at once unfolds those of signals too, each with a signal.
    return item->parent() ? nullptr : other->topLevelItem(tree->indexOfTopLevelItem(item));
}

void ProbePortsOptionWidget::onProbeOutClicked(QTreeWidgetItem *item, int col)
{
    Q_UNUSED(col)
    selectPartner(item, ui->treeValue);
}

void ProbePortsOptionWidget::onValueTreeClicked(QTreeWidgetItem *item, int col)
{
    Q_UNUSED(col)
    selectPartner(item, ui->treeProbeOut);
}

void ProbePortsOptionWidget::onProbeOutTreeCollapsed(QTreeWidgetItem *item)
{
    ui->treeValue->collapseItem(partner(ui->treeProbeOut, item, ui->treeValue));
}

void ProbePortsOptionWidget::onProbeOutTreeExpanded(QTreeWidgetItem *item)
{
    ui->treeValue->expandSoon(partner(ui->treeProbeOut, item, ui->treeValue));
}

void ProbePortsOptionWidget::onValueTreeCollapsed(QTreeWidgetItem *item)
{
    ui->treeProbeOut->collapseItem(partner(ui->treeValue, item, ui->treeProbeOut));
}

void ProbePortsOptionWidget::onValueTreeExpanded(QTreeWidgetItem *item)
{
    ui->treeProbeOut->expandItem(partner(ui->treeValue, item, ui->treeProbeOut));
}

void ProbePortsOptionWidget::onScrollProbeOutChanged()
{
    valueScrollBar->setValue(probeOutScrollBar->value());
}

void ProbePortsOptionWidget::onScrollInitialValueChanged()
{
    probeOutScrollBar->setValue(valueScrollBar->value());
}

} // namespace MOLK
