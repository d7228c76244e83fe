// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netmatcher.h"

#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"

namespace MOLK {

NetMatcher::NetMatcher(const NetFilter &filter)
    : passesAll(filter.pattern.isEmpty())
    , literal(filter.pattern, filter.caseSensitivity)
{
    if (filter.useRegExp && !passesAll)
        expression.reset(
            new ExpressionMatcher(filter.pattern, filter.caseSensitivity, filter.syntax));
}

NetMatcher::~NetMatcher() = default;

bool NetMatcher::matches(const QString &name) const
{
    if (passesAll)
        return true;
    return expression ? expression->matches(name) : literal.isIn(name);
}

QList<FATHOM::RtlNet *> NetMatcher::passing(const QList<FATHOM::RtlNet *> &nets) const
{
    if (passesAll)
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
    if (passesAll)
        return buses;
    QList<FATHOM::RtlNetBus *> hits;
    for (FATHOM::RtlNetBus *bus : buses) {
        if (matches(bus->fullBusName()))
            hits.append(bus);
    }
    return hits;
}

} // namespace MOLK
