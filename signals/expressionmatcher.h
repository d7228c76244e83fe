// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "expression.h"
#include "literalmatcher.h"

#include <QHash>

namespace MOLK {

/// An expression that many names are matched against as a whole.
///
/// The answers are those of QRegExp::exactMatch(), about ten times as fast: a name runs through an
/// automaton, one look-up a character, whose states are made when they are first met. What isn't
/// covered, that is some expressions and all names with other characters than ASCII, goes to
/// QRegExp itself.
class ExpressionMatcher
{
public:
    ExpressionMatcher(const QString &pattern, Qt::CaseSensitivity caseSensitivity,
                      QRegExp::PatternSyntax syntax);

    bool matches(const QString &name) const;

    /// Whether the expression itself is covered.
    bool isCovered() const { return covered; }

private:
    Q_DISABLE_COPY(ExpressionMatcher)

    enum class Answer { Yes, No, NotAscii };
    struct State
    {
        Expression::Positions next; // What may follow any of the state's positions.
        bool accepts;
    };

    void divideCharacters();
    Answer run(const QString &name) const;
    int step(int state, int characterClass) const;
    int stateOf(const Expression::Positions &positions) const;
    void forgetStates() const;

    QRegExp expression;
    bool valid;
    Expression parsed;
    bool covered;
    LiteralMatcher required;
    bool hasRequired = false;

    // Characters that all positions treat alike form a class.
    QVector<uchar> classOf;
    QVector<Expression::Positions> standsFor; // For each class.

    // State 0 is the start, state 1 the dead end. Of each state one row of the table, with -1 where
    // nobody went yet.
    mutable QVector<State> states;
    mutable QVector<int> table;
    mutable QHash<QByteArray, int> known;
};

} // namespace MOLK
