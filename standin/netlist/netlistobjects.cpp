// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/netlistobjects.h"

#include "netlist/pathname.h"

#include <charconv>
#include <new>

namespace Standin {

// An index in brackets, or a range; 24 characters hold the longest range.
struct IndexText
{
    char text[32] = {'['};
    int length = 1;

    void append(qint32 number, char end)
    {
        length = int(std::to_chars(text + length, text + sizeof text - 1, number).ptr - text);
        text[length++] = end;
    }
};

SingleNet::SingleNet(const Level *owner, quint32 indexInDefinition, quint32 flags)
    : index(indexInDefinition)
    , level(owner)
{
    noProbeIn = flags & NoProbeIn;
    noProbeOut = flags & NoProbeOut;
}

QString SingleNet::name() const
{
    const ModuleDefinition::Single &record = level->definition().singles()[index];
    return level->definition().composed(QString(), record.nameBegin, record.nameLength, nullptr, 0);
}

QString SingleNet::fullPathName() const
{
    const ModuleDefinition &definition = level->definition();
    const ModuleDefinition::Single &record = definition.singles()[index];
    return definition.composed(level->prefix(), record.nameBegin, record.nameLength, nullptr, 0);
}

BusBit::BusBit(const Bus *owner, quint32 positionFromLeft, NetFlags flags)
    : position(positionFromLeft)
    , bus(owner)
{
    noProbeIn = flags.testFlag(NoProbeIn);
    noProbeOut = flags.testFlag(NoProbeOut);
}

QString BusBit::name() const
{
    return composed(QString());
}

QString BusBit::fullPathName() const
{
    return composed(bus->owner()->prefix());
}

QString BusBit::composed(const QString &prefix) const
{
    const ModuleDefinition::Bus &record = bus->record();
    IndexText suffix;
    suffix.append(record.range.at(position), ']');
    return bus->owner()->definition().composed(prefix, record.nameBegin, record.nameLength,
                                               suffix.text, suffix.length);
}

Bus::Bus(const Level *owner, quint32 indexInDefinition, quint32 flags)
    : index(indexInDefinition)
    , level(owner)
{
    noProbeIn = flags & NoProbeIn;
    noProbeOut = flags & NoProbeOut;
}

const ModuleDefinition::Bus &Bus::record() const
{
    return level->definition().buses()[index];
}

QString Bus::BusName() const
{
    return composed(QString());
}

QString Bus::fullBusName() const
{
    return composed(level->prefix());
}

QString Bus::composed(const QString &prefix) const
{
    const ModuleDefinition::Bus &own = record();
    IndexText suffix;
    suffix.append(own.range.left, ':');
    suffix.append(own.range.right, ']');
    return level->definition().composed(prefix, own.nameBegin, own.nameLength, suffix.text,
                                        suffix.length);
}

BusBit *Bus::bits() const
{
    return level->netlist->bitsOf(*this);
}

QList<FATHOM::RtlNet *> Bus::nets() const
{
    const auto width = int(record().range.size());
    BusBit *bit = bits();
    QList<FATHOM::RtlNet *> list;
    list.reserve(width);
    for (int i = 0; i < width; ++i)
        list.append(bit + i);
    return list;
}

Level::Level(Netlist *owner, Level *above, int definition, quint32 instance, quint32 element)
    : netlist(owner)
    , definitionIndex(quint32(definition))
    , instanceIndex(instance)
    , elementIndex(element)
{
    parent = above;
}

const ModuleDefinition &Level::definition() const
{
    return netlist->table.definitions[definitionIndex];
}

QByteArray Level::ownName() const
{
    if (!parent) {
        const QByteArray name = definition().sourceName().toUtf8();
        return needsEscape(name) ? escapedName(name) : name;
    }
    const auto *above = static_cast<const Level *>(parent);
    return ModuleDefinition::instanceName(above->definition().instances()[instanceIndex],
                                          elementIndex);
}

QString Level::name() const
{
    return parent ? textOfName(ownName()) : definition().sourceName();
}

QString Level::module() const
{
    return definition().sourceName();
}

// Longer paths aren't kept, since in a chain of instances they would grow with its square.
static constexpr int LongestKeptPrefix = 256;

const QString &Level::prefix() const
{
    std::vector<QString> &kept = netlist->prefixes;
    if (kept.empty())
        kept.resize(netlist->levels.size());
    QString &own = kept[netlist->indexOf(*this)];
    if (!own.isNull())
        return own;
    if (netlist->prefixLevel == this)
        return netlist->lastPrefix;
    std::vector<const Level *> way;
    const Level *from = this;
    while (from && kept[netlist->indexOf(*from)].isNull()) {
        way.push_back(from);
        from = static_cast<const Level *>(from->parent);
    }
    QString path = from ? kept[netlist->indexOf(*from)] : QString();
    for (auto level = way.rbegin(); level != way.rend(); ++level)
        path += textOfName((*level)->ownName()) + QLatin1Char('/');
    if (path.size() <= LongestKeptPrefix)
        return own = path;
    netlist->lastPrefix = path;
    netlist->prefixLevel = this;
    return netlist->lastPrefix;
}

QList<FATHOM::Hierachy *> Level::children() const
{
    const quint32 count = definition().instanceCount();
    QList<FATHOM::Hierachy *> list;
    list.reserve(int(count));
    for (quint32 i = 0; i < count; ++i)
        list.append(&netlist->levels[netlist->childLevels[firstChild + i]]);
    return list;
}

template<typename Base, typename Row>
static QList<Base *> stretch(Row &row, quint32 begin, std::size_t end)
{
    QList<Base *> list;
    list.reserve(int(end - begin));
    for (std::size_t i = begin; i < end; ++i)
        list.append(&row[i]);
    return list;
}

QList<FATHOM::RtlNet *> Level::singleNets() const
{
    return stretch<FATHOM::RtlNet>(netlist->singles, firstSingle,
                                   firstSingle + definition().singles().size());
}

QList<FATHOM::RtlNetBus *> Level::netbuses() const
{
    return stretch<FATHOM::RtlNetBus>(netlist->buses, firstBus,
                                      firstBus + definition().buses().size());
}

QList<FATHOM::RtlNet *> Level::singleNetsIncludeSub() const
{
    return stretch<FATHOM::RtlNet>(netlist->singles, firstSingle, endSingle);
}

QList<FATHOM::RtlNetBus *> Level::netbusesIncludeSub() const
{
    return stretch<FATHOM::RtlNetBus>(netlist->buses, firstBus, endBus);
}

Netlist::Netlist(ModuleTable moduleTable)
    : table(std::move(moduleTable))
{
    usesJtag = table.usesJtag;
}

Netlist::~Netlist() = default;

Level *Netlist::addLevel(Level *above, int definition, quint32 instance, quint32 element)
{
    levels.emplace_back(this, above, definition, instance, element);
    Level *level = &levels.back();
    level->firstSingle = quint32(singles.size());
    level->firstBus = quint32(buses.size());
    level->firstChild = quint32(childLevels.size());
    const ModuleDefinition &own = level->definition();
    childLevels.resize(childLevels.size() + own.instanceCount());
    for (quint32 i = 0; i < own.singles().size(); ++i)
        singles.emplace_back(level, i, own.singles()[i].flags);
    for (quint32 i = 0; i < own.buses().size(); ++i)
        buses.emplace_back(level, i, own.buses()[i].flags);
    return level;
}

void Netlist::build(quint32 levelCount, quint32 singleCount, quint32 busCount)
{
    levels.reserve(levelCount);
    singles.reserve(singleCount);
    buses.reserve(busCount);
    childLevels.reserve(levelCount);

    // A stack of our own: a design may be deeper than the program's.
    struct Step
    {
        Level *level;
        quint32 instance;
        quint32 element;
        quint32 ordinal;
    };
    std::vector<Step> stack{{addLevel(nullptr, table.top, 0, 0), 0, 0, 0}};
    while (!stack.empty()) {
        Step &step = stack.back();
        const auto &instances = step.level->definition().instances();
        if (step.instance == instances.size()) {
            step.level->endLevel = quint32(levels.size());
            step.level->endSingle = quint32(singles.size());
            step.level->endBus = quint32(buses.size());
            stack.pop_back();
            continue;
        }
        const ModuleDefinition::Instance &instance = instances[step.instance];
        childLevels[step.level->firstChild + step.ordinal++] = quint32(levels.size());
        Level *child = addLevel(step.level, instance.definition, step.instance, step.element);
        if (++step.element == instance.count()) {
            step.element = 0;
            ++step.instance;
        }
        stack.push_back({child, 0, 0, 0});
    }
    top = &levels.front();
}

FATHOM::RtlNet *Netlist::findNet(const QString &fullPathName) const
{
    const QByteArray path = fullPathName.toUtf8();
    if (textOfName(path) != fullPathName)
        return nullptr;
    int begin = 0;
    const Level *level = nullptr;
    for (;;) {
        const int end = stepEnd(path, begin);
        const QByteArray step = path.mid(begin, end - begin);
        if (end == path.size())
            return level ? findInLevel(*level, step) : nullptr;
        if (!level) {
            level = step == levels.front().ownName() ? &levels.front() : nullptr;
        } else {
            const int child = level->definition().findInstance(step);
            level = child < 0 ? nullptr : &levels[childLevels[level->firstChild + quint32(child)]];
        }
        if (!level)
            return nullptr;
        begin = end + 1;
    }
}

FATHOM::RtlNet *Netlist::findInLevel(const Level &level, const QByteArray &name) const
{
    const ModuleDefinition &definition = level.definition();
    const int single = definition.findSingle(name);
    if (single >= 0)
        return const_cast<SingleNet *>(&singles[level.firstSingle + quint32(single)]);
    QByteArray base;
    qint32 index = 0;
    if (!splitIndex(name, &base, &index))
        return nullptr;
    const int found = definition.findBus(base);
    if (found < 0)
        return nullptr;
    const Bus &bus = buses[level.firstBus + quint32(found)];
    quint32 position = 0;
    if (!bus.record().range.contains(index, &position))
        return nullptr;
    return bus.bits() + position;
}

BusBit *Netlist::bitsOf(const Bus &bus) const
{
    if (bits.empty())
        bits.resize(buses.size());
    BusBit *&first = bits[std::size_t(&bus - buses.data())];
    if (first)
        return first;

    const auto width = quint32(bus.record().range.size());
    const std::size_t bytes = width * sizeof(BusBit);
    if (bytes > blockRoom) {
        blockRoom = qMax<std::size_t>(bytes, 4096 * sizeof(BusBit));
        bitBlocks.emplace_back(new char[blockRoom]);
        blockEnd = bitBlocks.back().get();
    }
    first = reinterpret_cast<BusBit *>(blockEnd);
    blockEnd += bytes;
    blockRoom -= bytes;
    // Bits own nothing, so their blocks are freed without running destructors.
    const ModuleDefinition &definition = bus.owner()->definition();
    for (quint32 i = 0; i < width; ++i)
        new (first + i) BusBit(&bus, i, definition.bitFlags(bus.record(), i));
    return first;
}

} // namespace Standin
