// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "meetingnames.h"
#include "molkcore.h"
#include "signalitems.h"
#include "testmain.h"
#include "validationcores.h"

#include "netlist/netlistbuilder.h"

#include "fathom/rtlnetlist.h"

#include <memory>

using namespace MOLK;

class tst_Validation : public QObject
{
    Q_OBJECT

private slots:
    void emptyConfigurationHasNoFaults();
    void coreWithoutSignalsIsAFault();
    void furtherCoresAreJudged();
    void oneProbeInIsEnough();
    void oneProbeOutIsEnough();
    void coreIsNamedByItsNumber();

    void clockIsJudged_data();
    void clockIsJudged();
    void clockWithoutNetlistIsMissing();
    void unusedClockIsNotLookedAt();
    void emptyClockIsNotSearched();

    void netDrivenByTwoCores();
    void netsOfOneHashAreToldApart();
    void driversAreNamedByPosition();
    void probeInIsNoDriver();
    void busBitsAreSingleNets();
    void busNameIsNoNet();
    void repeatOnOnePortIsNamedTwice();
    void netsAreSortedByCodeUnits();
    void placeMarksInANetStay();
    void linesStandInOrder();
};

namespace {

// Counts what it is asked for.
class CountingNetlist : public FATHOM::RtlNetlist
{
public:
    FATHOM::RtlNet *findNet(const QString &) const override
    {
        ++asked;
        return nullptr;
    }

    mutable int asked = 0;
};

} // namespace

static const QString noPort = "At least one Probe In port or Probe Out port should be enabled";

void tst_Validation::emptyConfigurationHasNoFaults()
{
    const Cores cores;
    QCOMPARE(cores.faults(), QStringList());
}

void tst_Validation::coreWithoutSignalsIsAFault()
{
    Cores cores;
    MolkCore *core = cores.add();
    core->addProbeIn(1);
    core->addProbeOut(1);

    QCOMPARE(cores.faults(), QStringList("Molk 0: " + noPort));
}

void tst_Validation::furtherCoresAreJudged()
{
    Cores cores;
    cores.add();
    cores.add()->getProbeIn(0)->setSignalNet({net("a")});
    cores.add();

    QCOMPARE(cores.faults(), QStringList({"Molk 0: " + noPort, "Molk 2: " + noPort}));
}

void tst_Validation::oneProbeInIsEnough()
{
    Cores cores;
    cores.add()->getProbeIn(0)->setSignalNet({net("a")});

    QCOMPARE(cores.faults(), QStringList());
}

void tst_Validation::oneProbeOutIsEnough()
{
    Cores cores;
    drive(cores.add(), 0, {net("a")});

    QCOMPARE(cores.faults(), QStringList());
}

void tst_Validation::coreIsNamedByItsNumber()
{
    Cores cores;
    cores.add()->id = 7;

    QCOMPARE(cores.faults(), QStringList("Molk 7: " + noPort));
}

void tst_Validation::clockIsJudged_data()
{
    QTest::addColumn<QString>("clock");
    QTest::addColumn<QString>("fault");
    QTest::newRow("good") << "top/clk"
                          << "";
    QTest::newRow("bit") << "top/q[1]"
                         << "";
    QTest::newRow("empty") << ""
                           << "No synchronization clock specified";
    QTest::newRow("missing") << "top/none"
                             << "The output probe synchronizes with user clock does not exist";
    QTest::newRow("other-case") << "top/CLK"
                                << "The output probe synchronizes with user clock does not exist";
    QTest::newRow("not-watchable")
        << "top/rst"
        << "Invalid user clock selected for output probe synchronization";
    QTest::newRow("not-drivable-is-good") << "top/in"
                                          << "";
}

void tst_Validation::clockIsJudged()
{
    QFETCH(QString, clock);
    QFETCH(QString, fault);
    Standin::NetlistBuilder builder("top");
    builder.addNet(0, "clk");
    builder.addNet(0, "rst", Standin::NoProbeIn);
    builder.addNet(0, "in", Standin::NoProbeOut);
    builder.addBus(0, "q", 3, 0);
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    Cores cores;
    MolkCore *core = cores.add();
    core->getProbeIn(0)->setSignalNet({net("a")});
    core->useUserClock = true;
    core->setUserClockName(clock);

    QCOMPARE(cores.faults(netlist.get()),
             fault.isEmpty() ? QStringList() : QStringList("Molk 0: " + fault));
}

void tst_Validation::clockWithoutNetlistIsMissing()
{
    Cores cores;
    MolkCore *core = cores.add();
    core->getProbeIn(0)->setSignalNet({net("a")});
    core->useUserClock = true;
    core->setUserClockName("top/clk");

    QCOMPARE(cores.faults(nullptr),
             QStringList("Molk 0: The output probe synchronizes with user clock does not exist"));
}

void tst_Validation::unusedClockIsNotLookedAt()
{
    const CountingNetlist netlist;
    Cores cores;
    MolkCore *core = cores.add();
    core->getProbeIn(0)->setSignalNet({net("a")});
    core->setUserClockName("nonsense");

    QCOMPARE(cores.faults(&netlist), QStringList());
    QCOMPARE(netlist.asked, 0);
}

void tst_Validation::emptyClockIsNotSearched()
{
    const CountingNetlist netlist;
    Cores cores;
    MolkCore *core = cores.add();
    core->useUserClock = true;

    QCOMPARE(cores.faults(&netlist),
             QStringList({"Molk 0: " + noPort, "Molk 0: No synchronization clock specified"}));
    QCOMPARE(netlist.asked, 0);
}

void tst_Validation::netDrivenByTwoCores()
{
    Cores cores;
    drive(cores.add(), 0, {net("top/a")});
    drive(cores.add(), 2, {net("top/b"), net("top/a")});

    QCOMPARE(cores.faults(),
             QStringList("ERROR:Signal \"top/a\" has multiple drivers(molk_0->Probe "
                         "Out0, molk_1->Probe Out2,)"));
}

void tst_Validation::netsOfOneHashAreToldApart()
{
    const auto [one, other] = meetingNames();
    QVERIFY(!one.isNull());
    Cores cores;
    drive(cores.add(), 0, {net(one), net(other)});
    QCOMPARE(cores.faults(), QStringList());

    drive(cores.add(), 0, {net(other)});
    QCOMPARE(cores.faults(),
             QStringList("ERROR:Signal \"" + other
                         + "\" has multiple drivers(molk_0->Probe Out0, molk_1->Probe Out0,)"));
}

void tst_Validation::driversAreNamedByPosition()
{
    Cores cores;
    drive(cores.add(), 0, {net("a")});
    drive(cores.add(), 0, {net("a")})->number = 5;
    cores.cores.at(0)->id = 8;
    cores.cores.at(1)->id = 9;

    QCOMPARE(cores.faults(),
             QStringList("ERROR:Signal \"a\" has multiple drivers(molk_0->Probe "
                         "Out0, molk_1->Probe Out5,)"));
}

void tst_Validation::probeInIsNoDriver()
{
    Cores cores;
    MolkCore *core = cores.add();
    core->getProbeIn(0)->setSignalNet({net("a"), net("a")});
    drive(core, 0, {net("a")});

    QCOMPARE(cores.faults(), QStringList());
}

void tst_Validation::busBitsAreSingleNets()
{
    Cores cores;
    MolkCore *core = cores.add();
    drive(core, 0, {net("q[1]")});
    drive(core, 1, {bus("q", 4)});

    QCOMPARE(cores.faults(),
             QStringList("ERROR:Signal \"q[1]\" has multiple drivers(molk_0->Probe "
                         "Out0, molk_0->Probe Out1,)"));
}

void tst_Validation::busNameIsNoNet()
{
    Cores cores;
    MolkCore *core = cores.add();
    drive(core, 0, {net("q[3:0]")});
    drive(core, 1, {bus("q", 4)});

    QCOMPARE(cores.faults(), QStringList());
}

void tst_Validation::repeatOnOnePortIsNamedTwice()
{
    Cores cores;
    drive(cores.add(), 0, {net("a"), net("a")});

    QCOMPARE(cores.faults(),
             QStringList("ERROR:Signal \"a\" has multiple drivers(molk_0->Probe "
                         "Out0, molk_0->Probe Out0,)"));
}

void tst_Validation::netsAreSortedByCodeUnits()
{
    Cores cores;
    const QList<SignalItem> items = {net("b"),     net("a"),   net(QString(QChar(0xe4))),
                                     net("B"),     net("a/b"), net("a[1]"),
                                     net("a[10]"), net("a[2]")};
    drive(cores.add(), 0, items + items);

    QStringList names;
    const QStringList faults = cores.faults();
    for (const QString &fault : faults)
        names.append(fault.section('"', 1, 1));
    QCOMPARE(names,
             QStringList({"B", "a", "a/b", "a[10]", "a[1]", "a[2]", "b", QString(QChar(0xe4))}));
}

void tst_Validation::placeMarksInANetStay()
{
    Cores cores;
    drive(cores.add(), 0, {net("%2"), net("%2")});

    QCOMPARE(cores.faults(),
             QStringList("ERROR:Signal \"%2\" has multiple drivers(molk_0->Probe "
                         "Out0, molk_0->Probe Out0,)"));
}

void tst_Validation::linesStandInOrder()
{
    Cores cores;
    MolkCore *first = cores.add();
    drive(first, 0, {net("z"), net("a")});
    first->useUserClock = true;
    MolkCore *second = cores.add();
    second->useUserClock = true;
    drive(cores.add(), 0, {net("a"), net("z")});

    QCOMPARE(cores.faults(),
             QStringList({"Molk 0: No synchronization clock specified", "Molk 1: " + noPort,
                          "Molk 1: No synchronization clock specified",
                          "ERROR:Signal \"a\" has multiple drivers(molk_0->Probe Out0, "
                          "molk_2->Probe Out0,)",
                          "ERROR:Signal \"z\" has multiple drivers(molk_0->Probe Out0, "
                          "molk_2->Probe Out0,)"}));
}

MOLK_TEST_GUILESS_MAIN(tst_Validation)
#include "tst_validation.moc"
