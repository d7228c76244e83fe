// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "alikenames.h"
#include "blockcount.h"
#include "literalvalidation.h"
#include "molkcore.h"
#include "signalitems.h"
#include "testmain.h"
#include "validation.h"

#include "netlist/netlistbuilder.h"

#include "fathom/rtlnetlist.h"

#include <QRandomGenerator>

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
    void driversAreNamedByPosition();
    void probeInIsNoDriver();
    void busBitsAreSingleNets();
    void busNameIsNoNet();
    void repeatOnOnePortIsNamedTwice();
    void netsAreSortedByCodeUnits();
    void placeMarksInANetStay();
    void linesStandInOrder();

    void randomConfigurationsAreJudgedAsByThePlainWay();
    void namesThatAreAlikeToAHashAreToldApart();
    void costsGrowWithTheNames_data();
    void costsGrowWithTheNames();
};

namespace {

class Cores
{
public:
    Cores() = default;
    ~Cores() { qDeleteAll(cores); }
    Q_DISABLE_COPY(Cores)

    MolkCore *add()
    {
        cores.append(new MolkCore(cores.size()));
        return cores.last();
    }

    QStringList faults(const FATHOM::RtlNetlist *netlist = nullptr) const
    {
        return configurationFaults(cores, netlist);
    }

    QList<MolkCore *> cores;
};

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

static ProbeOut *drive(MolkCore *core, int port, const QList<SignalItem> &items)
{
    while (core->getAllProbeOuts().size() <= port)
        core->addProbeOut(core->getAllProbeOuts().size());
    core->getProbeOut(port)->setSignalNet(items);
    return core->getProbeOut(port);
}

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

static QString randomName(QRandomGenerator &random)
{
    static const QStringList names = {"",     "a",   "A",      "top/a", "top/A", "top/b",  "top/q",
                                      "%1",   "%2",  "\"",     "q[1]",  "q[0]",  "q[1:0]", "top/",
                                      "<b>a", "a b", "\u00e4", "z",     "clk",   "rst",    "none"};
    return names.at(int(random.bounded(names.size())));
}

static QList<SignalItem> randomItems(QRandomGenerator &random)
{
    QList<SignalItem> items;
    for (int n = int(random.bounded(5)); n > 0; --n) {
        SignalItem item = net(randomName(random));
        for (int bits = int(random.bounded(4)) - 1; bits > 0; --bits)
            item.members.append(net(randomName(random)));
        items.append(item);
    }
    return items;
}

void tst_Validation::randomConfigurationsAreJudgedAsByThePlainWay()
{
    Standin::NetlistBuilder builder("top");
    builder.addNet(0, "a");
    builder.addNet(0, "b", Standin::NoProbeIn);
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    int withFaults = 0;

    for (quint32 seed = 0; seed < 5000; ++seed) {
        QRandomGenerator random(seed);
        Cores cores;
        for (int n = int(random.bounded(5)); n > 0; --n) {
            MolkCore *core = cores.add();
            core->id = int(random.bounded(20));
            core->useUserClock = random.bounded(2) == 1;
            core->setUserClockName(randomName(random));
            core->getProbeIn(0)->setSignalNet(randomItems(random));
            for (int ports = int(random.bounded(4)); ports > 0; --ports)
                drive(core, int(random.bounded(6)), randomItems(random));
        }

        const FATHOM::RtlNetlist *given = random.bounded(4) ? netlist.get() : nullptr;
        const QStringList wanted = literalFaults(cores.cores, given);
        if (cores.faults(given) != wanted)
            QCOMPARE(cores.faults(given), QStringList(QString("seed %1").arg(seed)) + wanted);
        withFaults += wanted.isEmpty() ? 0 : 1;
    }

    // Both kinds came up often.
    QVERIFY(withFaults > 500);
    QVERIFY(withFaults < 4900);
}

void tst_Validation::namesThatAreAlikeToAHashAreToldApart()
{
    QList<SignalItem> items;
    for (int i = 0; i < 4096; ++i)
        items.append(net(alikeName(i)));
    items.append(items.at(17));
    Cores cores;
    drive(cores.add(), 0, items);

    QCOMPARE(cores.faults(), literalFaults(cores.cores, nullptr));
    QCOMPARE(cores.faults().size(), 1);
}

// Distinct names, names that were made to meet in a hash table, each name twice, one name for all.
static QString nameOfShape(const QString &shape, int number)
{
    if (shape == "alike")
        return alikeName(number);
    return QString("top/q%1").arg(shape == "twice" ? number / 2 : shape == "one" ? 0 : number);
}

void tst_Validation::costsGrowWithTheNames_data()
{
    QTest::addColumn<QString>("shape");

    for (const char *shape : {"distinct", "alike", "twice", "one"})
        QTest::newRow(shape) << QString::fromLatin1(shape);
}

void tst_Validation::costsGrowWithTheNames()
{
    QFETCH(QString, shape);
    const auto cost = [&shape](int names) {
        QList<SignalItem> items;
        for (int i = 0; i < names; ++i)
            items.append(net(nameOfShape(shape, i)));
        Cores cores;
        drive(cores.add(), 0, items);
        const BlockCount counted;
        const QStringList faults = cores.faults();
        return counted.blocks();
    };
    const qint64 small = cost(2048);
    QVERIFY(small > 2048);
    QVERIFY2(cost(20480) < 13 * small, "ten times the names cost more than 13 times as much");
}

MOLK_TEST_GUILESS_MAIN(tst_Validation)
#include "tst_validation.moc"
