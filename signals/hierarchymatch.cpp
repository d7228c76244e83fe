// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "hierarchymatch.h"

#include "netmatcher.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"

namespace MOLK {

QString matchLabel(const FATHOM::Hierachy *level)
{
    return level->parent ? level->module() + ":" + level->name() : level->name();
}

bool matchNet(const FATHOM::RtlNet *net, const NetFilter &filter)
{
    return NetMatcher(filter).matches(net->fullPathName());
}

bool matchBus(const FATHOM::RtlNetBus *bus, const NetFilter &filter)
{
    return NetMatcher(filter).matches(bus->fullBusName());
}

static HierarchyMatch matchLevel(const FATHOM::Hierachy *level, const NetMatcher &matcher)
{
    HierarchyMatch match;
    match.label = matchLabel(level);
    match.nets = matcher.passing(level->singleNets());
    match.buses = matcher.passing(level->netbuses());
    return match;
}

static void matchBelow(HierarchyMatch &parent, const FATHOM::Hierachy *level,
                       const NetMatcher &matcher)
{
    HierarchyMatch match = matchLevel(level, matcher);
    const QList<FATHOM::Hierachy *> children = level->children();
    for (const FATHOM::Hierachy *child : children)
        matchBelow(match, child, matcher);
    if (!match.isEmpty())
        parent.children.append(match);
}

HierarchyMatch matchHierarchy(const NetFilter &filter)
{
    const NetMatcher matcher(filter);
    HierarchyMatch match = matchLevel(filter.scope, matcher);
    if (!filter.includeSubentries)
        return match;
    const QList<FATHOM::Hierachy *> children = filter.scope->children();
    for (const FATHOM::Hierachy *child : children)
        matchBelow(match, child, matcher);
    return match;
}

void matchChildHierarchy(HierarchyMatch &parent, const FATHOM::Hierachy *level,
                         const NetFilter &filter)
{
    matchBelow(parent, level, NetMatcher(filter));
}

} // namespace MOLK
