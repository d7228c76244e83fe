// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "probeportsoptionwidget.h"

#include "ui_probeportsoptionwidget.h"

#include "initialvalue.h"
#include "initialvalueline.h"
#include "molkcore.h"
#include "portrows.h"
#include "valueconversion.h"

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
    for (int i = 0; i < ui->treeProbeOut->topLevelItemCount(); ++i)
        valueLine(i)->setEnabled(core->getProbeOut(i)->width() != 0);

    for (int i = 0; i < ui->treeProbeOut->topLevelItemCount(); ++i)
        refreshProbeOut(i);
}

void ProbePortsOptionWidget::refreshProbeOut(int index)
{
    const ProbeOut *port = core->getProbeOut(index);
    QTreeWidgetItem *portRow = ui->treeProbeOut->topLevelItem(index);
    QTreeWidgetItem *valueRow = ui->treeValue->topLevelItem(index);
    InitialValueLine *line = valueLine(index);

    QString bits = keptBits(line, port->width());
    qDeleteAll(portRow->takeChildren());
    qDeleteAll(valueRow->takeChildren());
    line->labels.clear();

    // The text comes ahead of the mask for its length: what the old mask has no room for is lost
    // from the line, and stands in the labels alone.
    line->setText("0x" + (bits.isEmpty() ? "0" : stringBintoHex(bits)));
    for (const SignalItem &item : port->getSignalNet()) {
        addProbeOutSignalRow(portRow, item, SignalRowType);
        addValueRow(ui->treeValue, valueRow, item, bits, line, SignalRowType);
    }
    line->updateInputMask();
}

} // namespace MOLK
