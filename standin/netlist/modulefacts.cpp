// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/modulefacts.h"

#include <algorithm>
#include <numeric>

namespace Standin {

// An unpacked array of more elements is a memory.
static constexpr qint64 MaximumElements = 64;

// More than any module has; what has more is made to exhaust the memory.
static constexpr quint64 MaximumModuleBits = 1 << 26;

const PortFacts *ModuleSummary::port(quint32 name, int pin) const
{
    auto found = ports.constFind(name);
    if (found == ports.constEnd()) // Connected by position, it has a name made up by the tool.
        found = ports.constFind(portsByPin.value(pin, quint32(-1)));
    return found == ports.constEnd() ? nullptr : &*found;
}

bool ModuleFacts::isNet(const RawVariable &variable, const NetShape &shape)
{
    if (shape.width == 0 || variable.isParameter || variable.isInterface)
        return false;
    const bool isPort = variable.direction != PortDirection::None;
    if (variable.isInteger && !isPort && (variable.isLoopIndex || !variable.isReferenced))
        return false; // Of a genvar nothing is left but its declaration.
    const qint64 elements = shape.elements();
    return shape.dimensions.isEmpty()
        || (elements <= MaximumElements && elements * shape.width <= ModuleDefinition::MaximumSize);
}

ModuleFacts::ModuleFacts(RawDesign *wholeDesign, const RawModule &rawModule,
                         const QHash<quint32, int> &modulesByName, const Summaries &childSummaries)
    : design(wholeDesign)
    , module(rawModule)
    , moduleByName(modulesByName)
    , summaries(childSummaries)
    , drivers(rawModule.drivers)
{
    quint64 end = 0;
    shapes.reserve(module.variables.size());
    begins.reserve(module.variables.size() + 1);
    begins.push_back(0);
    for (const RawVariable &variable : module.variables) {
        const NetShape &shape = design->types.shape(variable.type);
        const bool isNet = ModuleFacts::isNet(variable, shape)
            && end + quint64(shape.elements() * shape.width) < MaximumModuleBits;
        shapes.push_back(isNet ? &shape : nullptr);
        end += isNet ? quint64(shape.elements() * shape.width) : 0;
        begins.push_back(quint32(end));
    }
}

const BitFacts *ModuleFacts::of(std::size_t variable) const
{
    return shapes[variable] ? facts.data() + begins[variable] : nullptr;
}

// The bits of the variable that the operand means.
bool ModuleFacts::locate(const RawSegment &operand, std::size_t variable, quint32 *begin,
                         quint32 *end) const
{
    const NetShape *shape = shapes[variable];
    if (!shape)
        return false;
    const std::vector<qint32> &path = design->paths[operand.path];
    if (path.size() > std::size_t(shape->dimensions.size()))
        return false;
    qint64 element = 0;
    qint64 elements = shape->elements();
    for (std::size_t i = 0; i < path.size(); ++i) {
        const qint64 size = shape->dimensions.at(int(i)).size();
        if (path[i] >= size)
            return false;
        elements /= size;
        element += path[i] * elements;
    }
    const qint64 first = element * shape->width;
    qint64 from = 0;
    qint64 to = elements * shape->width;
    if (operand.exact && operand.width >= 0) {
        from = operand.lsb;
        to = qMin(to, qint64(operand.lsb) + operand.width);
    }
    *begin = quint32(first + from);
    *end = quint32(first + to);
    return from < to;
}

void ModuleFacts::addTarget(const RawSegment &operand, BitFacts fact, quint32 driver)
{
    if (operand.kind != RawSegment::Reference)
        return;
    const RawEntry &entry = module.entries[operand.entry];
    Target target;
    target.variable = entry.variable;
    target.span.fact = fact;
    target.span.driver = driver;
    if (entry.variable >= 0
        && locate(operand, std::size_t(entry.variable), &target.span.begin, &target.span.end))
        targets.push_back(target);
}

void ModuleFacts::add(const std::vector<MemberFact> &memberFacts)
{
    QHash<quint32, int> members;
    for (std::size_t i = 0; i < module.variables.size(); ++i) {
        if (module.variables[i].scope == 0)
            members.insert(module.variables[i].name, int(i));
    }
    for (const MemberFact &fact : memberFacts) {
        Target target;
        target.variable = members.value(fact.member, -1);
        target.span.fact = fact.fact;
        if (target.variable >= 0
            && locate(fact.target, std::size_t(target.variable), &target.span.begin,
                      &target.span.end))
            targets.push_back(target);
    }
}

static BitFacts bitFact(RawFact::Kind kind)
{
    switch (kind) {
    case RawFact::Drive:
        return Driven;
    case RawFact::Initial:
        return HasInitialValue;
    case RawFact::Maybe:
        return MaybeDriven;
    case RawFact::Clock:
        return ClocksRegister;
    case RawFact::TriState:
        return LetsGo;
    case RawFact::Use:
        break;
    }
    return InFabric;
}

void ModuleFacts::addText()
{
    for (const RawFact &fact : module.facts)
        addTarget(fact.target, bitFact(fact.kind), fact.driver);
    for (std::size_t i = 0; i < module.variables.size(); ++i) {
        if (!shapes[i])
            continue;
        const RawVariable &variable = module.variables[i];
        Target target;
        target.variable = int(i);
        target.span.end = bits(i);
        const auto addWhole = [&](BitFacts fact) {
            target.span.fact = fact;
            targets.push_back(target);
        };
        if (variable.hasConstant)
            addWhole(HasInitialValue);
        if (variable.direction == PortDirection::In || variable.direction == PortDirection::InOut)
            addWhole(DrivenFromOutside);
        if (variable.direction == PortDirection::InOut)
            addWhole(LetsGo);
        // The table of a primitive is no assignment.
        if (variable.direction == PortDirection::Out && module.kind == RawModule::Primitive)
            addWhole(Driven);
    }
}

// Whether a call writes an operand stands with the function; of one that can't be found it may.
void ModuleFacts::addArguments()
{
    for (const RawArgument &argument : module.arguments) {
        QVector<PortDirection> ports = module.functions.value(argument.function);
        if (ports.isEmpty())
            ports = design->packageFunctions.value(argument.function);
        if (ports.value(int(argument.position), PortDirection::Out) != PortDirection::In)
            addTarget(argument.operand, MaybeDriven, 0);
    }
}

void ModuleFacts::settle()
{
    addText();
    addAssignments();
    addArguments();
    addConnections();

    // Bring the facts of each variable together by counting, then look at one after the other.
    const std::size_t count = module.variables.size();
    std::vector<quint32> ends(count + 1, 0);
    for (const Target &target : targets)
        ++ends[std::size_t(target.variable) + 1];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<FactSpan> sorted(targets.size());
    std::vector<quint32> next(ends.begin(), ends.end() - 1);
    for (const Target &target : targets)
        sorted[next[std::size_t(target.variable)]++] = target.span;
    targets = std::vector<Target>();

    facts.assign(begins.back(), 0);
    std::vector<FactSpan> spans;
    for (std::size_t i = 0; i < count; ++i) {
        spans.assign(sorted.begin() + ends[i], sorted.begin() + ends[i + 1]);
        applySpans(&spans, facts.data() + begins[i]);
    }
    spreadClocks();
}

ModuleSummary ModuleFacts::summary() const
{
    ModuleSummary result;
    result.isKnown = true;
    for (std::size_t i = 0; i < module.variables.size(); ++i) {
        const RawVariable &variable = module.variables[i];
        if (variable.direction == PortDirection::None || variable.scope != 0 || !shapes[i])
            continue;
        PortFacts port;
        port.pin = variable.pin;
        port.direction = variable.direction;
        port.width = bits(i);
        const BitFacts *own = of(i);
        for (quint32 bit = 0; bit < port.width; ++bit) {
            if (!port.runs.empty() && port.runs.back().facts == own[bit])
                port.runs.back().end = bit + 1;
            else
                port.runs.push_back({bit + 1, own[bit]});
        }
        result.portsByPin.insert(port.pin, variable.name);
        result.ports.insert(variable.name, port);
    }
    return result;
}

} // namespace Standin
