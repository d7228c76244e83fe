// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "expression.h"

#include "expressiontokens.h"

#include <QHash>

namespace MOLK {

namespace {

// A part of the expression while it is put together.
struct Part
{
    Expression::Positions first;
    Expression::Positions last;
    bool maybeEmpty = false;
};

class Parser
{
public:
    Parser(const QVector<ExpressionToken> &allTokens, Qt::CaseSensitivity caseSensitivity,
           Expression *target)
        : tokens(allTokens)
        , sensitivity(caseSensitivity)
        , expression(target)
    {
        expression->standsFor.resize(Expression::Characters);
    }

    bool parse()
    {
        Part whole;
        if (!parseAlternatives(&whole) || at != tokens.size())
            return false;
        expression->first = whole.first;
        expression->last = whole.last;
        expression->matchesNothing = whole.maybeEmpty;
        if (alternativesOutside)
            longest.clear();
        expression->required = longest;
        expression->endsOpen = tokens.size() > 1 && tokens.last().text == "*"
            && tokens.at(tokens.size() - 2).text == ".";
        return true;
    }

private:
    using Characters = QVector<bool>; // One for each ASCII character.

    bool isNext(ExpressionToken::Kind kind) const
    {
        return at < tokens.size() && tokens.at(at).kind == kind;
    }

    bool parseAlternatives(Part *part);
    bool parseSequence(Part *part);
    bool parseRepeated(Part *part);
    bool parseOne(Part *part);
    bool addPosition(Part *part);
    Characters charactersOf(const QString &piece);
    void connect(const Expression::Positions &from, const Expression::Positions &to);
    void noteRequired(const ExpressionToken &token);

    const QVector<ExpressionToken> &tokens;
    Qt::CaseSensitivity sensitivity;
    Expression *expression;
    QHash<QString, Characters> pieces;
    int at = 0;
    int depth = 0;
    bool alternativesOutside = false;
    QString run; // Characters that stand one after another, outside groups.
    QString longest;
};

} // namespace

void Parser::connect(const Expression::Positions &from, const Expression::Positions &to)
{
    for (int position = 0; position < expression->follow.size(); ++position) {
        if (from.test(size_t(position)))
            expression->follow[position] |= to;
    }
}

bool Parser::parseAlternatives(Part *part)
{
    if (!parseSequence(part))
        return false;
    while (isNext(ExpressionToken::Alternative)) {
        ++at;
        alternativesOutside = alternativesOutside || depth == 0;
        Part other;
        if (!parseSequence(&other))
            return false;
        part->first |= other.first;
        part->last |= other.last;
        part->maybeEmpty = part->maybeEmpty || other.maybeEmpty;
    }
    return true;
}

// An empty sequence isn't covered.
bool Parser::parseSequence(Part *part)
{
    if (!parseRepeated(part))
        return false;
    while (at < tokens.size() && !isNext(ExpressionToken::Alternative)
           && !isNext(ExpressionToken::Close)) {
        Part next;
        if (!parseRepeated(&next))
            return false;
        connect(part->last, next.first);
        if (part->maybeEmpty)
            part->first |= next.first;
        if (next.maybeEmpty)
            part->last |= next.last;
        else
            part->last = next.last;
        part->maybeEmpty = part->maybeEmpty && next.maybeEmpty;
    }
    return true;
}

// Repeating what may be empty, or a repetition itself, isn't covered.
bool Parser::parseRepeated(Part *part)
{
    if (!parseOne(part))
        return false;
    if (!isNext(ExpressionToken::Quantifier))
        return true;
    const QString quantifier = tokens.at(at).text;
    ++at;
    if (part->maybeEmpty || isNext(ExpressionToken::Quantifier))
        return false;
    if (quantifier != "?")
        connect(part->last, part->first);
    part->maybeEmpty = quantifier != "+";
    return true;
}

bool Parser::parseOne(Part *part)
{
    if (isNext(ExpressionToken::Character) || isNext(ExpressionToken::Class)) {
        if (!addPosition(part))
            return false;
        noteRequired(tokens.at(at));
        ++at;
        return true;
    }
    if (!isNext(ExpressionToken::Open))
        return false;
    run.clear();
    ++at;
    ++depth;
    if (!parseAlternatives(part) || !isNext(ExpressionToken::Close))
        return false;
    ++at;
    --depth;
    run.clear();
    return true;
}

bool Parser::addPosition(Part *part)
{
    const int position = expression->follow.size();
    if (position == Expression::MostPositions)
        return false;
    expression->follow.append(Expression::Positions());
    const Characters stood = charactersOf(tokens.at(at).text);
    for (int c = 0; c < Expression::Characters; ++c)
        expression->standsFor[c].set(size_t(position), stood.at(c));
    part->first.set(size_t(position));
    part->last.set(size_t(position));
    return true;
}

Parser::Characters Parser::charactersOf(const QString &piece)
{
    const auto known = pieces.constFind(piece);
    if (known != pieces.constEnd())
        return *known;
    const QRegExp single(piece, sensitivity, QRegExp::RegExp);
    Characters characters;
    for (int c = 0; c < Expression::Characters; ++c)
        characters.append(single.exactMatch(QChar(c)));
    pieces.insert(piece, characters);
    return characters;
}

// Only what stands outside groups and isn't quantified has to be there.
void Parser::noteRequired(const ExpressionToken &token)
{
    const bool quantified =
        at + 1 < tokens.size() && tokens.at(at + 1).kind == ExpressionToken::Quantifier;
    if (depth > 0 || quantified || token.kind != ExpressionToken::Character) {
        run.clear();
        return;
    }
    run.append(token.text.back());
    if (run.size() > longest.size())
        longest = run;
}

bool parseExpression(const QString &pattern, Qt::CaseSensitivity caseSensitivity,
                     QRegExp::PatternSyntax syntax, Expression *expression)
{
    QVector<ExpressionToken> tokens;
    const bool split = syntax == QRegExp::WildcardUnix ? splitWildcard(pattern, &tokens)
                                                       : splitRegExp(pattern, &tokens);
    return split && QRegExp(pattern, caseSensitivity, syntax).isValid()
        && Parser(tokens, caseSensitivity, expression).parse();
}

} // namespace MOLK
