// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netfilter.h"

namespace MOLK {

/// One level of a search result that is shaped like the design:
///
///     level
///       its buses that passed
///       its single nets that passed
///       the levels below that hold something
struct HierarchyMatch
{
    QString label; ///< What the level's row reads: see matchLabel().
    QList<FATHOM::RtlNet *> nets;
    QList<FATHOM::RtlNetBus *> buses;
    QList<HierarchyMatch> children;

    bool isEmpty() const { return nets.isEmpty() && buses.isEmpty() && children.isEmpty(); }
};

/// What the row of \a level reads in a result: `module:name`, or the bare name at the top.
QString matchLabel(const FATHOM::Hierachy *level);

/// Whether \a net passes \a filter by its full path name. For many nets a NetMatcher is faster.
bool matchNet(const FATHOM::RtlNet *net, const NetFilter &filter);

/// Whether \a bus passes \a filter by its full bus name.
bool matchBus(const FATHOM::RtlNetBus *bus, const NetFilter &filter);

/// Searches from `filter.scope` downward, which may not be null. Levels below the scope appear only
/// if they hold a hit, themselves or further down; the scope itself always is what is returned.
HierarchyMatch matchHierarchy(const NetFilter &filter);

/// Searches \a level and all below it, and appends what is found to the children of \a parent.
void matchChildHierarchy(HierarchyMatch &parent, const FATHOM::Hierachy *level,
                         const NetFilter &filter);

} // namespace MOLK
