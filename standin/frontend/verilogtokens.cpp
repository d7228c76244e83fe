// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogtokens.h"

#include "frontend/verilogspans.h"

#include <QSet>

#include <algorithm>
#include <cstring>

namespace Standin {

// The reserved words of Verilog and SystemVerilog. A design in the older language may use some of
// them as names; such a name is no module type in practice.
static const char keywordList[] =
    "always always_comb always_ff always_latch and assert assign assume automatic before begin "
    "bind bins binsof bit break buf bufif0 bufif1 byte case casex casez cell chandle checker "
    "class clocking cmos config const constraint context continue cover covergroup coverpoint "
    "cross deassign default defparam design disable dist do edge else end endcase endchecker "
    "endclass endclocking endconfig endfunction endgenerate endgroup endinterface endmodule "
    "endpackage endprimitive endprogram endproperty endspecify endsequence endtable endtask enum "
    "event eventually expect export extends extern final first_match for force foreach forever "
    "fork forkjoin function generate genvar global highz0 highz1 if iff ifnone ignore_bins "
    "illegal_bins implements implies import incdir include initial inout input inside instance "
    "int integer interconnect interface intersect join join_any join_none large let liblist "
    "library local localparam logic longint macromodule matches medium modport module nand "
    "negedge nettype new nexttime nmos nor noshowcancelled not notif0 notif1 null or output "
    "package packed parameter pmos posedge primitive priority program property protected pull0 "
    "pull1 pulldown pullup pulsestyle_ondetect pulsestyle_onevent pure rand randc randcase "
    "randsequence rcmos real realtime ref reg reject_on release repeat restrict return rnmos "
    "rpmos rtran rtranif0 rtranif1 s_always s_eventually s_nexttime s_until s_until_with "
    "scalared sequence shortint shortreal showcancelled signed small soft solve specify "
    "specparam static string strong strong0 strong1 struct super supply0 supply1 "
    "sync_accept_on sync_reject_on table tagged task this throughout time timeprecision timeunit "
    "tran tranif0 tranif1 tri tri0 tri1 triand trior trireg type typedef union unique unique0 "
    "unsigned until until_with untyped use uwire var vectored virtual void wait wait_order wand "
    "weak weak0 weak1 while wildcard wire with within wor xnor xor";

static bool isKeyword(const char *begin, int length)
{
    static const QSet<QByteArray> keywords = [] {
        QSet<QByteArray> set;
        const auto words = QByteArray(keywordList).split(' ');
        for (const QByteArray &word : words)
            set.insert(word);
        return set;
    }();
    if (length > 20)
        return false;
    return keywords.contains(QByteArray::fromRawData(begin, length));
}

static bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

static bool startsWord(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$'
        || (c & 0x80) != 0;
}

static bool isInWord(char c)
{
    return startsWord(c) || isDigit(c);
}

static bool startsBase(const char *at, const char *end)
{
    if (at < end && (*at == 's' || *at == 'S'))
        ++at;
    return at < end && *at != '\0' && std::strchr("bBoOdDhH", *at);
}

VerilogTokens::VerilogTokens(const QByteArray &text)
    : source(text)
    , start(source.constBegin())
    , stop(source.constEnd())
{
    read();
    matchBrackets();
}

QByteArray VerilogTokens::text(int index) const
{
    const VerilogToken &token = at(index);
    return QByteArray(start + token.begin, int(token.length));
}

bool VerilogTokens::isAny(int index, std::initializer_list<const char *> words) const
{
    const VerilogToken &token = at(index);
    return isFixed(token) && std::any_of(words.begin(), words.end(), [&](const char *word) {
               return reads(token, word);
           });
}

int VerilogTokens::behind(int index) const
{
    if (!is(index, '(') && !is(index, '[') && !is(index, '{'))
        return index + 1;
    return at(index).match < 0 ? index + 1 : at(index).match + 1;
}

int VerilogTokens::find(quint32 offset) const
{
    const auto found = std::upper_bound(tokens.begin(), tokens.end(), offset,
                                        [](quint32 wanted, const VerilogToken &token) {
                                            return wanted < token.begin + token.length;
                                        });
    return int(found - tokens.begin());
}

void VerilogTokens::add(const char *begin, const char *end, VerilogToken::Kind kind)
{
    const qint64 longest = (1 << 24) - 1;
    tokens.push_back(
        {quint32(begin - start), quint32(std::min<qint64>(end - begin, longest)), kind, -1});
}

/// End of the attribute at \a begin, or \a begin if there is none.
const char *VerilogTokens::readAttribute(const char *begin)
{
    if (attributesEnded || stop - begin < 2 || begin[1] != '*')
        return begin;
    const char *at = begin + 2;
    // An event list of everything looks nearly the same.
    while (at < stop && isVerilogBlank(*at))
        ++at;
    if (at < stop && *at == ')')
        return begin;
    for (; at + 1 < stop; ++at) {
        if (*at == '*' && at[1] == ')')
            return at + 2;
    }
    attributesEnded = true;
    return begin;
}

const char *VerilogTokens::readWord(const char *begin)
{
    const char *at = begin;
    while (at < stop && isInWord(*at))
        ++at;
    const bool keyword = isKeyword(begin, int(std::min<qint64>(at - begin, 100)));
    add(begin, at, keyword ? VerilogToken::Keyword : VerilogToken::Word);
    return at;
}

/// Directives that survive preprocessing take the rest of their line, but for the few without an
/// argument. What is no directive is a macro that nobody has defined.
const char *VerilogTokens::readDirective(const char *begin)
{
    static const char *const plain[] = {"celldefine",
                                        "endcelldefine",
                                        "resetall",
                                        "end_keywords",
                                        "nounconnected_drive",
                                        "accelerate",
                                        "noaccelerate",
                                        "protect",
                                        "endprotect",
                                        "suppress_faults",
                                        "nosuppress_faults",
                                        "enable_portfaults",
                                        "disable_portfaults",
                                        "expand_vectornets",
                                        "noexpand_vectornets",
                                        "autoexpand_vectornets",
                                        "remove_gatenames",
                                        "noremove_gatenames",
                                        "remove_netnames",
                                        "noremove_netnames",
                                        "delay_mode_path",
                                        "delay_mode_unit",
                                        "delay_mode_zero",
                                        "delay_mode_distributed"};
    static const char *const withArgument[] = {"line",
                                               "timescale",
                                               "default_nettype",
                                               "unconnected_drive",
                                               "pragma",
                                               "begin_keywords",
                                               "default_decay_time",
                                               "default_trireg_strength",
                                               "uselib",
                                               "protected",
                                               "endprotected",
                                               "include",
                                               "define",
                                               "undef",
                                               "ifdef",
                                               "ifndef",
                                               "else",
                                               "elsif",
                                               "endif"};
    const char *end = begin + 1;
    while (end < stop && isInWord(*end))
        ++end;
    const QByteArray word = QByteArray::fromRawData(begin + 1, int(end - begin - 1));
    if (std::find(std::begin(plain), std::end(plain), word) != std::end(plain))
        return end;
    if (std::find(std::begin(withArgument), std::end(withArgument), word)
        == std::end(withArgument)) {
        add(begin, end, VerilogToken::Macro);
        return end;
    }
    return lineEnd(begin, stop);
}

static const char *numberEnd(const char *at, const char *end)
{
    while (at < end && (isInWord(*at) || *at == '.' || *at == '?'))
        ++at;
    if (at + 1 < end && *at == '\'' && startsBase(at + 1, end)) {
        ++at;
        while (at < end && (isInWord(*at) || *at == '?'))
            ++at;
    }
    return at;
}

void VerilogTokens::read()
{
    tokens.reserve(size_t(source.size()) / 4 + 16);
    const char *at = start;
    while (at < stop) {
        const char *next = at + 1;
        if (isVerilogBlank(*at)) {
            // Nothing to keep.
        } else if (startsWord(*at)) {
            next = readWord(at);
        } else if (*at == '\\') {
            next = escapedEnd(at, stop);
            // A backslash without a name behind it names nothing.
            if (next > at + 1)
                add(at + 1, next, VerilogToken::Word);
            else
                add(at, next, VerilogToken::Symbol);
        } else if (isDigit(*at) || (*at == '\'' && startsBase(at + 1, stop))) {
            next = *at == '\'' ? numberEnd(at + 1, stop) : numberEnd(at, stop);
            add(at, next, VerilogToken::Number);
        } else if (*at == '"') {
            next = stringEnd(at, stop);
            add(at, next, VerilogToken::String);
        } else if (*at == '`') {
            next = readDirective(at);
        } else if (startsComment(at, stop)) {
            next = commentEnd(at, stop);
        } else if (*at == '(' && readAttribute(at) != at) {
            next = readAttribute(at);
        } else {
            if (*at == ':' && next < stop && *next == ':')
                ++next;
            add(at, next, VerilogToken::Symbol);
        }
        at = next;
    }
}

static bool endsScope(const char *word, quint32 length)
{
    static const char *const words[] = {"endmodule",  "endfunction",  "endtask",    "endinterface",
                                        "endpackage", "endprimitive", "endprogram", "endclass"};
    if (length < 7 || std::memcmp(word, "end", 3) != 0)
        return false;
    return std::any_of(std::begin(words), std::end(words), [&](const char *candidate) {
        return std::strlen(candidate) == length && std::memcmp(word, candidate, length) == 0;
    });
}

void VerilogTokens::matchBrackets()
{
    std::vector<int> open;
    for (int i = 0; i < count(); ++i) {
        const VerilogToken &token = tokens[size_t(i)];
        if (token.kind == VerilogToken::Keyword && endsScope(start + token.begin, token.length))
            open.clear();
        if (token.kind != VerilogToken::Symbol)
            continue;
        const char c = start[token.begin];
        if (c == '(' || c == '[' || c == '{') {
            open.push_back(i);
        } else if ((c == ')' || c == ']' || c == '}') && !open.empty()) {
            // Kinds aren't compared: in faulty text any pairing is as good as another.
            tokens[size_t(open.back())].match = i;
            tokens[size_t(i)].match = open.back();
            open.pop_back();
        }
    }
}

} // namespace Standin
