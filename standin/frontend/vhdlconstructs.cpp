// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/vhdlconstructs.h"

#include <algorithm>

namespace Standin {

// No author nests deeper, and what ends has to be searched that far.
static constexpr std::size_t MaximumDepth = 200;

class VhdlConstructs::Reader
{
public:
    Reader(const VhdlTokens &text, VhdlConstructs *constructs)
        : tokens(text)
        , result(constructs)
    {
    }

    void read();

private:
    // A construct that isn't ended yet, and the word behind "end" that ends it.
    struct Open
    {
        int construct;
        const char *word;
    };

    int step(int i);
    int branchEnd(int i) const;
    bool opensUnit(int i) const;
    int readUnit(int i);
    int readEnd(int i);
    int readStatement(int begin, int i);
    int readHeaded(VhdlConstruct::Kind kind, const char *word, int begin, int headerEnd);
    int readType(int begin);
    int readSubprogram(int begin);
    int readLoop(int begin, int i);
    int readList(int begin);
    int readLeaf(int begin, int i);
    bool isInstance(int i) const;
    int find(int i, std::initializer_list<const char *> words) const;
    int add(VhdlConstruct::Kind kind, int begin, int header, int end);
    void closeAll(int end, std::size_t left);
    bool isIn(std::initializer_list<const char *> words) const;

    const VhdlTokens &tokens;
    VhdlConstructs *result;
    std::vector<Open> open;
    int context = -1; ///< Index of the first token of the context clauses that were just read.
};

VhdlConstructs::VhdlConstructs(const VhdlTokens &text)
{
    Reader(text, this).read();
}

int VhdlConstructs::innermost(int token) const
{
    const auto behind =
        std::upper_bound(constructs.begin(), constructs.end(), token,
                         [](int wanted, const VhdlConstruct &each) { return wanted < each.begin; });
    int at = int(behind - constructs.begin()) - 1;
    while (at >= 0 && constructs[std::size_t(at)].end <= token)
        at = constructs[std::size_t(at)].parent;
    return at;
}

int VhdlConstructs::childBefore(int construct, int token) const
{
    const auto behind =
        std::upper_bound(constructs.begin(), constructs.end(), token,
                         [](int wanted, const VhdlConstruct &each) { return wanted < each.begin; });
    int at = int(behind - constructs.begin()) - 1;
    while (at > construct && constructs[std::size_t(at)].parent != construct)
        at = constructs[std::size_t(at)].parent;
    const bool isChild = at > construct && constructs[std::size_t(at)].end <= token;
    return isChild ? at : -1;
}

void VhdlConstructs::Reader::read()
{
    for (int i = 0; i < tokens.count();)
        i = std::max(i + 1, step(i));
    closeAll(tokens.count(), 0);
}

int VhdlConstructs::Reader::add(VhdlConstruct::Kind kind, int begin, int header, int end)
{
    const int parent = open.empty() ? -1 : open.back().construct;
    result->constructs.push_back({kind, begin, header, end, parent, -1});
    return int(result->constructs.size()) - 1;
}

/// Ends what is open but for \a left constructs.
void VhdlConstructs::Reader::closeAll(int end, std::size_t left)
{
    for (; open.size() > left; open.pop_back())
        result->constructs[std::size_t(open.back().construct)].end = end;
}

/// Index of the next token that is one of \a words, outside of brackets, at the end of the
/// statement at the latest.
int VhdlConstructs::Reader::find(int i, std::initializer_list<const char *> words) const
{
    while (i < tokens.count() && !tokens.isAny(i, words) && !tokens.isAny(i, {";", "begin", "end"}))
        i = tokens.behind(i);
    return i;
}

/// True for the words that begin a design unit. Packages stand in others too, and are taken for
/// units of their own only where the one ahead is ended.
bool VhdlConstructs::Reader::opensUnit(int i) const
{
    if (tokens.isAny(i, {"architecture", "configuration"}))
        return tokens.isName(i + 1) && tokens.is(i + 2, "of") && !tokens.is(i - 1, "end");
    if (tokens.isAny(i, {"entity", "context"}))
        return tokens.isName(i + 1) && tokens.is(i + 2, "is") && !tokens.is(i - 1, "end");
    return tokens.is(i, "package") && !tokens.is(i - 1, "end") && open.empty();
}

int VhdlConstructs::Reader::step(int i)
{
    if (opensUnit(i))
        return readUnit(i);
    if (open.empty() || (open.size() == 1 && tokens.is(i, "library"))) {
        // Between units stand context clauses, and what remains of faults.
        if (tokens.isAny(i, {"library", "use", "context"})) {
            closeAll(i, 0);
            context = context < 0 ? i : context;
        }
        const int end = std::min(tokens.count(), find(i, {}) + 1);
        add(VhdlConstruct::Context, i, end, end);
        return end;
    }
    if (tokens.is(i, "end"))
        return readEnd(i);
    if (tokens.is(i, ";"))
        return i + 1;
    if (tokens.is(i, "begin")) {
        int &body = result->constructs[std::size_t(open.back().construct)].body;
        body = body < 0 ? i : body;
        return i + 1;
    }
    const int branch = isIn({"if", "case", "generate"}) ? branchEnd(i) : i;
    if (branch == i)
        return readStatement(i, i);
    add(VhdlConstruct::Branch, i, branch, branch);
    return branch;
}

/// Index behind what leads to another branch of a condition or selection at \a i, or \a i.
int VhdlConstructs::Reader::branchEnd(int i) const
{
    if (tokens.is(i, "else")) {
        const int generate = tokens.is(i + 2, ":") ? i + 3 : i + 1;
        return tokens.is(generate, "generate") ? generate + 1 : i + 1;
    }
    if (tokens.is(i, "elsif"))
        return std::min(tokens.count(), find(i, {"then", "generate"}) + 1);
    if (!tokens.is(i, "when"))
        return i;
    int end = i;
    do {
        end = find(end + 1, {"="});
    } while (tokens.is(end, "=") && !tokens.is(end + 1, ">"));
    return std::min(tokens.count(), tokens.is(end, "=") ? end + 2 : end);
}

bool VhdlConstructs::Reader::isIn(std::initializer_list<const char *> words) const
{
    return std::any_of(words.begin(), words.end(),
                       [&](const char *word) { return qstrcmp(open.back().word, word) == 0; });
}

int VhdlConstructs::Reader::readUnit(int i)
{
    closeAll(context >= 0 ? context : i, 0);
    VhdlUnit unit;
    const bool isBody = tokens.is(i, "package") && tokens.is(i + 1, "body");
    const int name = isBody ? i + 2 : i + 1;
    const char *word = "package";
    unit.kind = isBody ? VhdlUnit::PackageBody : VhdlUnit::Package;
    if (tokens.is(i, "entity")) {
        unit.kind = VhdlUnit::Entity;
        word = "entity";
    } else if (tokens.is(i, "architecture")) {
        unit.kind = VhdlUnit::Architecture;
        word = "architecture";
    } else if (tokens.is(i, "configuration")) {
        unit.kind = VhdlUnit::Configuration;
        word = "configuration";
    } else if (tokens.is(i, "context")) {
        unit.kind = VhdlUnit::ContextDeclaration;
        word = "context";
    }
    unit.begin = context >= 0 ? context : i;
    context = -1;
    unit.name = tokens.text(name).toLower();
    int header = name + 1;
    if (tokens.is(header, "of")) {
        ++header;
        while (tokens.is(header + 1, "."))
            header += 2;
        unit.of = tokens.text(header++).toLower();
    }
    header += tokens.is(header, "is") ? 1 : 0;
    const bool isInstance = tokens.is(header, "new");
    unit.construct = add(VhdlConstruct::Unit, i, header, header);
    result->designUnits.push_back(unit);
    if (isInstance) {
        const int end = std::min(tokens.count(), find(header, {}) + 1);
        result->constructs[std::size_t(unit.construct)].end = end;
        return end;
    }
    open.push_back({unit.construct, word});
    return header;
}

/// Reads "end ... ;" and ends what it belongs to.
int VhdlConstructs::Reader::readEnd(int i)
{
    const int semicolon = find(i + 1, {});
    const int end = std::min(tokens.count(), tokens.is(semicolon, ";") ? semicolon + 1 : semicolon);
    const int word = tokens.is(i + 1, "postponed") ? i + 2 : i + 1;
    static const char *const words[] = {
        "if",           "case",    "loop",      "process",   "block",   "generate",
        "component",    "record",  "units",     "protected", "for",     "entity",
        "architecture", "package", "procedure", "function",  "context", "configuration"};
    const auto kind = std::find_if(std::begin(words), std::end(words),
                                   [&](const char *each) { return tokens.is(word, each); });
    if (kind == std::end(words)) {
        // A bare end is that of a unit or subprogram; in a generate statement that of a branch.
        if (!isIn({"generate"}))
            while (open.size() > 1
                   && isIn({"if", "case", "loop", "process", "block", "component", "record"}))
                closeAll(i, open.size() - 1);
        if (!isIn({"generate"}))
            closeAll(end, open.size() - 1);
        return end;
    }
    for (std::size_t at = open.size(); at > 0; --at) {
        const bool isFunction = tokens.isAny(word, {"function", "procedure"})
            && qstrcmp(open[at - 1].word, "function") == 0;
        if (qstrcmp(open[at - 1].word, *kind) != 0 && !isFunction)
            continue;
        closeAll(i, at);
        closeAll(end, at - 1);
        break;
    }
    return end;
}

int VhdlConstructs::Reader::readHeaded(VhdlConstruct::Kind kind, const char *word, int begin,
                                       int headerEnd)
{
    const int header = std::min(headerEnd, tokens.count());
    if (open.size() == MaximumDepth)
        return readLeaf(begin, begin);
    open.push_back({add(kind, begin, header, header), word});
    return header;
}

/// Reads the declaration or statement at \a i, whose label, if any, is at \a begin.
int VhdlConstructs::Reader::readStatement(int begin, int i)
{
    if (tokens.isName(i) && tokens.is(i + 1, ":") && !tokens.is(i + 2, "=")) {
        if (begin == i && !isIn({"record", "component"}))
            return readStatement(begin, i + 2);
        return readLeaf(begin, i);
    }
    const int word = tokens.is(i, "postponed") ? i + 1 : i;
    if (tokens.is(word, "process") || tokens.is(word, "block")) {
        const bool isProcess = tokens.is(word, "process");
        int header = tokens.behind(word + 1);
        header = tokens.is(word + 1, "(") ? header : word + 1;
        header += tokens.is(header, "is") ? 1 : 0;
        return readHeaded(isProcess ? VhdlConstruct::Process : VhdlConstruct::Region,
                          isProcess ? "process" : "block", begin, header);
    }
    if (tokens.is(i, "if")) {
        const int header = find(i, {"then", "generate"});
        const bool isRegion = tokens.is(header, "generate");
        return readHeaded(isRegion ? VhdlConstruct::Region : VhdlConstruct::Statement,
                          isRegion ? "generate" : "if", begin, header + 1);
    }
    if (tokens.is(i, "case")) {
        const int header = find(i, {"is", "generate"});
        const bool isRegion = tokens.is(header, "generate");
        return readHeaded(isRegion ? VhdlConstruct::Region : VhdlConstruct::Statement,
                          isRegion ? "generate" : "case", begin, header + 1);
    }
    if (tokens.isAny(i, {"for", "while", "loop"}))
        return readLoop(begin, i);
    if (tokens.is(i, "component"))
        return readHeaded(VhdlConstruct::Compound, "component", begin,
                          tokens.is(i + 2, "is") ? i + 3 : i + 2);
    if (tokens.isAny(i, {"function", "procedure", "pure", "impure"}))
        return readSubprogram(begin);
    if (tokens.is(i, "package") && tokens.is(find(i, {"new"}), ";"))
        return readHeaded(VhdlConstruct::Compound, "package", begin, find(i, {"is"}) + 1);
    if (tokens.is(i, "type"))
        return readType(begin);
    if (tokens.isAny(i, {"port", "generic"}) && tokens.is(i + 1, "("))
        return readList(begin);
    return readLeaf(begin, i);
}

int VhdlConstructs::Reader::readType(int begin)
{
    const int word = tokens.is(begin + 2, "is") ? begin + 3 : begin + 2;
    if (tokens.is(word, "record"))
        return readHeaded(VhdlConstruct::Compound, "record", begin, word + 1);
    if (tokens.is(word, "protected"))
        return readHeaded(VhdlConstruct::Compound, "protected", begin,
                          tokens.is(word + 1, "body") ? word + 2 : word + 1);
    const int units = find(word, {"units"});
    if (tokens.is(units, "units"))
        return readHeaded(VhdlConstruct::Compound, "units", begin, units + 1);
    return readLeaf(begin, begin);
}

int VhdlConstructs::Reader::readSubprogram(int begin)
{
    const int is = find(begin, {"is"});
    if (!tokens.is(is, "is") || tokens.is(is + 1, "new"))
        return readLeaf(begin, begin);
    return readHeaded(VhdlConstruct::Compound, "function", begin, is + 1);
}

/// Loops and generate statements begin with the same words, and configuration specifications too.
int VhdlConstructs::Reader::readLoop(int begin, int i)
{
    const int header = find(i, {"loop", "generate"});
    if (tokens.is(header, "generate"))
        return readHeaded(VhdlConstruct::Region, "generate", begin, header + 1);
    if (tokens.is(header, "loop"))
        return readHeaded(VhdlConstruct::Statement, "loop", begin, header + 1);
    if (isIn({"configuration"}) && tokens.is(i, "for"))
        return readHeaded(VhdlConstruct::Compound, "for", begin, i + 2);
    return readLeaf(begin, i);
}

int VhdlConstructs::Reader::readList(int begin)
{
    const int closing = tokens.match(begin + 1);
    if (closing < 0)
        return readLeaf(begin, begin);
    const int end = tokens.is(closing + 1, ";") ? closing + 2 : closing + 1;
    open.push_back({add(VhdlConstruct::List, begin, begin + 2, end), "list"});
    for (int i = begin + 2; i < closing;) {
        int last = i;
        while (last < closing && !tokens.is(last, ";"))
            last = tokens.behind(last);
        if (last > i)
            add(VhdlConstruct::Element, i, last, last);
        i = last + 1;
    }
    open.pop_back();
    return end;
}

bool VhdlConstructs::Reader::isInstance(int i) const
{
    if (tokens.isAny(i, {"entity", "component", "configuration"}))
        return true;
    while (tokens.isName(i) && tokens.is(i + 1, "."))
        i += 2;
    const bool hasMap =
        tokens.isAny(i + 1, {"port", "generic"}) && tokens.is(i + 2, "map") && tokens.isName(i);
    return hasMap || (tokens.isName(i) && tokens.is(i + 1, ";"));
}

int VhdlConstructs::Reader::readLeaf(int begin, int i)
{
    int end = i;
    while (end < tokens.count() && !tokens.is(end, ";")
           && (end == i || !tokens.isAny(end, {"begin", "end", "process"})) && !opensUnit(end))
        end = tokens.behind(end);
    end = std::min(tokens.count(), tokens.is(end, ";") ? end + 1 : std::max(end, i + 1));
    const bool isLabelled = begin < i;
    add(isLabelled && isInstance(i) ? VhdlConstruct::Instance : VhdlConstruct::Leaf, begin, end,
        end);
    return end;
}

} // namespace Standin
