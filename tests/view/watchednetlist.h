// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/netlistbuilder.h"

#include "fathom/rtlnetlist.h"

#include <QStringList>

#include <memory>

/// A netlist with one level that counts how many of its kind live.
class WatchedNetlist : public FATHOM::RtlNetlist
{
public:
    /// \param count must outlive the netlist.
    WatchedNetlist(const QString &topModule, int *count, bool jtag = false)
        : netlist(Standin::NetlistBuilder(topModule).build())
        , alive(count)
    {
        top = netlist->top;
        usesJtag = jtag;
        ++*alive;
    }

    ~WatchedNetlist() override { --*alive; }

    FATHOM::RtlNet *findNet(const QString &name) const override { return netlist->findNet(name); }

private:
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    int *alive;
};

/// What the host is asked for while a view reads its netlist.
const QStringList netlistServices = {"getSourceFileInfo", "catchRtlModules",
                                     "catchRtlNetsWithProgressDialog"};
