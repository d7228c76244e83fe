// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "expressiontokens.h"

namespace MOLK {

static bool isLetterOrDigit(QChar c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

static bool isPlain(QChar c)
{
    return c.unicode() >= 32 && c.unicode() < 127 && !QString("\\[](){}*+?|^$.").contains(c);
}

static ExpressionToken escaped(QChar c)
{
    return {ExpressionToken::Character, isPlain(c) ? QString(c) : "\\" + QString(c)};
}

// Classes of plain characters and ranges alone: what a bracket, a circumflex or a backslash inside
// means depends on where it stands.
static bool takeClass(const QString &pattern, int *at, QVector<ExpressionToken> *tokens)
{
    int i = *at + 1;
    if (i < pattern.size() && pattern.at(i) == '^')
        ++i;
    const int content = i;
    while (i < pattern.size() && isPlain(pattern.at(i)))
        ++i;
    if (i == content || i == pattern.size() || pattern.at(i) != ']')
        return false;
    tokens->append({ExpressionToken::Class, pattern.mid(*at, i + 1 - *at)});
    *at = i + 1;
    return true;
}

// A backslash ahead of a letter or digit is a class of its own, a reference or an assertion.
static bool takeEscape(const QString &pattern, int *at, QVector<ExpressionToken> *tokens)
{
    const int i = *at + 1;
    if (i >= pattern.size() || isLetterOrDigit(pattern.at(i)) || pattern.at(i).unicode() >= 127)
        return false;
    tokens->append({ExpressionToken::Character, pattern.mid(*at, 2)});
    *at = i + 1;
    return true;
}

static bool takeOpen(const QString &pattern, int *at, QVector<ExpressionToken> *tokens)
{
    const bool marked = pattern.midRef(*at + 1).startsWith('?');
    if (marked && !pattern.midRef(*at + 1).startsWith(QLatin1String("?:")))
        return false;
    tokens->append({ExpressionToken::Open, "("});
    *at += marked ? 3 : 1;
    return true;
}

static bool takeSingle(QChar c, QVector<ExpressionToken> *tokens)
{
    if (c == ')')
        tokens->append({ExpressionToken::Close, ")"});
    else if (c == '|')
        tokens->append({ExpressionToken::Alternative, "|"});
    else if (c == '*' || c == '+' || c == '?')
        tokens->append({ExpressionToken::Quantifier, c});
    else if (c == '.')
        tokens->append({ExpressionToken::Class, c});
    else if (isPlain(c))
        tokens->append({ExpressionToken::Character, c});
    else
        return false;
    return true;
}

bool splitRegExp(const QString &pattern, QVector<ExpressionToken> *tokens)
{
    for (int at = 0; at < pattern.size();) {
        const QChar c = pattern.at(at);
        bool taken = false;
        if (c == '[')
            taken = takeClass(pattern, &at, tokens);
        else if (c == '\\')
            taken = takeEscape(pattern, &at, tokens);
        else if (c == '(')
            taken = takeOpen(pattern, &at, tokens);
        else if ((taken = takeSingle(c, tokens)))
            ++at;
        if (!taken)
            return false;
    }
    return true;
}

bool splitWildcard(const QString &pattern, QVector<ExpressionToken> *tokens)
{
    for (int at = 0; at < pattern.size();) {
        const QChar c = pattern.at(at);
        if (c == '[') {
            if (!takeClass(pattern, &at, tokens))
                return false;
            continue;
        }
        if (c == '\\') {
            // Escapes what would be special; ahead of anything else it has odd meanings.
            if (at + 1 == pattern.size() || !QString("*?[]").contains(pattern.at(at + 1)))
                return false;
            tokens->append(escaped(pattern.at(at + 1)));
            at += 2;
            continue;
        }
        if (c == '*') {
            tokens->append({ExpressionToken::Class, "."});
            tokens->append({ExpressionToken::Quantifier, "*"});
        } else if (c == '?') {
            tokens->append({ExpressionToken::Class, "."});
        } else if (c.unicode() >= 32 && c.unicode() < 127) {
            tokens->append(escaped(c));
        } else {
            return false;
        }
        ++at;
    }
    return true;
}

} // namespace MOLK
