// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "validation.h"

#include "molkcore.h"
#include "namehash.h"
#include "nameorder.h"

#include "fathom/rtlnet.h"
#include "fathom/rtlnetlist.h"

#include <QString>
#include <QVector>

namespace MOLK {

namespace {

// Finds the nets that are driven more than once.
//
// Nearly all nets of a sound configuration are driven once, so a net costs one probe of a flat hash
// table and nothing is copied. Texts, lists and sorting are for the repeated ones alone.
class DriverTable
{
public:
    explicit DriverTable(int driverCount) { drivers.reserve(driverCount); }

    // `name` must stay where it is until the table is done with.
    void add(const QString &name, int port)
    {
        drivers.append({&name, nameHash(name), port, -1, drivers.size()});
    }

    // To be called once, when all are added. The place of a net in a large table isn't in any
    // cache, so it is asked for some nets ahead.
    void findRepeats()
    {
        int size = 16;
        while (size < 2 * drivers.size())
            size *= 2;
        QVector<Slot> cells(size, {0, -1});
        Slot *const table = cells.data();
        const uint mask = uint(size) - 1;
        for (int i = 0; i < drivers.size(); ++i) {
            const int ahead = qMin(i + netsAhead, drivers.size() - 1);
            __builtin_prefetch(table + (drivers.at(ahead).hash & mask), 1);
            enter(i, table, mask);
        }
    }

    // The first driver of each repeated net, in the order of the nets' names.
    QVector<int> repeatedNets() const
    {
        QVector<const QString *> names;
        names.reserve(repeated.size());
        for (int driver : repeated)
            names.append(&nameOf(driver));
        QVector<int> sorted = nameOrder(names);
        for (int &position : sorted)
            position = repeated.at(position);
        return sorted;
    }

    const QString &nameOf(int driver) const { return *drivers.at(driver).name; }
    int portOf(int driver) const { return drivers.at(driver).port; }

    // The next driver of the same net, -1 behind the last.
    int next(int driver) const { return drivers.at(driver).next; }

private:
    static const int netsAhead = 8;

    struct Slot
    {
        uint hash;
        int first;
    };

    struct Driver
    {
        const QString *name;
        uint hash;
        int port;
        int next;
        int last; // Of a net's first driver only.
    };

    void enter(int driver, Slot *table, uint mask)
    {
        const uint hash = drivers.at(driver).hash;
        for (uint at = hash & mask;; at = (at + 1) & mask) {
            Slot &slot = table[at];
            if (slot.first < 0) {
                slot = {hash, driver};
                return;
            }
            if (slot.hash == hash && nameOf(slot.first) == nameOf(driver)) {
                link(slot.first, driver);
                return;
            }
        }
    }

    void link(int first, int added)
    {
        const int last = drivers.at(first).last;
        if (last == first)
            repeated.append(first);
        drivers[last].next = added;
        drivers[first].last = added;
    }

    QVector<Driver> drivers;
    QVector<int> repeated;
};

// A Probe Out in use, with a copy of its list that keeps the names in place.
struct DrivingPort
{
    QString description;
    QList<SignalItem> items;
    int width;
};

} // namespace

static QString clockFault(const MolkCore &core, const FATHOM::RtlNetlist *netlist)
{
    if (!core.useUserClock)
        return QString();
    const QString name = core.getUserClockName();
    if (name.isEmpty())
        return "No synchronization clock specified";
    const FATHOM::RtlNet *net = netlist ? netlist->findNet(name) : nullptr;
    if (!net)
        return "The output probe synchronizes with user clock does not exist";
    if (net->noProbeIn)
        return "Invalid user clock selected for output probe synchronization";
    return QString();
}

static QStringList coreFaults(const MolkCore &core, const FATHOM::RtlNetlist *netlist)
{
    const QString prefix = QString("Molk %1: ").arg(core.id);
    QStringList faults;
    if (core.getAvailableProbeIns().isEmpty() && core.getAvailableProbeOuts().isEmpty())
        faults.append(prefix + "At least one Probe In port or Probe Out port should be enabled");
    const QString clock = clockFault(core, netlist);
    if (!clock.isEmpty())
        faults.append(prefix + clock);
    return faults;
}

// The position of a core names it here, not its number.
static QVector<DrivingPort> drivingPorts(const QList<MolkCore *> &cores)
{
    QVector<DrivingPort> ports;
    for (int i = 0; i < cores.size(); ++i) {
        const QList<ProbeOut *> outs = cores.at(i)->getAvailableProbeOuts();
        for (const ProbeOut *out : outs) {
            ports.append({QString("molk_%1->Probe Out%2").arg(i).arg(out->number),
                          out->getSignalNet(), out->width()});
        }
    }
    return ports;
}

static QString driversFault(const DriverTable &table, int net, const QVector<DrivingPort> &ports)
{
    const QLatin1String begin("ERROR:Signal \"");
    const QLatin1String middle("\" has multiple drivers(");
    int size = begin.size() + table.nameOf(net).size() + middle.size() + 1;
    for (int driver = net; driver >= 0; driver = table.next(driver))
        size += ports.at(table.portOf(driver)).description.size() + 2;

    QString fault;
    fault.reserve(size);
    fault.append(begin).append(table.nameOf(net)).append(middle);
    for (int driver = net; driver >= 0; driver = table.next(driver)) {
        if (driver != net)
            fault.append(' ');
        // A comma stands behind the last description too.
        fault.append(ports.at(table.portOf(driver)).description).append(',');
    }
    return fault.append(')');
}

static QStringList driverFaults(const QVector<DrivingPort> &ports)
{
    int count = 0;
    for (const DrivingPort &port : ports)
        count += port.width;

    DriverTable table(count);
    for (int i = 0; i < ports.size(); ++i) {
        for (const SignalItem &item : ports.at(i).items) {
            if (item.members.isEmpty())
                table.add(item.name, i);
            for (const SignalItem &bit : item.members)
                table.add(bit.name, i);
        }
    }
    table.findRepeats();

    QStringList faults;
    const QVector<int> nets = table.repeatedNets();
    faults.reserve(nets.size());
    for (int net : nets)
        faults.append(driversFault(table, net, ports));
    return faults;
}

QStringList configurationFaults(const QList<MolkCore *> &cores, const FATHOM::RtlNetlist *netlist)
{
    QStringList faults;
    for (const MolkCore *core : cores)
        faults += coreFaults(*core, netlist);
    return faults + driverFaults(drivingPorts(cores));
}

} // namespace MOLK
