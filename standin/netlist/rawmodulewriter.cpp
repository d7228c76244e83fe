// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/rawmodulewriter.h"

#include <algorithm>

namespace Standin {

// References look for their declaration outwards, so depth has to have a bound for the search to
// have one.
static constexpr int MaximumDepth = 1000;

static constexpr std::size_t MaximumDimensions = 16;

static quint64 pairKey(quint32 high, quint32 low)
{
    return quint64(high) << 32 | low;
}

void RawModuleWriter::begin(RawModule *newModule, std::vector<std::vector<qint32>> *designPaths)
{
    module = newModule;
    paths = designPaths;
    module->scopes.push_back({0, module->name, true, {}});
    scope = 0;
    depth = 0;
    process = NoProcess;
    loopConditions = 0;
}

void RawModuleWriter::finish()
{
    for (RawEntry &entry : module->entries) {
        if (entry.scope == RawEntry::External)
            continue;
        for (quint32 at = entry.scope; entry.variable < 0 && at != 0;) {
            at = module->scopes[at].parent;
            const auto outer = entryIndex.constFind(pairKey(at, entry.name));
            if (outer != entryIndex.constEnd())
                entry.variable = module->entries[*outer].variable;
        }
        if (entry.variable < 0)
            continue;
        RawVariable &variable = module->variables[std::size_t(entry.variable)];
        variable.isReferenced = variable.isReferenced || entry.isReferenced;
        variable.isLoopIndex = variable.isLoopIndex || entry.isInLoopCondition;
    }
    entryIndex.clear();
    externalIndex.clear();
    module = nullptr;
}

bool RawModuleWriter::openScope(quint32 name)
{
    if (++depth > MaximumDepth)
        return false;
    const auto index = quint32(module->scopes.size());
    module->scopes.push_back({scope, name, process == NoProcess, {}});
    if (process == NoProcess)
        module->scopes[scope].items.push_back(-1 - int(index));
    scope = index;
    return true;
}

void RawModuleWriter::closeScope()
{
    scope = module->scopes[scope].parent;
    --depth;
}

void RawModuleWriter::openProcess(ProcessKind kind)
{
    process = kind;
    processDriver = ++module->drivers;
    edges.clear();
}

void RawModuleWriter::closeProcess()
{
    const bool allRead =
        std::all_of(edges.begin(), edges.end(), [](const Edge &edge) { return edge.isRead; });
    for (const Edge &edge : edges) {
        const bool isClock = edges.size() == 1 || allRead || !edge.isRead;
        add(edge.clock, isClock ? RawFact::Clock : RawFact::Use);
    }
    edges.clear();
    process = NoProcess;
}

bool RawModuleWriter::addVariable(RawVariable variable)
{
    variable.scope = scope;
    RawEntry &entry = module->entries[entryHere(variable.name)];
    if (entry.variable >= 0)
        return false; // No scope declares a name twice; what says so is no design.
    entry.variable = int(module->variables.size());
    module->variables.push_back(std::move(variable));
    return true;
}

void RawModuleWriter::addInstance(RawInstance instance)
{
    module->scopes[scope].items.push_back(int(module->instances.size()));
    module->instances.push_back(std::move(instance));
}

quint32 RawModuleWriter::entryHere(quint32 name)
{
    const quint64 key = pairKey(scope, name);
    const auto known = entryIndex.constFind(key);
    if (known != entryIndex.constEnd())
        return *known;
    const auto index = quint32(module->entries.size());
    module->entries.push_back({scope, name, 0, -1, false, false, false});
    entryIndex.insert(key, index);
    return index;
}

RawSegment RawModuleWriter::reference(quint32 name)
{
    return markReference(entryHere(name));
}

RawSegment RawModuleWriter::externalReference(quint32 dotted, quint32 name)
{
    const quint64 key = pairKey(dotted, name);
    const auto known = externalIndex.constFind(key);
    if (known != externalIndex.constEnd())
        return markReference(*known);
    const auto index = quint32(module->entries.size());
    module->entries.push_back({RawEntry::External, name, dotted, -1, false, false, false});
    externalIndex.insert(key, index);
    return markReference(index);
}

// A named block in a process has entries of its own for what is declared around the process.
bool RawModuleWriter::isSame(quint32 outer, quint32 index) const
{
    if (outer == index)
        return true;
    const RawEntry &around = module->entries[outer];
    const RawEntry &entry = module->entries[index];
    if (entry.name != around.name || entry.scope == RawEntry::External
        || around.scope == RawEntry::External)
        return false;
    for (quint32 at = entry.scope; at != around.scope; at = module->scopes[at].parent) {
        const auto here = entryIndex.constFind(pairKey(at, entry.name));
        const bool isDeclared =
            here != entryIndex.constEnd() && module->entries[*here].variable >= 0;
        if (isDeclared || at == 0)
            return false;
    }
    return true;
}

RawSegment RawModuleWriter::markReference(quint32 index)
{
    RawEntry &entry = module->entries[index];
    entry.isReferenced = true;
    entry.isInLoopCondition = entry.isInLoopCondition || loopConditions > 0;
    for (Edge &edge : edges)
        edge.isRead = edge.isRead || isSame(edge.clock.entry, index);
    RawSegment operand;
    operand.kind = RawSegment::Reference;
    operand.entry = index;
    return operand;
}

void RawModuleWriter::selectElement(RawSegment *operand, qint32 index)
{
    std::vector<qint32> path = (*paths)[operand->path];
    if (path.size() == MaximumDimensions) {
        operand->exact = false;
        return;
    }
    path.push_back(index);
    // The same element is mostly selected several times in a row.
    if (paths->back() != path)
        paths->push_back(std::move(path));
    operand->path = quint32(paths->size() - 1);
}

void RawModuleWriter::read(const RawSegment &operand)
{
    if (operand.kind != RawSegment::Reference)
        return;
    RawEntry &entry = module->entries[operand.entry];
    if (entry.isReadWhole)
        return;
    entry.isReadWhole = operand.path == 0 && operand.width < 0;
    add(operand, RawFact::Use);
}

void RawModuleWriter::add(const RawSegment &operand, RawFact::Kind kind)
{
    if (operand.kind != RawSegment::Reference)
        return;
    const bool ofProcess = process != NoProcess;
    module->facts.push_back({operand, ofProcess ? processDriver : ++module->drivers, kind});
}

void RawModuleWriter::addEdge(const RawSegment &clock)
{
    if (process == Always && clock.kind == RawSegment::Reference)
        edges.push_back({clock, false});
    else
        read(clock);
}

static bool isExact(const RawSegment &operand)
{
    return operand.kind == RawSegment::Reference && operand.exact;
}

void RawModuleWriter::assign(RawOperands targets, RawOperands values, bool letsGo)
{
    if (process == Final)
        return;
    const bool isContinuous = process == NoProcess && !letsGo;
    if (isContinuous && targets.size() == 1 && isExact(*targets.first)) {
        // Each part of the value may be another net or a constant. How wide the parts are is known
        // only later.
        module->assignments.push_back({*targets.first, ++module->drivers,
                                       quint32(module->segments.size()), quint32(values.size())});
        module->segments.insert(module->segments.end(), values.first, values.last);
        return;
    }
    RawFact::Kind kind = RawFact::Drive;
    if (process == Function)
        kind = RawFact::Maybe;
    else if (process == Initial)
        kind = RawFact::Initial;
    for (const RawSegment *target = targets.first; target != targets.last; ++target) {
        // Which part is written isn't known, so it can't collide with others.
        add(*target, kind == RawFact::Drive && !target->exact ? RawFact::Maybe : kind);
        if (letsGo)
            add(*target, RawFact::TriState);
    }
}

void RawModuleWriter::addFunctionPort(quint32 function, PortDirection direction)
{
    module->functions[function].append(direction);
}

} // namespace Standin
