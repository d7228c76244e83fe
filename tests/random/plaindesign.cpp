// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "plaindesign.h"

#include "netlist/netlistbuilder.h"

namespace Plain {

QString Design::path(int level) const
{
    const Level &self = levels.at(level);
    return self.parent < 0 ? self.name : path(self.parent) + '/' + self.name;
}

QList<int> Design::below(int level) const
{
    QList<int> children;
    for (int i = 0; i < levels.size(); ++i) {
        if (levels.at(i).parent == level)
            children.append(i);
    }
    return children;
}

const Net *Design::find(const QString &fullName) const
{
    for (int i = 0; i < levels.size(); ++i) {
        const QString prefix = path(i) + '/';
        for (const Net &net : levels.at(i).nets) {
            if (prefix + net.name == fullName)
                return &net;
        }
        for (const Bus &bus : levels.at(i).buses) {
            for (const Net &bit : bus.bits) {
                if (prefix + bit.name == fullName)
                    return &bit;
            }
        }
    }
    return nullptr;
}

QStringList Design::allNames() const
{
    QStringList names;
    for (int i = 0; i < levels.size(); ++i) {
        const QString prefix = path(i) + '/';
        for (const Net &net : levels.at(i).nets)
            names.append(prefix + net.name);
        for (const Bus &bus : levels.at(i).buses) {
            names.append(prefix + bus.name);
            for (const Net &bit : bus.bits)
                names.append(prefix + bit.name);
        }
    }
    return names;
}

Signal Design::signalOf(int level, const Net &net, bool bit, int type) const
{
    Signal item;
    item.name = path(level) + '/' + net.name;
    item.selectable = type == 1 ? !net.noOut : !net.noIn;
    item.kind = bit ? 1 : 0;
    return item;
}

Signal Design::signalOf(int level, const Bus &bus, int type) const
{
    Signal item;
    item.name = path(level) + '/' + bus.name;
    item.selectable = type == 1 ? !bus.noOut : !bus.noIn;
    item.kind = 1;
    for (const Net &bit : bus.bits)
        item.members.append(signalOf(level, bit, true, type));
    return item;
}

static Standin::NetFlags flagsOf(const Net &net)
{
    Standin::NetFlags flags;
    if (net.noIn)
        flags |= Standin::NoProbeIn;
    if (net.noOut)
        flags |= Standin::NoProbeOut;
    return flags;
}

FATHOM::RtlNetlist *Design::netlist(bool usesJtag) const
{
    Standin::NetlistBuilder builder(levels.first().name);
    QList<int> handles = {0};
    for (int i = 1; i < levels.size(); ++i) {
        const Level &level = levels.at(i);
        handles.append(builder.addLevel(handles.at(level.parent), level.name, level.module));
    }
    for (int i = 0; i < levels.size(); ++i) {
        for (const Net &net : levels.at(i).nets)
            builder.addNet(handles.at(i), net.name, flagsOf(net));
        for (const Bus &bus : levels.at(i).buses) {
            QVector<Standin::NetFlags> flags;
            for (const Net &bit : bus.bits)
                flags.append(flagsOf(bit));
            const QString shortName = bus.name.left(bus.name.indexOf('['));
            builder.addMixedBus(handles.at(i), shortName, bus.left, bus.right, flags);
        }
    }
    builder.setUsesJtag(usesJtag);
    return builder.build();
}

// The flags of a bit are a character: '.' none, 'i' not for Probe In, 'o' not for Probe Out, 'x'
// for neither.
static Net net(const QString &name, QChar flags = '.')
{
    return {name, flags == 'i' || flags == 'x', flags == 'o' || flags == 'x'};
}

static Bus bus(const QString &name, int left, int right, const QString &flags = QString())
{
    Bus made;
    made.name = name + '[' + QString::number(left) + ':' + QString::number(right) + ']';
    made.left = left;
    made.right = right;
    made.noIn = true;
    const int step = left > right ? -1 : 1;
    for (int i = left; i != right + step; i += step) {
        const QChar flag = flags.isEmpty() ? QChar('.') : flags.at(qAbs(i - left));
        made.bits.append(net(name + '[' + QString::number(i) + ']', flag));
        made.noIn = made.noIn && made.bits.last().noIn;
        made.noOut = made.noOut || made.bits.last().noOut;
    }
    return made;
}

static Design richDesign()
{
    return {{{"top",
              "top",
              -1,
              {net("clk"), net("rst", 'i'), net("Clk", 'o'), net("a.b")},
              {bus("q", 3, 0), bus("stat", 0, 5, "..i.oo"), bus("one", 0, 0)}},
             {"u0",
              "uart",
              0,
              {net("ready"), net("dead", 'x'), net("q*")},
              {bus("q", 7, 0), bus("gone", 1, 0, "xx")}},
             {"u_fifo", "fifo", 1, {net("full"), net("empty", 'o')}, {bus("wptr", 4, 0)}},
             {"hub", "empty_shell", 0, {}, {}},
             {"u1", "uart", 3, {net("ready", 'o')}, {bus("Data", 9, 0)}}}};
}

static Design wideDesign()
{
    return {{{"top",
              "top",
              -1,
              {net("clk", 'i'), net("rst")},
              {bus("wide", 199, 0), bus("q", 3, 0, "i.i."), bus("half", 0, 55)}},
             {"u0", "uart", 0, {net("ready", 'o')}, {bus("q", 7, 0)}}}};
}

static Design smallDesign()
{
    return {{{"top", "top", -1, {net("clk")}, {bus("q", 1, 0, "o.")}}}};
}

const QList<Design> &designs()
{
    static const QList<Design> all = {richDesign(), wideDesign(), smallDesign()};
    return all;
}

} // namespace Plain
