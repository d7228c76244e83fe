// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netfilter.h"

#include "netmatcher.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"

namespace MOLK {

void collectNets(FATHOM::RtlNetlist *netlist, const NetFilter &filter,
                 QList<FATHOM::RtlNet *> &nets, QList<FATHOM::RtlNetBus *> &buses)
{
    nets.clear();
    buses.clear();
    if (!netlist)
        return;

    const FATHOM::Hierachy *level = filter.advanced ? filter.scope : netlist->top;
    if (!level)
        return;
    const bool withSub = filter.advanced && filter.includeSubentries;
    const NetMatcher matcher(filter);
    nets = matcher.passing(withSub ? level->singleNetsIncludeSub() : level->singleNets());
    buses = matcher.passing(withSub ? level->netbusesIncludeSub() : level->netbuses());
}

} // namespace MOLK
