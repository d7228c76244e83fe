// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QString>

namespace FATHOM {

/// One single net of the elaborated design, or one bit of a bus. Owned by its netlist.
class HOST_EXPORT RtlNet
{
public:
    virtual ~RtlNet();

    /// The name within its level of the hierarchy, bit index included: `q[3]`.
    virtual QString name() const = 0;

    /// The path from the top module's name down to this net, unique in the design.
    virtual QString fullPathName() const = 0;

    bool noProbeIn = false;  ///< May not be watched: the net carries nothing to see.
    bool noProbeOut = false; ///< May not be driven by a probe.
};

} // namespace FATHOM
