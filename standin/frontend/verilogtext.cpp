// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogtext.h"

#include "frontend/verilogspans.h"
#include "frontend/vhdltokens.h"

#include <QList>

#include <algorithm>
#include <cstring>

namespace Standin {

static const char neverDefined[] = "`ifdef MOLK_NEVER_DEFINED__ ";

static QByteArray nextWord(const char **at, const char *end)
{
    while (*at < end && (isVerilogBlank(**at) || **at == ':'))
        ++*at;
    const char *begin = *at;
    while (*at < end && !isVerilogBlank(**at) && **at != ':' && **at != ';')
        ++*at;
    return QByteArray(begin, int(*at - begin)).toLower();
}

int translatePragma(const char *begin, const char *end)
{
    static const char *const tools[] = {
        "synopsys", "synthesis", "pragma",  "xilinx",  "altera",        "exemplar",  "ambit",
        "cadence",  "synplify",  "quartus", "lattice", "rtl_synthesis", "synplicity"};
    // Pragmas are short; long comments aren't read to their end for this.
    if (end - begin > 200)
        end = begin + 200;
    const QByteArray tool = nextWord(&begin, end);
    const bool known = std::any_of(std::begin(tools), std::end(tools),
                                   [&](const char *name) { return tool == name; });
    if (!known)
        return 0;
    QByteArray word = nextWord(&begin, end);
    if (word == "synthesis" || word == "translate")
        word = "translate_" + nextWord(&begin, end);
    else if (tool == "rtl_synthesis")
        word.prepend("translate_");
    if (word == "translate_off" || word == "synthesis_off")
        return 1;
    return word == "translate_on" || word == "synthesis_on" ? 2 : 0;
}

static void appendNewlines(QByteArray *out, const char *begin, const char *end)
{
    out->append(int(std::count(begin, end, '\n')), '\n');
}

/// True if the definition of a macro goes on behind the line that ends at \a newline.
static bool continues(const char *begin, const char *newline)
{
    if (newline > begin && newline[-1] == '\r')
        --newline;
    return newline > begin && newline[-1] == '\\';
}

QByteArray maskVerilogPragmas(const QByteArray &source)
{
    // Most sources have none and stay as they are.
    if (!source.toLower().contains("off"))
        return source;
    QByteArray out;
    out.reserve(source.size() + 256);
    const char *at = source.constBegin();
    const char *const end = source.constEnd();
    bool off = false;
    bool inDefine = false;
    while (at < end) {
        const char *next = at + 1;
        if (*at == '\n') {
            inDefine = inDefine && continues(source.constBegin(), at);
        } else if (*at == '"') {
            next = stringEnd(at, end);
        } else if (*at == '`' && end - at > 7 && std::memcmp(at, "`define", 7) == 0) {
            inDefine = true;
        } else if (*at == '\\' && !inDefine) {
            next = escapedEnd(at, end);
        } else if (startsComment(at, end)) {
            const bool block = at[1] == '*';
            next = commentEnd(at, end);
            const int pragma = translatePragma(at + 2, block ? std::max(at + 2, next - 2) : next);
            if (!inDefine && (pragma == 1 || pragma == 2) && off != (pragma == 1)) {
                off = pragma == 1;
                out.append(off ? neverDefined : " `endif ");
                appendNewlines(&out, at, next);
                at = next;
                continue;
            }
        }
        out.append(at, int(next - at));
        at = next;
    }
    if (off)
        out.append("\n`endif\n");
    return out;
}

/// The words of a line that begins with a backquote, up to three.
static QList<QByteArray> directiveWords(const char *at, const char *end)
{
    while (at < end && (*at == ' ' || *at == '\t'))
        ++at;
    if (at == end || *at != '`')
        return {};
    // Nothing that counts here is long.
    const QByteArray line(at + 1, int(std::min<qint64>(end - at - 1, 100)));
    return line.simplified().split(' ').mid(0, 3);
}

/// 1 if a directive begins a protected region, 2 if it ends one, 3 if it is to go by itself.
static int foreignDirective(const QList<QByteArray> &words)
{
    const QByteArray first = words.value(0);
    const bool isPragma = first == "pragma" && words.value(1) == "protect";
    if (first == "protected" || (isPragma && words.value(2) == "begin_protected"))
        return 1;
    if (first == "endprotected" || (isPragma && words.value(2) == "end_protected"))
        return 2;
    return isPragma || first == "uselib" ? 3 : 0;
}

QByteArray maskForeignDirectives(const QByteArray &source)
{
    // Most sources have none and stay as they are.
    if (!source.contains("`uselib") && !source.contains("protect"))
        return source;
    QByteArray out = source;
    bool isProtected = false;
    const char *const begin = source.constBegin();
    const char *const end = source.constEnd();
    for (const char *at = begin; at < end;) {
        const char *next = lineEnd(at, end);
        const int kind = foreignDirective(directiveWords(at, next));
        isProtected = isProtected || kind == 1;
        if (isProtected || kind != 0) {
            for (const char *c = at; c < next; ++c) {
                if (*c != '\r')
                    out[int(c - begin)] = ' ';
            }
        }
        isProtected = isProtected && kind != 2;
        at = next < end ? next + 1 : end;
    }
    return out;
}

QByteArray maskVhdlPragmas(const QByteArray &source)
{
    QByteArray out = source;
    bool off = false;
    for (int at = 0, next = 0; at < source.size(); at = next) {
        next = std::max(at + 1, vhdlIgnoredEnd(source, at));
        const char *const begin = source.constData() + at;
        const char *const end = source.constData() + next;
        if (end - begin >= 2 && begin[0] == '-' && begin[1] == '-') {
            const int pragma = translatePragma(begin + 2, end);
            if (pragma != 0)
                off = pragma == 1;
        }
        for (int i = at; off && i < next; ++i) {
            if (source.at(i) != '\n' && source.at(i) != '\r')
                out[i] = ' ';
        }
    }
    return out;
}

QByteArray stripComments(const QByteArray &preprocessed)
{
    QByteArray out;
    out.reserve(preprocessed.size());
    const char *at = preprocessed.constBegin();
    const char *const end = preprocessed.constEnd();
    while (at < end) {
        const char *next = at + 1;
        if (*at == '"') {
            next = stringEnd(at, end);
        } else if (*at == '\\') {
            next = escapedEnd(at, end);
        } else if (startsComment(at, end)) {
            next = commentEnd(at, end);
            out.append(' ');
            appendNewlines(&out, at, next);
            at = next;
            continue;
        }
        out.append(at, int(next - at));
        at = next;
    }
    return out;
}

} // namespace Standin
