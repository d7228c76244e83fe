// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "expressionmatcher.h"

namespace MOLK {

static const int start = 0;
static const int deadEnd = 1;

// With more states than this they are forgotten and made anew, so that no expression can take all
// memory.
static const int mostStates = 4096;

ExpressionMatcher::ExpressionMatcher(const QString &pattern, Qt::CaseSensitivity caseSensitivity,
                                     QRegExp::PatternSyntax syntax)
    : expression(pattern, caseSensitivity, syntax)
    , valid(expression.isValid())
    , covered(parseExpression(pattern, caseSensitivity, syntax, &parsed))
{
    if (!covered)
        return;
    hasRequired = !parsed.required.isEmpty();
    required = LiteralMatcher(parsed.required, caseSensitivity);
    divideCharacters();
    forgetStates();
}

void ExpressionMatcher::divideCharacters()
{
    classOf.resize(Expression::Characters);
    for (int c = 0; c < Expression::Characters; ++c) {
        int found = standsFor.indexOf(parsed.standsFor.at(c));
        if (found < 0) {
            found = standsFor.size();
            standsFor.append(parsed.standsFor.at(c));
        }
        classOf[c] = uchar(found);
    }
}

bool ExpressionMatcher::matches(const QString &name) const
{
    if (!valid)
        return false;
    if (covered && !name.isEmpty()) {
        if (hasRequired && required.lookInAscii(name) == LiteralMatcher::Answer::No)
            return false;
        const Answer answer = run(name);
        if (answer != Answer::NotAscii)
            return answer == Answer::Yes;
    }
    return expression.exactMatch(name);
}

ExpressionMatcher::Answer ExpressionMatcher::run(const QString &name) const
{
    const int classes = standsFor.size();
    int state = start;
    for (const QChar character : name) {
        const ushort c = character.unicode();
        if (c >= Expression::Characters)
            return Answer::NotAscii;
        const int characterClass = classOf.at(c);
        const int next = table.at(state * classes + characterClass);
        state = next >= 0 ? next : step(state, characterClass);
        // Nothing leads on from there, whatever comes.
        if (state == deadEnd)
            return Answer::No;
    }
    return states.at(state).accepts ? Answer::Yes : Answer::No;
}

int ExpressionMatcher::step(int state, int characterClass) const
{
    const Expression::Positions positions = states.at(state).next & standsFor.at(characterClass);
    if (states.size() == mostStates) {
        forgetStates();
        return stateOf(positions);
    }
    const int next = stateOf(positions);
    table[state * standsFor.size() + characterClass] = next;
    return next;
}

int ExpressionMatcher::stateOf(const Expression::Positions &positions) const
{
    if (positions.none())
        return deadEnd;
    const QByteArray key(reinterpret_cast<const char *>(&positions), sizeof positions);
    const auto found = known.constFind(key);
    if (found != known.constEnd())
        return *found;

    State state{Expression::Positions(), (positions & parsed.last).any()};
    for (int position = 0; position < parsed.follow.size(); ++position) {
        if (positions.test(size_t(position)))
            state.next |= parsed.follow.at(position);
    }
    const int number = states.size();
    states.append(state);
    table.insert(table.size(), standsFor.size(), -1);
    known.insert(key, number);
    return number;
}

void ExpressionMatcher::forgetStates() const
{
    states = {{parsed.first, parsed.matchesNothing}, {Expression::Positions(), false}};
    table = QVector<int>(2 * standsFor.size(), -1);
    known.clear();
}

} // namespace MOLK
