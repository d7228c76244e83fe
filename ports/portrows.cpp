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

// A label that waits for being placed would never be shown by another tree than a ValueTree.
static QLabel *makeLabel(bool waits, const QString &bits)
{
    auto *label = waits ? new BitLabel(bits) : new QLabel(bits);

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
    const int first = parent->childCount();
    parent->addChildren(rows);

    auto *valueTree = dynamic_cast<ValueTree *>(tree);
    QList<QLabel *> labels;
    labels.reserve(items.size());
    int position = 0;
    for (const SignalItem &item : items)
        labels.append(makeLabel(valueTree, takeBits(bits, position, signalWidth(item))));
    bits.remove(0, position);
    if (line)
        line->labels += labels;
    if (valueTree) {
        valueTree->setLabels(parent, first, labels);
        return;
    }
    for (int i = 0; i < labels.size(); ++i)
        tree->setItemWidget(rows.at(i), 0, labels.at(i));
}

} // namespace MOLK
