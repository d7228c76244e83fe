// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"
#include "netlist/netlistbuilder.h"

#include <QStringList>

#include <memory>

using Design = std::unique_ptr<FATHOM::RtlNetlist>;

/// A small design whose names are chosen for searching:
///
///     top
///       clk, Rst.n, data[3:0], ctl[1:2] (ctl[2] not for Probe In, no bit for Probe Out)
///       u_core[core]
///         busy, valid (not for Probe Out), q[1:0]
///         u_fifo[fifo]
///           full_4x, wr*en, mem[2:0] (not for Probe In)
///         u_idle[idle]
///       u_pad[pad]
///         ready
inline Design searchDesign()
{
    using namespace Standin;
    NetlistBuilder builder("top");
    builder.addNet(0, "clk");
    builder.addNet(0, "Rst.n");
    builder.addBus(0, "data", 3, 0);
    builder.addMixedBus(0, "ctl", 1, 2, {NoProbeOut, NoProbeIn | NoProbeOut});
    const int core = builder.addLevel(0, "u_core", "core");
    builder.addNet(core, "busy");
    builder.addNet(core, "valid", NoProbeOut);
    builder.addBus(core, "q", 1, 0);
    const int fifo = builder.addLevel(core, "u_fifo", "fifo");
    builder.addNet(fifo, "full_4x");
    builder.addNet(fifo, "wr*en");
    builder.addBus(fifo, "mem", 2, 0, NoProbeIn);
    builder.addLevel(core, "u_idle", "idle");
    const int pad = builder.addLevel(0, "u_pad", "pad");
    builder.addNet(pad, "ready");
    return Design(builder.build());
}

/// The level that \a path names below the top: "u_core/u_fifo".
inline FATHOM::Hierachy *levelAt(const Design &design, const QString &path)
{
    FATHOM::Hierachy *level = design->top;
    const QStringList names = path.split('/', Qt::SkipEmptyParts);
    for (const QString &name : names) {
        const QList<FATHOM::Hierachy *> children = level->children();
        const auto found =
            std::find_if(children.cbegin(), children.cend(),
                         [&name](const FATHOM::Hierachy *child) { return child->name() == name; });
        level = found == children.cend() ? nullptr : *found;
        Q_ASSERT(level);
    }
    return level;
}
