// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/vhdltokens.h"

#include <algorithm>
#include <cstring>

namespace Standin {

static bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c & 0x80) != 0;
}

static bool isInName(char c)
{
    return isLetter(c) || (c >= '0' && c <= '9') || c == '_';
}

/// Index behind the quoted text at \a i, which ends with its line at the latest.
static int quotedEnd(const QByteArray &text, int i)
{
    const char quote = text.at(i);
    for (++i; i < text.size() && text.at(i) != '\n'; ++i) {
        if (text.at(i) == quote)
            return i + 1;
    }
    return i;
}

int vhdlIgnoredEnd(const QByteArray &text, int i)
{
    const char c = text.at(i);
    const char next = i + 1 < text.size() ? text.at(i + 1) : '\0';
    if (c == '-' && next == '-') {
        const int newline = text.indexOf('\n', i);
        return newline < 0 ? text.size() : newline;
    }
    if (c == '/' && next == '*') {
        const int close = text.indexOf("*/", i + 2);
        return close < 0 ? text.size() : close + 2;
    }
    if (c == '"')
        return quotedEnd(text, i);
    // Behind a name an apostrophe and a bracket begin a qualified expression.
    const bool isQualified = next == '(' && i > 0 && isInName(text.at(i - 1));
    if (c == '\'' && i + 2 < text.size() && text.at(i + 2) == '\'' && !isQualified)
        return i + 3;
    return c == ' ' || (c >= '\t' && c <= '\r') ? i + 1 : i;
}

VhdlTokens::VhdlTokens(const QByteArray &text)
    : source(text)
{
    read();
    matchBrackets();
}

void VhdlTokens::read()
{
    tokens.reserve(std::size_t(source.size()) / 6 + 16);
    for (int i = 0; i < source.size();) {
        int end = vhdlIgnoredEnd(source, i);
        if (end > i) {
            i = end;
            continue;
        }
        end = i + 1;
        if (source.at(i) == '\\')
            end = quotedEnd(source, i);
        else if (isInName(source.at(i)))
            while (end < source.size() && isInName(source.at(end)))
                ++end;
        tokens.push_back({quint32(i), quint32(end - i), -1});
        i = end;
    }
}

void VhdlTokens::matchBrackets()
{
    std::vector<int> open;
    for (int i = 0; i < count(); ++i) {
        if (is(i, "(")) {
            open.push_back(i);
        } else if (is(i, ")") && !open.empty()) {
            tokens[std::size_t(open.back())].match = i;
            tokens[std::size_t(i)].match = open.back();
            open.pop_back();
        } else if (!open.empty()
                   && isAny(i, {"begin", "end", "process", "architecture", "then", "loop"})) {
            open.clear();
        }
    }
}

QByteArray VhdlTokens::text(int index) const
{
    if (index < 0 || index >= count())
        return QByteArray();
    const Token &token = tokens[std::size_t(index)];
    return source.mid(int(token.begin), int(token.length));
}

bool VhdlTokens::is(int index, const char *word) const
{
    if (index < 0 || index >= count())
        return false;
    const Token &token = tokens[std::size_t(index)];
    return token.length == std::strlen(word)
        && qstrnicmp(source.constData() + token.begin, word, token.length) == 0;
}

bool VhdlTokens::isAny(int index, std::initializer_list<const char *> words) const
{
    return std::any_of(words.begin(), words.end(),
                       [&](const char *word) { return is(index, word); });
}

bool VhdlTokens::isName(int index) const
{
    if (index < 0 || index >= count())
        return false;
    const char first = source.at(int(tokens[std::size_t(index)].begin));
    return isLetter(first) || first == '\\';
}

quint32 VhdlTokens::begin(int index) const
{
    return index >= 0 && index < count() ? tokens[std::size_t(index)].begin
                                         : quint32(source.size());
}

quint32 VhdlTokens::end(int index) const
{
    if (index < 0 || index >= count())
        return quint32(source.size());
    const Token &token = tokens[std::size_t(index)];
    return token.begin + token.length;
}

int VhdlTokens::find(quint32 offset) const
{
    const auto found =
        std::upper_bound(tokens.begin(), tokens.end(), offset, [](quint32 wanted, const Token &t) {
            return wanted < t.begin + t.length;
        });
    return int(found - tokens.begin());
}

int VhdlTokens::match(int index) const
{
    return index >= 0 && index < count() ? tokens[std::size_t(index)].match : -1;
}

int VhdlTokens::behind(int index) const
{
    const int closing = is(index, "(") ? match(index) : -1;
    return closing < 0 ? index + 1 : closing + 1;
}

} // namespace Standin
