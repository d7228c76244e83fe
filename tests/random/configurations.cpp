// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "configurations.h"

#include "plaindesign.h"

#include <algorithm>

using namespace Plain;

static void alter(Signal *item, Dice &dice)
{
    if (dice.oneIn(12))
        item->found = false;
    if (dice.oneIn(12))
        item->selectable = !item->selectable;
    if (dice.oneIn(15))
        item->alias = dice.oneIn(3) ? QString("") : "alias of " + item->name;
    if (dice.oneIn(40))
        item->kind = -1;
    for (Signal &bit : item->members) {
        if (dice.oneIn(10))
            bit.found = false;
        if (dice.oneIn(15))
            bit.alias = "bit alias";
    }
}

static Signal randomSignal(Dice &dice, int type)
{
    const Design &design = designs().at(dice.oneIn(12) ? 1 : dice.below(2) * 2);
    const int level = dice.below(design.levels.size());
    const QList<Net> &nets = design.levels.at(level).nets;
    const QList<Bus> &buses = design.levels.at(level).buses;
    Signal item;
    if (!buses.isEmpty() && dice.oneIn(2)) {
        const Bus bus = dice.oneOf(buses);
        item = dice.oneIn(3) ? design.signalOf(level, dice.oneOf(bus.bits), true, type)
                             : design.signalOf(level, bus, type);
    } else if (!nets.isEmpty()) {
        item = design.signalOf(level, dice.oneOf(nets), false, type);
    } else {
        item.name = "top/lost<" + QString::number(dice.below(5)) + ">&\"x\"";
        item.kind = 0;
    }
    alter(&item, dice);
    return item;
}

static QString randomValue(Dice &dice, int width)
{
    if (dice.oneIn(10))
        return dice.oneOf(QList<QString>{"", "FF", "0xzz", "0x123456789", "0x0", "0x"});
    QString value = "0x";
    for (int i = 0; i < qMax(1, (width + 3) / 4); ++i)
        value += QString::number(dice.below(16), 16);
    return dice.oneIn(4) ? value : "0x" + value.mid(2).toUpper();
}

static QList<Port> randomPorts(Dice &dice, int type, int count, int most)
{
    QList<Port> ports;
    for (int i = 0; i < count; ++i) {
        Port port;
        const int items = dice.oneIn(3) ? 0 : dice.between(1, most);
        for (int j = 0; j < items; ++j)
            port.items.append(randomSignal(dice, type));
        if (type == 1)
            port.value = randomValue(dice, widthOf(port.items));
        ports.append(port);
    }
    return ports;
}

// Takes away what a save would refuse, so that saves go on to the file now and then.
static void makeValid(Configuration *configuration)
{
    QStringList driven;
    for (Core &core : *configuration) {
        core.useClock = core.useClock && core.clock == "top/q[0]";
        for (Port &port : core.outs) {
            Items kept;
            for (const Signal &item : qAsConst(port.items)) {
                const QStringList names = singleNames({item});
                const auto isDriven = [&](const QString &name) {
                    return driven.contains(name);
                };
                if (std::any_of(names.begin(), names.end(), isDriven))
                    continue;
                driven += names;
                kept.append(item);
            }
            port.items = kept;
        }
        if (widthOf(core.ins.first().items) == 0) {
            Signal watched;
            watched.name = "top/clk";
            watched.kind = 0;
            core.ins.first().items.append(watched);
        }
    }
}

Configuration randomConfiguration(Dice &dice)
{
    int cores = dice.oneIn(8) ? 0 : dice.between(1, 3);
    int ports = 4;
    int most = 4;
    switch (dice.below(14)) {
    case 0:
        cores = dice.between(15, 16);
        ports = 2;
        break;
    case 1:
        cores = 1;
        ports = 64;
        most = 1;
        break;
    default:
        break;
    }

    const bool valid = dice.oneIn(2);
    Configuration configuration;
    for (int i = 0; i < cores; ++i) {
        Core core;
        const int fewest = ports == 64 ? 62 : 1;
        core.ins = randomPorts(dice, 0, dice.between(fewest, ports), most);
        core.outs = randomPorts(dice, 1, dice.between(fewest, ports), most);
        core.module = dice.oneIn(3) ? "old" : "top";
        core.useClock = dice.oneIn(4);
        if (dice.oneIn(2))
            core.clock = dice.oneOf(QList<QString>{"top/clk", "top/rst", "nowhere", "top/q[0]"});
        configuration.append(core);
    }
    if (valid)
        makeValid(&configuration);
    return configuration;
}

QByteArray damagedText(Dice &dice)
{
    switch (dice.below(4)) {
    case 0:
        return QByteArray();
    case 1:
        return "no configuration at all";
    case 2:
        return fileText(randomConfiguration(dice)).replace(">1.0<", ">2.0<");
    default:
        break;
    }
    const QByteArray whole = fileText(randomConfiguration(dice));
    return whole.left(dice.below(whole.size() - 2));
}
