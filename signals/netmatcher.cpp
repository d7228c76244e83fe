// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netmatcher.h"

#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"

namespace MOLK {

NetMatcher::NetMatcher(const NetFilter &filter)
    : pattern(filter.pattern)
    , caseSensitivity(filter.caseSensitivity)
    , useRegExp(filter.useRegExp)
{
    if (useRegExp)
        expression = QRegExp(pattern, caseSensitivity, filter.syntax);
}

bool NetMatcher::matches(const QString &name) const
{
    if (pattern.isEmpty())
        return true;
    if (useRegExp)
        return expression.exactMatch(name);
    return name.indexOf(pattern, 0, caseSensitivity) != -1;
}

QList<FATHOM::RtlNet *> NetMatcher::passing(const QList<FATHOM::RtlNet *> &nets) const
{
    if (pattern.isEmpty())
        return nets;
    QList<FATHOM::RtlNet *> hits;
    for (FATHOM::RtlNet *net : nets) {
        if (matches(net->fullPathName()))
            hits.append(net);
    }
    return hits;
}

QList<FATHOM::RtlNetBus *> NetMatcher::passing(const QList<FATHOM::RtlNetBus *> &buses) const
{
    if (pattern.isEmpty())
        return buses;
    QList<FATHOM::RtlNetBus *> hits;
    for (FATHOM::RtlNetBus *bus : buses) {
        if (matches(bus->fullBusName()))
            hits.append(bus);
    }
    return hits;
}

} // namespace MOLK
