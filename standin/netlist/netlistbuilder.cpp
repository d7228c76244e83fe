// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/netlistbuilder.h"

#include "netlist/moduletable.h"

namespace Standin {

// Each level is a definition with a single instance, so a handle is an index in the module table.
NetlistBuilder::NetlistBuilder(const QString &topModule)
{
    levels.emplace_back(topModule);
}

bool NetlistBuilder::isLevel(int handle) const
{
    return handle >= 0 && std::size_t(handle) < levels.size();
}

int NetlistBuilder::addLevel(int parent, const QString &name, const QString &module)
{
    const auto handle = int(levels.size());
    if (!isLevel(parent) || !levels[std::size_t(parent)].addInstance(name, handle))
        return -1;
    levels.emplace_back(module);
    return handle;
}

bool NetlistBuilder::addNet(int level, const QString &name, NetFlags flags)
{
    NetDeclaration net;
    net.name = name;
    net.flags = QByteArray(1, char(int(flags)));
    return isLevel(level) && levels[std::size_t(level)].addNet(net);
}

bool NetlistBuilder::addBus(int level, const QString &name, int left, int right, NetFlags flags)
{
    const Range range{left, right};
    if (range.size() > ModuleDefinition::MaximumSize)
        return false;
    return addMixedBus(level, name, left, right, QVector<NetFlags>(int(range.size()), flags));
}

bool NetlistBuilder::addMixedBus(int level, const QString &name, int left, int right,
                                 const QVector<NetFlags> &bitFlags)
{
    NetDeclaration bus;
    bus.name = name;
    bus.isBus = true;
    bus.range = {left, right};
    bus.flags.reserve(bitFlags.size());
    for (NetFlags flags : bitFlags)
        bus.flags += char(int(flags));
    return isLevel(level) && bus.flags.size() == bus.range.size()
        && levels[std::size_t(level)].addNet(bus);
}

void NetlistBuilder::setUsesJtag(bool uses)
{
    jtag = uses;
}

FATHOM::RtlNetlist *NetlistBuilder::build() const
{
    ModuleTable table;
    table.definitions = levels;
    for (ModuleDefinition &definition : table.definitions)
        definition.seal();
    table.top = 0;
    table.usesJtag = jtag;
    return elaborate(std::move(table));
}

} // namespace Standin
