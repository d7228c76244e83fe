// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "expressionmatcher.h"

#include "asciitext.h"

namespace MOLK {

static const int rowSize = Expression::Characters;

// The first rows. In the dead end nothing that may follow matches, where all is open everything
// does, so that the rest of a name needn't be run through.
static const int deadEnd = 0 * rowSize;
static const int allOpen = 1 * rowSize;
static const int start = 2 * rowSize;

// With more states than this they are forgotten and made anew, so that no expression can take all
// memory.
static const int mostStates = 4096;

ExpressionMatcher::ExpressionMatcher(const QString &pattern, Qt::CaseSensitivity caseSensitivity,
                                     QRegExp::PatternSyntax syntax)
    : expression(pattern, caseSensitivity, syntax)
    , valid(expression.isValid())
    , covered(parseExpression(pattern, caseSensitivity, syntax, &parsed))
    , required(parsed.required, caseSensitivity)
{
    if (!covered)
        return;
    backward = !parsed.endsOpen;
    if (backward)
        reverse();
    divideCharacters();
    forgetStates();
}

void ExpressionMatcher::reverse()
{
    std::swap(parsed.first, parsed.last);
    const QVector<Expression::Positions> follow = parsed.follow;
    for (int to = 0; to < follow.size(); ++to) {
        for (int from = 0; from < follow.size(); ++from)
            parsed.follow[to].set(size_t(from), follow.at(from).test(size_t(to)));
    }
}

void ExpressionMatcher::divideCharacters()
{
    for (int c = 0; c < Expression::Characters; ++c) {
        int found = standsFor.indexOf(parsed.standsFor.at(c));
        if (found < 0) {
            found = standsFor.size();
            standsFor.append(parsed.standsFor.at(c));
        }
        classOf.append(found);
    }
}

bool ExpressionMatcher::matches(const QString &name) const
{
    if (!valid)
        return false;
    if (covered && !name.isEmpty()) {
        if (!mayHoldRequired(name))
            return false;
        const Answer answer = backward ? run<-1>(name) : run<1>(name);
        if (answer != Answer::NotAscii)
            return answer == Answer::Yes;
    }
    return expression.exactMatch(name);
}

// Looking for a text that most names hold isn't worth while.
bool ExpressionMatcher::mayHoldRequired(const QString &name) const
{
    static const int enoughTries = 64;
    if (parsed.required.isEmpty()
        || (requiredTried >= enoughTries && requiredFound > enoughTries / 2))
        return true;
    const bool may = required.lookInAscii(name) != LiteralMatcher::Answer::No;
    if (requiredTried < enoughTries) {
        ++requiredTried;
        requiredFound += may ? 1 : 0;
    }
    return may;
}

template<int direction>
ExpressionMatcher::Answer ExpressionMatcher::run(const QString &name) const
{
    const int size = name.size();
    const QChar *next = direction > 0 ? name.constData() : name.constData() + size - 1;
    const int *rows = table.constData();
    int row = start;
    for (int left = size; left > 0 && row > allOpen; --left, next += direction) {
        const ushort c = next->unicode();
        if (c >= Expression::Characters)
            return Answer::NotAscii;
        int to = rows[row + c];
        if (to < 0) {
            to = step(row, c);
            rows = table.constData();
        }
        row = to;
    }
    if (row == allOpen)
        return isAscii(name.constData(), size) ? Answer::Yes : Answer::NotAscii;
    return states.at(row / rowSize).accepts ? Answer::Yes : Answer::No;
}

int ExpressionMatcher::step(int row, int character) const
{
    const Expression::Positions positions =
        states.at(row / rowSize).next & standsFor.at(classOf.at(character));
    if (states.size() == mostStates) {
        forgetStates();
        return rowOf(positions);
    }
    const int to = rowOf(positions);
    table[row + character] = to;
    return to;
}

int ExpressionMatcher::rowOf(const Expression::Positions &positions) const
{
    if (positions.none())
        return deadEnd;
    const QByteArray key(reinterpret_cast<const char *>(&positions), sizeof positions);
    const auto found = known.constFind(key);
    if (found != known.constEnd())
        return *found;

    State state{positions, Expression::Positions(), (positions & parsed.last).any()};
    for (int position = 0; position < parsed.follow.size(); ++position) {
        if (positions.test(size_t(position)))
            state.next |= parsed.follow.at(position);
    }
    const int row = leadsNowhereElse(state) ? allOpen : addState(state);
    known.insert(key, row);
    return row;
}

// Whether every character leads back to this accepting state.
bool ExpressionMatcher::leadsNowhereElse(const State &state) const
{
    return state.accepts
        && std::all_of(standsFor.cbegin(), standsFor.cend(),
                       [&state](const Expression::Positions &character) {
                           return (state.next & character) == state.positions;
                       });
}

int ExpressionMatcher::addState(const State &state) const
{
    states.append(state);
    table.insert(table.size(), rowSize, -1);
    return (states.size() - 1) * rowSize;
}

void ExpressionMatcher::forgetStates() const
{
    states.clear();
    table.clear();
    known.clear();
    const Expression::Positions none;
    addState({none, none, false});
    addState({none, none, true});
    addState({none, parsed.first, parsed.matchesNothing});
}

} // namespace MOLK
