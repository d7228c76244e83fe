// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "probein.h"

namespace MOLK {

ProbeIn::ProbeIn(int portNumber)
    : number(portNumber)
{
}

int ProbeIn::width() const
{
    int bits = 0;
    for (const SignalItem &item : signalNet)
        bits += qMax(1, item.members.size());
    return bits;
}

QList<SignalItem> ProbeIn::getSignalNet() const
{
    return signalNet;
}

void ProbeIn::setSignalNet(const QList<SignalItem> &items)
{
    signalNet = items;
}

QStringList ProbeIn::singleSignals() const
{
    QStringList names;
    names.reserve(width());
    for (const SignalItem &item : signalNet) {
        if (item.members.isEmpty())
            names.append(item.name);
        for (const SignalItem &bit : item.members)
            names.append(bit.name);
    }
    return names;
}

} // namespace MOLK
