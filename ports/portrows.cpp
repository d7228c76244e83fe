// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "portrows.h"

#include "bitlabel.h"
#include "initialvalue.h"
#include "initialvalueline.h"
#include "signaldisplay.h"
#include "signalitem.h"
#include "valuetree.h"

#include <QLabel>

namespace MOLK {

static QList<QTreeWidgetItem *> signalRows(const QList<SignalItem> &items, BitRows bits)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(items.size());
    for (const SignalItem &item : items)
        rows.append(makeSignalRow(item, SignalRowType, bits));
    return rows;
}

static QLabel *makeLabel(const QTreeWidget *tree, const QString &bits)
{
    // A label that waits for being placed would never be shown by another tree.
    auto *label = dynamic_cast<const ValueTree *>(tree) ? new BitLabel(bits) : new QLabel(bits);

    // It wants to be a pixel higher than a row of text, but the rows of both Probe Out trees have
    // to be of one height.
    label->setFixedHeight(20);
    return label;
}

int signalWidth(const SignalItem &item)
{
    return qMax(1, item.members.size());
}

void addProbeInSignalRow(QTreeWidgetItem *parent, const SignalItem &item, int type)
{
    if (parent)
        parent->addChild(makeSignalRow(item, type, BitRows::Plain));
}

QList<QTreeWidgetItem *> probeInSignalRows(const QList<SignalItem> &items)
{
    return signalRows(items, BitRows::Plain);
}

void addProbeOutSignalRow(QTreeWidgetItem *parent, const SignalItem &item, int type)
{
    if (parent)
        parent->addChild(makeSignalRow(item, type, BitRows::None));
}

QList<QTreeWidgetItem *> probeOutSignalRows(const QList<SignalItem> &items)
{
    return signalRows(items, BitRows::None);
}

void addValueRow(QTreeWidget *tree, QTreeWidgetItem *parent, const SignalItem &item, QString &bits,
                 InitialValueLine *line, int type)
{
    addValueRows(tree, parent, {item}, bits, line, type);
}

void addValueRows(QTreeWidget *tree, QTreeWidgetItem *parent, const QList<SignalItem> &items,
                  QString &bits, InitialValueLine *line, int type)
{
    if (!parent)
        return;

    QList<QTreeWidgetItem *> rows;
    rows.reserve(items.size());
    for (int i = 0; i < items.size(); ++i)
        rows.append(new QTreeWidgetItem(type));
    parent->addChildren(rows);

    int position = 0;
    for (int i = 0; i < items.size(); ++i) {
        QLabel *label = makeLabel(tree, takeBits(bits, position, signalWidth(items.at(i))));
        if (line)
            line->labels.append(label);
        tree->setItemWidget(rows.at(i), 0, label);
    }
    bits.remove(0, position);
}

} // namespace MOLK
