// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "pagefixture.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "turnloop.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>

using namespace MOLK;

Q_DECLARE_METATYPE(QTreeWidgetItem *)

class tst_TreePairing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void clickOnAPortSelectsItsValue();
    void clickOnASignalSelectsItsBits();
    void clickOnBitsSelectsTheirSignal();
    void clickOnAValueSelectsItsPort();
    void clickInALineRaisesNoClick();
    void clickOnADisabledLineSelectsItsPort();
    void currentRowOfThePartnerStays();
    void keysArentCopied();
    void clickOnNothingChangesNothing();
    void rowsOfOtherTypesAreIgnored();
    void foldingIsCopiedBothWays();
    void eachFoldingRaisesOneSignal();
    void unfoldedRowsCanBeScrolledAtOnce();
    void newPairStartsFolded();
    void rowsOfAllTreesAreEquallyHigh();
    void scrollingIsCopiedBothWays();
    void theEndIsTheEndInBoth_data();
    void theEndIsTheEndInBoth();
    void keyDownInALineGoesToTheNextLine();
    void pairsLineUpAfterARemoval();
    void probeInTreeIsOnItsOwn();
};

static QList<SignalItem> nets(const QString &prefix, int count)
{
    QList<SignalItem> items;
    for (int i = 0; i < count; ++i)
        items.append(net(prefix + QString::number(i)));
    return items;
}

static std::unique_ptr<MolkCore> threePorts()
{
    return makeCore({nets("i", 3), nets("j", 3)}, {nets("a", 2), nets("b", 4), nets("c", 3)});
}

// The selected row of a tree by its positions from the top level down; "none" or "many" else.
static QString selectedRow(const QTreeWidget *tree)
{
    const QModelIndexList selected = tree->selectionModel()->selectedRows();
    if (selected.size() != 1)
        return selected.isEmpty() ? "none" : "many";
    const QModelIndex index = selected.first();
    const QString row = QString::number(index.row());
    return index.parent().isValid() ? QString::number(index.parent().row()) + "/" + row : row;
}

void tst_TreePairing::initTestCase()
{
    qRegisterMetaType<QTreeWidgetItem *>();
}

void tst_TreePairing::clickOnAPortSelectsItsValue()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.treeValue->setSelectionMode(QAbstractItemView::MultiSelection);
    fixture.treeValue->topLevelItem(0)->setSelected(true);
    fixture.treeValue->topLevelItem(1)->setSelected(true);
    fixture.click(fixture.treeProbeOut->topLevelItem(2));
    QCOMPARE(selectedRow(fixture.treeProbeOut), QString("2"));
    QCOMPARE(selectedRow(fixture.treeValue), QString("2"));
}

void tst_TreePairing::clickOnASignalSelectsItsBits()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.treeProbeOut->expandAll();
    fixture.click(fixture.treeProbeOut->topLevelItem(1)->child(2));
    QCOMPARE(selectedRow(fixture.treeValue), QString("1/2"));
    fixture.click(fixture.treeProbeOut->topLevelItem(0)->child(1));
    QCOMPARE(selectedRow(fixture.treeValue), QString("0/1"));
    fixture.click(fixture.treeProbeOut->topLevelItem(0));
    QCOMPARE(selectedRow(fixture.treeValue), QString("0"));
}

void tst_TreePairing::clickOnBitsSelectsTheirSignal()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.treeProbeOut->expandAll();
    turnLoop();
    QWidget *label = fixture.line(1)->labels.at(2);
    QSignalSpy clicked(fixture.treeValue, SIGNAL(itemClicked(QTreeWidgetItem *, int)));
    QTest::mouseClick(label->window()->windowHandle(), Qt::LeftButton, {},
                      label->mapTo(label->window(), label->rect().center()));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(selectedRow(fixture.treeValue), QString("1/2"));
    QCOMPARE(selectedRow(fixture.treeProbeOut), QString("1/2"));

    // So that removing finds a signal, and does nothing.
    fixture.child<QPushButton>("btnProbeOutRemove")->click();
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 3);
    QCOMPARE(fixture.treeProbeOut->topLevelItemCount(), 3);
}

void tst_TreePairing::clickOnAValueSelectsItsPort()
{
    PageFixture fixture(threePorts());
    fixture.show();

    // Beside the line the row is the tree's own.
    QTreeWidgetItem *row = fixture.treeValue->topLevelItem(1);
    fixture.line(1)->setFixedWidth(40);
    const QRect rect = fixture.treeValue->visualItemRect(row);
    QTest::mouseClick(fixture.treeValue->viewport(), Qt::LeftButton, {},
                      QPoint(rect.right() - 5, rect.center().y()));
    QCOMPARE(selectedRow(fixture.treeProbeOut), QString("1"));
    runInLoop([&] { fixture.child<QPushButton>("btnProbeOutRemove")->click(); });
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 2);
    QCOMPARE(fixture.core->getProbeOut(1)->singleSignals(), QStringList({"c0", "c1", "c2"}));
}

void tst_TreePairing::clickInALineRaisesNoClick()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.click(fixture.treeProbeOut->topLevelItem(0));
    QSignalSpy clicked(fixture.treeValue, SIGNAL(itemClicked(QTreeWidgetItem *, int)));
    InitialValueLine *line = fixture.line(2);
    QTest::mouseClick(line->window()->windowHandle(), Qt::LeftButton, {},
                      line->mapTo(line->window(), line->rect().center()));
    QVERIFY(line->hasFocus());
    QCOMPARE(clicked.count(), 0);
    QCOMPARE(selectedRow(fixture.treeProbeOut), QString("0"));

    // The focus alone makes the row current in its own tree.
    QCOMPARE(selectedRow(fixture.treeValue), QString("2"));
}

void tst_TreePairing::clickOnADisabledLineSelectsItsPort()
{
    PageFixture fixture(makeCore({{}}, {{net("a")}, {}}));
    fixture.show();
    InitialValueLine *line = fixture.line(1);
    QVERIFY(!line->isEnabled());
    QTest::mouseClick(line->window()->windowHandle(), Qt::LeftButton, {},
                      line->mapTo(line->window(), line->rect().center()));
    QCOMPARE(selectedRow(fixture.treeProbeOut), QString("1"));

    // The view wanted to hand the click to the line, and so it selected nothing itself.
    QCOMPARE(selectedRow(fixture.treeValue), QString("none"));
}

void tst_TreePairing::currentRowOfThePartnerStays()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.treeValue->setCurrentItem(fixture.treeValue->topLevelItem(0));
    fixture.click(fixture.treeProbeOut->topLevelItem(2));
    QCOMPARE(fixture.treeValue->currentItem(), fixture.treeValue->topLevelItem(0));
    QCOMPARE(selectedRow(fixture.treeValue), QString("2"));
}

void tst_TreePairing::keysArentCopied()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.click(fixture.treeProbeOut->topLevelItem(0));
    QTest::keyClick(fixture.treeProbeOut, Qt::Key_Down);
    QCOMPARE(selectedRow(fixture.treeProbeOut), QString("1"));
    QCOMPARE(selectedRow(fixture.treeValue), QString("0"));
}

void tst_TreePairing::clickOnNothingChangesNothing()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.click(fixture.treeProbeOut->topLevelItem(1));
    fixture.call("onProbeOutClicked", nullptr);
    fixture.call("onValueTreeClicked", nullptr);
    QCOMPARE(selectedRow(fixture.treeValue), QString("1"));
    QCOMPARE(selectedRow(fixture.treeProbeOut), QString("1"));
}

void tst_TreePairing::rowsOfOtherTypesAreIgnored()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.click(fixture.treeProbeOut->topLevelItem(1));
    auto *odd = new QTreeWidgetItem(0);
    fixture.treeProbeOut->addTopLevelItem(odd);
    fixture.call("onProbeOutClicked", odd);
    QCOMPARE(selectedRow(fixture.treeValue), QString("1"));
    delete odd;
}

void tst_TreePairing::foldingIsCopiedBothWays()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.treeProbeOut->expandItem(fixture.treeProbeOut->topLevelItem(1));
    QVERIFY(fixture.treeValue->topLevelItem(1)->isExpanded());
    fixture.treeValue->expandItem(fixture.treeValue->topLevelItem(2));
    QVERIFY(fixture.treeProbeOut->topLevelItem(2)->isExpanded());
    fixture.treeValue->collapseItem(fixture.treeValue->topLevelItem(1));
    QVERIFY(!fixture.treeProbeOut->topLevelItem(1)->isExpanded());
    fixture.treeProbeOut->collapseItem(fixture.treeProbeOut->topLevelItem(2));
    QVERIFY(!fixture.treeValue->topLevelItem(2)->isExpanded());
    QVERIFY(!fixture.treeProbeOut->topLevelItem(0)->isExpanded());
    QVERIFY(!fixture.treeValue->topLevelItem(0)->isExpanded());
}

void tst_TreePairing::eachFoldingRaisesOneSignal()
{
    PageFixture fixture(threePorts());
    fixture.show();
    QSignalSpy expandedOut(fixture.treeProbeOut, SIGNAL(itemExpanded(QTreeWidgetItem *)));
    QSignalSpy expandedValue(fixture.treeValue, SIGNAL(itemExpanded(QTreeWidgetItem *)));
    fixture.treeProbeOut->expandItem(fixture.treeProbeOut->topLevelItem(1));
    QCOMPARE(expandedOut.count(), 1);
    QCOMPARE(expandedValue.count(), 1);
}

void tst_TreePairing::unfoldedRowsCanBeScrolledAtOnce()
{
    PageFixture fixture(makeCore({{}}, {nets("a", 100), nets("b", 100)}));
    fixture.show();
    const QScrollBar *left = fixture.treeProbeOut->verticalScrollBar();
    QScrollBar *right = fixture.treeValue->verticalScrollBar();
    fixture.treeProbeOut->expandItem(fixture.treeProbeOut->topLevelItem(1));
    QVERIFY(left->maximum() > 0);
    QCOMPARE(right->maximum(), left->maximum());
    QVERIFY(fixture.line(1)->labels.first()->isVisible());
    fixture.treeProbeOut->expandAll();
    QCOMPARE(right->maximum(), left->maximum());
    QVERIFY(fixture.line(0)->labels.first()->isVisible());
    right->setValue(right->maximum());
    QCOMPARE(left->value(), right->maximum());
    QVERIFY(fixture.line(1)->labels.last()->isVisible());
}

void tst_TreePairing::newPairStartsFolded()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.treeProbeOut->expandAll();
    fixture.child<QPushButton>("btnProbeOutAdd")->click();
    QVERIFY(!fixture.treeProbeOut->topLevelItem(3)->isExpanded());
    QVERIFY(!fixture.treeValue->topLevelItem(3)->isExpanded());
    QVERIFY(fixture.treeValue->topLevelItem(0)->isExpanded());
}

void tst_TreePairing::rowsOfAllTreesAreEquallyHigh()
{
    PageFixture fixture(threePorts());
    fixture.show();
    for (QTreeWidget *tree : {fixture.treeProbeIn, fixture.treeProbeOut, fixture.treeValue}) {
        tree->expandAll();
        turnLoop();
        QCOMPARE(tree->visualItemRect(tree->topLevelItem(0)).height(), 20);
        QCOMPARE(tree->visualItemRect(tree->topLevelItem(0)->child(1)).height(), 20);
        QCOMPARE(tree->visualItemRect(tree->topLevelItem(1)).top(),
                 20 * (1 + tree->topLevelItem(0)->childCount()));
    }
    QCOMPARE(fixture.line(1)->height(), 20);
    QCOMPARE(fixture.line(1)->labels.first()->height(), 20);
}

void tst_TreePairing::scrollingIsCopiedBothWays()
{
    PageFixture fixture(makeCore({{}}, {nets("a", 100), nets("b", 100)}));
    fixture.show();
    fixture.treeProbeOut->expandAll();
    turnLoop();
    fixture.treeProbeOut->verticalScrollBar()->setValue(17);
    QCOMPARE(fixture.treeValue->verticalScrollBar()->value(), 17);
    fixture.treeValue->verticalScrollBar()->setValue(40);
    QCOMPARE(fixture.treeProbeOut->verticalScrollBar()->value(), 40);
    QCOMPARE(fixture.treeProbeIn->verticalScrollBar()->value(), 0);
}

void tst_TreePairing::theEndIsTheEndInBoth_data()
{
    QTest::addColumn<int>("height");
    for (const int height : {480, 508, 600, 700})
        QTest::addRow("height-%d", height) << height;
}

void tst_TreePairing::theEndIsTheEndInBoth()
{
    QFETCH(int, height);
    PageFixture fixture(makeCore({{}}, {nets("a", 40)}));
    fixture.show();
    fixture.widget->resize(900, height);
    fixture.treeValue->expandAll();
    turnLoop();
    QScrollBar *left = fixture.treeProbeOut->verticalScrollBar();
    QScrollBar *right = fixture.treeValue->verticalScrollBar();
    QVERIFY(left->maximum() > 0);
    QCOMPARE(right->maximum(), left->maximum());
    right->setValue(right->maximum());
    QCOMPARE(right->value(), right->maximum());
    QCOMPARE(left->value(), left->maximum());
    left->setValue(0);
    left->setValue(left->maximum());
    QCOMPARE(right->value(), right->maximum());
}

void tst_TreePairing::keyDownInALineGoesToTheNextLine()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.line(0)->setFocus();
    fixture.line(0)->setCursorPosition(2);
    QTest::keyClick(fixture.line(0), Qt::Key_3);
    QTest::keyClick(fixture.line(0), Qt::Key_Down);
    QVERIFY(fixture.line(1)->hasFocus());
    QCOMPARE(fixture.bits(0), QString("1|1"));
}

void tst_TreePairing::pairsLineUpAfterARemoval()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.treeProbeOut->expandItem(fixture.treeProbeOut->topLevelItem(2));
    fixture.click(fixture.treeProbeOut->topLevelItem(1));
    runInLoop([&] { fixture.child<QPushButton>("btnProbeOutRemove")->click(); });
    turnLoop();

    QCOMPARE(treeLines(fixture.treeProbeOut->model()),
             QStringList({"Probe Out0", "  a0", "  a1", "Probe Out1", "  c0", "  c1", "  c2"}));
    for (int i = 0; i < 2; ++i) {
        QTreeWidgetItem *port = fixture.treeProbeOut->topLevelItem(i);
        QTreeWidgetItem *value = fixture.treeValue->topLevelItem(i);
        QCOMPARE(value->childCount(), port->childCount());
        QCOMPARE(value->isExpanded(), port->isExpanded());
        QCOMPARE(fixture.treeValue->visualItemRect(value).top(),
                 fixture.treeProbeOut->visualItemRect(port).top());
    }
}

void tst_TreePairing::probeInTreeIsOnItsOwn()
{
    PageFixture fixture(threePorts());
    fixture.show();
    fixture.click(fixture.treeProbeIn->topLevelItem(1));
    fixture.treeProbeIn->expandAll();
    QCOMPARE(selectedRow(fixture.treeProbeIn), QString("1"));
    for (QTreeWidget *tree : {fixture.treeProbeOut, fixture.treeValue}) {
        QCOMPARE(selectedRow(tree), QString("none"));
        QVERIFY(!tree->topLevelItem(0)->isExpanded());
        QVERIFY(!tree->topLevelItem(1)->isExpanded());
    }
}

MOLK_TEST_MAIN(tst_TreePairing)

#include "tst_treepairing.moc"
