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
}

/// What configurationFaults() has to answer, the plain way: a map from each net to the descriptions
/// of its drivers.
QStringList literalFaults(const QList<MOLK::MolkCore *> &cores, const FATHOM::RtlNetlist *netlist);
