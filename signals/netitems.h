// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

namespace FATHOM {
class RtlNet;
class RtlNetBus;
} // namespace FATHOM

namespace MOLK {

/// What a net or bus of the netlist becomes in a port's list.
///
/// \param type 0 for a Probe In, 1 for a Probe Out: an item may be chosen unless the netlist
///        excludes it from that direction, the bus and each bit by its own flags.

/// The item of \a net, a net that stands outside any bus.
SignalItem itemOfNet(const FATHOM::RtlNet *net, int type);

/// The item of \a bus with one member for each of its bits, in order.
SignalItem itemOfBus(const FATHOM::RtlNetBus *bus, int type);

} // namespace MOLK
