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

static quint64 bucket(quint32 number, quint32 hash)
{
    return quint64(hash) << 32 | (number + 1);
}

static quint32 numberIn(quint64 bucket)
{
    return quint32(bucket) - 1;
}

// The bucket that has the text, or the empty one where it belongs.
std::size_t StringInterner::bucketOf(QStringView wanted, quint32 hash) const
{
    std::size_t at = hash & (buckets.size() - 1);
    for (; buckets[at]; at = (at + 1) & (buckets.size() - 1)) {
        if (quint32(buckets[at] >> 32) == hash && text(numberIn(buckets[at])) == wanted)
            break;
    }
    return at;
}

bool StringInterner::contains(QStringView text) const
{
    return buckets[bucketOf(text, MOLK::nameHash(text))] != 0;
}

quint32 StringInterner::intern(QStringView text)
{
    const quint32 hash = MOLK::nameHash(text);
    const std::size_t at = bucketOf(text, hash);
    if (buckets[at])
        return numberIn(buckets[at]);
    const auto number = quint32(hashes.size());
    pool.insert(pool.end(), text.begin(), text.end());
    begins.push_back(quint32(pool.size()));
    hashes.push_back(hash);
    buckets[at] = bucket(number, hash);
    if (hashes.size() * 2 > buckets.size())
        grow();
    return number;
}

QStringView StringInterner::text(quint32 number) const
{
    return QStringView(pool.data() + begins[number], begins[number + 1] - begins[number]);
}

void StringInterner::grow()
{
    buckets.assign(buckets.size() * 2, 0);
    for (std::size_t number = 0; number < hashes.size(); ++number) {
        std::size_t at = hashes[number] & (buckets.size() - 1);
        while (buckets[at])
            at = (at + 1) & (buckets.size() - 1);
        buckets[at] = bucket(quint32(number), hashes[number]);
    }
}

} // namespace Standin
