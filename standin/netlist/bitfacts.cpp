// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/bitfacts.h"

#include <algorithm>
#include <tuple>

namespace Standin {

bool isConstant(BitFacts facts)
{
    if (facts & (DrivenByLogic | MaybeDriven | DrivenFromOutside | LetsGo))
        return false;
    return facts & (DrivenByConstant | HasInitialValue);
}

NetFlags flagsOf(BitFacts facts)
{
    NetFlags flags;
    const BitFacts sources = Driven | MaybeDriven | DrivenFromOutside | OnPin | HasInitialValue;
    if (isConstant(facts))
        flags |= NoProbeIn | NoProbeOut;
    if (!(facts & sources))
        flags |= NoProbeIn;
    if (facts & (DrivenTwice | ClocksRegister | LetsGo))
        flags |= NoProbeOut;
    return flags;
}

NetFlags flagsOfTopPort(BitFacts facts, bool isInput)
{
    NetFlags flags;
    if (isInput)
        flags |= NoProbeOut;
    if ((facts & OnPin) && !(facts & InFabric))
        flags |= NoProbeIn | NoProbeOut;
    return flags;
}

static bool isDriver(const FactSpan &span)
{
    return span.fact == Driven || span.fact == DrivenByConstant;
}

static void mark(BitFacts *facts, quint32 begin, quint32 end, int fact)
{
    for (quint32 i = begin; i < end; ++i)
        facts[i] = BitFacts(facts[i] | fact);
}

// Facts of one kind, in the order of their begin: each bit is marked once, however often it is
// covered.
static void markUnion(const FactSpan *first, const FactSpan *last, BitFacts *facts, int fact)
{
    quint32 done = 0;
    for (const FactSpan *span = first; span != last; ++span) {
        mark(facts, std::max(done, span->begin), span->end, fact);
        done = std::max(done, span->end);
    }
}

// Counts drivers: spans of the same driver are one, whatever they have in common.
static void markDrivers(FactSpan *first, FactSpan *last, BitFacts *facts)
{
    if (last - first == 1) {
        mark(facts, first->begin, first->end, Driven);
        return;
    }
    std::sort(first, last, [](const FactSpan &a, const FactSpan &b) {
        return std::tie(a.driver, a.begin) < std::tie(b.driver, b.begin);
    });
    struct Step
    {
        quint32 at;
        int change;
    };
    std::vector<Step> steps;
    for (FactSpan *span = first; span != last;) {
        const quint32 driver = span->driver;
        quint32 begin = span->begin;
        quint32 end = span->end;
        for (++span; span != last && span->driver == driver && span->begin <= end; ++span)
            end = std::max(end, span->end);
        steps.push_back({begin, 1});
        steps.push_back({end, -1});
    }
    std::sort(steps.begin(), steps.end(), [](Step a, Step b) { return a.at < b.at; });
    int drivers = 0;
    quint32 at = 0;
    for (const Step &step : steps) {
        if (drivers > 0)
            mark(facts, at, step.at, drivers > 1 ? Driven | DrivenTwice : Driven);
        drivers += step.change;
        at = step.at;
    }
}

void applySpans(std::vector<FactSpan> *spans, BitFacts *facts)
{
    if (spans->size() > 1) {
        std::sort(spans->begin(), spans->end(), [](const FactSpan &a, const FactSpan &b) {
            return std::tie(a.fact, a.begin) < std::tie(b.fact, b.begin);
        });
    }
    FactSpan *const end = spans->data() + spans->size();
    for (FactSpan *first = spans->data(); first != end;) {
        FactSpan *last = first;
        while (last != end && last->fact == first->fact)
            ++last;
        int fact = first->fact;
        if (fact == Driven)
            fact = DrivenByLogic | InFabric;
        else if (fact == DrivenByConstant)
            fact = DrivenByConstant | InFabric;
        markUnion(first, last, facts, fact);
        first = last;
    }
    const auto drivers = std::partition(spans->begin(), spans->end(), isDriver);
    markDrivers(spans->data(), spans->data() + (drivers - spans->begin()), facts);
}

} // namespace Standin
