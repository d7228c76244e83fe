// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

class QString;
class QTreeWidgetItem;

namespace MOLK {

class SignalItem;

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

/// Makes the row of \a item, with the signal under `Qt::UserRole`, and a row for each of its bits
/// below it if \a bits says so, all of the type \a rowType.
///
/// The row stands in no tree yet, which is what makes this fast: collect rows and insert them with
/// one addTopLevelItems() or addChildren(). It reads as if it had been filled through the setters
/// of QTreeWidgetItem, and takes them; the colour of a row that was found follows the application's
/// palette.
/// \return the row, owned by the caller until it is placed in a tree.
QTreeWidgetItem *makeSignalRow(const SignalItem &item, int rowType, BitRows bits = BitRows::Plain);

/// The signal that \a row carries under `Qt::UserRole`, or a default one if it carries none.
SignalItem signalOfRow(const QTreeWidgetItem *row);

/// Whether \a row carries a signal.
bool rowCarriesSignal(const QTreeWidgetItem *row);

} // namespace MOLK
