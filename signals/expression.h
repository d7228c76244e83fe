// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRegExp>
#include <QString>
#include <QVector>

#include <bitset>

namespace MOLK {

/// An expression taken apart, as far as it consists of single characters, classes, groups,
/// alternatives and the quantifiers `*`, `+` and `?`.
///
/// Each place of the expression that stands for one character is a position. A name matches as a
/// whole if its characters lead from a first position over positions that may follow one another
/// to a last one. Which characters a position stands for is asked of QRegExp, so that classes, dots
/// and case mean here what they mean there.
struct Expression
{
    static constexpr int MostPositions = 256;
    static constexpr int Characters = 128; ///< ASCII.
    using Positions = std::bitset<MostPositions>;

    Positions first;
    Positions last;
    bool matchesNothing = false;  ///< Whether it matches the empty name too.
    QVector<Positions> follow;    ///< For each position those that may come next.
    QVector<Positions> standsFor; ///< For each character the positions that stand for it.

    /// Whether it ends in any number of any characters.
    bool endsOpen = false;

    /// A text that every matching ASCII name holds; often empty.
    QString required;
};

/// Takes \a pattern apart.
///
/// \return false if it holds anything else, or is invalid: QRegExp then has to do the matching.
bool parseExpression(const QString &pattern, Qt::CaseSensitivity caseSensitivity,
                     QRegExp::PatternSyntax syntax, Expression *expression);

} // namespace MOLK
