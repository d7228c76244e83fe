// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduletable.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"

#include <memory>
#include <vector>

namespace Standin {

class Bus;
class Level;
class Netlist;

/// A net without a range. The index lies in what the base leaves unused at its end, so that a net
/// has 24 bytes.
class SingleNet final : public FATHOM::RtlNet
{
public:
    SingleNet(const Level *owner, quint32 indexInDefinition, quint32 flags);

    QString name() const override;
    QString fullPathName() const override;

private:
    quint32 index;
    const Level *level;
};

/// A bit of a bus.
class BusBit final : public FATHOM::RtlNet
{
public:
    BusBit(const Bus *owner, quint32 positionFromLeft, NetFlags flags);

    QString name() const override;
    QString fullPathName() const override;

private:
    QString composed(const QString &prefix) const;

    quint32 position;
    const Bus *bus;
};

/// A net with a range. Its bits are made when they are asked for.
class Bus final : public FATHOM::RtlNetBus
{
public:
    Bus(const Level *owner, quint32 indexInDefinition, quint32 flags);

    QString BusName() const override;
    QString fullBusName() const override;
    QList<FATHOM::RtlNet *> nets() const override;

    const Level *owner() const { return level; }
    const ModuleDefinition::Bus &record() const;

    /// The first of the bits, which lie in a row.
    BusBit *bits() const;

private:
    QString composed(const QString &prefix) const;

    quint32 index;
    const Level *level;
};

static_assert(sizeof(SingleNet) == 24 && sizeof(Bus) == 24 && sizeof(BusBit) == 24,
              "the index has to lie in the tail padding of the base");

/// One level of the hierarchy. Levels, nets and buses each lie in one row for the whole design,
/// each level ahead of those below it; so what is below a level is a stretch of each row.
class Level final : public FATHOM::Hierachy
{
public:
    Level(Netlist *owner, Level *above, int definition, quint32 instance, quint32 element);

    QString name() const override;
    QString module() const override;
    QList<FATHOM::Hierachy *> children() const override;
    QList<FATHOM::RtlNet *> singleNets() const override;
    QList<FATHOM::RtlNetBus *> netbuses() const override;
    QList<FATHOM::RtlNet *> singleNetsIncludeSub() const override;
    QList<FATHOM::RtlNetBus *> netbusesIncludeSub() const override;

    const ModuleDefinition &definition() const;

    /// The path down to this level with a slash behind it.
    const QString &prefix() const;

private:
    friend class Bus;
    friend class Netlist;

    QByteArray ownName() const;

    Netlist *netlist;
    quint32 definitionIndex;
    quint32 instanceIndex; ///< In the definition of the level above.
    quint32 elementIndex;  ///< In an instance array.
    quint32 firstSingle = 0;
    quint32 firstBus = 0;
    quint32 firstChild = 0; ///< In the netlist's table of children.
    quint32 endLevel = 0;   ///< One behind the last level below this one.
    quint32 endSingle = 0;
    quint32 endBus = 0;
};

class Netlist final : public FATHOM::RtlNetlist
{
public:
    explicit Netlist(ModuleTable moduleTable);
    ~Netlist() override;

    FATHOM::RtlNet *findNet(const QString &fullPathName) const override;

    /// Makes all levels, nets and buses, whose numbers are known.
    void build(quint32 levelCount, quint32 singleCount, quint32 busCount);

private:
    friend class Bus;
    friend class Level;

    Level *addLevel(Level *above, int definition, quint32 instance, quint32 element);
    FATHOM::RtlNet *findInLevel(const Level &level, const QByteArray &name) const;
    BusBit *bitsOf(const Bus &bus) const;
    std::size_t indexOf(const Level &level) const { return std::size_t(&level - levels.data()); }

    ModuleTable table;
    std::vector<Level> levels;
    std::vector<SingleNet> singles;
    std::vector<Bus> buses;
    std::vector<quint32> childLevels;

    // Bits by bus, once any are asked for. They lie in blocks, of which only the last has room.
    mutable std::vector<BusBit *> bits;
    mutable std::vector<std::unique_ptr<char[]>> bitBlocks;
    mutable std::size_t blockRoom = 0;
    mutable char *blockEnd = nullptr;

    // Paths of the levels, once they were asked for; of those that are too long to keep, the last.
    mutable std::vector<QString> prefixes;
    mutable const Level *prefixLevel = nullptr;
    mutable QString lastPrefix;
};

} // namespace Standin
