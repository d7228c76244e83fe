// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "plainset.h"

namespace Plain {

static int indexOfName(const Items &items, const QString &name)
{
    for (int i = 0; i < items.size(); ++i) {
        if (items.at(i).name == name)
            return i;
    }
    return -1;
}

static bool holds(const Signal &bus, const Signal &bit)
{
    return bit.members.isEmpty() && indexOfName(bus.members, bit.name) >= 0;
}

static void mergeBus(Items *buses, const Signal &item)
{
    if (item.members.isEmpty()) {
        for (const Signal &bus : *buses) {
            if (holds(bus, item))
                return;
        }
    } else {
        for (int i = buses->size() - 1; i >= 0; --i) {
            if (holds(item, buses->at(i)))
                buses->removeAt(i);
        }
    }
    buses->append(item);
}

static void partition(const Items &picked, Items *buses, Items *singles)
{
    for (Signal item : picked) {
        Items kept;
        for (const Signal &bit : item.members) {
            if (bit.selectable)
                kept.append(bit);
        }
        item.members = kept;
        if (item.kind == 1)
            mergeBus(buses, item);
        else
            singles->append(item);
    }
}

// Judges one row of the list against the buses that come in.
// \return whether an incoming bus takes the row's place.
static bool isReplaced(const Signal &row, Items *buses)
{
    for (int i = 0; i < buses->size();) {
        if (buses->at(i).name == row.name) {
            buses->removeAt(i);
            return false;
        }
        if (row.members.isEmpty() && holds(buses->at(i), row))
            return true;
        if (!row.members.isEmpty() && indexOfName(row.members, buses->at(i).name) >= 0)
            buses->removeAt(i);
        else
            ++i;
    }
    return false;
}

void addPicked(Items *list, const Items &picked)
{
    Items buses;
    Items singles;
    partition(picked, &buses, &singles);

    Items kept;
    for (const Signal &row : *list) {
        if (row.kind != 0) {
            if (isReplaced(row, &buses))
                continue;
        } else {
            const int same = indexOfName(singles, row.name);
            if (same >= 0)
                singles.removeAt(same);
        }
        kept.append(row);
    }
    *list = kept + buses + singles;
}

QString oneName(const Items &list)
{
    if (list.isEmpty())
        return QString();
    if (list.first().members.isEmpty())
        return list.first().name;
    for (const Signal &bit : list.first().members) {
        if (bit.selectable)
            return bit.name;
    }
    return QString();
}

void moveRows(Items *list, const QList<int> &moved, int target, bool below)
{
    if (moved.contains(target))
        return;
    Items block;
    for (int row : moved)
        block.append(list->at(row));

    Items result;
    for (int row = 0; row < list->size(); ++row) {
        if (row == target && !below)
            result += block;
        if (!moved.contains(row))
            result.append(list->at(row));
        if (row == target && below)
            result += block;
    }
    *list = target < 0 ? result + block : result;
}

void stepRows(Items *list, const QList<int> &moved, bool down)
{
    // What stands at the edge, or against a row that can't move, stays.
    int wall = down ? list->size() : -1;
    for (int i = 0; i < moved.size(); ++i) {
        const int row = down ? moved.at(moved.size() - 1 - i) : moved.at(i);
        const int goal = down ? row + 1 : row - 1;
        if (goal == wall) {
            wall = row;
            continue;
        }
        list->move(row, goal);
        wall = goal;
    }
}

} // namespace Plain
