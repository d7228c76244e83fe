// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "literalrows.h"
#include "randomitems.h"
#include "signalitems.h"

#include "signaldisplay.h"
#include "signalset.h"
#include "signaltree.h"

#include "testwidgetsmain.h"
#include "treelines.h"

#include <QSignalSpy>
#include <QTreeWidget>

using namespace MOLK;

class TestSignalTree : public QObject
{
    Q_OBJECT

private slots:
    void aRowIsAppendedWithItsBits();
    void noTreeGetsNoRow();
    void aNamedRowNeedsItsParentAndAllNames();
    void namedRowsEqualThePlainReading();
    void manyRowsAreInsertedAtOnce();
    void whatIsPicked_data();
    void whatIsPicked();
    void aReplacedBitRowMovesTheScanBack();
    void aKeptBusRowStaysAsItIs();
    void anEntryOfTheBusesNameEndsItsScan();
    void theFirstFittingEntryDecidesOverABitRow();
    void rowsWithoutASignalAreOfNoAccount();
    void addingEqualsThePlainReading();
    void reconcilingEqualsThePlainReading();
};

void TestSignalTree::aRowIsAppendedWithItsBits()
{
    QTreeWidget tree;
    addSignalRow(&tree, net("top/a"), 5);
    addSignalRow(&tree, bus("top/q", 2), 5);
    QCOMPARE(treeLines(tree.model()),
             QStringList({"top/a", "top/q[1:0]", "  top/q[1]", "  top/q[0]"}));
    QCOMPARE(tree.topLevelItem(1)->type(), 5);
    QCOMPARE(tree.topLevelItem(1)->child(0)->type(), 5);
    QCOMPARE(signalOfRow(tree.topLevelItem(1)).members.size(), 2);
    QVERIFY(!carriesSignal(tree.topLevelItem(1)->child(0)));
}

void TestSignalTree::noTreeGetsNoRow()
{
    addSignalRow(nullptr, net("top/a"), 0);
}

void TestSignalTree::aNamedRowNeedsItsParentAndAllNames()
{
    QTreeWidget tree;
    auto *parent = new QTreeWidgetItem(&tree);
    addNamedSignalRow(nullptr, net("top/a"), {"a"}, 0);
    addNamedSignalRow(parent, net("top/a"), {}, 0);
    addNamedSignalRow(parent, net("top/a"), {"a", "b"}, 0);
    addNamedSignalRow(parent, bus("top/q", 2), {"q[1:0]", "q[1]"}, 0);
    QCOMPARE(parent->childCount(), 0);
    addNamedSignalRow(parent, net("top/a"), {"a"}, 0);
    QCOMPARE(treeLines(tree.model()), QStringList({"", "  a"}));
}

void TestSignalTree::namedRowsEqualThePlainReading()
{
    RandomItems random(652);
    for (int round = 0; round < 300; ++round) {
        QTreeWidget expected;
        QTreeWidget tree;
        auto *expectedParent = new QTreeWidgetItem(&expected);
        auto *parent = new QTreeWidgetItem(&tree);
        const QList<SignalItem> items = random.items(6);
        for (const SignalItem &item : items) {
            QStringList names;
            const int count = 1 + item.members.size() + (random.oneIn(6) ? 1 : 0);
            for (int k = 0; k < count; ++k)
                names.append(QString("short %1").arg(k));
            Literal::addNamedSignalRow(expectedParent, item, names, 3);
            addNamedSignalRow(parent, item, names, 3);
        }
        QCOMPARE(Literal::treeDump(&tree), Literal::treeDump(&expected));
    }
}

void TestSignalTree::manyRowsAreInsertedAtOnce()
{
    QTreeWidget tree;
    QSignalSpy inserted(tree.model(), SIGNAL(rowsInserted(QModelIndex, int, int)));
    QList<SignalItem> picked;
    for (int i = 0; i < 50; ++i)
        picked << net(QString("n%1").arg(i)) << bus(QString("q%1").arg(i), 4);
    addPicked(&tree, picked);
    QCOMPARE(tree.topLevelItemCount(), 100);
    QCOMPARE(inserted.count(), 1);
}

void TestSignalTree::whatIsPicked_data()
{
    QTest::addColumn<QList<SignalItem>>("before");
    QTest::addColumn<QList<SignalItem>>("picked");
    QTest::addColumn<QStringList>("lines");

    using Items = QList<SignalItem>;
    const SignalItem q = bus("q", 2);
    QTest::newRow("nothing-picked") << Items{net("a")} << Items{} << QStringList{"a"};
    QTest::newRow("buses-ahead-of-nets")
        << Items{} << Items{net("a"), q, net("b"), bit("r[0]")}
        << QStringList{"q[1:0]", "  q[1]", "  q[0]", "r[0]", "a", "b"};
    QTest::newRow("bus-twice") << Items{q, net("a")} << Items{q}
                               << QStringList{"q[1:0]", "  q[1]", "  q[0]", "a"};
    QTest::newRow("net-twice") << Items{net("a")} << Items{net("b"), net("a")}
                               << QStringList{"a", "b"};
    QTest::newRow("bit-twice") << Items{bit("q[0]")} << Items{bit("q[0]")} << QStringList{"q[0]"};
    QTest::newRow("bit-of-a-listed-bus")
        << Items{q} << Items{bit("q[1]"), bit("q[0]")} << QStringList{"q[1:0]", "  q[1]", "  q[0]"};
    QTest::newRow("bus-of-three-listed-bits")
        << Items{bit("w[2]"), net("a"), bit("w[0]"), bit("w[1]"), net("b")} << Items{bus("w", 4)}
        << QStringList{"a", "b", "w[3:0]", "  w[3]", "  w[2]", "  w[1]", "  w[0]"};
    QTest::newRow("bus-with-its-own-bit")
        << Items{} << Items{q, bit("q[0]")} << QStringList{"q[1:0]", "  q[1]", "  q[0]"};
    QTest::newRow("bit-ahead-of-its-bus")
        << Items{} << Items{bit("q[0]"), q} << QStringList{"q[1:0]", "  q[1]", "  q[0]"};
    QTest::newRow("names-that-differ-in-case")
        << Items{net("Clk"), bit("Q[0]")} << Items{net("clk"), q}
        << QStringList{"Clk", "Q[0]", "q[1:0]", "  q[1]", "  q[0]", "clk"};

    SignalItem gray = bus("g", 3);
    gray.members[1].selectable = false;
    QTest::newRow("bus-with-an-excluded-bit")
        << Items{} << Items{gray} << QStringList{"g[2:0]", "  g[2]", "  g[0]"};
    SignalItem allGray = bus("g", 1);
    allGray.members[0].selectable = false;
    QTest::newRow("bus-of-excluded-bits-alone")
        << Items{} << Items{allGray, bit("g[0]")} << QStringList{"g[0:0]", "g[0]"};
    QTest::newRow("equal-buses-in-one-pick") << Items{} << Items{bus("q", 1), bus("q", 1)}
                                             << QStringList{"q[0:0]", "  q[0]", "q[0:0]", "  q[0]"};
    QTest::newRow("one-row-covers-one-of-equal-nets")
        << Items{net("a")} << Items{net("a"), net("a")} << QStringList{"a", "a"};
}

void TestSignalTree::whatIsPicked()
{
    QFETCH(QList<SignalItem>, before);
    QFETCH(QList<SignalItem>, picked);
    QFETCH(QStringList, lines);
    QTreeWidget tree;
    addSignalRows(&tree, before, 0);
    addPicked(&tree, picked);
    QCOMPARE(treeLines(tree.model()), lines);
}

void TestSignalTree::aReplacedBitRowMovesTheScanBack()
{
    QTreeWidget tree;
    addSignalRows(&tree, {net("a"), bit("q[1]"), net("b")}, 0);
    QList<SignalItem> buses{bus("q", 2)};
    int row = 1;
    reconcileBusRow(&tree, row, buses);
    QCOMPARE(row, 0);
    QCOMPARE(treeLines(tree.model()), QStringList({"a", "b"}));
    QCOMPARE(itemNames(buses), QStringList("q[1:0]{q[1] q[0]}"));

    row = 1;
    reconcileBusRow(&tree, row, buses);
    QCOMPARE(row, 1);
    QCOMPARE(buses.size(), 1);
}

void TestSignalTree::aKeptBusRowStaysAsItIs()
{
    QTreeWidget tree;
    SignalItem shorter = bus("q", 3);
    shorter.members.removeLast();
    addSignalRow(&tree, shorter, 0);
    QTreeWidgetItem *row = tree.topLevelItem(0);
    addPicked(&tree, QList<SignalItem>{bus("q", 3)});
    QCOMPARE(treeLines(tree.model()), QStringList({"q[2:0]", "  q[2]", "  q[1]"}));
    QCOMPARE(tree.topLevelItem(0), row);
}

void TestSignalTree::anEntryOfTheBusesNameEndsItsScan()
{
    QTreeWidget tree;
    addSignalRow(&tree, bus("q", 2), 0);
    QList<SignalItem> buses{bit("q[1]"), bus("q", 2), bit("q[0]")};
    QList<SignalItem> singles;
    reconcileTree(&tree, buses, singles);
    QCOMPARE(itemNames(buses), QStringList("q[0]"));
}

void TestSignalTree::theFirstFittingEntryDecidesOverABitRow()
{
    QTreeWidget tree;
    addSignalRow(&tree, bit("q[0]"), 0);
    QList<SignalItem> singles;
    QList<SignalItem> sameFirst{bit("q[0]"), bus("q", 1)};
    reconcileTree(&tree, sameFirst, singles);
    QCOMPARE(tree.topLevelItemCount(), 1);
    QCOMPARE(itemNames(sameFirst), QStringList("q[0:0]{q[0]}"));

    QList<SignalItem> holderFirst{bus("q", 1), bit("q[0]")};
    reconcileTree(&tree, holderFirst, singles);
    QCOMPARE(tree.topLevelItemCount(), 0);
    QCOMPARE(holderFirst.size(), 2);
}

void TestSignalTree::rowsWithoutASignalAreOfNoAccount()
{
    QTreeWidget tree;
    new QTreeWidgetItem(&tree, QStringList("a"));
    addPicked(&tree, QList<SignalItem>{net("a"), bit("q[0]")});
    QCOMPARE(treeLines(tree.model()), QStringList({"a", "q[0]", "a"}));
}

void TestSignalTree::addingEqualsThePlainReading()
{
    RandomItems random(650);
    for (int round = 0; round < 400; ++round) {
        QTreeWidget expected;
        QTreeWidget tree;
        for (int add = 0; add < 3; ++add) {
            const QList<SignalItem> picked = random.items(random.oneIn(10) ? 80 : 10);
            Literal::addPicked(&expected, picked);
            addPicked(&tree, picked);
            QCOMPARE(Literal::treeDump(&tree), Literal::treeDump(&expected));
        }
    }
}

void TestSignalTree::reconcilingEqualsThePlainReading()
{
    RandomItems random(651);
    for (int round = 0; round < 800; ++round) {
        const QList<SignalItem> rows = random.items(8);
        QTreeWidget expected;
        QTreeWidget tree;
        addSignalRows(&expected, rows, 0);
        addSignalRows(&tree, rows, 0);

        QList<SignalItem> expectedBuses = random.items(8);
        QList<SignalItem> expectedSingles = random.items(8);
        QList<SignalItem> buses = expectedBuses;
        QList<SignalItem> singles = expectedSingles;
        if (!rows.isEmpty()) {
            int expectedRow = random.below(rows.size());
            int row = expectedRow;
            Literal::reconcileBusRow(&expected, expectedRow, expectedBuses);
            reconcileBusRow(&tree, row, buses);
            QCOMPARE(row, expectedRow);
            QCOMPARE(Literal::itemsDump(buses), Literal::itemsDump(expectedBuses));
        }
        Literal::reconcileTree(&expected, expectedBuses, expectedSingles);
        reconcileTree(&tree, buses, singles);
        QCOMPARE(Literal::itemsDump(buses), Literal::itemsDump(expectedBuses));
        QCOMPARE(Literal::itemsDump(singles), Literal::itemsDump(expectedSingles));
        QCOMPARE(treeLines(tree.model()), treeLines(expected.model()));
    }
}

MOLK_TEST_MAIN(TestSignalTree)

#include "tst_signaltree.moc"
