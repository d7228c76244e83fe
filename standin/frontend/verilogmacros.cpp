// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogmacros.h"

namespace Standin {

static bool isInName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'
        || c == '$';
}

/// Offset of the bracket that opens the argument list of the definition at \a at; -1 if it has
/// none.
static int openBracket(const QByteArray &text, int at)
{
    while (at < text.size() && (text.at(at) == ' ' || text.at(at) == '\t'))
        ++at;
    while (at < text.size() && isInName(text.at(at)))
        ++at;
    return at < text.size() && text.at(at) == '(' ? at : -1;
}

/// Offset of the bracket that ends the list at \a open; -1 if the definition ends first.
static int closeBracket(const QByteArray &text, int open)
{
    int depth = 0;
    for (int at = open; at < text.size(); ++at) {
        const char c = text.at(at);
        if (c == '(' || c == '[' || c == '{')
            ++depth;
        else if ((c == ')' || c == ']' || c == '}') && --depth == 0)
            return at;
        const char last =
            at > 0 && text.at(at - 1) == '\r' ? text.at(qMax(0, at - 2)) : text.at(qMax(0, at - 1));
        if (c == '\n' && last != '\\')
            return -1;
    }
    return -1;
}

QByteArray withJoinedArguments(const QByteArray &source)
{
    static const QByteArray word("`define");
    QByteArray result;
    int done = 0;
    for (int at = source.indexOf(word); at >= 0; at = source.indexOf(word, at + 1)) {
        const int open = openBracket(source, at + word.size());
        const int close = open < 0 ? -1 : closeBracket(source, open);
        if (close < 0)
            continue;
        QByteArray list = source.mid(open, close + 1 - open);
        const int lines = list.count('\n');
        if (lines == 0)
            continue;
        list.replace("\\\r\n", "   ").replace("\\\n", "  ");
        result += source.mid(done, open - done) + list + QByteArray("\\\n").repeated(lines);
        done = close + 1;
        at = close;
    }
    return done == 0 ? source : result + source.mid(done);
}

} // namespace Standin
