// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/netflags.h"

#include <QtGlobal>

#include <vector>

namespace Standin {

/// What is known of one bit of a net, from which its flags follow.
enum BitFact : quint16 {
    Driven = 0x1,      ///< Something in the module drives it.
    DrivenTwice = 0x2, ///< And something else as well.
    DrivenByConstant = 0x4,
    DrivenByLogic = 0x8,
    HasInitialValue = 0x10,
    MaybeDriven = 0x20,       ///< It can't be said what drives it, if anything does.
    DrivenFromOutside = 0x40, ///< It belongs to an input.
    ClocksRegister = 0x80,
    LetsGo = 0x100,   ///< A driver can be in high impedance.
    OnPin = 0x200,    ///< On a pin of a black box.
    InFabric = 0x400, ///< Read or driven by something that isn't a black box.
};
using BitFacts = quint16;

/// Whether the bit has one value for ever.
bool isConstant(BitFacts facts);

/// Flags by the rules that hold in every module.
NetFlags flagsOf(BitFacts facts);

/// Flags that a bit of a port of the top module has besides.
///
/// \param isInput for inputs and inouts.
NetFlags flagsOfTopPort(BitFacts facts, bool isInput);

/// A fact of the bits from \a begin up to, not including, \a end.
struct FactSpan
{
    quint32 begin;
    quint32 end;
    quint32 driver; ///< What Driven and DrivenByConstant are counted by.
    BitFacts fact;  ///< One of them.
};

/// Adds the facts of \a spans to the bits at \a facts, in a time that grows with the number of bits
/// and of spans, not with their product. The spans come back in another order, and lie within the
/// bits.
void applySpans(std::vector<FactSpan> *spans, BitFacts *facts);

} // namespace Standin
