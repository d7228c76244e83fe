// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>

#include <initializer_list>
#include <vector>

namespace Standin {

/// The words and symbols of a VHDL text, in order. Comments and literals are left out.
///
/// Words are compared without case; extended identifiers keep their backslashes, which makes them
/// differ from all keywords. It takes one pass, and brackets are matched on the way. No bracket is
/// matched beyond a word that can't stand in brackets, so one that is never closed spoils little.
class HOST_EXPORT VhdlTokens
{
public:
    explicit VhdlTokens(const QByteArray &source);

    int count() const { return int(tokens.size()); }

    /// The token as it is spelled; empty for any index outside the text.
    QByteArray text(int index) const;

    /// True for the word, in lower case, or symbol \a word.
    bool is(int index, const char *word) const;
    bool isAny(int index, std::initializer_list<const char *> words) const;

    /// True for what can be a name, keywords included.
    bool isName(int index) const;

    /// Where a token begins in the text, and where it ends; the end of the text for any index
    /// outside.
    quint32 begin(int index) const;
    quint32 end(int index) const;

    /// Index of the first token that ends behind \a offset in the text; count() if there is none.
    int find(quint32 offset) const;

    /// Index behind the bracket that closes the one at \a index; \a index + 1 if none does, or if
    /// there is no bracket.
    int behind(int index) const;

    /// Index of the bracket that belongs to the one at \a index, or -1.
    int match(int index) const;

private:
    struct Token
    {
        quint32 begin;
        quint32 length;
        qint32 match;
    };

    void read();
    void matchBrackets();

    QByteArray source;
    std::vector<Token> tokens;
};

/// Index behind the comment, literal or blank that begins at \a index of a VHDL text, or \a index
/// if none does.
int vhdlIgnoredEnd(const QByteArray &text, int index);

} // namespace Standin
