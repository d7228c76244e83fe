// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVector>

namespace MOLK {

/// A piece of an expression.
struct ExpressionToken
{
    enum Kind {
        Character, ///< Stands for itself.
        Class,     ///< Stands for one character out of some: a class, or a dot.
        Quantifier,
        Open,
        Close,
        Alternative,
    };

    Kind kind;
    /// The piece as it reads in the syntax QRegExp::RegExp.
    QString text;
};

/// Splits an expression of the syntax QRegExp::RegExp.
///
/// \return false if it holds anything that isn't sure to be one of the kinds above.
bool splitRegExp(const QString &pattern, QVector<ExpressionToken> *tokens);

/// Splits an expression of the syntax QRegExp::WildcardUnix; a star becomes a dot and a quantifier.
///
/// \return as splitRegExp().
bool splitWildcard(const QString &pattern, QVector<ExpressionToken> *tokens);

} // namespace MOLK
