// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "alikenames.h"
#include "blockcount.h"
#include "literalset.h"
#include "meetingnames.h"
#include "randomitems.h"
#include "signalitems.h"

#include "namepositions.h"
#include "signalset.h"

#include "testmain.h"

using namespace MOLK;

class TestSignalSet : public QObject
{
    Q_OBJECT

private slots:
    void busHoldsABitByItsExactName_data();
    void busHoldsABitByItsExactName();
    void aBitOfAListedBusIsDropped();
    void aBusReplacesItsBitsAtTheEnd();
    void equalBusesAndEqualBitsAreBothListed();
    void picksAreSplitByKind();
    void excludedBitsNeverTravelWithTheirBus();
    void aBusWithoutChoosableBitsCountsAsABit();
    void partitionAppendsToTheGivenLists();
    void mergingEqualsThePlainReading();
    void splittingEqualsThePlainReading();
    void splittingCostsGrowWithTheNames_data();
    void splittingCostsGrowWithTheNames();
    void meetingCostsGrowWithTheNames_data();
    void meetingCostsGrowWithTheNames();
    void positionsOfANameComeLastAddedFirst();
    void namesOfOneHashAreToldApart();
};

void TestSignalSet::busHoldsABitByItsExactName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("held");
    QTest::newRow("first-bit") << "q[3]" << true;
    QTest::newRow("last-bit") << "q[0]" << true;
    QTest::newRow("past-the-range") << "q[4]" << false;
    QTest::newRow("the-bus-itself") << "q[3:0]" << false;
    QTest::newRow("other-case") << "Q[3]" << false;
}

void TestSignalSet::busHoldsABitByItsExactName()
{
    QFETCH(QString, name);
    QFETCH(bool, held);
    const SignalItem whole = bus("q", 4);
    QCOMPARE(busContains(whole, bit(name)), held);

    QVERIFY(!busContains(bit(name), bit(name))); // No members to hold anything.
    SignalItem withMembers = bit(name);
    withMembers.members.append(bit("x"));
    QVERIFY(!busContains(whole, withMembers)); // A bus isn't a bit.
}

void TestSignalSet::aBitOfAListedBusIsDropped()
{
    QList<SignalItem> buses{bus("q", 2)};
    mergeBusItem(buses, bit("q[1]"));
    mergeBusItem(buses, bit("q[2]"));
    QCOMPARE(itemNames(buses), QStringList({"q[1:0]{q[1] q[0]}", "q[2]"}));
}

void TestSignalSet::aBusReplacesItsBitsAtTheEnd()
{
    QList<SignalItem> buses{bit("q[0]"), bit("r[0]"), bit("q[1]"), bit("q[0]")};
    mergeBusItem(buses, bus("q", 2));
    QCOMPARE(itemNames(buses), QStringList({"r[0]", "q[1:0]{q[1] q[0]}"}));
}

void TestSignalSet::equalBusesAndEqualBitsAreBothListed()
{
    QList<SignalItem> buses;
    mergeBusItem(buses, bus("q", 1));
    mergeBusItem(buses, bus("q", 1));
    mergeBusItem(buses, bit("r[0]"));
    mergeBusItem(buses, bit("r[0]"));
    QCOMPARE(itemNames(buses), QStringList({"q[0:0]{q[0]}", "q[0:0]{q[0]}", "r[0]", "r[0]"}));
}

void TestSignalSet::picksAreSplitByKind()
{
    SignalItem unset = net("unset");
    unset.kind = -1;
    SignalItem excluded = net("excluded");
    excluded.selectable = false;
    QList<SignalItem> buses;
    QList<SignalItem> singles;
    partitionSignals({net("a"), bit("r[0]"), unset, excluded, bus("q", 1)}, buses, singles);
    QCOMPARE(itemNames(buses), QStringList({"r[0]", "q[0:0]{q[0]}"}));
    QCOMPARE(itemNames(singles), QStringList({"a", "unset", "excluded"}));
    QVERIFY(!singles.last().selectable);
}

void TestSignalSet::excludedBitsNeverTravelWithTheirBus()
{
    SignalItem whole = bus("q", 4);
    whole.members[0].selectable = false;
    whole.members[2].selectable = false;
    QList<SignalItem> buses;
    QList<SignalItem> singles;
    partitionSignals({whole}, buses, singles);
    QCOMPARE(itemNames(buses), QStringList("q[3:0]{q[2] q[0]}"));
    QCOMPARE(whole.members.size(), 4);
}

void TestSignalSet::aBusWithoutChoosableBitsCountsAsABit()
{
    SignalItem whole = bus("q", 2);
    whole.members[0].selectable = false;
    whole.members[1].selectable = false;
    QList<SignalItem> buses;
    QList<SignalItem> singles;
    partitionSignals({whole, whole, bit("q[1]")}, buses, singles);
    QCOMPARE(itemNames(buses), QStringList({"q[1:0]", "q[1:0]", "q[1]"}));

    // A bus with a bit of that name holds it.
    SignalItem odd = bus("odd", 1);
    odd.members[0].name = "q[1:0]";
    partitionSignals({odd}, buses, singles);
    QCOMPARE(itemNames(buses), QStringList({"q[1]", "odd[0:0]{q[1:0]}"}));
}

void TestSignalSet::partitionAppendsToTheGivenLists()
{
    QList<SignalItem> buses{bit("q[0]"), bus("r", 1)};
    QList<SignalItem> singles{net("a")};
    partitionSignals({bus("q", 1), bit("r[0]"), net("a")}, buses, singles);
    QCOMPARE(itemNames(buses), QStringList({"r[0:0]{r[0]}", "q[0:0]{q[0]}"}));
    QCOMPARE(itemNames(singles), QStringList({"a", "a"}));
}

void TestSignalSet::mergingEqualsThePlainReading()
{
    RandomItems random(611);
    for (int round = 0; round < 3000; ++round) {
        QList<SignalItem> expected = random.items(6);
        QList<SignalItem> buses = expected;
        for (int k = 0; k < 6; ++k) {
            const SignalItem item = random.item();
            Literal::mergeBusItem(expected, item);
            mergeBusItem(buses, item);
            QCOMPARE(Literal::itemsDump(buses), Literal::itemsDump(expected));
        }
    }
}

void TestSignalSet::splittingEqualsThePlainReading()
{
    RandomItems random(612);
    for (int round = 0; round < 3000; ++round) {
        const QList<SignalItem> picked = random.items(12);
        QList<SignalItem> expectedBuses = random.items(3);
        QList<SignalItem> expectedSingles = random.items(3);
        QList<SignalItem> buses = expectedBuses;
        QList<SignalItem> singles = expectedSingles;
        Literal::partitionSignals(picked, expectedBuses, expectedSingles);
        partitionSignals(picked, buses, singles);
        QCOMPARE(Literal::itemsDump(buses), Literal::itemsDump(expectedBuses));
        QCOMPARE(Literal::itemsDump(singles), Literal::itemsDump(expectedSingles));
    }
}

void TestSignalSet::splittingCostsGrowWithTheNames_data()
{
    QTest::addColumn<QString>("shape");
    for (const char *shape :
         {"singles", "bits", "buses-then-bits", "bits-then-buses", "one-name", "alike"})
        QTest::newRow(shape) << shape;
}

static QList<SignalItem> picksOfShape(const QString &shape, int names)
{
    QList<SignalItem> picked;
    QList<SignalItem> bits;
    for (int i = 0; i < names; i += 8) {
        const SignalItem whole = bus(QString("top/bus_%1").arg(i), 8);
        bits += whole.members;
        if (shape.contains("buses"))
            picked.append(whole);
    }
    if (shape == "buses-then-bits")
        return picked + bits;
    if (shape == "bits-then-buses")
        return bits + picked;
    for (SignalItem &item : bits) {
        item.kind = shape == "singles" ? 0 : 1;
        if (shape == "one-name")
            item.name = "q";
    }
    for (int i = 0; i < names && shape == "alike"; ++i)
        bits[i].name = alikeName(i);
    return bits;
}

void TestSignalSet::splittingCostsGrowWithTheNames()
{
    QFETCH(QString, shape);
    const auto cost = [&shape](int names) {
        const QList<SignalItem> picked = picksOfShape(shape, names);
        QList<SignalItem> buses;
        QList<SignalItem> singles;
        const BlockCount counted;
        partitionSignals(picked, buses, singles);
        return counted.blocks();
    };
    const qint64 small = cost(2048);
    QVERIFY(small > 2048);
    QVERIFY2(cost(20480) < 13 * small, "ten times the names cost more than 13 times as much");
}

void TestSignalSet::meetingCostsGrowWithTheNames_data()
{
    splittingCostsGrowWithTheNames_data();
}

void TestSignalSet::meetingCostsGrowWithTheNames()
{
    QFETCH(QString, shape);
    const auto cost = [&shape](int names) {
        const QList<SignalItem> rows = picksOfShape(shape, names);
        QList<SignalItem> buses;
        QList<SignalItem> singles;
        partitionSignals(rows, buses, singles);
        const BlockCount counted;
        IncomingSignals incoming(buses, singles);
        for (const SignalItem &row : rows)
            incoming.meet(row);
        return counted.blocks();
    };
    const qint64 small = cost(2048);
    QVERIFY(small > 2048);
    QVERIFY2(cost(20480) < 13 * small, "ten times the names cost more than 13 times as much");
}

void TestSignalSet::positionsOfANameComeLastAddedFirst()
{
    NamePositions index;
    QVERIFY(!index.find("a"));
    QVERIFY(!index.contains("a"));
    for (int i = 0; i < 100; ++i)
        index.add(QString::number(i % 10), i);
    int *place = index.find("7");
    QVERIFY(place);
    QCOMPARE(index.position(*place), 97);
    *place = index.next(*place);
    QCOMPARE(index.position(*index.find("7")), 87);
    for (int left = 9; left > 0; --left)
        *place = index.next(*place);
    QCOMPARE(index.position(*index.find("7")), -1);
    QVERIFY(index.contains("7"));
    QVERIFY(!index.contains("10"));
    QVERIFY(index.contains("9"));
    index.add("7", 100);
    QCOMPARE(index.position(*index.find("7")), 100);
}

void TestSignalSet::namesOfOneHashAreToldApart()
{
    const auto [one, other] = meetingNames();
    QVERIFY(!one.isNull());
    NamePositions index;
    index.add(one, 0);
    QVERIFY(!index.contains(other));
    index.add(other, 1);
    QCOMPARE(index.position(*index.find(one)), 0);
    QCOMPARE(index.position(*index.find(other)), 1);
}

MOLK_TEST_GUILESS_MAIN(TestSignalSet)

#include "tst_signalset.moc"
