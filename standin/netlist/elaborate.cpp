// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/netlistobjects.h"

#include <memory>

namespace Standin {

QString generateScopeModule()
{
    return QStringLiteral("generate");
}

// How much hangs below a definition, itself included.
struct Census
{
    enum State { Unknown, Open, Known };

    State state = Unknown;
    quint64 levels = 0;
    quint64 singles = 0;
    quint64 buses = 0;

    quint64 total() const { return levels + singles + buses; }

    void add(const Census &below, quint64 times)
    {
        levels += below.levels * times;
        singles += below.singles * times;
        buses += below.buses * times;
    }
};

// Beyond this a design can't be meant: it comes from a file made to exhaust the memory.
static constexpr quint64 MaximumObjects = 64 * 1024 * 1024;

static QString tooLarge()
{
    return QStringLiteral("The design has more than %1 nets and levels").arg(MaximumObjects);
}

// Counts from the top downwards, each definition once. The stack is our own, since a chain of
// definitions may be longer than the program's allows.
static bool takeCensus(const ModuleTable &table, std::vector<Census> *census, QString *error)
{
    struct Step
    {
        int definition;
        std::size_t instance;
    };
    std::vector<Step> stack{{table.top, 0}};
    while (!stack.empty()) {
        Step &step = stack.back();
        const ModuleDefinition &definition = table.definitions[std::size_t(step.definition)];
        Census &own = (*census)[std::size_t(step.definition)];
        if (own.state == Census::Unknown) {
            own = {Census::Open, 1, definition.singles().size(), definition.buses().size()};
        }
        if (step.instance == definition.instances().size()) {
            own.state = Census::Known;
            stack.pop_back();
            continue;
        }
        const ModuleDefinition::Instance &instance = definition.instances()[step.instance];
        const Census &below = (*census)[std::size_t(instance.definition)];
        if (below.state == Census::Open) {
            *error = QStringLiteral("Module \"%1\" contains itself").arg(definition.sourceName());
            return false;
        }
        if (below.state == Census::Unknown) {
            stack.push_back({instance.definition, 0});
            continue;
        }
        own.add(below, instance.count());
        if (own.total() > MaximumObjects) {
            *error = tooLarge();
            return false;
        }
        ++step.instance;
    }
    return true;
}

FATHOM::RtlNetlist *elaborate(ModuleTable table, QString *error)
{
    QString ignored;
    QString *report = error ? error : &ignored;
    const std::size_t top = std::size_t(table.top);
    if (table.top < 0 || top >= table.definitions.size()) {
        *report = QStringLiteral("The design has no top module");
        return nullptr;
    }
    std::vector<Census> census(table.definitions.size());
    if (!takeCensus(table, &census, report))
        return nullptr;
    auto netlist = std::make_unique<Netlist>(std::move(table));
    netlist->build(quint32(census[top].levels), quint32(census[top].singles),
                   quint32(census[top].buses));
    return netlist.release();
}

} // namespace Standin
