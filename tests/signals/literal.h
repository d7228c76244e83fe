// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

#include <QStringList>

class QTreeWidget;
class QTreeWidgetItem;

/// The plainest possible reading of how rows look and of how picked signals reach a tree: slow, and
/// easy to check by eye. What the library does is compared with it.
namespace Literal {

using MOLK::SignalItem;

void applyLook(QTreeWidgetItem *row, const SignalItem &item);
void addSignalRow(QTreeWidget *tree, SignalItem item, int rowType);
void addNamedSignalRow(QTreeWidgetItem *parent, SignalItem item, QStringList names, int rowType);

bool busContains(SignalItem bus, SignalItem bit);
void mergeBusItem(QList<SignalItem> &buses, SignalItem item);
void partitionSignals(QList<SignalItem> picked, QList<SignalItem> &buses,
                      QList<SignalItem> &singles);
void reconcileBusRow(QTreeWidget *tree, int &row, QList<SignalItem> &buses);
void reconcileTree(QTreeWidget *tree, QList<SignalItem> &buses, QList<SignalItem> &singles);
void addPicked(QTreeWidget *tree, const QList<SignalItem> &picked);

/// Everything that can be read of \a row and the rows below it, one line a row.
QStringList rowDump(const QTreeWidgetItem *row, int depth = 0);
QStringList treeDump(const QTreeWidget *tree);

/// All fields of an item in one line, members included.
QString itemDump(const SignalItem &item);
QStringList itemsDump(const QList<SignalItem> &items);

} // namespace Literal
