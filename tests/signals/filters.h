// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "designs.h"

#include "netfilter.h"

/// The names of the search modes.
inline const QStringList allModes{"normal", "wildcard", "expression"};

/// The filter of a search for \a pattern in one of the modes, anywhere in the top level.
inline MOLK::NetFilter filterFor(const QString &pattern, const QString &mode,
                                 Qt::CaseSensitivity sensitivity = Qt::CaseInsensitive)
{
    MOLK::NetFilter filter;
    filter.pattern = pattern;
    filter.caseSensitivity = sensitivity;
    filter.useRegExp = mode != "normal";
    filter.syntax = mode == "wildcard" ? QRegExp::WildcardUnix : QRegExp::RegExp;
    return filter;
}

/// As \a filter, in the whole design.
inline MOLK::NetFilter everywhere(MOLK::NetFilter filter, const Design &design)
{
    filter.advanced = true;
    filter.scope = design->top;
    filter.includeSubentries = true;
    return filter;
}

/// The full names of what passes. Nets are ahead of buses, so that the order of both lists shows.
inline QStringList found(const Design &design, const MOLK::NetFilter &filter)
{
    QList<FATHOM::RtlNet *> nets;
    QList<FATHOM::RtlNetBus *> buses;
    MOLK::collectNets(design.get(), filter, nets, buses);
    QStringList names;
    for (const FATHOM::RtlNet *net : qAsConst(nets))
        names.append(net->fullPathName());
    for (const FATHOM::RtlNetBus *bus : qAsConst(buses))
        names.append(bus->fullBusName());
    return names;
}
