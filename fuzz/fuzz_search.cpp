// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// A pattern and names in, a line each: every way to search must answer as the plain one of Qt does.

#include "expressionmatcher.h"
#include "literalmatcher.h"

#include <QRegExp>
#include <QStringList>

#include <cstdint>
#include <cstdlib>

// What Qt takes for a pattern grows with the product of its counts, and for back references without
// measure.
static const int longestText = 48;
static const int mostNames = 16;

static bool isCheap(const QString &pattern)
{
    if (pattern.contains('{'))
        return false;
    for (int i = 0; i + 1 < pattern.size(); ++i) {
        if (pattern.at(i) == '\\' && pattern.at(i + 1).isDigit())
            return false;
    }
    return true;
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
    for (QString &name : names)
        name.truncate(longestText);
    const QString pattern = names.takeFirst();
    names.append(pattern);

    const MOLK::LiteralMatcher literal(pattern, caseSensitivity);
    for (const QString &name : qAsConst(names))
        check(literal.isIn(name), name.indexOf(pattern, 0, caseSensitivity) >= 0);
    checkExpression(pattern, names, caseSensitivity, QRegExp::WildcardUnix);
    if (isCheap(pattern))
        checkExpression(pattern, names, caseSensitivity, QRegExp::RegExp);
    return 0;
}
