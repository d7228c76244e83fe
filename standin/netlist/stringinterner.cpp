// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/stringinterner.h"

#include "namehash.h"

namespace Standin {

StringInterner::StringInterner()
    : begins(1, 0)
    , buckets(16, 0)
{
}

// Where the search for a text begins, in a table of any size. Names that differ in the lowest bits
// of their last letter, as numbered ones do, share a line of the processor's cache: of millions of
// names each look at another line waits for the memory.
static quint32 placeOf(QStringView text)
{
    if (text.isEmpty())
        return 0;
    const quint32 last = text.back().unicode();
    return ((MOLK::nameHash(text.chopped(1)) ^ (last >> 3) * 0x9e3779b1U) << 3) | (last & 7);
}

static quint64 bucket(quint32 number, quint32 hash)
{
    return quint64(hash) << 32 | (number + 1);
}

static quint32 numberIn(quint64 bucket)
{
    return quint32(bucket) - 1;
}

// The bucket that has the text, or the empty one where it belongs.
std::size_t StringInterner::bucketOf(QStringView wanted, quint32 hash, quint32 place) const
{
    std::size_t at = place & (buckets.size() - 1);
    for (; buckets[at]; at = (at + 1) & (buckets.size() - 1)) {
        if (quint32(buckets[at] >> 32) == hash && text(numberIn(buckets[at])) == wanted)
            break;
    }
    return at;
}

bool StringInterner::contains(QStringView text) const
{
    return buckets[bucketOf(text, MOLK::nameHash(text), placeOf(text))] != 0;
}

quint32 StringInterner::intern(QStringView text)
{
    const quint32 hash = MOLK::nameHash(text);
    const quint32 place = placeOf(text);
    const std::size_t at = bucketOf(text, hash, place);
    if (buckets[at])
        return numberIn(buckets[at]);
    const quint32 number = count();
    pool.insert(pool.end(), text.begin(), text.end());
    begins.push_back(quint32(pool.size()));
    places.push_back(place);
    buckets[at] = bucket(number, hash);
    if (places.size() * 2 > buckets.size())
        grow();
    return number;
}

QStringView StringInterner::text(quint32 number) const
{
    return QStringView(pool.data() + begins[number], begins[number + 1] - begins[number]);
}

void StringInterner::grow()
{
    std::vector<quint64> taken(buckets.size() * 2, 0);
    taken.swap(buckets);
    for (const quint64 bucket : taken) {
        if (!bucket)
            continue;
        std::size_t at = places[numberIn(bucket)] & (buckets.size() - 1);
        while (buckets[at])
            at = (at + 1) & (buckets.size() - 1);
        buckets[at] = bucket;
    }
}

} // namespace Standin
