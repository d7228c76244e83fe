// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "namehash.h"

#include <QString>
#include <QVector>

namespace MOLK {

/// Finds the positions in a list at which a name stands.
///
/// One hash look-up finds all positions of a name, as a chain through the places of this index. It
/// takes a third of the memory of a QMultiHash and no allocation a name.
class NamePositions
{
public:
    /// Makes room for \a names different names, so that adding them moves nothing.
    void reserve(int names);

    /// Notes that \a name stands at \a position, ahead of the positions that it has so far.
    void add(const QString &name, int position);

    /// The head of the chain of \a name, to be read and to be moved on; null if the name was never
    /// added. It holds until the next add().
    int *find(const QString &name);

    bool contains(const QString &name) const { return keyOf(name, nameHash(name)) >= 0; }

    /// The position at the place \a place of a chain; -1 past its end.
    int position(int place) const { return place < 0 ? -1 : places.at(place).position; }

    /// The place behind \a place in its chain, -1 at the end.
    int next(int place) const { return places.at(place).next; }

private:
    struct Key
    {
        QString name;
        uint hash;
        int head;
    };
    struct Place
    {
        int position;
        int next;
    };

    int keyOf(const QString &name, uint hash) const;
    void rehash(int size);

    QVector<Key> keys;
    QVector<Place> places;
    QVector<int> table; // Indexes into keys, -1 where free; at most half full.
};

} // namespace MOLK
