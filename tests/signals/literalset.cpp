// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "literalset.h"

namespace Literal {

bool busContains(SignalItem bus, SignalItem bit)
{
    if (bus.members.isEmpty() || !bit.members.isEmpty())
        return false;
    for (const SignalItem &member : qAsConst(bus.members)) {
        if (member.name == bit.name)
            return true;
    }
    return false;
}

void mergeBusItem(QList<SignalItem> &buses, SignalItem item)
{
    if (buses.isEmpty()) {
        buses.append(item);
        return;
    }
    if (item.members.isEmpty()) {
        for (const SignalItem &entry : qAsConst(buses)) {
            if (!entry.members.isEmpty() && busContains(entry, item))
                return;
        }
        buses.append(item);
        return;
    }
    for (int i = 0; i < buses.size();) {
        if (buses.at(i).members.isEmpty() && busContains(item, buses.at(i)))
            buses.removeAt(i);
        else
            ++i;
    }
    buses.append(item);
}

void partitionSignals(QList<SignalItem> picked, QList<SignalItem> &buses,
                      QList<SignalItem> &singles)
{
    for (SignalItem item : qAsConst(picked)) {
        for (int k = 0; k < item.members.size();) {
            if (!item.members.at(k).selectable)
                item.members.removeAt(k);
            else
                ++k;
        }
        if (item.kind == 1)
            mergeBusItem(buses, item);
        else
            singles.append(item);
    }
}

QString itemDump(const SignalItem &item)
{
    QStringList bits;
    for (const SignalItem &member : item.members)
        bits.append(itemDump(member));
    return QString("%1|%2|%3%4|%5{%6}")
        .arg(item.name, item.alias)
        .arg(int(item.selectable))
        .arg(int(item.found))
        .arg(item.kind)
        .arg(bits.join(","));
}

QStringList itemsDump(const QList<SignalItem> &items)
{
    QStringList lines;
    for (const SignalItem &item : items)
        lines.append(itemDump(item));
    return lines;
}

} // namespace Literal
