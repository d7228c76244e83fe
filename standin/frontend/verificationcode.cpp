// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verificationcode.h"

#include "frontend/verilogtokens.h"

#include <QHash>
#include <QSet>

namespace Standin {

namespace {

/// Blanks token by token, so that line directives in between stay.
class CheckRemover
{
public:
    explicit CheckRemover(const QByteArray &text)
        : tokens(text)
        , result(text)
    {
    }

    QByteArray run();

private:
    int step(int i);
    int removeBlock(int i, const char *end);
    int removeAssertion(int i);
    int removeToSemicolon(int i);
    int behindStatement(int i) const;
    void blank(int begin, int end);

    VerilogTokens tokens;
    QByteArray result;
    QSet<QByteArray> covergroups;
    QHash<QByteArray, bool> exhausted; ///< End words that don't come any more.
};

QByteArray CheckRemover::run()
{
    for (int i = 0; i < tokens.count();)
        i = step(i);
    return result;
}

void CheckRemover::blank(int begin, int end)
{
    for (int i = begin; i < end && i < tokens.count(); ++i) {
        const VerilogToken &token = tokens.at(i);
        for (quint32 at = token.begin; at < token.begin + token.length; ++at) {
            if (result.at(int(at)) != '\n')
                result[int(at)] = ' ';
        }
    }
}

int CheckRemover::step(int i)
{
    static const struct
    {
        const char *begin;
        const char *end;
    } blocks[] = {{"covergroup", "endgroup"},  {"property", "endproperty"},
                  {"sequence", "endsequence"}, {"checker", "endchecker"},
                  {"clocking", "endclocking"}, {"config", "endconfig"}};

    if (tokens.isWord(i) && tokens.isWord(i + 1) && covergroups.contains(tokens.text(i)))
        return removeToSemicolon(i);

    if (tokens.at(i).kind != VerilogToken::Keyword)
        return i + 1;
    const bool checks = tokens.is(i, "assert") || tokens.is(i, "assume") || tokens.is(i, "cover")
        || tokens.is(i, "restrict");
    if (checks && (tokens.is(i + 1, "property") || tokens.is(i + 1, "sequence")))
        return removeAssertion(i);
    if (tokens.is(i, "default") && tokens.is(i + 1, "disable"))
        return removeToSemicolon(i);
    if (tokens.is(i, "default") && tokens.is(i + 1, "clocking") && tokens.isWord(i + 2)
        && tokens.is(i + 3, ';'))
        return removeToSemicolon(i);
    if (tokens.is(i, "let") && tokens.isWord(i + 1))
        return removeToSemicolon(i);
    for (const auto &block : blocks) {
        if (tokens.is(i, block.begin) && tokens.isWord(i + 1)) {
            if (tokens.is(i, "covergroup"))
                covergroups.insert(tokens.text(i + 1));
            return removeBlock(i, block.end);
        }
        if (tokens.is(i, block.begin) && tokens.is(i, "clocking") && tokens.is(i + 1, '@'))
            return removeBlock(i, block.end);
    }
    return i + 1;
}

int CheckRemover::removeToSemicolon(int i)
{
    int end = i;
    while (end < tokens.count() && !tokens.is(end, ';'))
        end = tokens.behind(end);
    blank(i, end + 1);
    return end + 1;
}

int CheckRemover::removeBlock(int i, const char *endWord)
{
    if (exhausted.value(endWord))
        return i + 1;
    int end = i;
    while (end < tokens.count() && !tokens.is(end, endWord))
        ++end;
    if (end == tokens.count()) {
        exhausted.insert(endWord, true);
        return i + 1;
    }
    ++end;
    if (tokens.is(end, ':') && tokens.isWord(end + 1))
        end += 2;
    int begin = i;
    if (tokens.is(i - 1, "default") || tokens.is(i - 1, "global"))
        --begin;
    blank(begin, end);
    return end;
}

/// Index behind the statement at \a i: one with a semicolon, or a block.
int CheckRemover::behindStatement(int i) const
{
    if (!tokens.is(i, "begin")) {
        while (i < tokens.count() && !tokens.is(i, ';'))
            i = tokens.behind(i);
        return i + 1;
    }
    int depth = 0;
    for (; i < tokens.count(); ++i) {
        if (tokens.is(i, "begin"))
            ++depth;
        else if (tokens.is(i, "end") && --depth == 0)
            return i + 1;
    }
    return i;
}

/// An assertion is a statement, so an empty one takes its place.
int CheckRemover::removeAssertion(int i)
{
    if (!tokens.is(i + 2, '('))
        return i + 1;
    int end = tokens.behind(i + 2);
    if (tokens.is(end, "else")) {
        end = behindStatement(end + 1);
    } else {
        end = behindStatement(end);
        if (tokens.is(end, "else"))
            end = behindStatement(end + 1);
    }
    blank(i, end);
    if (tokens.is(i - 1, ':') && tokens.isWord(i - 2))
        blank(i - 2, i);
    result[int(tokens.at(i).begin)] = ';';
    return end;
}

} // namespace

QByteArray withoutVerificationCode(const QByteArray &preprocessed)
{
    return CheckRemover(preprocessed).run();
}

} // namespace Standin
