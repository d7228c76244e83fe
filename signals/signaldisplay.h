// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

#include <QStringList>

class QTreeWidgetItem;

namespace MOLK {

/// How a signal looks in a tree, the same everywhere:
///
/// - text and tool tip of column 0 are the alias if there is one, else the name;
/// - a row with an alias is italic;
/// - what may not be chosen is gray, and neither selectable nor enabled; of the rest, what wasn't
///   found is red, and what was found has the application palette's `QPalette::WindowText`.
///
/// A row that carries its signal holds it in column 0 under `Qt::UserRole`.

/// What the user reads for \a item: the alias if it isn't empty, else the name.
const QString &shownName(const SignalItem &item);

/// What is made below the row of a bus.
enum class BitRows {
    None,  ///< Nothing.
    Plain, ///< A row for each bit, carrying no signal.
};

/// Makes the row of \a item, which carries it, and a row for each of its bits below if \a bits says
/// so, all of the type \a rowType.
///
/// The row stands in no tree yet, which is what makes this fast: collect rows and insert them with
/// one addTopLevelItems() or addChildren(). It reads as if it had been filled through the setters
/// of QTreeWidgetItem, and takes them; the color of a found signal follows the application's
/// palette.
/// \return the row, owned by the caller until it is placed in a tree.
QTreeWidgetItem *makeSignalRow(const SignalItem &item, int rowType, BitRows bits = BitRows::Plain);

/// As makeSignalRow(), but the rows read \a names, and each bit row carries its bit.
///
/// \param names one for \a item and one for each of its members, in order.
QTreeWidgetItem *makeNamedSignalRow(const SignalItem &item, const QStringList &names, int rowType);

/// Whether \a row carries a signal.
bool carriesSignal(const QTreeWidgetItem *row);

/// The signal that \a row carries, or one made by default if it carries none.
SignalItem signalOfRow(const QTreeWidgetItem *row);

} // namespace MOLK
