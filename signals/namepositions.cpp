// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "namepositions.h"

namespace MOLK {

static int nextSlot(int slot, int size)
{
    return (slot + 1) & (size - 1);
}

void NamePositions::reserve(int names)
{
    keys.reserve(names);
    places.reserve(names);
    int size = 16;
    while (size < 2 * qint64(names))
        size *= 2;
    if (size > table.size())
        rehash(size);
}

void NamePositions::add(const QString &name, int position)
{
    if (2 * (keys.size() + 1) > table.size())
        rehash(qMax(16, 2 * table.size()));
    const uint hash = nameHash(name);
    int key = keyOf(name, hash);
    if (key < 0) {
        key = keys.size();
        keys.append({name, hash, -1});
        int slot = int(hash) & (table.size() - 1);
        while (table.at(slot) >= 0)
            slot = nextSlot(slot, table.size());
        table[slot] = key;
    }
    places.append({position, keys.at(key).head});
    keys[key].head = places.size() - 1;
}

int *NamePositions::find(const QString &name)
{
    const int key = keyOf(name, nameHash(name));
    return key < 0 ? nullptr : &keys[key].head;
}

int NamePositions::keyOf(const QString &name, uint hash) const
{
    if (table.isEmpty())
        return -1;
    int slot = int(hash) & (table.size() - 1);
    while (table.at(slot) >= 0) {
        const Key &key = keys.at(table.at(slot));
        if (key.hash == hash && key.name == name)
            return table.at(slot);
        slot = nextSlot(slot, table.size());
    }
    return -1;
}

void NamePositions::rehash(int size)
{
    table.fill(-1, size);
    for (int key = 0; key < keys.size(); ++key) {
        int slot = int(keys.at(key).hash) & (size - 1);
        while (table.at(slot) >= 0)
            slot = nextSlot(slot, size);
        table[slot] = key;
    }
}

} // namespace MOLK
