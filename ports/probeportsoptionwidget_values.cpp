// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "probeportsoptionwidget.h"

#include "ui_probeportsoptionwidget.h"

#include "initialvalue.h"
#include "initialvalueline.h"
#include "molkcore.h"
#include "portrows.h"
#include "retirement.h"
#include "valueconversion.h"

#include <QPointer>

namespace MOLK {

// The bits that \a line still stands for at a port of \a width bits.
static QString keptBits(const InitialValueLine *line, int width)
{
    const QString bits = stringHextoBinfor0x(line->displayText());
    const int known = line->bitCount();

    // A line without labels has just been loaded, or had no signals: its low bits are the value.
    return resizedBits(bits, known > 0 ? known : qMin(width, bits.size()), width);
}

InitialValueLine *ProbePortsOptionWidget::valueLine(int index) const
{
    QTreeWidgetItem *row = ui->treeValue->topLevelItem(index);
    return row ? qobject_cast<InitialValueLine *>(ui->treeValue->itemWidget(row, 0)) : nullptr;
}

void ProbePortsOptionWidget::refreshProbeOutSignals()
{
    // A line that is disabled under the focus commits, maybe with a message. So this comes ahead of
    // any change to rows, while all labels are in place; its value doesn't count any more.
    const QPointer<ProbePortsOptionWidget> self = this;
    for (int i = 0; i < ui->treeProbeOut->topLevelItemCount(); ++i) {
        valueLine(i)->setEnabled(core->getProbeOut(i)->width() != 0);
        if (isRetired(self))
            return;
    }

    // All labels go ahead of the first row: what a removal costs grows with the widgets in the
    // tree.
    const int count = ui->treeProbeOut->topLevelItemCount();
    const ValueTree::Batch batch(ui->treeValue);
    for (int i = 0; i < count; ++i)
        ui->treeValue->releaseLabels(valueLine(i)->labels);
    for (int i = 0; i < count; ++i)
        removeSignalRows(i);
    for (int i = 0; i < count; ++i)
        addSignalRows(i);
}

void ProbePortsOptionWidget::removeSignalRows(int index)
{
    qDeleteAll(ui->treeProbeOut->topLevelItem(index)->takeChildren());
    qDeleteAll(ui->treeValue->topLevelItem(index)->takeChildren());
}

void ProbePortsOptionWidget::addSignalRows(int index)
{
    const ProbeOut *port = core->getProbeOut(index);
    const QList<SignalItem> items = port->getSignalNet();
    InitialValueLine *line = valueLine(index);

    // The labels have left the tree but are still there, and are read for the last time.
    QString bits = keptBits(line, port->width());
    line->labels.clear();

    // The text comes ahead of the mask for its length: what the old mask has no room for is lost
    // from the line, and stands in the labels alone.
    line->setText("0x" + (bits.isEmpty() ? "0" : stringBintoHex(bits)));
    ui->treeProbeOut->topLevelItem(index)->addChildren(probeOutSignalRows(items));
    addValueRows(ui->treeValue, ui->treeValue->topLevelItem(index), items, bits, line,
                 SignalRowType);
    line->updateInputMask();
}

} // namespace MOLK
