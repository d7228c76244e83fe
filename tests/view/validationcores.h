// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "molkcore.h"
#include "signalitems.h"
#include "validation.h"

#include <QList>
#include <QStringList>

namespace FATHOM {
class RtlNetlist;
}

/// Cores to be judged, numbered by their positions, and what is wrong with them.
class Cores
{
public:
    Cores() = default;
    ~Cores() { qDeleteAll(cores); }
    Q_DISABLE_COPY(Cores)

    MOLK::MolkCore *add()
    {
        cores.append(new MOLK::MolkCore(cores.size()));
        return cores.last();
    }

    QStringList faults(const FATHOM::RtlNetlist *netlist = nullptr) const
    {
        return MOLK::configurationFaults(cores, netlist);
    }

    QList<MOLK::MolkCore *> cores;
};

/// Makes \a core drive \a items from its Probe Out \a port, which is made if it isn't there.
inline MOLK::ProbeOut *drive(MOLK::MolkCore *core, int port, const QList<MOLK::SignalItem> &items)
{
    while (core->getAllProbeOuts().size() <= port)
        core->addProbeOut(core->getAllProbeOuts().size());
    core->getProbeOut(port)->setSignalNet(items);
    return core->getProbeOut(port);
}
