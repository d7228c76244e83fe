// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QList>
#include <QString>

namespace FATHOM {

class RtlNet;
class RtlNetBus;

/// One level of the elaborated design: the top module, or an instance below it. Owned by its
/// netlist. All lists come in the order of declaration.
class HOST_EXPORT Hierachy
{
public:
    virtual ~Hierachy();

    /// The instance's name; for the top level the name of the top module.
    virtual QString name() const = 0;

    /// The name of the module that is instantiated here, as the source has it.
    virtual QString module() const = 0;

    /// The levels right below this one.
    virtual QList<Hierachy *> children() const = 0;

    /// Nets of this level that stand outside any bus.
    virtual QList<RtlNet *> singleNets() const = 0;

    /// Buses of this level.
    virtual QList<RtlNetBus *> netbuses() const = 0;

    /// As singleNets(), for this level and all below, each level ahead of its children.
    virtual QList<RtlNet *> singleNetsIncludeSub() const = 0;

    /// As netbuses(), for this level and all below, each level ahead of its children.
    virtual QList<RtlNetBus *> netbusesIncludeSub() const = 0;

    Hierachy *parent = nullptr; ///< The level above; null for the top alone.
};

} // namespace FATHOM
