// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/ghdltext.h"

#include "frontend/verilogtokens.h"

#include <QRegularExpression>

namespace Standin {

QByteArray withoutBlackBoxes(const QByteArray &text, const DesignGraph &graph,
                             const DesignGraph &entities)
{
    static const QRegularExpression shape("\\)\\s*;\\s*endmodule\\z");
    QByteArray result = text;
    // The same black box comes once for each set of generics.
    for (const DesignGraph::Place &module : graph.declarations()) {
        if (entities.find(module.name))
            continue;
        const int length = int(module.end - module.begin);
        const QByteArray body = text.mid(int(module.begin), length);
        // A module with a body has a statement, so its last semicolon isn't the header's.
        if (body.count(';') != 1 || !shape.match(QString::fromUtf8(body)).hasMatch())
            continue;
        for (int i = int(module.begin); i < int(module.begin) + length; ++i) {
            if (result.at(i) != '\n')
                result[i] = ' ';
        }
    }
    return result;
}

static bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

static bool isInWord(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// End of the name whose first backslash is at \a at: extended identifiers with words between them.
static int nameEnd(const QByteArray &text, int at)
{
    while (at < text.size()) {
        if (isInWord(text.at(at))) {
            ++at;
            continue;
        }
        int close = at + 1;
        while (close < text.size() && text.at(close) != '\\' && !isBlank(text.at(close)))
            ++close;
        if (text.at(at) != '\\' || close == text.size() || text.at(close) != '\\')
            break;
        at = close + 1;
    }
    return at;
}

QByteArray withEscapedNames(const QByteArray &text)
{
    QByteArray result;
    result.reserve(text.size());
    bool inString = false;
    for (int i = 0; i < text.size(); ++i) {
        const char c = text.at(i);
        if (c == '"')
            inString = !inString;
        const int end = c == '\\' && !inString ? nameEnd(text, i) : i;
        if (end == i) {
            result += c;
            if (inString && c == '\\' && i + 1 < text.size())
                result += text.at(++i);
            continue;
        }
        int begin = result.size();
        while (begin > 0 && isInWord(result.at(begin - 1)))
            --begin;
        QByteArray name = result.mid(begin) + text.mid(i, end - i);
        result.truncate(begin);
        result += '\\' + name.replace("\\", "") + ' ';
        i = end - 1;
    }
    return result;
}

namespace {

/// Tells the words of the language from names that look like them. What GHDL writes has few forms,
/// so what stands around a word is enough.
class KeywordUse
{
public:
    explicit KeywordUse(const VerilogTokens &text)
        : tokens(text)
    {
    }

    /// To be asked about each token, in order.
    bool isName(int i);

private:
    bool isStructure(int i) const;
    bool declares(int i) const;
    bool beginsStatement(int i) const;
    bool mayBeName(int i) const
    {
        return tokens.isWord(i) || tokens.at(i).kind == VerilogToken::Keyword;
    }

    const VerilogTokens &tokens;
    bool inModule = false;
    bool inHeader = false;
};

bool KeywordUse::isName(int i)
{
    inHeader = inHeader && !tokens.is(i, ';');
    if (tokens.at(i).kind != VerilogToken::Keyword)
        return false;
    if (!isStructure(i))
        return true;
    if (tokens.is(i, "module"))
        inModule = inHeader = true;
    else if (tokens.is(i, "endmodule"))
        inModule = false;
    return false;
}

bool KeywordUse::beginsStatement(int i) const
{
    return i == 0
        || tokens.isAny(i - 1, {";", ")", ":", "begin", "end", "else", "endmodule", "endcase"});
}

/// True for a declaration of one name, with or without a range.
bool KeywordUse::declares(int i) const
{
    int name = tokens.is(i + 1, "signed") && mayBeName(i + 2) ? i + 2 : i + 1;
    if (tokens.is(name, '['))
        name = tokens.behind(name);
    return mayBeName(name)
        && (tokens.is(name + 1, ';') || tokens.is(name + 1, '[') || tokens.is(name + 1, '='));
}

bool KeywordUse::isStructure(int i) const
{
    // These are words of VHDL too, so they are never names.
    if (tokens.isAny(i, {"begin", "end", "if", "else", "case", "or", "inout"}))
        return true;
    if (tokens.isAny(i, {"input", "output"}))
        return inHeader && (tokens.is(i - 1, '(') || tokens.is(i - 1, ','));
    if (tokens.is(i, "module"))
        return !inModule;
    if (tokens.is(i, "default"))
        return tokens.is(i + 1, ':');
    if (tokens.isAny(i, {"posedge", "negedge"}))
        return (tokens.is(i - 1, '(') || tokens.is(i - 1, "or")) && mayBeName(i + 1);
    if (tokens.is(i, "signed"))
        return tokens.isAny(i - 1, {"wire", "reg", "input", "output", "inout", "localparam"});
    if (!beginsStatement(i))
        return false;
    if (tokens.isAny(i, {"wire", "reg", "integer", "localparam"}))
        return declares(i);
    if (tokens.is(i, "assign"))
        return (mayBeName(i + 1) && !tokens.is(i + 2, '(')) || tokens.is(i + 1, '{');
    if (tokens.isAny(i, {"always", "initial"}))
        return tokens.is(i + 1, '@') || (mayBeName(i + 1) && !tokens.is(i + 2, '('))
            || tokens.is(i + 1, "if");
    return tokens.isAny(i, {"endmodule", "endcase"}) && !tokens.is(i + 1, '=')
        && !tokens.is(i + 1, '<') && !tokens.is(i + 1, '[');
}

} // namespace

QByteArray withEscapedKeywords(const QByteArray &text)
{
    const VerilogTokens tokens(text);
    KeywordUse use(tokens);
    QByteArray result;
    quint32 done = 0;
    for (int i = 0; i < tokens.count(); ++i) {
        if (!use.isName(i))
            continue;
        const VerilogToken &token = tokens.at(i);
        result += text.mid(int(done), int(token.begin - done)) + '\\' + tokens.text(i) + ' ';
        done = token.begin + token.length;
    }
    return done == 0 ? text : result + text.mid(int(done));
}

QByteArray withoutUnknownValues(const QByteArray &text)
{
    QByteArray result = text;
    for (int at = text.indexOf("'bX"); at >= 0; at = text.indexOf("'bX", at + 1)) {
        int end = at + 2;
        while (end < text.size() && text.at(end) == 'X')
            ++end;
        const int lineBegin = text.lastIndexOf('\n', at) + 1;
        const QList<QByteArray> words = text.mid(lineBegin, at - lineBegin).simplified().split(' ');
        const bool isWhole = end < text.size() && text.at(end) == ';' && words.size() == 4
            && words.at(0) == "assign" && words.at(2) == "=";
        for (int i = lineBegin; isWhole && i <= end; ++i)
            result[i] = ' ';
    }
    return result;
}

} // namespace Standin
