// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "signalset.h"

#include <limits>

namespace MOLK {

bool busContains(const SignalItem &bus, const SignalItem &bit)
{
    if (!bit.members.isEmpty())
        return false;
    return std::any_of(bus.members.cbegin(), bus.members.cend(),
                       [&bit](const SignalItem &member) { return member.name == bit.name; });
}

void mergeBusItem(QList<SignalItem> &buses, SignalItem item)
{
    PickedSignals merged(buses);
    merged.merge(item);
    buses = merged.buses();
}

void partitionSignals(const QList<SignalItem> &picked, QList<SignalItem> &buses,
                      QList<SignalItem> &singles)
{
    PickedSignals split(buses);
    for (const SignalItem &item : picked)
        split.add(item);
    buses = split.buses();
    singles += split.singles();
}

static QList<SignalItem> keptItems(const QList<SignalItem> &items, const QVector<bool> &dropped)
{
    if (!dropped.contains(true))
        return items;
    QList<SignalItem> kept;
    kept.reserve(items.size());
    for (int i = 0; i < items.size(); ++i) {
        if (!dropped.at(i))
            kept.append(items.at(i));
    }
    return kept;
}

static SignalItem withoutExcludedBits(const SignalItem &item)
{
    SignalItem kept = item;
    kept.members.clear();
    for (const SignalItem &member : item.members) {
        if (member.selectable)
            kept.members.append(member);
    }
    return kept;
}

static bool hasExcludedBits(const SignalItem &item)
{
    return std::any_of(item.members.cbegin(), item.members.cend(),
                       [](const SignalItem &member) { return !member.selectable; });
}

PickedSignals::PickedSignals(const QList<SignalItem> &mergedBuses)
{
    for (const SignalItem &item : mergedBuses)
        append(item);
}

void PickedSignals::add(const SignalItem &picked)
{
    const SignalItem item = hasExcludedBits(picked) ? withoutExcludedBits(picked) : picked;
    if (item.kind == 1)
        merge(item);
    else
        singleItems.append(item);
}

void PickedSignals::merge(const SignalItem &item)
{
    if (item.members.isEmpty()) {
        if (!heldBits.contains(item.name))
            append(item);
        return;
    }
    for (const SignalItem &member : item.members) {
        int *place = aloneBits.find(member.name);
        for (; place && *place >= 0; *place = aloneBits.next(*place))
            replaced[aloneBits.position(*place)] = true;
    }
    append(item);
}

void PickedSignals::append(const SignalItem &item)
{
    if (item.members.isEmpty())
        aloneBits.add(item.name, busItems.size());
    for (const SignalItem &member : item.members)
        heldBits.add(member.name, busItems.size());
    busItems.append(item);
    replaced.append(false);
}

QList<SignalItem> PickedSignals::buses() const
{
    return keptItems(busItems, replaced);
}

IncomingSignals::IncomingSignals(QList<SignalItem> &incomingBuses,
                                 QList<SignalItem> &incomingSingles)
    : buses(incomingBuses)
    , singles(incomingSingles)
    , busDropped(incomingBuses.size(), false)
    , singleDropped(incomingSingles.size(), false)
{
}

IncomingSignals::~IncomingSignals()
{
    buses = keptItems(buses, busDropped);
    singles = keptItems(singles, singleDropped);
}

bool IncomingSignals::meet(const SignalItem &existing)
{
    if (existing.kind != 0)
        return meetBus(existing);
    meetSingle(existing);
    return true;
}

void IncomingSignals::meetSingle(const SignalItem &existing)
{
    if (!hasSingleNames) {
        hasSingleNames = true;
        singleNames.reserve(singles.size());
        for (int i = singles.size() - 1; i >= 0; --i)
            singleNames.add(singles.at(i).name, i);
    }
    int *place = singleNames.find(existing.name);
    if (!place || *place < 0)
        return;
    singleDropped[singleNames.position(*place)] = true;
    *place = singleNames.next(*place);
}

bool IncomingSignals::meetBus(const SignalItem &existing)
{
    if (!hasBusNames) {
        hasBusNames = true;
        busNames.reserve(buses.size());
        for (int i = buses.size() - 1; i >= 0; --i)
            busNames.add(buses.at(i).name, i);
    }
    if (existing.members.isEmpty())
        return meetAloneBit(existing);
    meetWholeBus(existing);
    return true;
}

// Whichever entry comes first decides: one of the same name is dropped, one that holds the bit
// replaces the row.
bool IncomingSignals::meetAloneBit(const SignalItem &existing)
{
    const int same = firstOfName(existing.name);
    const int holder = firstHolder(existing.name);
    if (same < 0)
        return holder < 0;
    if (holder >= 0 && holder < same)
        return false;
    dropBefore(existing.name, same + 1);
    return true;
}

// Incoming bits that the bus holds are dropped, up to an entry of the bus's own name, which ends
// the scan: bits behind it stay.
void IncomingSignals::meetWholeBus(const SignalItem &existing)
{
    const int same = firstOfName(existing.name);
    const int end = same < 0 ? std::numeric_limits<int>::max() : same;
    for (const SignalItem &member : existing.members)
        dropBefore(member.name, end);
    dropBefore(existing.name, same + 1);
}

int IncomingSignals::firstOfName(const QString &name)
{
    const int *place = busNames.find(name);
    return place ? busNames.position(*place) : -1;
}

int IncomingSignals::firstHolder(const QString &name)
{
    if (!hasHolders) {
        hasHolders = true;
        for (int i = buses.size() - 1; i >= 0; --i) {
            for (const SignalItem &member : buses.at(i).members)
                holders.add(member.name, i);
        }
    }
    int *place = holders.find(name);
    if (!place)
        return -1;
    while (*place >= 0 && busDropped.at(holders.position(*place)))
        *place = holders.next(*place);
    return holders.position(*place);
}

// An entry leaves the index together with the list, so that the chain's head always stands.
void IncomingSignals::dropBefore(const QString &name, int end)
{
    int *place = busNames.find(name);
    for (; place && *place >= 0 && busNames.position(*place) < end; *place = busNames.next(*place))
        busDropped[busNames.position(*place)] = true;
}

} // namespace MOLK
