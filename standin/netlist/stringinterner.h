// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace Standin {

/// Gives equal texts equal small numbers, counted from 0. A look-up makes no string, so that it can
/// be done for each of millions of tokens.
class StringInterner
{
public:
    StringInterner();

    /// As new, without anything that was seen.
    void clear() { *this = StringInterner(); }

    /// The number of \a text, a new one if it wasn't seen before.
    quint32 intern(QStringView text);

    /// Whether \a text was seen before.
    bool contains(QStringView text) const;

    /// How many texts were seen.
    quint32 count() const { return quint32(places.size()); }

    /// The text with this number. It is valid until the next call of intern().
    QStringView text(quint32 number) const;

    QString string(quint32 number) const { return text(number).toString(); }

private:
    std::size_t bucketOf(QStringView text, quint32 hash, quint32 place) const;
    void grow();

    std::vector<QChar> pool;
    std::vector<quint32> begins; ///< Of each text in the pool, and the end of the last.
    std::vector<quint32> places; ///< Where each text belongs, in a table of any size.

    /// Open addressing: hash and number + 1, or 0. Of millions of texts each look at another table
    /// waits for the memory, so what is no hit is told by the bucket alone.
    std::vector<quint64> buckets;
};

} // namespace Standin
