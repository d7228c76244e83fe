// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/designrepair_p.h"

#include "frontend/verilogscanner.h"

#include <QRegularExpression>

#include <algorithm>

namespace Standin {

// How many rounds a module may be faulty before it loses more than the faulty statements.
static constexpr int RoundsOfStatements = 6;

static Remains remainsAfter(int rounds)
{
    const int more = std::max(0, rounds - RoundsOfStatements);
    return Remains(std::min(more, int(Remains::Nothing)));
}

const VerilogUnit &DesignRepair::Round::unitAt(int token) const
{
    const auto behind =
        std::upper_bound(units.begin(), units.end() - 1, token,
                         [](int wanted, const VerilogUnit &unit) { return wanted < unit.begin; });
    if (behind == units.begin() || (behind - 1)->end < token)
        return units.back();
    return *(behind - 1);
}

int itemAt(const std::vector<VerilogItem> &items, int token)
{
    const auto behind =
        std::upper_bound(items.begin(), items.end(), token,
                         [](int wanted, const VerilogItem &item) { return wanted < item.begin; });
    if (behind == items.begin() || (behind - 1)->end <= token)
        return -1;
    return int(behind - items.begin()) - 1;
}

bool DesignRepair::Round::takeOut(const ToolMessage &error, Concern *concern)
{
    *concern = Concern::Design;
    const QVector<quint32> lines = places.offsets(error.file, error.line);
    for (quint32 line : lines) {
        const int token = tokenAt(line, error);
        const VerilogUnit &unit = unitAt(token);
        *concern = concernOf(error, unit, token);
        losesNames = *concern != Concern::Checks;
        takeOutAt(error, unit, token);
    }
    return !lines.isEmpty();
}

void DesignRepair::Round::takeOutItem(quint32 offset)
{
    const int token = tokens.find(offset);
    const VerilogItem item = itemOf(unitAt(token), token);
    blank(item.begin, item.end);
}

DesignRepair::Concern DesignRepair::Round::concernOf(const ToolMessage &error,
                                                     const VerilogUnit &unit, int token) const
{
    if (!repair->isFirstRound && isConsequence(error, token))
        return Concern::Consequence;
    const int item = itemAt(unit.items, token);
    const int first = item < 0 ? unit.begin : unit.items[std::size_t(item)].begin;
    const bool isCheck = tokens.isAny(first, {"class", "covergroup", "checker", "config"})
        || (tokens.isAny(first, {"virtual", "interface"}) && tokens.is(first + 1, "class"));
    if (isCheck || tokens.is(unit.begin, "program") || isTestbench(unit))
        return Concern::Checks;
    // Of a black box nothing is known, so nothing is lost with one of its connections.
    const bool isInstance = item >= 0 && tokens.isWord(first)
        && (tokens.isWord(first + 1) || tokens.is(first + 1, '#'));
    if (isInstance && repair->blackBoxes.contains(tokens.text(first)))
        return Concern::BlackBox;
    return Concern::Design;
}

/// A module without ports that isn't below the top and makes things happen by itself.
bool DesignRepair::Round::isTestbench(const VerilogUnit &unit) const
{
    if (unit.name < 0 || !tokens.is(unit.begin, "module") || repair->needed.isEmpty()
        || repair->needed.contains(QString::fromUtf8(nameOf(unit))))
        return false;
    int ports = unit.name + 1;
    if (tokens.is(ports, '#'))
        ports = tokens.behind(ports + 1);
    const bool hasPorts = tokens.is(ports, '(') && !tokens.is(ports + 1, ')');
    return !hasPorts
        && std::any_of(unit.items.begin(), unit.items.end(), [&](const VerilogItem &item) {
               return tokens.isAny(item.begin, {"initial", "class", "program"});
           });
}

bool DesignRepair::Round::isConsequence(const ToolMessage &error, int token) const
{
    static const QRegularExpression quoted("'(?:[A-Za-z_$][\\w$]*(?:\\.|::))*([A-Za-z_$][\\w$]*)'");
    const QRegularExpressionMatch match = quoted.match(error.text);
    if (match.hasMatch() && repair->lost.contains(match.captured(1).toUtf8()))
        return true;
    for (int near : {token, token - 1}) {
        if (tokens.isWord(near) && repair->lost.contains(tokens.text(near)))
            return true;
    }
    return false;
}

void DesignRepair::Round::takeOutAt(const ToolMessage &error, const VerilogUnit &unit, int token)
{
    if (unit.name < 0) {
        const int item = itemAt(unit.items, std::min(token, unit.end - 1));
        if (item >= 0)
            blank(unit.items[std::size_t(item)].begin, unit.items[std::size_t(item)].end);
        return;
    }
    if (mend(error, unit, token))
        return;
    const int index = int(&unit - units.data());
    const bool isNew = !faulty.contains(index);
    faulty.insert(index);
    int &rounds = repair->faultyRounds[nameOf(unit)];
    rounds += isNew;

    // Without its first line nothing of the module can stay but what it instantiates.
    if (token < unit.header)
        rounds = std::max(rounds, RoundsOfStatements + int(Remains::Instances));
    const Remains remains = remainsAfter(rounds);
    if (remains != Remains::AllButFaults) {
        takeOutUnit(unit, remains);
        return;
    }
    const VerilogItem faultyItem = itemOf(unit, token);
    if (!isPinError(error) || !takeOutConnection(faultyItem, token))
        blank(faultyItem.begin, faultyItem.end);
}

/// What is to go for an error at \a token: an item, or a generate construct whose head it is in.
VerilogItem DesignRepair::Round::itemOf(const VerilogUnit &unit, int token) const
{
    int item = itemAt(unit.items, token);
    // An end that comes too early is the fault of what isn't ended ahead of it.
    if (item < 0 && token >= unit.end && !unit.items.empty())
        item = int(unit.items.size()) - 1;
    if (item >= 0)
        return unit.items[std::size_t(item)];
    const auto behind =
        std::upper_bound(unit.items.begin(), unit.items.end(), token,
                         [](int wanted, const VerilogItem &each) { return wanted < each.begin; });
    const int first = behind == unit.items.begin() ? unit.header : (behind - 1)->end;
    for (int head = token; head >= first; --head) {
        if (tokens.isAny(head, {"if", "for", "case"}))
            return {head, statementEnd(tokens, head, unit.end)};
        if (head < token && tokens.isAny(head, {"begin", "end", "else", "endcase"}))
            break;
    }
    return {token, token + 1};
}

/// Notes that one element goes out of the list of connections or parameters that holds \a token.
bool DesignRepair::Round::takeOutConnection(const VerilogItem &item, int token)
{
    int open = token - 1;
    while (open > item.begin && !tokens.is(open, '(')) {
        const int match = tokens.at(open).match;
        open = match >= 0 && match < open ? match - 1 : open - 1;
    }
    if (!tokens.is(open, '(') || tokens.at(open).match < token)
        return false;
    connections[open].insert(token);
    return true;
}

/// Takes the noted elements out of the list that begins at \a open, with one comma each.
void DesignRepair::Round::takeOutElements(int open, const QSet<int> &marked)
{
    const int close = tokens.at(open).match;
    bool anyKept = false;
    for (int begin = open + 1; begin <= close;) {
        int end = begin;
        while (end < close && !tokens.is(end, ','))
            end = tokens.behind(end);
        // An empty element is placed at what ends it.
        const bool goes = std::any_of(marked.begin(), marked.end(), [&](int token) {
            return token >= begin && (token < end || (token == end && begin == end));
        });
        if (goes)
            blank(begin, end);
        if (begin > open + 1 && (goes || !anyKept))
            blank(begin - 1, begin);
        anyKept = anyKept || !goes;
        begin = end + 1;
    }
}

bool DesignRepair::Round::isPort(const VerilogItem &item) const
{
    return tokens.isAny(
        item.begin,
        {"input", "output", "inout", "ref", "parameter", "localparam", "import", "typedef"});
}

/// True for what declares nets, and for instances.
bool DesignRepair::Round::isDeclaration(const VerilogItem &item) const
{
    return tokens.isWord(item.begin)
        || tokens.isAny(item.begin,
                        {"wire", "reg", "logic", "bit", "integer", "genvar", "tri", "wand", "wor",
                         "tri0", "tri1", "supply0", "supply1", "int", "byte", "var"});
}

void DesignRepair::Round::takeOutUnit(const VerilogUnit &unit, Remains remains)
{
    const bool isModule = tokens.isAny(unit.begin, {"module", "macromodule"});
    if (remains == Remains::Declarations) {
        for (const VerilogItem &item : unit.items) {
            if (!isDeclaration(item) && !isPort(item))
                blank(item.begin, item.end);
        }
        return;
    }
    if (remains == Remains::Ports && isModule) {
        int from = unit.header;
        for (const VerilogItem &item : unit.items) {
            if (!isPort(item))
                continue;
            blank(from, item.begin);
            from = item.end;
        }
        blank(from, unit.end);
        return;
    }
    blank(unit.begin, unit.end + 1);
    if (tokens.is(unit.end + 1, ':'))
        blank(unit.end + 1, unit.end + 3);
    const bool isTop = nameOf(unit) == repair->top;
    if (isModule && (remains == Remains::Instances || isTop))
        hollow.insert(nameOf(unit));
}

void DesignRepair::Round::gut(const QSet<QByteArray> &names, Remains remains)
{
    for (const VerilogUnit &unit : units) {
        if (unit.name >= 0 && names.contains(nameOf(unit)))
            takeOutUnit(unit, remains);
    }
}

void DesignRepair::Round::blank(int begin, int end)
{
    for (int i = begin; i < end && i < tokens.count(); ++i) {
        const VerilogToken &token = tokens.at(i);
        if (losesNames && token.kind == VerilogToken::Word)
            repair->lost.insert(tokens.text(i));
        // What makes an identifier an escaped one goes with it.
        quint32 at = token.begin;
        if (token.kind == VerilogToken::Word && at > 0 && repair->design.at(int(at) - 1) == '\\')
            --at;
        for (; at < token.begin + token.length; ++at) {
            if (repair->design.at(int(at)) != '\n')
                repair->design[int(at)] = ' ';
        }
    }
}

void DesignRepair::Round::finish()
{
    for (auto list = connections.cbegin(); list != connections.cend(); ++list)
        takeOutElements(list.key(), list.value());
    // The last first, so that the offsets of the others stay right.
    for (auto each = added.cend(); each != added.cbegin();) {
        --each;
        const VerilogToken &token = tokens.at(each.key());
        // Only a blank ends an escaped identifier.
        const bool isEscaped = token.begin > 0 && repair->design.at(int(token.begin) - 1) == '\\';
        repair->design.insert(int(token.begin + token.length),
                              (isEscaped ? " " : "") + QByteArray(1, each.value()));
    }
    if (hollow.isEmpty())
        return;
    // What instantiates them and what they instantiate stands in the text as it was.
    const DesignGraph graph = scanVerilog(tokens.text());
    for (const QByteArray &name : qAsConst(hollow))
        repair->design += hollowModule(graph, name);
}

DesignRepair::DesignRepair(const QByteArray &preprocessed, const QByteArray &topModule)
    : design(preprocessed)
    , top(topModule)
{
    const DesignGraph graph = scanVerilog(design);
    const auto unknown = graph.unknownTypes();
    blackBoxes = QSet<QByteArray>(unknown.begin(), unknown.end());
    const QStringList below = graph.modulesBelow(top);
    needed = QSet<QString>(below.begin(), below.end());
}

bool DesignRepair::takeOut(const QVector<ToolMessage> &errors, QVector<Concern> *concerns)
{
    Round round(this);
    // Where the tool gives up is seldom where the fault is, so another error counts for more.
    const bool anyPlain = std::any_of(errors.begin(), errors.end(), [](const ToolMessage &error) {
        return error.isError && !error.isInternal && error.line > 0;
    });
    for (const ToolMessage &error : errors)
        round.note(error);
    concerns->fill(Concern::Design, errors.size());
    bool any = false;
    bool anyDoubtful = false;
    const auto takeOutEach = [&](bool ofPins) {
        for (int i = 0; i < errors.size(); ++i) {
            const ToolMessage &error = errors.at(i);
            if (!error.isError || isPinError(error) != ofPins)
                continue;
            Concern &concern = (*concerns)[i];
            const bool isDoubtful = patience > 0 && round.isDoubtful(error);
            anyDoubtful = anyDoubtful || isDoubtful;
            if (isDoubtful || (error.isInternal && anyPlain))
                concern = Concern::Consequence;
            else
                any = round.takeOut(error, &concern) || any;
        }
    };
    // Those of pins come last, since they may follow from what is wrong with ports.
    takeOutEach(false);
    takeOutEach(true);
    round.finish();
    patience -= anyDoubtful;
    isFirstRound = false;
    return any;
}

void DesignRepair::takeOutInstances(const QVector<InstanceUse> &uses)
{
    Round round(this);
    for (const InstanceUse &use : uses)
        round.takeOutItem(use.typeOffset);
}

void DesignRepair::gut(const QSet<QByteArray> &names, bool toPorts)
{
    Round(this).gut(names, toPorts ? Remains::Ports : Remains::Declarations);
}

} // namespace Standin
