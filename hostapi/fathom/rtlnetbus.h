// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QList>
#include <QString>

namespace FATHOM {

class RtlNet;

/// A net declared with a range. Owned by its netlist.
class HOST_EXPORT RtlNetBus
{
public:
    virtual ~RtlNetBus();

    /// The name within its level of the hierarchy, with the declared range: `q[7:0]`.
    virtual QString BusName() const = 0;

    /// The path from the top module's name down to this bus, range included, unique in the design.
    virtual QString fullBusName() const = 0;

    /// The bits in declared order, so that the first is the leftmost of the range. They may be made
    /// on the first call, and are the same objects on every call.
    virtual QList<RtlNet *> nets() const = 0;

    bool noProbeIn = false;  ///< No bit may be watched.
    bool noProbeOut = false; ///< At least one bit may not be driven.
};

} // namespace FATHOM
