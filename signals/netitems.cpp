// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netitems.h"

#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"

namespace MOLK {

template<typename NetOrBus>
static SignalItem makeItem(const QString &name, const NetOrBus *source, int kind, int type)
{
    SignalItem item;
    item.name = name;
    item.selectable = !(type == 1 ? source->noProbeOut : source->noProbeIn);
    item.kind = kind;
    return item;
}

SignalItem itemOfNet(const FATHOM::RtlNet *net, int type)
{
    return makeItem(net->fullPathName(), net, 0, type);
}

SignalItem itemOfBus(const FATHOM::RtlNetBus *bus, int type)
{
    SignalItem item = makeItem(bus->fullBusName(), bus, 1, type);
    const QList<FATHOM::RtlNet *> bits = bus->nets();
    item.members.reserve(bits.size());
    for (const FATHOM::RtlNet *bit : bits)
        item.members.append(makeItem(bit->fullPathName(), bit, 1, type));
    return item;
}

} // namespace MOLK
