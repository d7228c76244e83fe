// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/vhdlrepair_p.h"

#include <algorithm>
#include <functional>

namespace Standin {

// How many rounds a unit may be faulty before it loses more than the faulty statements.
static constexpr int RoundsOfStatements = 4;

VhdlRepair::Round::Round(VhdlRepair *wholeRepair, VhdlLosses *lossesOfAll)
    : repair(wholeRepair)
    , losses(lossesOfAll)
    , tokens(wholeRepair->source)
    , constructs(tokens)
    , lines(1, 0)
{
    const QByteArray &text = repair->source;
    for (int newline = text.indexOf('\n'); newline >= 0; newline = text.indexOf('\n', newline + 1))
        lines.push_back(quint32(newline) + 1);
}

static VhdlRemains remainsAfter(int rounds, const VhdlUnit &unit)
{
    if (rounds <= RoundsOfStatements)
        return VhdlRemains::AllButFaults;
    const auto remains =
        VhdlRemains(std::min(rounds - RoundsOfStatements, int(VhdlRemains::Nothing)));
    const bool hasInstances = unit.kind == VhdlUnit::Architecture;
    return hasInstances || remains == VhdlRemains::AllButProcesses ? remains : VhdlRemains::Nothing;
}

static QByteArray keyOf(const VhdlUnit &unit)
{
    return QByteArray::number(int(unit.kind)) + ' ' + unit.name + ' ' + unit.of;
}

bool VhdlRepair::Round::takeOut(const ToolMessage &error)
{
    const int token = tokenAt(error);
    const int construct = constructAt(token);
    if (construct < 0)
        return false;
    const VhdlUnit *unit = unitOf(construct);
    if (!unit) {
        blank(at(construct).begin, at(construct).end);
        return true;
    }
    const QByteArray key = keyOf(*unit);
    const bool isNew = !faulty.contains(key);
    faulty.insert(key);
    int &rounds = repair->faultyRounds[key];
    rounds += isNew;
    VhdlRemains remains = remainsAfter(rounds, *unit);
    // Without its first line nothing of a unit can stay.
    if (at(construct).kind == VhdlConstruct::Unit)
        remains = token < at(construct).header ? VhdlRemains::Nothing
                                               : std::max(remains, VhdlRemains::Ports);
    // Without one the defaults hold.
    if (unit->kind == VhdlUnit::Configuration)
        remains = VhdlRemains::Nothing;
    if (remains > VhdlRemains::AllButProcesses) {
        takeOutUnit(*unit, remains);
        return true;
    }
    const int whole = remains == VhdlRemains::AllButFaults ? construct : outermost(construct);
    lose(whole);
    if (at(whole).kind == VhdlConstruct::Element)
        elements[at(whole).parent].insert(whole);
    else
        blank(at(whole).begin, at(whole).end);
    return true;
}

int VhdlRepair::Round::lineOf(const VhdlUnit &unit) const
{
    const quint32 offset = tokens.begin(at(unit.construct).begin);
    return int(std::upper_bound(lines.begin(), lines.end(), offset) - lines.begin());
}

bool VhdlRepair::Round::isEmpty(const VhdlUnit &unit) const
{
    const auto &all = constructs.all();
    const auto next = std::size_t(unit.construct) + 1;
    return next == all.size() || all[next].parent != unit.construct;
}

void VhdlRepair::Round::takeOutUnit(const VhdlUnit &unit, VhdlRemains remains)
{
    const VhdlConstruct &whole = at(unit.construct);
    if (remains == VhdlRemains::Instances) {
        for (int i = unit.construct + 1; i < int(constructs.all().size()); ++i) {
            const VhdlConstruct &each = at(i);
            if (each.begin >= whole.end)
                break;
            const bool isStatement = each.kind == VhdlConstruct::Process
                || (each.kind == VhdlConstruct::Leaf && at(each.parent).body >= 0
                    && at(each.parent).body < each.begin);
            const bool isConcurrent = at(each.parent).kind == VhdlConstruct::Unit
                || at(each.parent).kind == VhdlConstruct::Region;
            // A generate statement has no "begin" where it declares nothing.
            const bool isInRegion = each.kind == VhdlConstruct::Leaf
                && at(each.parent).kind == VhdlConstruct::Region && at(each.parent).body < 0;
            if ((isStatement && isConcurrent) || isInRegion)
                blank(each.begin, each.end);
        }
        return;
    }
    if (remains == VhdlRemains::Ports && unit.kind == VhdlUnit::Architecture && !isEmpty(unit)) {
        blank(whole.header, whole.end);
        emptied.append(tokens.end(whole.header - 1));
        return;
    }
    losses->names.insert(unit.name);
    lostNow.insert(unit.name, unit.construct);
    blank(unit.begin, whole.end);
}

void VhdlRepair::Round::loseName(int token, int construct)
{
    const QByteArray name = tokens.text(token).toLower();
    losses->names.insert(name);
    lostNow.insert(name, construct);
}

/// Notes the names that a part declares.
void VhdlRepair::Round::lose(int index)
{
    const VhdlConstruct &construct = at(index);
    const int first = tokens.isAny(construct.begin, {"pure", "impure", "shared"})
        ? construct.begin + 1
        : construct.begin;
    if (tokens.isAny(first,
                     {"type", "subtype", "function", "procedure", "component", "alias", "attribute",
                      "package"})) {
        loseName(first + 1, index);
        // What enumerations consist of are names too.
        for (int i = first + 4; tokens.is(first + 3, "(") && i < construct.end; ++i) {
            if (tokens.isName(i))
                loseName(i, index);
        }
        return;
    }
    const bool isObject = construct.kind == VhdlConstruct::Element
        || tokens.isAny(first, {"signal", "constant", "variable", "file"});
    for (int i = first; isObject && i < construct.end && !tokens.is(i, ":"); ++i) {
        if (!tokens.is(i, ",") && !tokens.isAny(i, {"signal", "constant", "variable", "file"}))
            loseName(i, index);
    }
}

void VhdlRepair::Round::blank(int begin, int end)
{
    for (quint32 offset = tokens.begin(begin); end > begin && offset < tokens.end(end - 1);
         ++offset) {
        if (repair->source.at(int(offset)) != '\n' && repair->source.at(int(offset)) != '\t')
            repair->source[int(offset)] = ' ';
    }
}

/// Takes elements out of their lists, with one semicolon each, and ends what was emptied.
void VhdlRepair::Round::finish()
{
    for (auto list = elements.cbegin(); list != elements.cend(); ++list) {
        bool anyKept = false;
        for (int i = list.key() + 1; i < int(constructs.all().size()) && at(i).parent == list.key();
             ++i) {
            const bool goes = list.value().contains(i);
            const bool isFirst = i == list.key() + 1;
            if (!isFirst && (goes || !anyKept))
                blank(at(i).begin - 1, at(i).begin);
            if (goes)
                blank(at(i).begin, at(i).end);
            anyKept = anyKept || !goes;
        }
        if (!anyKept)
            blank(at(list.key()).begin, at(list.key()).end);
    }
    // From the back, so that what is ahead stays where it is.
    std::sort(emptied.begin(), emptied.end(), std::greater<quint32>());
    for (quint32 offset : qAsConst(emptied))
        repair->source.insert(int(offset), " begin end;");
}

VhdlRepair::VhdlRepair(const QByteArray &text)
    : source(text)
{
}

/// A comment that isn't ended takes no more than what it stands in front of.
void VhdlRepair::endComment()
{
    const int begin = source.lastIndexOf("/*");
    if (begin < 0 || source.indexOf("*/", begin + 2) >= 0)
        return;
    for (int i = begin; i < source.size(); ++i) {
        if (source.at(i) != '\n')
            source[i] = ' ';
    }
}

bool VhdlRepair::takeOut(const QVector<ToolMessage> &errors, VhdlLosses *losses,
                         QVector<Concern> *concerns)
{
    const QByteArray before = source;
    for (const ToolMessage &error : errors) {
        if (namesLibrary(error))
            losses->missingLibraries.insert(quotedName(error.text));
    }
    endComment();
    Round round(this, losses);
    const auto isLack = [](const ToolMessage &error) {
        return error.text.endsWith("was not analysed") || error.text.startsWith("no architecture ");
    };
    const bool hasRealErrors = !std::all_of(errors.begin(), errors.end(), isLack);
    for (const ToolMessage &error : errors) {
        if (!hasRealErrors || !isLack(error))
            round.takeOut(error);
    }
    for (const ToolMessage &error : errors)
        concerns->append(hasRealErrors && isLack(error) ? Concern::Consequence
                                                        : round.concernOf(error));
    round.finish();
    return source != before;
}

QList<QByteArray> VhdlRepair::unitNames() const
{
    QList<QByteArray> names;
    const VhdlTokens tokens(source);
    const VhdlConstructs constructs(tokens);
    for (const VhdlUnit &unit : constructs.units())
        names.append(unit.name);
    return names;
}

QVector<VhdlRepair::Architecture> VhdlRepair::architectures() const
{
    VhdlLosses losses;
    VhdlRepair copy(source);
    const Round round(&copy, &losses);
    QVector<Architecture> found;
    for (const VhdlUnit &unit : round.units()) {
        if (unit.kind == VhdlUnit::Architecture && !round.isEmpty(unit))
            found.append({keyOf(unit), unit.of, round.lineOf(unit)});
    }
    return found;
}

void VhdlRepair::gut(const QSet<QByteArray> &which, bool toPorts)
{
    VhdlLosses losses;
    Round round(this, &losses);
    for (const VhdlUnit &unit : round.units()) {
        if (unit.kind == VhdlUnit::Architecture && which.contains(keyOf(unit)))
            round.takeOutUnit(unit, toPorts ? VhdlRemains::Ports : VhdlRemains::Instances);
    }
    round.finish();
}

} // namespace Standin
