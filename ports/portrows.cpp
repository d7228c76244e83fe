// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "portrows.h"

#include "initialvalue.h"
#include "initialvalueline.h"
#include "signaldisplay.h"
#include "signalitem.h"

#include <QLabel>
#include <QTreeWidget>

namespace MOLK {

void addProbeInSignalRow(QTreeWidgetItem *parent, const SignalItem &item, int type)
{
    if (parent)
        parent->addChild(makeSignalRow(item, type, BitRows::Plain));
}

QList<QTreeWidgetItem *> probeInSignalRows(const QList<SignalItem> &items)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(items.size());
    for (const SignalItem &item : items)
        rows.append(makeSignalRow(item, SignalRowType, BitRows::Plain));
    return rows;
}

void addProbeOutSignalRow(QTreeWidgetItem *parent, const SignalItem &item, int type)
{
    if (parent)
        parent->addChild(makeSignalRow(item, type, BitRows::None));
}

void addValueRow(QTreeWidget *tree, QTreeWidgetItem *parent, const SignalItem &item, QString &bits,
                 InitialValueLine *line, int type)
{
    if (!parent)
        return;

    auto *row = new QTreeWidgetItem(parent, type);
    int position = 0;
    auto *label = new QLabel(takeBits(bits, position, signalWidth(item)), tree);
    bits.remove(0, position);

    // A label wants to be a pixel higher than a row of text; the rows of both trees have to be of
    // one height.
    label->setFixedHeight(20);
    if (line)
        line->labels.append(label);
    tree->setItemWidget(row, 0, label);
}

int signalWidth(const SignalItem &item)
{
    return qMax(1, item.members.size());
}

} // namespace MOLK
