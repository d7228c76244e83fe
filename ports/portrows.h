// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>

class QString;
class QTreeWidget;
class QTreeWidgetItem;

namespace MOLK {

class InitialValueLine;
class SignalItem;

constexpr int PortRowType = 1001;   ///< Item type of the top-level rows of the port trees.
constexpr int SignalRowType = 1002; ///< Item type of every row below one.

/// The number of bits of \a item: its members, or 1 without members.
int signalWidth(const SignalItem &item);

/// Appends the row of one signal of a Probe In below \a parent, with a row for each of its members.
/// The row carries \a item in column 0 under Qt::UserRole, its member rows carry none.
///
/// \param parent nothing happens if it is null.
/// \param type item type of the rows.
void addProbeInSignalRow(QTreeWidgetItem *parent, const SignalItem &item, int type);

/// The rows that addProbeInSignalRow() appends for all signals of a port, with the type
/// SignalRowType, in order. They stand in no tree yet; the caller owns them.
QList<QTreeWidgetItem *> probeInSignalRows(const QList<SignalItem> &items);

/// Appends the row of one signal of a Probe Out below \a parent. It is one row for a bus too. The
/// row carries \a item in column 0 under Qt::UserRole.
///
/// \param parent nothing happens if it is null.
/// \param type item type of the row.
void addProbeOutSignalRow(QTreeWidgetItem *parent, const SignalItem &item, int type);

/// The rows that addProbeOutSignalRow() appends for all signals of a port, as probeInSignalRows().
QList<QTreeWidgetItem *> probeOutSignalRows(const QList<SignalItem> &items);

/// Appends the row of one signal's part of an initial value below \a parent: a row without text,
/// with a label for item widget.
///
/// \param tree tree of \a parent.
/// \param parent nothing happens if it is null.
/// \param item the signal: a bit for each of its members, one bit without members.
/// \param bits bits `0` and `1` of this signal and those after it, most significant first. The
///        signal's bits are taken off its front. If it holds too few the label shows zeros, and
///        \a bits becomes empty.
/// \param line receives the label at the end of its labels; may be null.
/// \param type item type of the row.
void addValueRow(QTreeWidget *tree, QTreeWidgetItem *parent, const SignalItem &item, QString &bits,
                 InitialValueLine *line, int type);

/// As addValueRow() for each of \a items in order, but the rows are inserted in one go.
void addValueRows(QTreeWidget *tree, QTreeWidgetItem *parent, const QList<SignalItem> &items,
                  QString &bits, InitialValueLine *line, int type);

} // namespace MOLK
