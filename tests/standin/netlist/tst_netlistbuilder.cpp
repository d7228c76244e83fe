// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/netlistbuilder.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"
#include "testmain.h"

#include <memory>

using namespace Standin;

class TestNetlistBuilder : public QObject
{
    Q_OBJECT

private slots:
    void emptyNetlistHasATopLevel();
    void levelsNetsAndBusesStandInTheOrderAdded();
    void bitFlagsMakeTheFlagsOfTheBus();
    void wrongHandlesAndTakenNamesAreRefused();
    void buildsAgainAfterMoreWasAdded();
};

void TestNetlistBuilder::emptyNetlistHasATopLevel()
{
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(NetlistBuilder("chip").build());
    QVERIFY(netlist->top);
    QCOMPARE(netlist->top->name(), QString("chip"));
    QCOMPARE(netlist->top->module(), QString("chip"));
    QVERIFY(!netlist->top->parent);
    QVERIFY(netlist->top->children().isEmpty());
    QVERIFY(netlist->top->singleNetsIncludeSub().isEmpty());
    QVERIFY(netlist->top->netbusesIncludeSub().isEmpty());
    QVERIFY(!netlist->usesJtag);
    QVERIFY(!netlist->findNet("chip"));
}

void TestNetlistBuilder::levelsNetsAndBusesStandInTheOrderAdded()
{
    NetlistBuilder builder;
    const int u1 = builder.addLevel(0, "u1", "uart");
    const int u0 = builder.addLevel(0, "u0", "uart");
    const int deep = builder.addLevel(u1, "fifo", "ram");
    QVERIFY(builder.addNet(u0, "x"));
    QVERIFY(builder.addNet(0, "clk", NoProbeOut));
    QVERIFY(builder.addNet(0, "a", NoProbeIn));
    QVERIFY(builder.addBus(0, "up", 0, 2));
    QVERIFY(builder.addBus(0, "down", 1, 0, NoProbeIn | NoProbeOut));
    QVERIFY(builder.addBus(deep, "q", -1, -2));
    builder.setUsesJtag(true);
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());

    QVERIFY(netlist->usesJtag);
    const QList<FATHOM::Hierachy *> children = netlist->top->children();
    QCOMPARE(children.size(), 2);
    QCOMPARE(children.at(0)->name(), QString("u1"));
    QCOMPARE(children.at(1)->name(), QString("u0"));
    QCOMPARE(children.at(0)->module(), QString("uart"));
    QCOMPARE(children.at(0)->parent, netlist->top);
    QCOMPARE(children.at(0)->children().value(0)->module(), QString("ram"));

    QStringList nets;
    for (const FATHOM::RtlNet *net : netlist->top->singleNetsIncludeSub())
        nets += net->fullPathName();
    QCOMPARE(nets, QStringList({"top/clk", "top/a", "top/u0/x"}));
    QCOMPARE(netlist->top->singleNets().size(), 2);
    QVERIFY(netlist->top->singleNets().value(0)->noProbeOut);
    QVERIFY(!netlist->top->singleNets().value(0)->noProbeIn);
    QVERIFY(netlist->top->singleNets().value(1)->noProbeIn);

    QStringList buses;
    for (const FATHOM::RtlNetBus *bus : netlist->top->netbusesIncludeSub())
        buses += bus->fullBusName();
    QCOMPARE(buses, QStringList({"top/up[0:2]", "top/down[1:0]", "top/u1/fifo/q[-1:-2]"}));
    QCOMPARE(netlist->top->netbuses().value(0)->BusName(), QString("up[0:2]"));

    QStringList bits;
    for (const FATHOM::RtlNetBus *bus : netlist->top->netbusesIncludeSub()) {
        QCOMPARE(bus->nets(), bus->nets());
        for (FATHOM::RtlNet *bit : bus->nets()) {
            bits += bit->name();
            QCOMPARE(netlist->findNet(bit->fullPathName()), bit);
        }
    }
    QCOMPARE(bits,
             QStringList({"up[0]", "up[1]", "up[2]", "down[1]", "down[0]", "q[-1]", "q[-2]"}));
    QVERIFY(netlist->findNet("top/down[1]")->noProbeIn);
    QVERIFY(netlist->findNet("top/down[1]")->noProbeOut);
}

void TestNetlistBuilder::bitFlagsMakeTheFlagsOfTheBus()
{
    NetlistBuilder builder;
    QVERIFY(builder.addMixedBus(0, "some", 1, 0, {NoProbeIn, NoProbeOut}));
    QVERIFY(builder.addMixedBus(0, "all", 1, 0, {NoProbeIn, NoProbeIn}));
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());

    const FATHOM::RtlNetBus *some = netlist->top->netbuses().at(0);
    QVERIFY(!some->noProbeIn);
    QVERIFY(some->noProbeOut);
    QVERIFY(some->nets().at(0)->noProbeIn);
    QVERIFY(!some->nets().at(0)->noProbeOut);
    QVERIFY(!some->nets().at(1)->noProbeIn);
    QVERIFY(some->nets().at(1)->noProbeOut);

    const FATHOM::RtlNetBus *all = netlist->top->netbuses().at(1);
    QVERIFY(all->noProbeIn);
    QVERIFY(!all->noProbeOut);
}

void TestNetlistBuilder::wrongHandlesAndTakenNamesAreRefused()
{
    NetlistBuilder builder;
    QVERIFY(builder.addNet(0, "a"));
    QVERIFY(!builder.addNet(0, "a"));
    QVERIFY(!builder.addBus(0, "a", 1, 0));
    QVERIFY(!builder.addNet(0, QString()));
    QVERIFY(!builder.addNet(1, "b"));
    QVERIFY(!builder.addNet(-1, "b"));
    QVERIFY(!builder.addBus(7, "b", 1, 0));
    QVERIFY(!builder.addMixedBus(0, "b", 1, 0, {NoProbeIn}));
    QVERIFY(!builder.addBus(0, "b", 0x7fffffff, -0x7fffffff));
    QCOMPARE(builder.addLevel(3, "u", "m"), -1);
    QCOMPARE(builder.addLevel(0, "u", "m"), 1);
    QCOMPARE(builder.addLevel(0, "u", "m"), -1);
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    QCOMPARE(netlist->top->singleNets().size(), 1);
    QVERIFY(netlist->top->netbuses().isEmpty());
    QCOMPARE(netlist->top->children().size(), 1);
}

void TestNetlistBuilder::buildsAgainAfterMoreWasAdded()
{
    NetlistBuilder builder;
    builder.addNet(0, "a");
    const std::unique_ptr<FATHOM::RtlNetlist> first(builder.build());
    builder.addNet(0, "b");
    const std::unique_ptr<FATHOM::RtlNetlist> second(builder.build());
    QVERIFY(!first->findNet("top/b"));
    QVERIFY(second->findNet("top/b"));
    QVERIFY(first->findNet("top/a") != second->findNet("top/a"));
}

MOLK_TEST_GUILESS_MAIN(TestNetlistBuilder)

#include "tst_netlistbuilder.moc"
