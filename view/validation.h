// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QStringList>

namespace FATHOM {
class RtlNetlist;
}

namespace MOLK {

class MolkCore;

/// Looks for what forbids to write a configuration: a core without any port in use, a user clock
/// that can't be one, and nets that several Probe Out bits drive.
///
/// The time grows with the number of signals, and the memory with the number of Probe Out bits.
///
/// \param cores the configuration; nothing in it is changed.
/// \param netlist design in which user clocks are looked up; without one every clock that is named
///        counts as missing.
/// \return a line for each fault: those of the first core, of the second and so on, then one for
///         each net with several drivers, sorted by the net's name. Empty if there is none.
QStringList configurationFaults(const QList<MolkCore *> &cores, const FATHOM::RtlNetlist *netlist);

} // namespace MOLK
