// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

namespace FATHOM {
class RtlNet;
class RtlNetBus;
} // namespace FATHOM

namespace MOLK {

/// What \a net, a net that stands outside any bus, becomes in a port's list.
///
/// \param net not null.
/// \param type 0 for a Probe In, 1 for a Probe Out: the item may be chosen unless the netlist
///        excludes the net from that direction.
SignalItem itemOfNet(const FATHOM::RtlNet *net, int type);

/// As itemOfNet() for \a bus, with one member for each of its bits, in order. Bus and bits are each
/// judged by their own flags.
SignalItem itemOfBus(const FATHOM::RtlNetBus *bus, int type);

} // namespace MOLK
