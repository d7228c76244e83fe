// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "literalset.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace FATHOM {
class RtlNet;
class RtlNetBus;
} // namespace FATHOM

namespace Literal {

/// What a search for a Probe Out has to show.
SignalItem itemOf(const FATHOM::RtlNet *net);
SignalItem itemOf(const FATHOM::RtlNetBus *bus);

void applyLook(QTreeWidgetItem *row, const SignalItem &item);
void addSignalRow(QTreeWidget *tree, SignalItem item, int rowType);
void addNamedSignalRow(QTreeWidgetItem *parent, SignalItem item, QStringList names, int rowType);

void reconcileBusRow(QTreeWidget *tree, int &row, QList<SignalItem> &buses);
void reconcileTree(QTreeWidget *tree, QList<SignalItem> &buses, QList<SignalItem> &singles);
void addPicked(QTreeWidget *tree, const QList<SignalItem> &picked);

/// Everything that can be read of \a row and the rows below it, one line a row.
QStringList rowDump(const QTreeWidgetItem *row, int depth = 0);
QStringList treeDump(const QTreeWidget *tree);

} // namespace Literal
