// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "signalitems.h"

#include "rowmoving.h"
#include "signaltree.h"

#include "testwidgetsmain.h"
#include "treelines.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTreeWidget>

using namespace MOLK;

class TestRowMoving : public QObject
{
    Q_OBJECT

private slots:
    void selectedRowsMoveByOne_data();
    void selectedRowsMoveByOne();
    void rowsKeepTheirStateAndTheirBits();
    void selectedBitsForbidMoving();
    void excludedRowsAreMovedPast();
    void theCurrentRowStaysInView();
    void aMoveIsOneChangeHoweverManyRows();
};

static QStringList names(const QTreeWidget *tree)
{
    QStringList texts;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        texts.append(tree->topLevelItem(i)->text(0));
    return texts;
}

static void fill(QTreeWidget *tree, const QStringList &texts)
{
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    QList<SignalItem> items;
    for (const QString &text : texts)
        items.append(net(text));
    addSignalRows(tree, items, 0);
}

void TestRowMoving::selectedRowsMoveByOne_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("movedUp");
    QTest::addColumn<QString>("movedDown");
    QTest::newRow("one") << "c"
                         << "acbde"
                         << "abdce";
    QTest::newRow("first") << "a"
                           << "abcde"
                           << "bacde";
    QTest::newRow("last") << "e"
                          << "abced"
                          << "abcde";
    QTest::newRow("neighbours") << "bc"
                                << "bcade"
                                << "adbce";
    QTest::newRow("apart") << "bd"
                           << "badce"
                           << "acbed";
    QTest::newRow("stopped-at-the-top") << "ac"
                                        << "acbde"
                                        << "badce";
    QTest::newRow("behind-what-is-stopped") << "abd"
                                            << "abdce"
                                            << "cabed";
    QTest::newRow("stopped-at-the-end") << "de"
                                        << "abdec"
                                        << "abcde";
    QTest::newRow("all") << "abcde"
                         << "abcde"
                         << "abcde";
    QTest::newRow("none") << ""
                          << "abcde"
                          << "abcde";
}

void TestRowMoving::selectedRowsMoveByOne()
{
    QFETCH(QString, selected);
    QFETCH(QString, movedUp);
    QFETCH(QString, movedDown);
    for (bool up : {true, false}) {
        QTreeWidget tree;
        fill(&tree, {"a", "b", "c", "d", "e"});
        for (int i = 0; i < 5; ++i)
            tree.topLevelItem(i)->setSelected(selected.contains(tree.topLevelItem(i)->text(0)));
        if (up)
            moveSelectedRowsUp(&tree);
        else
            moveSelectedRowsDown(&tree);
        QCOMPARE(names(&tree).join(QString()), up ? movedUp : movedDown);
        QString still;
        for (int i = 0; i < 5; ++i)
            still += tree.topLevelItem(i)->isSelected() ? tree.topLevelItem(i)->text(0) : QString();
        QCOMPARE(still, selected);
    }
}

void TestRowMoving::rowsKeepTheirStateAndTheirBits()
{
    QTreeWidget tree;
    tree.setSelectionMode(QAbstractItemView::ExtendedSelection);
    addSignalRows(&tree, {bus("p", 2), bus("q", 2), net("n")}, 0);
    tree.show();
    tree.topLevelItem(0)->setExpanded(true);
    tree.setCurrentItem(tree.topLevelItem(1));
    const QTreeWidgetItem *row = tree.currentItem();

    moveSelectedRowsUp(&tree);
    QCOMPARE(treeLines(tree.model()),
             QStringList({"q[1:0]", "  q[1]", "  q[0]", "p[1:0]", "  p[1]", "  p[0]", "n"}));
    QCOMPARE(tree.currentItem(), row);
    QCOMPARE(tree.topLevelItem(0), row);
    QVERIFY(!tree.topLevelItem(0)->isExpanded());
    QVERIFY(tree.topLevelItem(1)->isExpanded());
    QCOMPARE(tree.selectedItems().size(), 1);

    // A row that is only current moves with those around it and isn't selected for that.
    tree.setCurrentItem(tree.topLevelItem(2), 0, QItemSelectionModel::NoUpdate);
    moveSelectedRowsDown(&tree);
    QCOMPARE(names(&tree), QStringList({"p[1:0]", "q[1:0]", "n"}));
    QCOMPARE(tree.currentItem(), tree.topLevelItem(2));
    QVERIFY(!tree.currentItem()->isSelected());
}

void TestRowMoving::selectedBitsForbidMoving()
{
    QTreeWidget tree;
    tree.setSelectionMode(QAbstractItemView::ExtendedSelection);
    addSignalRows(&tree, {net("n"), bus("q", 2), net("m")}, 0);
    tree.topLevelItem(1)->child(1)->setSelected(true);
    tree.topLevelItem(2)->setSelected(true);
    moveSelectedRowsUp(&tree);
    moveSelectedRowsDown(&tree);
    QCOMPARE(names(&tree), QStringList({"n", "q[1:0]", "m"}));
}

void TestRowMoving::excludedRowsAreMovedPast()
{
    QTreeWidget tree;
    tree.setSelectionMode(QAbstractItemView::ExtendedSelection);
    SignalItem gray = net("gray");
    gray.selectable = false;
    addSignalRows(&tree, {net("a"), gray, net("b")}, 0);
    tree.selectAll();
    moveSelectedRowsUp(&tree);
    QCOMPARE(names(&tree), QStringList({"a", "b", "gray"}));
    moveSelectedRowsDown(&tree);
    QCOMPARE(names(&tree), QStringList({"gray", "a", "b"}));
}

void TestRowMoving::theCurrentRowStaysInView()
{
    QStringList texts;
    for (int i = 0; i < 200; ++i)
        texts.append(QString::number(i));
    QTreeWidget tree;
    fill(&tree, texts);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    tree.setCurrentItem(tree.topLevelItem(100));
    tree.scrollToItem(tree.currentItem(), QAbstractItemView::PositionAtTop);
    const int scrolled = tree.verticalScrollBar()->value();
    moveSelectedRowsDown(&tree);
    QCOMPARE(tree.verticalScrollBar()->value(), scrolled);
    moveSelectedRowsUp(&tree);
    moveSelectedRowsUp(&tree);
    QCOMPARE(tree.topLevelItem(99)->text(0), QString("100"));
    QCOMPARE(tree.verticalScrollBar()->value(), scrolled - 1);
}

void TestRowMoving::aMoveIsOneChangeHoweverManyRows()
{
    QStringList texts;
    for (int i = 0; i < 3000; ++i)
        texts.append(QString::number(i));
    QTreeWidget tree;
    fill(&tree, texts);
    tree.show();
    tree.selectAll();
    for (int i = 0; i < 3000; i += 2)
        tree.topLevelItem(i)->setSelected(false);
    QSignalSpy inserted(tree.model(), SIGNAL(rowsInserted(QModelIndex, int, int)));
    QSignalSpy selection(&tree, SIGNAL(itemSelectionChanged()));
    moveSelectedRowsUp(&tree);
    QCOMPARE(tree.topLevelItem(0)->text(0), QString("1"));
    QCOMPARE(tree.topLevelItem(2999)->text(0), QString("2998"));
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(selection.count(), 1);
}

MOLK_TEST_MAIN(TestRowMoving)

#include "tst_rowmoving.moc"
