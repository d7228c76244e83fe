// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

#include <QList>
#include <QStringList>

namespace MOLK {

/// A port of a core that watches nets of the design.
///
/// Made, owned and destroyed by its MolkCore only. Not polymorphic: a ProbeOut is used through a
/// ProbeIn pointer, and deleted through its own type.
class ProbeIn
{
public:
    /// Makes a port without signals.
    ///
    /// \param portNumber counted from 0.
    explicit ProbeIn(int portNumber);

    /// Number of single signals: each item counts its members, or 1 if it has none. 0 for a port
    /// without signals, which is not in use.
    int width() const;

    /// A copy of the signal list in the user's order.
    QList<SignalItem> getSignalNet() const;

    /// Replaces the whole signal list; the only way to change it.
    void setSignalNet(const QList<SignalItem> &items);

    /// The names of the single signals in list order: of each member of an item with members, of
    /// the item itself otherwise. Always width() names.
    QStringList singleSignals() const;

    /// The port's number, counted from 0. It equals the port's position in its core once
    /// MolkCore::updateProbeIn or MolkCore::updateProbeOut has run.
    int number;

private:
    Q_DISABLE_COPY(ProbeIn)

    QList<SignalItem> signalNet;
};

} // namespace MOLK
