// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "pagefixture.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "turnloop.h"

#include <QPushButton>
#include <QSignalSpy>

using namespace MOLK;

class tst_PortRemoval : public QObject
{
    Q_OBJECT

private slots:
    void lastProbeInStays();
    void lastProbeOutStays();
    void removedProbeInClosesTheGap();
    void removedProbeOutClosesTheGap();
    void removedProbeOutTakesItsLabelsAlong();
    void survivorsKeepTheirValues();
    void messageNamesTheNewNumber();
    void removeWithoutASelectionStillMarksTheDocument();
    void signalRowOfAProbeInGoesFromTheTreeAlone();
    void signalRowOfAProbeOutStays();
    void signalRowOfTheOnlyProbeOutRaisesTheWarning();
    void removedFocusedLineIsHarmless();
    void severalSelectedPortsGoOneAfterTheOther();
    void signalRowEndsTheRemovalOfProbeOutsAtOnce();
    void currentBitsOfARemovedPortLeadToAnotherPort_data();
    void currentBitsOfARemovedPortLeadToAnotherPort();
    void selectedBitsOfARemovedPortAreTold();
};

// The user can select one row at a time; the slots take what is selected.
static void selectRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows)
{
    tree->setSelectionMode(QAbstractItemView::MultiSelection);
    for (QTreeWidgetItem *row : rows)
        row->setSelected(true);
    QCOMPARE(tree->selectedItems(), rows);
}

void tst_PortRemoval::lastProbeInStays()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    ModalDriver driver;
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), fixture.page);
        QCOMPARE(box->windowTitle(), QString("Warning"));
        QCOMPARE(box->text(), QString("Support 1 Probe In at least."));
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->accept();
    });
    fixture.child<QPushButton>("btnProbeInRemove")->click();
    fixture.treeProbeIn->topLevelItem(0)->setSelected(true);
    driver.expectMessage("Warning", "Support 1 Probe In at least.", QMessageBox::Ok);
    fixture.child<QPushButton>("btnProbeInRemove")->click();
    QVERIFY(driver.done());
    QCOMPARE(fixture.core->getAllProbeIns().size(), 1);
    QCOMPARE(fixture.treeProbeIn->topLevelItemCount(), 1);
    QCOMPARE(modifed.count(), 0);
}

void tst_PortRemoval::lastProbeOutStays()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    ModalDriver driver;
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    for (const bool selected : {false, true}) {
        fixture.treeProbeOut->topLevelItem(0)->setSelected(selected);
        driver.expectMessage("Warning", "Support 1 Probe Out at least.", QMessageBox::Ok);
        fixture.child<QPushButton>("btnProbeOutRemove")->click();
    }
    QVERIFY(driver.done());
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 1);
    QCOMPARE(fixture.treeProbeOut->topLevelItemCount(), 1);
    QCOMPARE(fixture.treeValue->topLevelItemCount(), 1);
    QCOMPARE(modifed.count(), 0);
}

void tst_PortRemoval::removedProbeInClosesTheGap()
{
    PageFixture fixture(makeCore({{net("top/a")}, {net("top/b")}}, {{}}));
    fixture.show();
    fixture.click(fixture.treeProbeIn->topLevelItem(0));
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    QTest::mouseClick(fixture.child<QPushButton>("btnProbeInRemove"), Qt::LeftButton);

    QCOMPARE(treeLines(fixture.treeProbeIn->model()), QStringList({"Probe In0", "  top/b"}));
    QCOMPARE(fixture.core->getAllProbeIns().size(), 1);
    QCOMPARE(fixture.core->getProbeIn(0)->number, 0);
    QCOMPARE(fixture.core->getProbeIn(0)->singleSignals(), QStringList("top/b"));
    QCOMPARE(modifed.count(), 1);
}

void tst_PortRemoval::removedProbeOutClosesTheGap()
{
    PageFixture fixture(makeCore({{}}, {{net("top/a")}, {net("top/b")}, {net("top/c")}}));
    fixture.show();
    fixture.click(fixture.treeProbeOut->topLevelItem(1));
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    QTest::mouseClick(fixture.child<QPushButton>("btnProbeOutRemove"), Qt::LeftButton);
    turnLoop();

    QCOMPARE(treeLines(fixture.treeProbeOut->model()),
             QStringList({"Probe Out0", "  top/a", "Probe Out1", "  top/c"}));
    QCOMPARE(treeLines(fixture.treeValue->model()), QStringList({"", "  ", "", "  "}));
    QCOMPARE(fixture.line(0)->index, 0);
    QCOMPARE(fixture.line(1)->index, 1);
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 2);
    QCOMPARE(fixture.core->getProbeOut(1)->number, 1);
    QCOMPARE(fixture.core->getProbeOut(1)->singleSignals(), QStringList("top/c"));
    QCOMPARE(modifed.count(), 1);
}

void tst_PortRemoval::removedProbeOutTakesItsLabelsAlong()
{
    PageFixture fixture(makeCore({{}}, {{net("a"), net("b")}, {net("c")}}));
    fixture.show();
    fixture.treeProbeOut->expandAll();
    const QPointer<InitialValueLine> line = fixture.line(0);
    const QPointer<QWidget> label =
        fixture.treeValue->itemWidget(fixture.treeValue->topLevelItem(0)->child(1), 0);
    QVERIFY(label);
    fixture.click(fixture.treeProbeOut->topLevelItem(0));
    runInLoop([&] { fixture.child<QPushButton>("btnProbeOutRemove")->click(); });
    turnLoop();
    QVERIFY(!line);
    QVERIFY(!label);
    QCOMPARE(fixture.treeValue->findChildren<InitialValueLine *>().size(), 1);
}

void tst_PortRemoval::survivorsKeepTheirValues()
{
    auto core = makeCore({{}}, {{bus("p", 4)}, {bus("q", 4)}, {bus("r", 2), bus("s", 2)}});
    core->getProbeOut(0)->setValue("0x1");
    core->getProbeOut(1)->setValue("0x2");
    core->getProbeOut(2)->setValue("0xB");
    PageFixture fixture(std::move(core));
    fixture.treeProbeOut->topLevelItem(1)->setSelected(true);
    runInLoop([&] { fixture.child<QPushButton>("btnProbeOutRemove")->click(); });

    QCOMPARE(fixture.value(0), QString("0x1"));
    QCOMPARE(fixture.value(1), QString("0xB"));
    QCOMPARE(fixture.bits(1), QString("10|11"));
    fixture.widget->storeToModel();
    QCOMPARE(fixture.core->getProbeOut(1)->getValue(), QString("0xB"));
}

void tst_PortRemoval::messageNamesTheNewNumber()
{
    PageFixture fixture(makeCore({{}}, {{bus("p", 2)}, {bus("q", 2)}, {bus("r", 2)}}));
    fixture.show();
    fixture.click(fixture.treeProbeOut->topLevelItem(1));
    runInLoop([&] { fixture.child<QPushButton>("btnProbeOutRemove")->click(); });

    ModalDriver driver;
    driver.expectMessage("Error",
                         "Value '7' for Probe Out1 Initial Value exceeds the effective width.",
                         QMessageBox::Ok);
    fixture.line(1)->setFocus();
    typeDigits(fixture.line(1), "7");
    runInLoop([&] { fixture.leaveLines(); });
    QVERIFY(driver.done());
}

void tst_PortRemoval::removeWithoutASelectionStillMarksTheDocument()
{
    PageFixture fixture(makeCore({{}, {}}, {{}, {}}));
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    fixture.child<QPushButton>("btnProbeInRemove")->click();
    QCOMPARE(modifed.count(), 1);
    fixture.child<QPushButton>("btnProbeOutRemove")->click();
    QCOMPARE(modifed.count(), 2);
    QCOMPARE(treeLines(fixture.treeProbeIn->model()), QStringList({"Probe In0", "Probe In1"}));
    QCOMPARE(treeLines(fixture.treeProbeOut->model()), QStringList({"Probe Out0", "Probe Out1"}));
}

void tst_PortRemoval::signalRowOfAProbeInGoesFromTheTreeAlone()
{
    PageFixture fixture(makeCore({{net("top/a"), net("top/b")}, {}}, {{}}));
    fixture.show();
    fixture.treeProbeIn->expandAll();
    fixture.click(fixture.treeProbeIn->topLevelItem(0)->child(0));
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    fixture.child<QPushButton>("btnProbeInRemove")->click();

    QCOMPARE(treeLines(fixture.treeProbeIn->model()),
             QStringList({"Probe In0", "  top/b", "Probe In1"}));
    QCOMPARE(fixture.core->getProbeIn(0)->width(), 2);
    QCOMPARE(fixture.core->getAllProbeIns().size(), 2);
    QCOMPARE(modifed.count(), 1);

    fixture.page->refreshProbeInSignals();
    QCOMPARE(treeLines(fixture.treeProbeIn->model()),
             QStringList({"Probe In0", "  top/a", "  top/b", "Probe In1"}));
}

void tst_PortRemoval::signalRowOfAProbeOutStays()
{
    PageFixture fixture(makeCore({{}}, {{net("top/a")}, {}}));
    fixture.show();
    fixture.treeProbeOut->expandAll();
    fixture.click(fixture.treeProbeOut->topLevelItem(0)->child(0));
    fixture.treeProbeOut->topLevelItem(1)->setText(0, "Probe Out7");
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    fixture.child<QPushButton>("btnProbeOutRemove")->click();

    QCOMPARE(treeLines(fixture.treeProbeOut->model()),
             QStringList({"Probe Out0", "  top/a", "Probe Out7"}));
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 2);
    QCOMPARE(modifed.count(), 0);
}

void tst_PortRemoval::signalRowOfTheOnlyProbeOutRaisesTheWarning()
{
    PageFixture fixture(makeCore({{}}, {{net("top/a")}}));
    fixture.show();
    fixture.treeProbeOut->expandAll();
    fixture.click(fixture.treeProbeOut->topLevelItem(0)->child(0));
    ModalDriver driver;
    driver.expectMessage("Warning", "Support 1 Probe Out at least.", QMessageBox::Ok);
    fixture.child<QPushButton>("btnProbeOutRemove")->click();
    QVERIFY(driver.done());
}

void tst_PortRemoval::removedFocusedLineIsHarmless()
{
    PageFixture fixture(makeCore({{}}, {{bus("p", 8)}, {bus("q", 8)}}));
    fixture.show();
    fixture.treeProbeOut->topLevelItem(0)->setSelected(true);
    fixture.line(0)->setFocus();
    typeDigits(fixture.line(0), "5A");
    runInLoop([&] { fixture.call("onRemoveProbeOut"); });
    turnLoop();
    QCOMPARE(fixture.treeValue->topLevelItemCount(), 1);
    QCOMPARE(fixture.value(0), QString("0x00"));
}

void tst_PortRemoval::severalSelectedPortsGoOneAfterTheOther()
{
    const QList<QList<SignalItem>> ports = {{net("a")}, {net("b")}, {net("c")}, {net("d")}};
    PageFixture fixture(makeCore(ports, ports));
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    for (QTreeWidget *tree : {fixture.treeProbeIn, fixture.treeProbeOut})
        selectRows(tree, {tree->topLevelItem(0), tree->topLevelItem(2)});
    fixture.child<QPushButton>("btnProbeInRemove")->click();
    runInLoop([&] { fixture.child<QPushButton>("btnProbeOutRemove")->click(); });
    QCOMPARE(modifed.count(), 2);
    QCOMPARE(treeLines(fixture.treeProbeIn->model()),
             QStringList({"Probe In0", "  b", "Probe In1", "  d"}));
    QCOMPARE(treeLines(fixture.treeProbeOut->model()),
             QStringList({"Probe Out0", "  b", "Probe Out1", "  d"}));
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(fixture.core->getProbeIn(i)->number, i);
        QCOMPARE(fixture.core->getProbeOut(i)->number, i);
        QCOMPARE(fixture.line(i)->index, i);
    }
    QCOMPARE(fixture.core->getProbeIn(1)->singleSignals(), QStringList("d"));
    QCOMPARE(fixture.core->getProbeOut(1)->singleSignals(), QStringList("d"));
}

void tst_PortRemoval::signalRowEndsTheRemovalOfProbeOutsAtOnce()
{
    PageFixture fixture(makeCore({{}}, {{net("a")}, {net("b")}, {net("c")}}));
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    QTreeWidget *tree = fixture.treeProbeOut;
    selectRows(tree,
               {tree->topLevelItem(0), tree->topLevelItem(1)->child(0), tree->topLevelItem(2)});
    runInLoop([&] { fixture.child<QPushButton>("btnProbeOutRemove")->click(); });

    // What came ahead of the signal row is gone; nothing is numbered anew, and nothing is told.
    QCOMPARE(treeLines(tree->model()), QStringList({"Probe Out1", "  b", "Probe Out2", "  c"}));
    QCOMPARE(fixture.treeValue->topLevelItemCount(), 2);
    QCOMPARE(fixture.line(0)->index, 1);
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 2);
    QCOMPARE(fixture.core->getProbeOut(0)->number, 1);
    QCOMPARE(modifed.count(), 0);
}

void tst_PortRemoval::currentBitsOfARemovedPortLeadToAnotherPort_data()
{
    QTest::addColumn<int>("removed");
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("then");
    QTest::newRow("first") << 0 << 2 << 0;
    QTest::newRow("middle") << 1 << 0 << 1;
    QTest::newRow("last") << 2 << 1 << 1;
}

void tst_PortRemoval::currentBitsOfARemovedPortLeadToAnotherPort()
{
    QFETCH(int, removed);
    QFETCH(int, bits);
    QFETCH(int, then);
    const QList<SignalItem> items = {net("a"), net("b"), net("c")};
    PageFixture fixture(makeCore({{}}, {items, items, items}));
    fixture.show();
    fixture.treeProbeOut->expandAll();
    QTreeWidget *tree = fixture.treeValue;
    tree->setCurrentItem(tree->topLevelItem(removed)->child(bits));
    fixture.treeProbeOut->topLevelItem(removed)->setSelected(true);
    runInLoop([&] { fixture.call("onRemoveProbeOut"); });

    QCOMPARE(tree->topLevelItemCount(), 2);
    QCOMPARE(tree->currentItem(), tree->topLevelItem(then));
    QCOMPARE(tree->selectedItems(), {tree->topLevelItem(then)});
}

void tst_PortRemoval::selectedBitsOfARemovedPortAreTold()
{
    const QList<SignalItem> items = {net("a"), net("b"), net("c")};
    PageFixture fixture(makeCore({{}}, {items, items}));
    fixture.show();
    fixture.treeProbeOut->expandAll();
    QTreeWidget *tree = fixture.treeValue;
    tree->setCurrentItem(tree->topLevelItem(0));
    tree->clearSelection();
    tree->topLevelItem(1)->child(1)->setSelected(true);
    fixture.treeProbeOut->topLevelItem(1)->setSelected(true);
    const QSignalSpy told(tree, SIGNAL(itemSelectionChanged()));
    runInLoop([&] { fixture.call("onRemoveProbeOut"); });

    QCOMPARE(tree->topLevelItemCount(), 1);
    QCOMPARE(tree->currentItem(), tree->topLevelItem(0));
    QVERIFY(tree->selectedItems().isEmpty());
    QVERIFY(!tree->selectionModel()->hasSelection());
    QCOMPARE(told.count(), 1);
}

MOLK_TEST_MAIN(tst_PortRemoval)

#include "tst_portremoval.moc"
