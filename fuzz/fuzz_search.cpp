// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// A pattern and names in, a line each: every way to search must answer as the plain one of Qt does.

#include "expressionmatcher.h"
#include "literalmatcher.h"

#include <QRegExp>
#include <QStringList>

#include <cstdint>
#include <cstdlib>

// An automaton holds 256 characters of a pattern, and what is longer goes another way.
static const int longestPattern = 300;
static const int longestName = 48;
static const int mostNames = 16;

// What Qt takes for a pattern grows with the product of its counts, and for back references without
// measure.
static bool isCheap(const QString &pattern)
{
    int counts = 0;
    for (int i = 0; i + 1 < pattern.size(); ++i) {
        const QChar next = pattern.at(i + 1);
        if (pattern.at(i) == '\\' && next.isDigit())
            return false;
        if (pattern.at(i) == '{' && (next.isDigit() || next == ','))
            ++counts;
        if (pattern.at(i).isDigit() && next.isDigit() && counts > 0)
            return false;
    }
    return counts == 0 || (counts <= 2 && pattern.size() <= longestName);
}

static void check(bool answer, bool plainAnswer)
{
    if (answer != plainAnswer)
        std::abort();
}

static void checkExpression(const QString &pattern, const QStringList &names,
                            Qt::CaseSensitivity caseSensitivity, QRegExp::PatternSyntax syntax)
{
    const MOLK::ExpressionMatcher matcher(pattern, caseSensitivity, syntax);
    const QRegExp plain(pattern, caseSensitivity, syntax);
    for (const QString &name : names) {
        check(matcher.matches(name), plain.exactMatch(name));
        // It has learnt by then.
        check(matcher.matches(name), plain.exactMatch(name));
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const auto caseSensitivity = (data[0] & 1) != 0 ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 1), int(size) - 1);
    QStringList names = text.split('\n').mid(0, mostNames + 1);
    const QString pattern = names.takeFirst().left(longestPattern);
    for (QString &name : names)
        name.truncate(longestName);
    names.append(pattern);

    const MOLK::LiteralMatcher literal(pattern, caseSensitivity);
    for (const QString &name : qAsConst(names))
        check(literal.isIn(name), name.indexOf(pattern, 0, caseSensitivity) >= 0);
    checkExpression(pattern, names, caseSensitivity, QRegExp::WildcardUnix);
    if (isCheap(pattern))
        checkExpression(pattern, names, caseSensitivity, QRegExp::RegExp);
    return 0;
}
