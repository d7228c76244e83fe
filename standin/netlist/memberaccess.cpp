// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/memberaccess.h"

namespace Standin {

MemberAccess::MemberAccess(RawDesign *wholeDesign, const QHash<quint32, int> &modulesByName,
                           const std::vector<int> &moduleOrder)
    : design(wholeDesign)
    , moduleByName(modulesByName)
    , facts(wholeDesign->modules.size())
    , accesses(wholeDesign->modules.size())
    , instances(wholeDesign->modules.size())
{
    for (int number : moduleOrder)
        collect(number);
}

// What is written from elsewhere is written by somebody: several instances share the definition, so
// several writers don't mean several drivers.
static BitFacts seenFromOutside(RawFact::Kind kind)
{
    switch (kind) {
    case RawFact::Clock:
        return ClocksRegister;
    case RawFact::TriState:
        return LetsGo;
    case RawFact::Use:
        return InFabric;
    default:
        return MaybeDriven;
    }
}

void MemberAccess::collect(int number)
{
    const RawModule &module = design->modules[std::size_t(number)];
    for (const RawFact &fact : module.facts) {
        const RawEntry &entry = module.entries[fact.target.entry];
        if (entry.scope == RawEntry::External)
            add(number, entry, fact.target, seenFromOutside(fact.kind));
    }
    for (const RawAssignment &assignment : module.assignments) {
        const RawEntry &entry = module.entries[assignment.target.entry];
        if (entry.scope == RawEntry::External)
            add(number, entry, assignment.target, MaybeDriven);
    }
    for (const RawArgument &argument : module.arguments) {
        const RawEntry &entry = module.entries[argument.operand.entry];
        if (entry.scope == RawEntry::External)
            add(number, entry, argument.operand, MaybeDriven);
    }
    for (const RawInstance &instance : module.instances) {
        for (const RawConnection &connection : instance.connections) {
            for (quint32 i = 0; i < connection.segmentCount; ++i) {
                const RawSegment &operand = module.segments[connection.firstSegment + i];
                if (operand.kind != RawSegment::Reference)
                    continue;
                const RawEntry &entry = module.entries[operand.entry];
                if (entry.scope != RawEntry::External)
                    continue;
                const bool isRead = connection.direction == PortDirection::In;
                add(number, entry, operand, isRead ? InFabric : MaybeDriven);
            }
        }
        const int child = moduleByName.value(instance.module, -1);
        if (child < 0)
            continue;
        for (const Access &access : accesses[std::size_t(child)])
            inherit(number, instance, child, access);
    }
}

// An interface port connected by position has a name made up by the tool, and no number of its own:
// it has the one that is left over.
quint32 MemberAccess::portOf(int child, const RawConnection &connection) const
{
    if (!design->names.text(connection.port).startsWith(QLatin1String("__pinNumber")))
        return connection.port;
    std::set<int> taken;
    const RawModule &module = design->modules[std::size_t(child)];
    for (const RawVariable &variable : module.variables)
        taken.insert(variable.pin);
    int pin = 0;
    for (const RawVariable &variable : module.variables) {
        if (!variable.isInterface || variable.scope != 0)
            continue;
        do {
            ++pin;
        } while (taken.count(pin));
        if (pin == connection.pin)
            return variable.name;
    }
    return connection.port;
}

// The child reaches the member through a port, and so do we through what is connected there.
void MemberAccess::inherit(int number, const RawInstance &instance, int child, const Access &access)
{
    const auto &[port, way, member, path, lsb, width, exact, fact] = access;
    const RawModule &module = design->modules[std::size_t(number)];
    for (const RawConnection &connection : instance.connections) {
        if (connection.segmentCount != 1 || portOf(child, connection) != port)
            continue;
        const RawSegment &operand = module.segments[connection.firstSegment];
        if (operand.kind != RawSegment::Reference)
            continue;
        const RawEntry &entry = module.entries[operand.entry];
        std::vector<quint32> steps;
        if (entry.scope == RawEntry::External)
            steps = stepsTo(entry.dotted);
        const std::vector<quint32> last = stepsTo(entry.name);
        steps.insert(steps.end(), last.begin(), last.end());
        steps.insert(steps.end(), way.begin(), way.end());
        RawSegment target;
        target.kind = RawSegment::Reference;
        target.path = path;
        target.lsb = lsb;
        target.width = width;
        target.exact = exact;
        add(number, steps, member, target, fact);
    }
}

void MemberAccess::add(int number, const RawEntry &entry, const RawSegment &operand, BitFacts fact)
{
    add(number, stepsTo(entry.dotted), entry.name, operand, fact);
}

// Walks down through the instances named by the steps. A step that names none is a generate scope,
// whose instances stand with those of its module; if the first that counts names none either, it is
// a port, and whoever instantiates us goes on from there.
void MemberAccess::add(int number, const std::vector<quint32> &steps, quint32 member,
                       const RawSegment &operand, BitFacts fact)
{
    int at = number;
    for (quint32 step : steps) {
        const auto instance = instancesOf(at).constFind(step);
        if (instance == instancesOf(at).constEnd())
            continue;
        const RawModule &module = design->modules[std::size_t(at)];
        at = moduleByName.value(module.instances[std::size_t(*instance)].module, -1);
        if (at < 0)
            return;
    }
    if (at != number) {
        facts[std::size_t(at)].push_back({member, operand, fact});
    } else if (!steps.empty()) {
        const std::vector<quint32> way(steps.begin() + 1, steps.end());
        accesses[std::size_t(number)].insert(Access(steps.front(), way, member, operand.path,
                                                    operand.lsb, operand.width, operand.exact,
                                                    fact));
    }
}

// `bi__Viftop` is how the tool calls the interface instance `bi`, and `p__BRA__0__KET__` an element
// of the array `p`.
static QStringView withoutToolMarks(QStringView step)
{
    for (const char *mark : {"__Viftop", "__BRA__"}) {
        const auto at = step.indexOf(QLatin1String(mark));
        if (at > 0)
            step = step.left(at);
    }
    const auto bracket = step.indexOf(QLatin1Char('['));
    return bracket > 0 ? step.left(bracket) : step;
}

std::vector<quint32> MemberAccess::stepsTo(quint32 dotted)
{
    std::vector<quint32> steps;
    const QString text = design->names.string(dotted);
    const auto parts = QStringView(text).split(QLatin1Char('.'));
    for (QStringView step : parts)
        steps.push_back(design->names.intern(withoutToolMarks(step)));
    return steps;
}

const QHash<quint32, int> &MemberAccess::instancesOf(int number)
{
    QHash<quint32, int> &byName = instances[std::size_t(number)];
    const RawModule &module = design->modules[std::size_t(number)];
    if (byName.isEmpty()) {
        for (std::size_t i = 0; i < module.instances.size(); ++i)
            byName.insert(module.instances[i].name, int(i));
    }
    return byName;
}

} // namespace Standin
