// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "nameorder.h"

#include <algorithm>

namespace MOLK {

namespace {

struct Entry
{
    quint64 key;
    const QString *name;
    int position;
};

const int unitsOfAKey = 4;
const int fewEntries = 8;

} // namespace

// The units from `from` on as a number that is in their order. What isn't there counts as 0.
static quint64 keyAt(const QString &name, int from)
{
    const QChar *const units = name.constData();
    const int size = name.size();
    quint64 key = 0;
    for (int i = from; i < from + unitsOfAKey; ++i)
        key = key << 16 | (i < size ? units[i].unicode() : 0);
    return key;
}

// How many units all entries begin with, given that the first `from` are the same.
static int commonLength(const Entry *begin, const Entry *end, int from)
{
    const QString &first = *begin->name;
    const QChar *const units = first.constData();
    int length = first.size();
    for (const Entry *entry = begin + 1; entry != end && length > from; ++entry) {
        const QChar *const others = entry->name->constData();
        length = qMin(length, entry->name->size());
        length = int(std::mismatch(units + from, units + length, others + from).first - units);
    }
    return qMax(length, from);
}

static void sortByComparing(Entry *begin, Entry *end)
{
    std::sort(begin, end, [](const Entry &a, const Entry &b) {
        const int order = a.name->compare(*b.name);
        return order != 0 ? order < 0 : a.position < b.position;
    });
}

// Sorts entries whose names have the first `from` units in common.
static void sortFrom(Entry *begin, Entry *end, int from)
{
    if (end - begin <= fewEntries) {
        sortByComparing(begin, end);
        return;
    }
    const int common = commonLength(begin, end, from);
    for (Entry *entry = begin; entry != end; ++entry)
        entry->key = keyAt(*entry->name, common);
    std::sort(begin, end, [](const Entry &a, const Entry &b) { return a.key < b.key; });

    for (Entry *run = begin; run != end;) {
        Entry *const runEnd =
            std::find_if(run, end, [run](const Entry &entry) { return entry.key != run->key; });
        // A key that ends in 0 is that of names that end, or of ones with such a unit in them.
        if ((run->key & 0xFFFF) == 0)
            sortByComparing(run, runEnd);
        else
            sortFrom(run, runEnd, common + unitsOfAKey);
        run = runEnd;
    }
}

QVector<int> nameOrder(const QVector<const QString *> &names)
{
    QVector<Entry> entries;
    entries.reserve(names.size());
    for (int i = 0; i < names.size(); ++i)
        entries.append({0, names.at(i), i});
    sortFrom(entries.data(), entries.data() + entries.size(), 0);

    QVector<int> order;
    order.reserve(entries.size());
    for (const Entry &entry : qAsConst(entries))
        order.append(entry.position);
    return order;
}

} // namespace MOLK
