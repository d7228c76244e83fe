// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkcore.h"
#include "testmain.h"

using MOLK::MolkCore;
using MOLK::ProbeIn;
using MOLK::ProbeOut;
using MOLK::SignalItem;

/// Cores own and number their ports; ports hold lists of signals.
class TestMolkCore : public QObject
{
    Q_OBJECT

private slots:
    void newCoreHasOnePortOfEachDirection();
    void addedPortsFollowInOrder();
    void portsAreFoundByPosition_data();
    void portsAreFoundByPosition();
    void removalClosesTheGapWithoutRenumbering();
    void removalAtNoPortDoesNothing_data();
    void removalAtNoPortDoesNothing();
    void updateRenumbersByPosition();
    void directionsAreIndependent();
    void onlyPortsWithSignalsAreAvailable();
    void namesAreKeptWhileTheClockIsOff();

    void newPortIsEmpty();
    void busCountsItsBits();
    void secondListReplacesTheFirst();
    void listIsCopiedOut();
    void newProbeOutStartsWithZero();
    void valueIsStoredUnchanged_data();
    void valueIsStoredUnchanged();
    void probeOutIsAProbeInWithoutAdjustment();
};

static SignalItem signal(const QString &name, const QStringList &bits = {})
{
    SignalItem item;
    item.name = name;
    for (const QString &bit : bits)
        item.members.append(signal(bit));
    return item;
}

template<typename Port>
static QList<int> numbers(const QList<Port *> &ports)
{
    QList<int> all;
    for (const Port *port : ports)
        all.append(port->number);
    return all;
}

void TestMolkCore::newCoreHasOnePortOfEachDirection()
{
    const MolkCore core(5);
    QCOMPARE(core.id, 5);
    QCOMPARE(numbers(core.getAllProbeIns()), QList<int>{0});
    QCOMPARE(numbers(core.getAllProbeOuts()), QList<int>{0});
    QCOMPARE(core.getProbeIn(0)->width(), 0);
    QCOMPARE(core.getProbeOut(0)->width(), 0);
    QCOMPARE(core.getModuleName(), QString());
    QCOMPARE(core.getUserClockName(), QString());
    QCOMPARE(core.useUserClock, false);
}

void TestMolkCore::addedPortsFollowInOrder()
{
    MolkCore core(0);
    core.addProbeIn(1);
    core.addProbeIn(2);
    core.addProbeOut(7);
    QCOMPARE(numbers(core.getAllProbeIns()), (QList<int>{0, 1, 2}));
    QCOMPARE(numbers(core.getAllProbeOuts()), (QList<int>{0, 7}));
    QCOMPARE(core.getProbeIn(2)->width(), 0);
}

void TestMolkCore::portsAreFoundByPosition_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("exists");

    QTest::newRow("before-the-first") << -1 << false;
    QTest::newRow("first") << 0 << true;
    QTest::newRow("last") << 1 << true;
    QTest::newRow("past-the-end") << 2 << false;
    QTest::newRow("far-past-the-end") << 2147483647 << false;
    QTest::newRow("far-before") << -2147483647 << false;
}

void TestMolkCore::portsAreFoundByPosition()
{
    QFETCH(int, index);
    QFETCH(bool, exists);
    MolkCore core(0);
    core.addProbeIn(1);
    core.addProbeOut(1);
    QCOMPARE(core.getProbeIn(index) != nullptr, exists);
    QCOMPARE(core.getProbeOut(index) != nullptr, exists);
    if (exists) {
        QCOMPARE(core.getProbeIn(index), core.getAllProbeIns().at(index));
        QCOMPARE(core.getProbeOut(index), core.getAllProbeOuts().at(index));
    }
}

void TestMolkCore::removalClosesTheGapWithoutRenumbering()
{
    MolkCore core(0);
    for (int i = 1; i < 4; ++i) {
        core.addProbeIn(i);
        core.addProbeOut(i);
    }
    core.removeProbeIn(1);
    core.removeProbeIn(1);
    core.removeProbeOut(0);
    QCOMPARE(numbers(core.getAllProbeIns()), (QList<int>{0, 3}));
    QCOMPARE(numbers(core.getAllProbeOuts()), (QList<int>{1, 2, 3}));
}

void TestMolkCore::removalAtNoPortDoesNothing_data()
{
    QTest::addColumn<int>("index");

    QTest::newRow("signal-row") << -1;
    QTest::newRow("past-the-end") << 1;
    QTest::newRow("far-away") << 2147483647;
}

void TestMolkCore::removalAtNoPortDoesNothing()
{
    QFETCH(int, index);
    MolkCore core(0);
    core.removeProbeIn(index);
    core.removeProbeOut(index);
    QCOMPARE(core.getAllProbeIns().size(), 1);
    QCOMPARE(core.getAllProbeOuts().size(), 1);
}

void TestMolkCore::updateRenumbersByPosition()
{
    MolkCore core(0);
    for (int i = 1; i < 4; ++i) {
        core.addProbeIn(i);
        core.addProbeOut(i);
    }
    core.removeProbeIn(0);
    core.removeProbeOut(2);
    core.updateProbeIn();
    QCOMPARE(numbers(core.getAllProbeIns()), (QList<int>{0, 1, 2}));
    QCOMPARE(numbers(core.getAllProbeOuts()), (QList<int>{0, 1, 3}));
    core.updateProbeOut();
    QCOMPARE(numbers(core.getAllProbeOuts()), (QList<int>{0, 1, 2}));
}

void TestMolkCore::directionsAreIndependent()
{
    MolkCore core(0);
    core.addProbeIn(1);
    core.removeProbeOut(0);
    QCOMPARE(core.getAllProbeIns().size(), 2);
    QCOMPARE(core.getAllProbeOuts().size(), 0);
}

void TestMolkCore::onlyPortsWithSignalsAreAvailable()
{
    MolkCore core(0);
    for (int i = 1; i < 3; ++i) {
        core.addProbeIn(i);
        core.addProbeOut(i);
    }
    core.getProbeIn(2)->setSignalNet({signal("a")});
    core.getProbeIn(0)->setSignalNet({signal("b", {"b0", "b1"})});
    core.getProbeOut(1)->setSignalNet({signal("c")});
    QCOMPARE(numbers(core.getAvailableProbeIns()), (QList<int>{0, 2}));
    QCOMPARE(numbers(core.getAvailableProbeOuts()), QList<int>{1});
    core.getProbeIn(0)->setSignalNet({});
    QCOMPARE(numbers(core.getAvailableProbeIns()), QList<int>{2});
}

void TestMolkCore::namesAreKeptWhileTheClockIsOff()
{
    MolkCore core(0);
    core.setUserClockName("top/clk");
    core.setModuleName("top");
    core.useUserClock = true;
    core.useUserClock = false;
    QCOMPARE(core.getUserClockName(), QString("top/clk"));
    QCOMPARE(core.getModuleName(), QString("top"));
}

void TestMolkCore::newPortIsEmpty()
{
    const ProbeIn port(3);
    QCOMPARE(port.number, 3);
    QCOMPARE(port.width(), 0);
    QVERIFY(port.getSignalNet().isEmpty());
    QVERIFY(port.singleSignals().isEmpty());
}

void TestMolkCore::busCountsItsBits()
{
    const QStringList bits{"q[7]", "q[6]", "q[5]", "q[4]", "q[3]", "q[2]", "q[1]", "q[0]"};
    ProbeIn port(0);
    port.setSignalNet({signal("q[7:0]", bits)});
    QCOMPARE(port.width(), 8);
    QCOMPARE(port.singleSignals(), bits);

    port.setSignalNet({signal("a"), signal("q[7:0]", bits), signal("z")});
    QCOMPARE(port.width(), 10);
    QCOMPARE(port.singleSignals(), QStringList("a") + bits + QStringList("z"));
}

void TestMolkCore::secondListReplacesTheFirst()
{
    ProbeIn port(0);
    port.setSignalNet({signal("a"), signal("b")});
    port.setSignalNet({signal("c")});
    QCOMPARE(port.singleSignals(), QStringList("c"));
}

void TestMolkCore::listIsCopiedOut()
{
    ProbeIn port(0);
    port.setSignalNet({signal("a")});
    QList<SignalItem> copy = port.getSignalNet();
    copy.first().name = "changed";
    copy.append(signal("b"));
    QCOMPARE(port.singleSignals(), QStringList("a"));
}

void TestMolkCore::newProbeOutStartsWithZero()
{
    QCOMPARE(ProbeOut(0).getValue(), QString("0x0"));
}

void TestMolkCore::valueIsStoredUnchanged_data()
{
    QTest::addColumn<QString>("value");

    QTest::newRow("usual") << "0x1F";
    QTest::newRow("empty") << "";
    QTest::newRow("lower-case") << "0xff";
    QTest::newRow("no-number") << " some text ";
}

void TestMolkCore::valueIsStoredUnchanged()
{
    QFETCH(QString, value);
    ProbeOut port(0);
    port.setValue(value);
    QCOMPARE(port.getValue(), value);
}

void TestMolkCore::probeOutIsAProbeInWithoutAdjustment()
{
    ProbeOut port(0);
    ProbeIn *const base = &port;
    QCOMPARE(static_cast<void *>(base), static_cast<void *>(&port));
    base->setSignalNet({signal("a")});
    QCOMPARE(port.width(), 1);
}

MOLK_TEST_GUILESS_MAIN(TestMolkCore)
#include "tst_molkcore.moc"
