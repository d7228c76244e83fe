// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "corelist.h"
#include "molkcore.h"
#include "molkoptionwidget.h"
#include "netlistguard.h"
#include "testwidgetsmain.h"
#include "viewtest.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTreeWidget>

using namespace MOLK;

class tst_MolkViewPages : public ViewTest
{
    Q_OBJECT

private slots:
    void clickShowsTheCore();
    void doubleClickShowsTheCore();
    void clickOutsideTheCoresIsIgnored();
    void clickNeedsARowInTheCorner();
    void unknownNumberChangesNothing();
    void coreIsFoundByItsNumber();

    void addedPageIsCountedAndConnected();
    void removedPageNoLongerModifies();
    void netlistGoesToAllPagesAndTheOldOneEnds();
};

void tst_MolkViewPages::clickShowsTheCore()
{
    QVERIFY(openActive(3));
    QTreeWidget *tree = coreTree(view.get());

    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, rowCenter(tree, 2));
    QCOMPARE(shownCore(view.get()), 2);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, rowCenter(tree, 1));
    QCOMPARE(shownCore(view.get()), 1);
    QVERIFY(!view->isModified());
}

void tst_MolkViewPages::doubleClickShowsTheCore()
{
    QVERIFY(openActive(3));
    QTreeWidget *tree = coreTree(view.get());
    QSignalSpy doubleClicks(tree, SIGNAL(doubleClicked(QModelIndex)));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, rowCenter(tree, 2));
    view->changeMolkWidget(0);
    tree->setCurrentItem(tree->topLevelItem(2));

    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, rowCenter(tree, 2));

    QCOMPARE(doubleClicks.count(), 1);
    QCOMPARE(shownCore(view.get()), 2);
}

void tst_MolkViewPages::clickOutsideTheCoresIsIgnored()
{
    QVERIFY(openActive(2));

    view->on_treeWidget_clicked(QModelIndex());
    view->on_treeWidget_doubleClicked(QModelIndex());

    QCOMPARE(shownCore(view.get()), 0);
    MolkView unopened;
    unopened.on_treeWidget_clicked(QModelIndex());
}

// Row and column are taken for a place in the view, and where nothing is shown no row is found.
void tst_MolkViewPages::clickNeedsARowInTheCorner()
{
    QVERIFY(openActive(2));
    QTreeWidget *tree = coreTree(view.get());
    const QModelIndex second = tree->model()->index(1, 0);
    for (int row = 0; row < 2; ++row)
        tree->topLevelItem(row)->setHidden(true);

    view->on_treeWidget_clicked(second);
    view->on_treeWidget_doubleClicked(second);
    QCOMPARE(child<QStackedWidget>(view, "stackedWidget")->currentIndex(), 0);

    // Any row will do.
    tree->topLevelItem(0)->setHidden(false);
    view->on_treeWidget_clicked(second);
    QCOMPARE(child<QStackedWidget>(view, "stackedWidget")->currentIndex(), 1);
}

void tst_MolkViewPages::unknownNumberChangesNothing()
{
    QVERIFY(openActive(2));
    view->changeMolkWidget(1);

    view->changeMolkWidget(2);
    view->changeMolkWidget(-1);

    QCOMPARE(shownCore(view.get()), 1);
    MolkView unopened;
    unopened.changeMolkWidget(0);
}

void tst_MolkViewPages::coreIsFoundByItsNumber()
{
    QVERIFY(openActive(3));
    auto *opened = document();

    QCOMPARE(opened->coreById(2), opened->cores.at(2));
    QVERIFY(opened->coreById(3) == nullptr);
    QVERIFY(opened->coreById(-1) == nullptr);
    opened->cores.at(2)->id = 1;
    QCOMPARE(opened->coreById(1), opened->cores.at(1));
    opened->cores.at(2)->id = 2;
}

void tst_MolkViewPages::addedPageIsCountedAndConnected()
{
    QVERIFY(openActive(2));
    MolkCore core(7);
    auto *page = new MolkOptionWidget(&core, nullptr, nullptr);

    QCOMPARE(view->addMolkOptionWidget(page), 3);

    auto *stack = child<QStackedWidget>(view, "stackedWidget");
    QCOMPARE(page->parentWidget(), stack);
    QCOMPARE(coreLines(view.get()), QStringList({"molk_0", "molk_1", "molk_7"}));
    QVERIFY(!view->isModified());
    child<QPushButton>(page, "btnProbeInAdd")->click();
    QVERIFY(view->isModified());
    core.id = 2;
    view->removeMolkOptionWidget(page);
    delete page;
}

void tst_MolkViewPages::removedPageNoLongerModifies()
{
    QVERIFY(openActive(3));
    MolkOptionWidget *page = document()->optionWidgets.at(1);

    view->removeMolkOptionWidget(page);
    document()->optionWidgets.removeOne(page);
    child<QPushButton>(page, "btnProbeInAdd")->click();

    QVERIFY(!view->isModified());
    QCOMPARE(coreLines(view.get()), QStringList({"molk_0", "molk_1"}));
    // It isn't deleted, and nobody sees it.
    QCOMPARE(page->parentWidget(), child<QStackedWidget>(view, "stackedWidget"));
    QVERIFY(page->isHidden());
}

void tst_MolkViewPages::netlistGoesToAllPagesAndTheOldOneEnds()
{
    QVERIFY(openActive(2));
    auto *opened = document();
    const NetlistGuard old(opened->netlist);
    QSignalSpy first(opened->optionWidgets.at(0)->widget(0), SIGNAL(netlistChanged()));
    QSignalSpy second(opened->optionWidgets.at(1)->widget(0), SIGNAL(netlistChanged()));

    opened->setRtlNetlist(nullptr);
    QVERIFY(opened->netlist == nullptr);
    QVERIFY(old.get() == nullptr);
    FATHOM::RtlNetlist *next = benchNetlist();
    opened->setRtlNetlist(next);

    QCOMPARE(opened->netlist, next);
    QCOMPARE(first.count(), 2);
    QCOMPARE(second.count(), 2);
    QVERIFY(!view->isModified());
}

MOLK_TEST_MAIN(tst_MolkViewPages)
#include "tst_molkviewpages.moc"
