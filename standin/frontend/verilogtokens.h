// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>

#include <cstring>
#include <initializer_list>
#include <vector>

namespace Standin {

/// One token of preprocessed Verilog text.
struct VerilogToken
{
    enum Kind : quint8 {
        End,  ///< Behind the last token; has no text.
        Word, ///< Identifier that is no keyword, escaped ones included, or system name.
        Keyword,
        Number,
        String,
        Macro,  ///< A macro that nothing defines, backquote included.
        Symbol, ///< One character, or "::".
    };

    quint32 begin; ///< Offset in the text; of an escaped identifier without the backslash.
    quint32 length : 24;
    quint32 kind : 8;
    qint32 match; ///< Index of the bracket that belongs to this one, or -1.
};

/// The tokens of a text, in order. Comments, attributes and directives are left out.
///
/// It takes one pass, and brackets are matched on the way, so that no reader of the tokens has to
/// search: the time grows with the length of the text alone, whatever the text is. No bracket is
/// matched beyond the end of the module or function that it stands in, so one that is never closed
/// spoils no more than that.
class HOST_EXPORT VerilogTokens
{
public:
    /// \param source must outlive the tokens; texts above 4 GB and tokens above 16 MB are cut.
    explicit VerilogTokens(const QByteArray &source);

    int count() const { return int(tokens.size()); }

    /// The token \a index; one of kind End for any index outside the text.
    const VerilogToken &at(int index) const
    {
        return std::size_t(index) < tokens.size() ? tokens[std::size_t(index)] : behindLast;
    }

    QByteArray text(int index) const;

    /// The text that the tokens are of.
    QByteArray text() const { return source; }

    /// True for the keyword or symbol \a text; an escaped identifier is never a keyword.
    bool is(int index, const char *text) const
    {
        const VerilogToken &token = at(index);
        return isFixed(token) && reads(token, text);
    }
    bool is(int index, char symbol) const
    {
        const VerilogToken &token = at(index);
        return token.kind == VerilogToken::Symbol && token.length == 1
            && start[token.begin] == symbol;
    }

    bool isWord(int index) const { return at(index).kind == VerilogToken::Word; }

    /// True for the keyword or symbol that is any of \a words.
    bool isAny(int index, std::initializer_list<const char *> words) const;

    /// Index of the first token that ends behind \a offset in the text; count() if there is none.
    int find(quint32 offset) const;

    /// Index behind the bracket that closes the one at \a index; \a index + 1 if none does, or if
    /// there is no bracket.
    int behind(int index) const;

private:
    // Most tokens are names, and most words differ in their first letter: a text is asked for
    // dozens of words at each of its tokens.
    static bool isFixed(const VerilogToken &token)
    {
        return token.kind == VerilogToken::Keyword || token.kind == VerilogToken::Symbol;
    }
    bool reads(const VerilogToken &token, const char *text) const
    {
        const char *const begin = start + token.begin;
        return *begin == *text && std::strlen(text) == token.length
            && std::memcmp(begin, text, token.length) == 0;
    }

    void read();
    void matchBrackets();
    void add(const char *begin, const char *end, VerilogToken::Kind kind);
    const char *readAttribute(const char *begin);
    const char *readWord(const char *begin);
    const char *readDirective(const char *begin);

    static constexpr VerilogToken behindLast{0, 0, VerilogToken::End, -1};

    QByteArray source;
    const char *start;
    const char *stop;
    bool attributesEnded = false;
    std::vector<VerilogToken> tokens;
};

} // namespace Standin
