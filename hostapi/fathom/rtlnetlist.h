// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QString>

namespace FATHOM {

class Hierachy;
class RtlNet;

/// The elaborated design. Whoever received it owns it and ends it with `delete`; every level, net
/// and bus in it goes with it.
class HOST_EXPORT RtlNetlist
{
public:
    virtual ~RtlNetlist();

    /// The single net or bus bit with this full path name, or null.
    virtual RtlNet *findNet(const QString &fullPathName) const = 0;

    Hierachy *top = nullptr; ///< Root of the hierarchy; never null in a netlist that was delivered.
    bool usesJtag = false;   ///< The design itself instantiates the primitive OD_JTAG.
};

} // namespace FATHOM
