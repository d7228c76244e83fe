// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

#include <QStringList>

class QTreeWidget;
class QTreeWidgetItem;

namespace MOLK {

class PickedSignals;

/// Appends one top-level row of the type \a rowType for \a item, which carries it, with one row for
/// each of its bits. A null \a tree adds nothing.
void addSignalRow(QTreeWidget *tree, const SignalItem &item, int rowType);

/// As addSignalRow() for each of \a items in order, inserted at once.
void addSignalRows(QTreeWidget *tree, const QList<SignalItem> &items, int rowType);

/// Appends a row below \a parent as addSignalRow() does, except that the rows read \a names and
/// each bit row carries its bit. Adds nothing if \a parent is null or \a names doesn't hold one
/// name for \a item and one for each of its members.
void addNamedSignalRow(QTreeWidgetItem *parent, const SignalItem &item, const QStringList &names,
                       int rowType);

/// Drops from \a buses and \a singles what the top-level rows of \a tree cover, row by row from the
/// first to the last, and deletes the rows of bits that an incoming bus replaces.
void reconcileTree(QTreeWidget *tree, QList<SignalItem> &buses, QList<SignalItem> &singles);

/// The step of reconcileTree() for the top-level row \a row, which is a bus or a bit: drops from
/// \a buses what it covers, or deletes it and decreases \a row by 1 if an incoming bus replaces it.
void reconcileBusRow(QTreeWidget *tree, int &row, QList<SignalItem> &buses);

/// Adds picked signals to \a tree such that nothing that stands in it comes a second time and no
/// bit stands beside the whole bus that holds it. New rows come last, of item type 0, buses and
/// bits ahead of single nets; rows that stood in the tree keep their places unless an incoming bus
/// replaces them.
void addPicked(QTreeWidget *tree, const QList<SignalItem> &picked);
void addPicked(QTreeWidget *tree, const PickedSignals &picked);

} // namespace MOLK
