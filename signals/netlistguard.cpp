// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlistguard.h"

#include "fathom/rtlnetlist.h"

#include <QList>

namespace MOLK {

// A handful at most: one for each open dialog.
static QList<NetlistGuard *> &guards()
{
    static QList<NetlistGuard *> all;
    return all;
}

NetlistGuard::NetlistGuard(FATHOM::RtlNetlist *borrowed)
    : netlist(borrowed)
{
    guards().append(this);
}

NetlistGuard::~NetlistGuard()
{
    guards().removeOne(this);
}

void endNetlist(FATHOM::RtlNetlist *netlist)
{
    if (!netlist)
        return;
    for (NetlistGuard *guard : qAsConst(guards())) {
        if (guard->netlist == netlist)
            guard->netlist = nullptr;
    }
    delete netlist;
}

} // namespace MOLK
