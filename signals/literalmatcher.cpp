// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "literalmatcher.h"

#include "asciitext.h"

#include <QtAlgorithms>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace MOLK {

static const ushort *characters(const QString &text)
{
    return reinterpret_cast<const ushort *>(text.constData());
}

// What a character is or-ed with before it is compared with `c`: for a letter the bit that tells
// lower from upper case, which no character but the two cases of that letter then equals.
static ushort caseBit(ushort c, Qt::CaseSensitivity sensitivity)
{
    return sensitivity == Qt::CaseInsensitive && c >= 'a' && c <= 'z' ? 0x20 : 0;
}

static bool equalsAt(const ushort *name, const ushort *folded, int size,
                     Qt::CaseSensitivity sensitivity)
{
    for (int i = 0; i < size; ++i) {
        if ((name[i] | caseBit(folded[i], sensitivity)) != folded[i])
            return false;
    }
    return true;
}

LiteralMatcher::LiteralMatcher(const QString &text, Qt::CaseSensitivity caseSensitivity)
    : literal(text)
    , folded(caseSensitivity == Qt::CaseSensitive ? text : text.toLower())
    , sensitivity(caseSensitivity)
    , covered(!text.isEmpty()
              && (caseSensitivity == Qt::CaseSensitive || isAscii(text.constData(), text.size())))
{
}

bool LiteralMatcher::isIn(const QString &name) const
{
    if (covered) {
        const Answer answer = lookInAscii(name);
        // If case counts, equal characters are equal whatever they are.
        if (answer != Answer::NotAscii || sensitivity == Qt::CaseSensitive)
            return answer == Answer::Yes;
    }
    return name.indexOf(literal, 0, sensitivity) != -1;
}

#ifdef __SSE2__

namespace {

// Eight characters against the first and the last one of the literal.
struct Ends
{
    Ends(const ushort *folded, int size, Qt::CaseSensitivity sensitivity)
        : first(_mm_set1_epi16(short(folded[0])))
        , last(_mm_set1_epi16(short(folded[size - 1])))
        , firstBit(_mm_set1_epi16(short(caseBit(folded[0], sensitivity))))
        , lastBit(_mm_set1_epi16(short(caseBit(folded[size - 1], sensitivity))))
        , distance(size - 1)
    {
    }

    // One bit pair for each of eight places, set where both ends fit.
    uint fits(const ushort *name) const
    {
        const __m128i head = load(name);
        const __m128i tail = load(name + distance);
        const __m128i equal = _mm_and_si128(_mm_cmpeq_epi16(_mm_or_si128(head, firstBit), first),
                                            _mm_cmpeq_epi16(_mm_or_si128(tail, lastBit), last));
        return uint(_mm_movemask_epi8(equal));
    }

    static __m128i load(const ushort *name)
    {
        return _mm_loadu_si128(reinterpret_cast<const __m128i *>(name));
    }

    __m128i first;
    __m128i last;
    __m128i firstBit;
    __m128i lastBit;
    int distance;
};

} // namespace

LiteralMatcher::Answer LiteralMatcher::lookInAscii(const QString &name) const
{
    const ushort *chars = characters(name);
    const ushort *wanted = characters(folded);
    const int size = folded.size();
    const int places = name.size() - size + 1;

    int place = 0;
    if (places >= 8) {
        const Ends ends(wanted, size, sensitivity);
        while (place < places) {
            // The last eight places overlap those before them.
            const int block = qMin(place, places - 8);
            for (uint fits = ends.fits(chars + block); fits != 0; fits &= fits - 1) {
                const int at = block + int(qCountTrailingZeroBits(fits)) / 2;
                if (equalsAt(chars + at, wanted, size, sensitivity))
                    return Answer::Yes;
                fits &= fits - 1;
            }
            place += 8;
        }
    }
    for (; place < places; ++place) {
        if (equalsAt(chars + place, wanted, size, sensitivity))
            return Answer::Yes;
    }
    return isAscii(name.constData(), name.size()) ? Answer::No : Answer::NotAscii;
}

#else

LiteralMatcher::Answer LiteralMatcher::lookInAscii(const QString &name) const
{
    const ushort *chars = characters(name);
    const int places = name.size() - folded.size() + 1;
    for (int place = 0; place < places; ++place) {
        if (equalsAt(chars + place, characters(folded), folded.size(), sensitivity))
            return Answer::Yes;
    }
    return isAscii(name.constData(), name.size()) ? Answer::No : Answer::NotAscii;
}

#endif

} // namespace MOLK
