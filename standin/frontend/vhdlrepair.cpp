// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/vhdlrepair.h"

#include <QRegularExpression>

#include <algorithm>
#include <functional>

namespace Standin {

// How many rounds a unit may be faulty before it loses more than the faulty statements.
static constexpr int RoundsOfStatements = 4;

// Columns count tabulators as so many places, up to the next multiple.
static constexpr int TabWidth = 8;

/// What is left of a faulty unit.
enum class VhdlRemains {
    AllButFaults,
    AllButProcesses, ///< The whole processes and declarations that are faulty go.
    Instances,       ///< And declarations.
    Ports,
    Nothing,
};

/// One look at the text: finds what is to go, and in the end takes it out.
class VhdlRepair::Round
{
public:
    Round(VhdlRepair *wholeRepair, VhdlLosses *lossesOfAll);

    Concern concernOf(const ToolMessage &error) const;
    bool takeOut(const ToolMessage &error);
    void takeOutUnit(const VhdlUnit &unit, VhdlRemains remains);
    void finish();

    const std::vector<VhdlUnit> &units() const { return constructs.units(); }
    int lineOf(const VhdlUnit &unit) const;
    bool isEmpty(const VhdlUnit &unit) const;

private:
    int tokenAt(const ToolMessage &error) const;
    int constructAt(int token) const;
    const VhdlUnit *unitOf(int construct) const;
    const VhdlConstruct &at(int index) const { return constructs.all()[std::size_t(index)]; }
    int outermost(int construct) const;
    bool isWithin(int construct, int outer) const;
    bool mentionsLost(int construct) const;
    bool namesMissingLibrary(const VhdlConstruct &clause) const;
    QByteArray instantiated(const VhdlConstruct &instance) const;
    void blank(int begin, int end);
    void lose(int construct);
    void loseName(int token, int construct);

    VhdlRepair *repair;
    VhdlLosses *losses;
    VhdlTokens tokens;
    VhdlConstructs constructs;
    std::vector<quint32> lines;     ///< Where each begins.
    QSet<QByteArray> faulty;        ///< Units that have had an error in this round.
    QHash<int, QSet<int>> elements; ///< That go, by their list.
    QHash<QByteArray, int> lostNow; ///< Names lost in this round, and what declared them.
    QVector<quint32> emptied;       ///< Where architectures get an empty body.
};

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

int VhdlRepair::Round::tokenAt(const ToolMessage &error) const
{
    if (error.line < 1 || error.line > int(lines.size()))
        return tokens.count();
    const QByteArray &text = repair->source;
    int offset = int(lines[std::size_t(error.line) - 1]);
    for (int column = 1; column < error.column && offset < text.size() && text.at(offset) != '\n';
         ++offset)
        column = text.at(offset) == '\t' ? (column - 1) / TabWidth * TabWidth + TabWidth + 1
                                         : column + 1;
    return tokens.find(quint32(offset));
}

/// The construct that is to blame for an error at \a token; -1 if there is none.
int VhdlRepair::Round::constructAt(int token) const
{
    int construct = constructs.innermost(token);
    if (construct < 0 && token >= tokens.count() && !constructs.all().empty()) {
        // The text ends too early.
        construct = int(constructs.all().size()) - 1;
        while (at(construct).parent >= 0)
            construct = at(construct).parent;
    }
    if (construct < 0)
        return -1;
    if (at(construct).kind == VhdlConstruct::Branch)
        construct = at(construct).parent;
    // An end or a begin that comes too early is the fault of what isn't ended ahead of it.
    const int child = token >= at(construct).header ? constructs.childBefore(construct, token) : -1;
    return child >= 0 && at(child).kind != VhdlConstruct::Branch ? child : construct;
}

const VhdlUnit *VhdlRepair::Round::unitOf(int construct) const
{
    while (construct >= 0 && at(construct).kind != VhdlConstruct::Unit)
        construct = at(construct).parent;
    for (const VhdlUnit &unit : constructs.units()) {
        if (unit.construct == construct)
            return &unit;
    }
    return nullptr;
}

/// The construct around \a construct that stands in a unit, block or generate statement.
int VhdlRepair::Round::outermost(int construct) const
{
    for (int parent = at(construct).parent; parent >= 0; parent = at(parent).parent) {
        const VhdlConstruct::Kind kind = at(parent).kind;
        if (kind == VhdlConstruct::Unit || kind == VhdlConstruct::Region)
            break;
        construct = parent;
    }
    return construct;
}

bool VhdlRepair::Round::namesMissingLibrary(const VhdlConstruct &clause) const
{
    for (int i = clause.begin + 1; i < clause.end; ++i) {
        if (losses->missingLibraries.contains(tokens.text(i).toLower()))
            return true;
    }
    return false;
}

/// The type that an instance is of, in lower case.
QByteArray VhdlRepair::Round::instantiated(const VhdlConstruct &instance) const
{
    int i = instance.begin + 2;
    if (tokens.isAny(i, {"entity", "component", "configuration"}))
        ++i;
    while (tokens.is(i + 1, "."))
        i += 2;
    return tokens.text(i).toLower();
}

static QByteArray quotedName(const QString &text)
{
    static const QRegularExpression quoted("[\"']([A-Za-z_][\\w.]*)[\"']");
    const QRegularExpressionMatch match = quoted.match(text);
    return match.captured(1).toLower().toUtf8();
}

static bool namesLibrary(const ToolMessage &error)
{
    return error.text.startsWith("cannot find resource library");
}

VhdlRepair::Concern VhdlRepair::Round::concernOf(const ToolMessage &error) const
{
    if (namesLibrary(error))
        return Concern::Library;
    const int construct = constructAt(tokenAt(error));
    const QByteArray name = quotedName(error.text);
    if (construct >= 0 && !losses->missingLibraries.isEmpty()) {
        const VhdlConstruct &place = at(construct);
        const bool isClause = place.kind == VhdlConstruct::Context || tokens.is(place.begin, "use");
        if (isClause && namesMissingLibrary(place))
            return Concern::Library;
        // What is declared nowhere else can only come from there.
        if (place.kind == VhdlConstruct::Instance && !name.isEmpty()
            && (name == instantiated(place) || losses->missingLibraries.contains(name)))
            return Concern::Library;
    }
    return construct >= 0 && mentionsLost(construct) ? Concern::Consequence : Concern::Design;
}

bool VhdlRepair::Round::isWithin(int construct, int outer) const
{
    while (construct > outer)
        construct = at(construct).parent;
    return construct == outer;
}

/// True if a part mentions what another part declared that is taken out.
bool VhdlRepair::Round::mentionsLost(int construct) const
{
    const VhdlConstruct &part = at(construct);
    const bool isWhole = part.header >= part.end;
    for (int i = part.begin; i < (isWhole ? part.end : part.header); ++i) {
        const QByteArray name = tokens.text(i).toLower();
        const int owner = lostNow.value(name, -1);
        if (owner >= 0 ? !isWithin(construct, owner) : losses->names.contains(name))
            return true;
    }
    return false;
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
