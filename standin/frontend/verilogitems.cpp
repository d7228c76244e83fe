// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogitems.h"

#include <algorithm>
#include <iterator>

namespace Standin {

// No author nests conditions this deep without blocks in between.
static constexpr int MaximumDepth = 100;

bool opensModule(const VerilogTokens &tokens, int i)
{
    if (!tokens.isAny(i, {"module", "macromodule", "interface", "program", "primitive"}))
        return false;
    const int name = moduleName(tokens, i);
    const bool declares = tokens.isWord(name)
        && (tokens.is(name + 1, '(') || tokens.is(name + 1, '#') || tokens.is(name + 1, ';')
            || tokens.is(name + 1, "import"));
    // A port of interface type and a virtual interface begin with the same word.
    const bool isType = tokens.is(i, "interface") && tokens.isAny(i - 1, {"virtual", "(", ","});
    return declares && !isType && !tokens.is(i - 1, "extern");
}

int moduleName(const VerilogTokens &tokens, int i)
{
    do {
        ++i;
    } while (tokens.isAny(i, {"automatic", "static"}));
    return i;
}

namespace {

struct Enclosing
{
    const char *open;
    const char *close;
};

const Enclosing enclosings[] = {
    {"function", "endfunction"}, {"task", "endtask"},         {"class", "endclass"},
    {"covergroup", "endgroup"},  {"property", "endproperty"}, {"sequence", "endsequence"},
    {"specify", "endspecify"},   {"checker", "endchecker"},   {"clocking", "endclocking"},
    {"config", "endconfig"},     {"table", "endtable"},
};

/// Words that begin an item wherever they stand, or end what items stand in.
bool isHardLimit(const VerilogTokens &tokens, int i)
{
    return tokens.isAny(i,
                        {"always", "always_comb", "always_ff", "always_latch", "initial", "final",
                         "endmodule", "endgenerate", "endinterface", "endpackage", "endprogram",
                         "endprimitive", "generate"})
        || opensModule(tokens, i);
}

/// Index behind the token that closes what is opened at \a i, counting what is opened inside.
int enclosedEnd(const VerilogTokens &tokens, int i, int limit,
                std::initializer_list<const char *> openers,
                std::initializer_list<const char *> closers)
{
    int depth = 0;
    for (; i < limit; ++i) {
        if (tokens.at(i).kind != VerilogToken::Keyword)
            continue;
        if (tokens.isAny(i, openers))
            ++depth;
        else if (tokens.isAny(i, closers) && --depth == 0)
            return std::min(limit, tokens.is(i + 1, ':') ? i + 3 : i + 1);
    }
    return limit;
}

int simpleEnd(const VerilogTokens &tokens, int i, int limit)
{
    for (const int begin = i; i < limit; i = tokens.behind(i)) {
        if (tokens.is(i, ';'))
            return i + 1;
        if (i > begin && (isHardLimit(tokens, i) || tokens.isAny(i, {"end", "endcase", "else"})))
            return i;
    }
    return limit;
}

/// Index behind the control at \a i, a delay or an event, that a statement may begin with.
int controlEnd(const VerilogTokens &tokens, int i)
{
    ++i;
    if (tokens.is(i, '#') || tokens.is(i, '@'))
        ++i;
    if (tokens.is(i, '('))
        return tokens.behind(i);
    ++i;
    while (tokens.is(i, '.') || tokens.is(i, "::"))
        i += 2;
    while (tokens.is(i, '['))
        i = tokens.behind(i);
    return i;
}

int endOfStatement(const VerilogTokens &tokens, int i, int limit, int depth)
{
    if (depth > MaximumDepth)
        return limit;
    while (i < limit) {
        if (tokens.is(i, "begin"))
            return enclosedEnd(tokens, i, limit, {"begin"}, {"end"});
        if (tokens.is(i, "fork"))
            return enclosedEnd(tokens, i, limit, {"fork"}, {"join", "join_any", "join_none"});
        if (tokens.isAny(i, {"case", "casez", "casex", "randcase"}))
            return enclosedEnd(tokens, i, limit, {"case", "casez", "casex", "randcase"},
                               {"endcase"});
        if (tokens.is(i, "randsequence"))
            return enclosedEnd(tokens, i, limit, {"randsequence"}, {"endsequence"});
        if (tokens.is(i, "do")) {
            i = endOfStatement(tokens, i + 1, limit, depth + 1);
            return simpleEnd(tokens, i, limit);
        }
        const bool isCheck = tokens.isAny(i, {"assert", "assume", "cover", "restrict"});
        if (isCheck || tokens.is(i, "if")) {
            const int open = tokens.isAny(i + 1, {"property", "sequence", "final"}) ? i + 2
                : tokens.is(i + 1, '#')                                             ? i + 3
                                                                                    : i + 1;
            i = tokens.behind(open);
            if (!tokens.is(i, "else"))
                i = endOfStatement(tokens, i, limit, depth + 1);
            if (!tokens.is(i, "else"))
                return std::min(i, limit);
            ++i;
        } else if (tokens.isAny(i, {"for", "while", "repeat", "foreach", "wait"})
                   && tokens.is(i + 1, '(')) {
            i = tokens.behind(i + 1);
        } else if (tokens.isAny(i, {"forever", "unique", "unique0", "priority"})) {
            ++i;
        } else if (tokens.is(i, '@') || tokens.is(i, '#')) {
            i = controlEnd(tokens, i);
        } else if (tokens.isWord(i) && tokens.is(i + 1, ':')) {
            i += 2;
        } else {
            return simpleEnd(tokens, i, limit);
        }
    }
    return limit;
}

class UnitReader
{
public:
    explicit UnitReader(const VerilogTokens &textTokens)
        : tokens(textTokens)
    {
    }

    std::vector<VerilogUnit> read();

private:
    bool opensUnit(int i) const;
    int readUnit(int i);
    int unitEnd(int i, bool isPackage) const;
    void readItems(VerilogUnit *unit);
    int structureEnd(int i) const;
    int itemEnd(int i, int limit);

    const VerilogTokens &tokens;
    int exhausted[std::size(enclosings)] = {}; ///< Where a limit is met without the closing word.
    std::vector<VerilogUnit> units;
};

std::vector<VerilogUnit> UnitReader::read()
{
    VerilogUnit outside;
    outside.end = tokens.count();
    for (int i = 0; i < tokens.count();) {
        if (opensUnit(i)) {
            i = readUnit(i);
            continue;
        }
        int end = std::max(i + 1, itemEnd(i, tokens.count()));
        for (int inner = i + 1; inner < end; ++inner) {
            if (opensUnit(inner))
                end = inner;
        }
        outside.items.push_back({i, end});
        i = end;
    }
    units.push_back(std::move(outside));
    return std::move(units);
}

bool UnitReader::opensUnit(int i) const
{
    return opensModule(tokens, i)
        || (tokens.is(i, "package") && tokens.isWord(moduleName(tokens, i)));
}

/// Index of the word that ends the unit at \a i; modules may be declared in modules.
int UnitReader::unitEnd(int i, bool isPackage) const
{
    if (isPackage) {
        while (i < tokens.count() && !tokens.is(i, "endpackage"))
            ++i;
        return i;
    }
    int depth = 1;
    for (++i; i < tokens.count(); ++i) {
        if (tokens.at(i).kind != VerilogToken::Keyword)
            continue;
        if (opensModule(tokens, i))
            ++depth;
        else if (tokens.isAny(i, {"endmodule", "endinterface", "endprogram", "endprimitive"})
                 && --depth == 0)
            return i;
    }
    return i;
}

int UnitReader::readUnit(int i)
{
    VerilogUnit unit;
    unit.begin = i;
    unit.name = moduleName(tokens, i);
    unit.end = unitEnd(i, tokens.is(i, "package"));
    unit.header = i;
    while (unit.header < unit.end && !tokens.is(unit.header, ';'))
        unit.header = tokens.behind(unit.header);
    unit.header = std::min(unit.header + 1, unit.end);
    if (tokens.is(i, "primitive"))
        unit.items.push_back({unit.header, unit.end});
    else
        readItems(&unit);
    units.push_back(unit);
    int next = unit.end + 1;
    if (tokens.is(next, ':') && tokens.isWord(next + 1))
        next += 2;
    return next;
}

void UnitReader::readItems(VerilogUnit *unit)
{
    for (int i = unit->header; i < unit->end;) {
        const int structure = structureEnd(i);
        if (structure > i) {
            i = structure;
            continue;
        }
        const int end = std::max(i + 1, itemEnd(i, unit->end));
        unit->items.push_back({i, end});
        i = end;
    }
}

/// Index behind what holds generate constructs together at \a i, or \a i.
int UnitReader::structureEnd(int i) const
{
    if (tokens.isAny(i, {"begin", "end", "generate", "endgenerate", "else", "endcase", "default"})
        || tokens.is(i, ';')) {
        const bool isDefault = tokens.is(i, "default");
        if (isDefault && tokens.isAny(i + 1, {"clocking", "disable"}))
            return i;
        if (isDefault)
            return tokens.is(i + 1, ':') ? i + 2 : i + 1;
        return tokens.is(i + 1, ':') && tokens.isWord(i + 2) ? i + 3 : i + 1;
    }
    if (tokens.isAny(i, {"if", "for", "case"}))
        return tokens.behind(i + 1);
    const quint32 kind = tokens.at(i).kind;
    const bool mayBeLabel = kind == VerilogToken::Word || kind == VerilogToken::Number;
    return mayBeLabel && tokens.is(i + 1, ':') ? i + 2 : i;
}

int UnitReader::itemEnd(int i, int limit)
{
    if (tokens.at(i).kind == VerilogToken::Macro) {
        i = tokens.is(i + 1, '(') ? tokens.behind(i + 1) : i + 1;
        return tokens.is(i, ';') ? i + 1 : i;
    }
    if (tokens.isAny(i, {"always", "always_comb", "always_ff", "always_latch", "initial", "final"}))
        return statementEnd(tokens, i + 1, limit);
    if (tokens.isAny(i, {"assert", "assume", "cover", "restrict"}))
        return statementEnd(tokens, i, limit);
    if (opensModule(tokens, i))
        return std::min(limit, unitEnd(i, false) + 1);
    int word = i;
    while (tokens.isAny(word, {"virtual", "interface", "default", "global", "static"}))
        ++word;
    for (std::size_t kind = 0; kind < std::size(enclosings); ++kind) {
        if (!tokens.is(word, enclosings[kind].open) || exhausted[kind] == limit)
            continue;
        for (int end = word + 1; end < limit; ++end) {
            if (tokens.is(end, enclosings[kind].close))
                return std::min(limit, tokens.is(end + 1, ':') ? end + 3 : end + 1);
        }
        // A name of the older language, or a prototype, has no end of its own.
        exhausted[kind] = limit;
    }
    return simpleEnd(tokens, i, limit);
}

} // namespace

int statementEnd(const VerilogTokens &tokens, int begin, int limit)
{
    return std::min(limit, endOfStatement(tokens, begin, limit, 0));
}

std::vector<VerilogUnit> verilogUnits(const VerilogTokens &tokens)
{
    return UnitReader(tokens).read();
}

} // namespace Standin
