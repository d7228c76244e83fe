// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariant>

namespace MOLK {

/// One signal in a port's list, or one row of a search result.
///
/// A value: copied freely, owns nothing, holds no pointer into a netlist. Two signals are the same
/// if their names are equal, always case sensitive; the other fields tell how to show them.
class SignalItem
{
public:
    /// Full hierarchical name of the net or bus. Empty, not null, in a new item.
    QString name = QString("");

    /// Shown in italics in place of the name when it isn't empty. Null in a new item.
    QString alias;

    /// The bits of a bus in the bus's own order, each without members; empty for a single net.
    QList<SignalItem> members;

    /// False when the net must not be chosen for the direction that the item was made for.
    bool selectable = true;

    /// False when the signal is to be flagged in red.
    bool found = true;

    /// -1 not set, 0 a single net, 1 a bus or one bit of a bus.
    int kind = -1;
};

/// Wraps \a item as tree rows carry it: a variant of the meta-type "MOLK::SignalItem".
QVariant signalToVariant(const SignalItem &item);

/// Reads back what signalToVariant() wrapped.
///
/// \return the item; an item made by default if \a variant holds none and converts to none.
SignalItem signalFromVariant(const QVariant &variant);

} // namespace MOLK

// Registers the meta-type on its first use. The type stays one that needs construction and
// destruction: rows compare and move variants that hold it.
Q_DECLARE_METATYPE(MOLK::SignalItem)
