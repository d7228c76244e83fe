// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "expression.h"
#include "literalmatcher.h"

#include <QHash>

namespace MOLK {

/// An expression that many names are matched against as a whole.
///
/// The answers are those of QRegExp::exactMatch(), ten times as fast and more: a name runs through
/// an automaton, one look-up a character, whose states are made when they are first met. Names of a
/// design begin alike, so the run starts at the end unless the expression ends in anything. What
/// isn't covered, that is some expressions and all names with other characters than ASCII, goes to
/// QRegExp itself.
class ExpressionMatcher
{
public:
    /// \param pattern may be empty or invalid; an invalid one matches no name.
    ExpressionMatcher(const QString &pattern, Qt::CaseSensitivity caseSensitivity,
                      QRegExp::PatternSyntax syntax);

    /// Whether the expression matches \a name from its first character to its last.
    bool matches(const QString &name) const;

    /// Whether the expression itself is covered.
    bool isCovered() const { return covered; }

private:
    Q_DISABLE_COPY(ExpressionMatcher)

    enum class Answer { Yes, No, NotAscii };
    struct State
    {
        Expression::Positions positions;
        Expression::Positions next; // What may follow any of the positions.
        bool accepts;
    };

    void reverse();
    void divideCharacters();
    bool mayHoldRequired(const QString &name) const;
    template<int direction>
    Answer run(const QString &name) const;
    int step(int row, int character) const;
    int rowOf(const Expression::Positions &positions) const;
    bool leadsNowhereElse(const State &state) const;
    int addState(const State &state) const;
    void forgetStates() const;

    QRegExp expression;
    bool valid;
    Expression parsed;
    bool covered;
    bool backward = false;

    LiteralMatcher required;
    mutable int requiredTried = 0;
    mutable int requiredFound = 0;

    // Characters that all positions treat alike form a class.
    QVector<int> classOf;
    QVector<Expression::Positions> standsFor; // For each class.

    // Each state has a row in the table with the row to go to for each character, -1 where no name
    // went yet.
    mutable QVector<State> states;
    mutable QVector<int> table;
    mutable QHash<QByteArray, int> known;
};

} // namespace MOLK
