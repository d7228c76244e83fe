// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "randomitems.h"
#include "signalitems.h"

#include "rowremoval.h"
#include "signaltree.h"

#include "testwidgetsmain.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTreeWidget>

using namespace MOLK;

class TestRowRemoval : public QObject
{
    Q_OBJECT

private slots:
    void removalEqualsDeletingRowByRow_data();
    void removalEqualsDeletingRowByRow();
    void onlySelectedTopLevelRowsGo();
    void excludedRowsInsideASelectedRangeStay();
    void theViewStaysWhereItWasScrolledTo();
    void manyRowsGoAtOnce();
    void removalOfAllRowsIsTold();
    void removedRowsArentDeselectedAheadOfIt_data();
    void removedRowsArentDeselectedAheadOfIt();
};

static QStringList rowState(const QTreeWidget *tree, const QTreeWidgetItem *row)
{
    QStringList parts{row->text(0)};
    if (row->isExpanded())
        parts.append("expanded");
    if (row->isSelected())
        parts.append("selected");
    if (row == tree->currentItem())
        parts.append("current");
    QStringList lines{parts.join(" ")};
    for (int k = 0; k < row->childCount(); ++k)
        lines += rowState(tree, row->child(k));
    return lines;
}

static QStringList treeState(const QTreeWidget *tree)
{
    QStringList lines;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        lines += rowState(tree, tree->topLevelItem(i));
    QStringList selected;
    for (const QTreeWidgetItem *row : tree->selectedItems())
        selected.append(row->text(0));
    selected.sort();
    return lines << selected.join(" ");
}

static void fill(QTreeWidget *tree, int rows)
{
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    QList<SignalItem> items;
    for (int i = 0; i < rows; ++i)
        items.append(i % 3 ? net(QString("n%1").arg(i)) : bus(QString("q%1").arg(i), 3));
    addSignalRows(tree, items, 0);
}

void TestRowRemoval::removalEqualsDeletingRowByRow_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("keepOneIn");
    QTest::addColumn<bool>("shown");
    QTest::newRow("few") << 12 << 2 << true;
    QTest::newRow("many") << 150 << 2 << true;
    QTest::newRow("nearly-all") << 120 << 40 << true;
    QTest::newRow("all") << 60 << 1000000 << true;
    QTest::newRow("unshown") << 150 << 2 << false;
}

void TestRowRemoval::removalEqualsDeletingRowByRow()
{
    QFETCH(int, rows);
    QFETCH(int, keepOneIn);
    QFETCH(bool, shown);

    RandomItems random(77);
    for (int round = 0; round < 25; ++round) {
        QTreeWidget expected;
        QTreeWidget tree;
        for (QTreeWidget *each : {&expected, &tree}) {
            fill(each, rows);
            if (shown)
                each->show();
            each->setCurrentItem(each->topLevelItem(0), 0, QItemSelectionModel::NoUpdate);
        }
        for (int i = 0; i < rows; ++i) {
            const bool open = random.oneIn(2);
            const bool chosen = random.oneIn(3);
            const int chosenBit = random.below(6);
            const bool current = random.oneIn(rows / 3);
            const bool currentBit = random.oneIn(rows);
            for (QTreeWidget *each : {&expected, &tree}) {
                QTreeWidgetItem *row = each->topLevelItem(i);
                row->setExpanded(open && row->childCount() > 0);
                row->setSelected(chosen);
                if (QTreeWidgetItem *bitRow = row->child(chosenBit))
                    bitRow->setSelected(true);
                if (current)
                    each->setCurrentItem(row, 0, QItemSelectionModel::NoUpdate);
                if (currentBit && row->child(0))
                    each->setCurrentItem(row->child(0), 0, QItemSelectionModel::NoUpdate);
            }
        }

        QVector<int> gone;
        for (int i = 0; i < rows; ++i) {
            if (!random.oneIn(keepOneIn))
                gone.append(i);
        }
        removeTopLevelRows(&tree, gone);
        QList<QTreeWidgetItem *> doomed;
        for (int i : qAsConst(gone))
            doomed.append(expected.topLevelItem(i));
        for (QTreeWidgetItem *row : qAsConst(doomed))
            delete row;
        QCOMPARE(treeState(&tree), treeState(&expected));
    }
}

void TestRowRemoval::onlySelectedTopLevelRowsGo()
{
    for (int rows : {6, 300}) {
        QTreeWidget tree;
        fill(&tree, rows);
        tree.expandAll();
        tree.selectAll();
        for (int i = 3; i < rows; i += 3)
            tree.topLevelItem(i)->setSelected(false);
        removeSelectedRows(&tree);
        QCOMPARE(tree.topLevelItemCount(), rows / 3 - 1);
        QCOMPARE(tree.topLevelItem(0)->text(0), QString("q3[2:0]"));
        QCOMPARE(tree.selectedItems().size(), rows - 3); // The bits.
        QVERIFY(tree.topLevelItem(0)->isExpanded());

        removeSelectedRows(&tree);
        QCOMPARE(tree.topLevelItemCount(), rows / 3 - 1);
    }
}

void TestRowRemoval::excludedRowsInsideASelectedRangeStay()
{
    QTreeWidget tree;
    tree.setSelectionMode(QAbstractItemView::ExtendedSelection);
    SignalItem gray = net("gray");
    gray.selectable = false;
    addSignalRows(&tree, {net("a"), gray, net("b")}, 0);
    tree.selectAll();
    removeSelectedRows(&tree);
    QCOMPARE(tree.topLevelItemCount(), 1);
    QCOMPARE(tree.topLevelItem(0)->text(0), QString("gray"));
    tree.topLevelItem(0)->setSelected(true);
    removeSelectedRows(&tree);
    QCOMPARE(tree.topLevelItemCount(), 1);
}

void TestRowRemoval::theViewStaysWhereItWasScrolledTo()
{
    QTreeWidget tree;
    fill(&tree, 900);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    tree.verticalScrollBar()->setValue(500);
    QVector<int> gone;
    for (int i = 801; i < 900; i += 2)
        gone.append(i);
    removeTopLevelRows(&tree, gone);
    QCOMPARE(tree.verticalScrollBar()->value(), 500);
}

void TestRowRemoval::manyRowsGoAtOnce()
{
    QTreeWidget tree;
    fill(&tree, 3000);
    tree.show();
    tree.selectAll();
    for (int i = 0; i < 3000; i += 100)
        tree.topLevelItem(i)->setSelected(false);
    QSignalSpy removed(tree.model(), SIGNAL(rowsRemoved(QModelIndex, int, int)));
    QSignalSpy selection(&tree, SIGNAL(itemSelectionChanged()));
    removeSelectedRows(&tree);
    QCOMPARE(tree.topLevelItemCount(), 30);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(selection.count(), 1);
}

void TestRowRemoval::removalOfAllRowsIsTold()
{
    QTreeWidget tree;
    fill(&tree, 100);
    tree.show();
    tree.selectAll();
    QSignalSpy selection(&tree, SIGNAL(itemSelectionChanged()));
    removeSelectedRows(&tree);
    QCOMPARE(tree.topLevelItemCount(), 0);
    QVERIFY(!tree.currentItem());
    QCOMPARE(selection.count(), 1);
}

namespace {

// Counts the rows that the view goes over because they aren't selected any more.
class DeselectionCounter : public QTreeWidget
{
public:
    int rows = 0;

protected:
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override
    {
        rows += deselected.indexes().size();
        QTreeWidget::selectionChanged(selected, deselected);
    }
};

} // namespace

void TestRowRemoval::removedRowsArentDeselectedAheadOfIt_data()
{
    QTest::addColumn<int>("kept");
    QTest::newRow("all-go") << 0;
    QTest::newRow("some-stay") << 5;
}

// Each row on its own would cost as much as its removal does.
void TestRowRemoval::removedRowsArentDeselectedAheadOfIt()
{
    QFETCH(int, kept);
    DeselectionCounter tree;
    fill(&tree, 1000);
    tree.show();
    tree.selectAll();
    for (int i = 0; i < kept; ++i)
        tree.topLevelItem(i)->setSelected(false);
    tree.rows = 0;
    removeSelectedRows(&tree);
    QCOMPARE(tree.topLevelItemCount(), kept);
    QVERIFY(tree.selectedItems().isEmpty());
    QCOMPARE(tree.rows, 0);
}

MOLK_TEST_MAIN(TestRowRemoval)

#include "tst_rowremoval.moc"
