// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "plainmodel.h"

namespace FATHOM {
class RtlNetlist;
}

namespace Plain {

struct Net
{
    QString name;
    bool noIn = false;
    bool noOut = false;
};

struct Bus
{
    QString name;
    int left = 0;
    int right = 0;
    QList<Net> bits; ///< The leftmost first.
    bool noIn = false;
    bool noOut = false;
};

struct Level
{
    QString name;
    QString module;
    int parent = -1;
    QList<Net> nets;
    QList<Bus> buses;
};

/// A design as a user knows it. Each level stands behind its parent.
struct Design
{
    QList<Level> levels;

    QString path(int level) const;
    QList<int> below(int level) const;

    /// The single net or bit with this path, or null.
    const Net *find(const QString &fullName) const;

    /// All full names, of nets, buses and bits.
    QStringList allNames() const;

    Signal signalOf(int level, const Net &net, bool bit, int type) const;
    Signal signalOf(int level, const Bus &bus, int type) const;

    /// What the host would make of the design; owned by the caller.
    FATHOM::RtlNetlist *netlist(bool usesJtag = false) const;
};

/// Designs that a project goes through as its sources change.
const QList<Design> &designs();

} // namespace Plain
