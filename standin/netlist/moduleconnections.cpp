// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The part of ModuleFacts that looks beyond one variable: instances and aliases.

#include "netlist/modulefacts.h"

#include <algorithm>
#include <numeric>

namespace Standin {

// Part by part, a value is a constant, another net, or something worked out of others.
void ModuleFacts::addAssignments()
{
    for (const RawAssignment &assignment : module.assignments) {
        const qint64 total = width(assignment.target);
        if (total < 0)
            continue;
        qint64 known = 0;
        int unknown = 0;
        for (quint32 i = 0; i < assignment.segmentCount; ++i) {
            const qint64 each = width(module.segments[assignment.firstSegment + i]);
            known += qMax(qint64(0), each);
            unknown += each < 0;
        }
        // Of one part the width follows from the others; of more it can't be said which is where.
        if (unknown > 1 || known > total)
            addTarget(assignment.target, Driven, assignment.driver);
        else
            addAssignedParts(assignment, total, total - known);
    }
}

void ModuleFacts::addAssignedParts(const RawAssignment &assignment, qint64 total,
                                   qint64 unknownWidth)
{
    const RawSegment *const first = module.segments.data() + assignment.firstSegment;
    const RawSegment *part = first + assignment.segmentCount;
    RawSegment bits = assignment.target;
    qint64 at = 0;
    while (at < total) {
        const bool isPart = part != first;
        if (isPart)
            --part;
        const qint64 known = isPart ? width(*part) : -1;
        const qint64 partWidth = known >= 0 ? known : isPart ? unknownWidth : total - at;
        bits.lsb = qint32(assignment.target.lsb + at);
        bits.width = qint32(partWidth);
        at += partWidth;
        if (partWidth == 0)
            continue;
        const bool isFixed = isPart && part->kind == RawSegment::Constant;
        addTarget(bits, isFixed ? DrivenByConstant : Driven, assignment.driver);
        if (isPart && known >= 0 && part->kind == RawSegment::Reference)
            aliases.emplace_back(bits, *part);
    }
}

void ModuleFacts::addConnections()
{
    for (const RawInstance &instance : module.instances) {
        const int child = moduleByName.value(instance.module, -1);
        const bool isKnown = child >= 0 && summaries[std::size_t(child)].isKnown;
        for (const RawConnection &connection : instance.connections) {
            if (!isKnown) {
                connectBlackBox(connection);
                continue;
            }
            const PortFacts *port =
                summaries[std::size_t(child)].port(connection.port, connection.pin);
            if (port && port->width > 0)
                connect(instance, connection, *port);
        }
    }
}

void ModuleFacts::connectBlackBox(const RawConnection &connection)
{
    for (quint32 i = 0; i < connection.segmentCount; ++i)
        addTarget(module.segments[connection.firstSegment + i], OnPin, 0);
}

// How many bits an operand has; -1 if that isn't known.
qint64 ModuleFacts::width(const RawSegment &part) const
{
    if (part.kind != RawSegment::Reference)
        return part.width;
    const int variable = module.entries[part.entry].variable;
    quint32 begin = 0;
    quint32 end = 0;
    if (!part.exact || variable < 0 || !locate(part, std::size_t(variable), &begin, &end))
        return -1;
    return end - begin;
}

static BitFacts allFacts(const PortFacts &port)
{
    return std::accumulate(
        port.runs.begin(), port.runs.end(), BitFacts(0),
        [](BitFacts all, const PortFacts::Run &run) { return BitFacts(all | run.facts); });
}

// Operands and port are matched from their lowest bits. An instance array either takes a stretch of
// the operands for each instance, or all of them for every one.
void ModuleFacts::connect(const RawInstance &instance, const RawConnection &connection,
                          const PortFacts &port)
{
    const RawSegment *const first = module.segments.data() + connection.firstSegment;
    const RawSegment *part = first + connection.segmentCount;
    const qint64 instances = instance.isArray ? instance.range.size() : 1;
    qint64 total = 0;
    for (quint32 i = 0; i < connection.segmentCount; ++i)
        total += qMax(qint64(0), width(first[i]));
    const bool isSliced = instances > 1 && total == instances * port.width;
    const bool isUniform = port.runs.size() == 1;
    const bool isShared = instances > 1 && !isSliced;

    ++drivers;
    qint64 at = 0;
    while (part != first) {
        --part;
        const qint64 partWidth = width(*part);
        if (partWidth < 0) {
            connectPart(*part, 0, 0, allFacts(port), port);
            continue;
        }
        if (isUniform) {
            const qint64 end = isSliced ? partWidth : qMin(partWidth, port.width - at);
            connectPart(*part, 0, quint32(qMax(qint64(0), end)), port.runs.front().facts, port);
            at += partWidth;
            continue;
        }
        for (qint64 done = 0; done < partWidth;) {
            const auto bit = quint32(isSliced ? (at + done) % port.width : at + done);
            const auto run = std::upper_bound(
                port.runs.begin(), port.runs.end(), bit,
                [](quint32 wanted, const PortFacts::Run &each) { return wanted < each.end; });
            if (run == port.runs.end())
                break;
            const qint64 end = qMin(partWidth, done + run->end - bit);
            connectPart(*part, quint32(done), quint32(end), run->facts, port);
            done = end;
        }
        at += partWidth;
    }
    if (!isShared || port.direction == PortDirection::In)
        return;
    ++drivers; // Every instance of the array drives the same operands.
    for (quint32 i = 0; i < connection.segmentCount; ++i) {
        if (allFacts(port) & Driven)
            addTarget(first[i], Driven, drivers);
    }
}

// The bits of \a part from \a begin to \a end are connected to bits of the port with these facts;
// of a part that isn't exact it's not known which, and both are 0.
void ModuleFacts::connectPart(const RawSegment &part, quint32 begin, quint32 end, BitFacts bitFacts,
                              const PortFacts &port)
{
    RawSegment bits = part;
    const bool isExact = end > begin;
    if (part.kind != RawSegment::Reference || (part.exact && !isExact))
        return;
    if (isExact) {
        bits.lsb += qint32(begin);
        bits.width = qint32(end - begin);
    }
    if (port.direction == PortDirection::InOut) {
        addTarget(bits, LetsGo, 0);
        addTarget(bits, MaybeDriven, 0);
    } else if (port.direction == PortDirection::Out) {
        if (isExact && isConstant(bitFacts))
            addTarget(bits, DrivenByConstant, drivers);
        else if (isExact && (bitFacts & Driven))
            addTarget(bits, Driven, drivers);
        else if (bitFacts & (Driven | MaybeDriven | OnPin | HasInitialValue | DrivenFromOutside))
            addTarget(bits, MaybeDriven, 0);
        if (bitFacts & LetsGo)
            addTarget(bits, LetsGo, 0);
    }
    if (bitFacts & ClocksRegister)
        addTarget(bits, ClocksRegister, 0);
    if (bitFacts & OnPin)
        addTarget(bits, OnPin, 0);
    if (bitFacts & InFabric)
        addTarget(bits, InFabric, 0);
}

// Bits that are connected with each other, as a forest.
class BitGroups
{
public:
    explicit BitGroups(std::size_t count)
        : parents(count)
    {
        std::iota(parents.begin(), parents.end(), 0u);
    }

    quint32 root(quint32 bit)
    {
        while (parents[bit] != bit) {
            parents[bit] = parents[parents[bit]];
            bit = parents[bit];
        }
        return bit;
    }

    void join(quint32 a, quint32 b) { parents[root(a)] = root(b); }

private:
    std::vector<quint32> parents;
};

// A net that is another by an assignment alone clocks what the other clocks.
void ModuleFacts::spreadClocks()
{
    const auto isClock = [](BitFacts bit) {
        return (bit & ClocksRegister) != 0;
    };
    if (aliases.empty() || std::none_of(facts.begin(), facts.end(), isClock))
        return;
    BitGroups groups(facts.size());
    for (const auto &[target, source] : aliases) {
        const auto to = std::size_t(module.entries[target.entry].variable);
        const auto from = std::size_t(module.entries[source.entry].variable);
        quint32 begin = 0;
        quint32 end = 0;
        quint32 sourceBegin = 0;
        quint32 sourceEnd = 0;
        if (!locate(target, to, &begin, &end) || !locate(source, from, &sourceBegin, &sourceEnd))
            continue;
        const quint32 count = std::min(end - begin, sourceEnd - sourceBegin);
        for (quint32 bit = 0; bit < count; ++bit)
            groups.join(begins[to] + begin + bit, begins[from] + sourceBegin + bit);
    }
    std::vector<bool> clocked(facts.size());
    for (std::size_t bit = 0; bit < facts.size(); ++bit) {
        if (isClock(facts[bit]))
            clocked[groups.root(quint32(bit))] = true;
    }
    for (std::size_t bit = 0; bit < facts.size(); ++bit) {
        if (clocked[groups.root(quint32(bit))])
            facts[bit] |= ClocksRegister;
    }
}

} // namespace Standin
