// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "pagefixture.h"
#include "testwidgetsmain.h"
#include "treelines.h"

#include <QPushButton>
#include <QSignalSpy>

using namespace MOLK;

class tst_PortEditing : public QObject
{
    Q_OBJECT

private slots:
    void addedProbeInIsTheLast();
    void addedProbeOutIsTheLastWithAValue();
    void addedRowIsNeitherSelectedNorShown();
    void sixtyFourProbeInsAreTheMost();
    void sixtyFourProbeOutsAreTheMost();
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
    void modifiedComesLast();
};

static QList<QList<SignalItem>> emptyPorts(int count)
{
    return QVector<QList<SignalItem>>(count).toList();
}

void tst_PortEditing::addedProbeInIsTheLast()
{
    PageFixture fixture(makeCore({{net("top/a")}}, {{}}));
    fixture.show();
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    QTest::mouseClick(fixture.child<QPushButton>("btnProbeInAdd"), Qt::LeftButton);

    QCOMPARE(treeLines(fixture.treeProbeIn->model()),
             QStringList({"Probe In0", "  top/a", "Probe In1"}));
    QCOMPARE(fixture.core->getAllProbeIns().size(), 2);
    QCOMPARE(fixture.core->getProbeIn(1)->number, 1);
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 1);
    QCOMPARE(modifed.count(), 1);
}

void tst_PortEditing::addedProbeOutIsTheLastWithAValue()
{
    PageFixture fixture(makeCore({{}}, {{bus("top/q", 4)}}));
    fixture.show();
    fixture.line(0)->setText("0x5");
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    QTest::mouseClick(fixture.child<QPushButton>("btnProbeOutAdd"), Qt::LeftButton);

    QCOMPARE(treeLines(fixture.treeProbeOut->model()),
             QStringList({"Probe Out0", "  top/q[3:0]", "Probe Out1"}));
    QCOMPARE(treeLines(fixture.treeValue->model()), QStringList({"", "  ", ""}));
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 2);
    QCOMPARE(fixture.value(0), QString("0x5"));
    QCOMPARE(fixture.bits(0), QString("0101"));
    QCOMPARE(fixture.value(1), QString("0x0"));
    QCOMPARE(fixture.line(1)->index, 1);
    QVERIFY(!fixture.line(1)->isEnabled());
    QCOMPARE(modifed.count(), 1);
}

void tst_PortEditing::addedRowIsNeitherSelectedNorShown()
{
    PageFixture fixture(makeCore(emptyPorts(40), emptyPorts(40)));
    fixture.show();
    fixture.child<QPushButton>("btnProbeInAdd")->click();
    fixture.child<QPushButton>("btnProbeOutAdd")->click();
    turnLoop();
    for (QTreeWidget *tree : {fixture.treeProbeIn, fixture.treeProbeOut}) {
        QVERIFY(tree->selectedItems().isEmpty());
        QCOMPARE(tree->visualItemRect(tree->topLevelItem(0)).top(), 0);
    }
}

void tst_PortEditing::sixtyFourProbeInsAreTheMost()
{
    PageFixture fixture(makeCore(emptyPorts(63), {{}}));
    fixture.child<QPushButton>("btnProbeInAdd")->click();
    QCOMPARE(fixture.core->getAllProbeIns().size(), 64);
    QCOMPARE(fixture.treeProbeIn->topLevelItem(63)->text(0), QString("Probe In63"));

    ModalDriver driver;
    driver.expectMessage("Warning", "Support 64 Probe Ins at most.", QMessageBox::Ok);
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    fixture.child<QPushButton>("btnProbeInAdd")->click();
    QVERIFY(driver.done());
    QCOMPARE(fixture.core->getAllProbeIns().size(), 64);
    QCOMPARE(fixture.treeProbeIn->topLevelItemCount(), 64);
    QCOMPARE(modifed.count(), 0);
}

void tst_PortEditing::sixtyFourProbeOutsAreTheMost()
{
    PageFixture fixture(makeCore({{}}, emptyPorts(63)));
    fixture.child<QPushButton>("btnProbeOutAdd")->click();
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 64);
    QCOMPARE(fixture.treeProbeOut->topLevelItem(63)->text(0), QString("Probe Out63"));
    QCOMPARE(fixture.line(63)->index, 63);

    ModalDriver driver;
    driver.expectMessage("Warning", "Support 64 Probe Outs at most.", QMessageBox::Ok);
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    fixture.child<QPushButton>("btnProbeOutAdd")->click();
    QVERIFY(driver.done());
    QCOMPARE(fixture.core->getAllProbeOuts().size(), 64);
    QCOMPARE(fixture.treeProbeOut->topLevelItemCount(), 64);
    QCOMPARE(fixture.treeValue->topLevelItemCount(), 64);
    QCOMPARE(modifed.count(), 0);
}

void tst_PortEditing::lastProbeInStays()
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

void tst_PortEditing::lastProbeOutStays()
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

void tst_PortEditing::removedProbeInClosesTheGap()
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

void tst_PortEditing::removedProbeOutClosesTheGap()
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

void tst_PortEditing::removedProbeOutTakesItsLabelsAlong()
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

void tst_PortEditing::survivorsKeepTheirValues()
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

void tst_PortEditing::messageNamesTheNewNumber()
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
    fixture.line(1)->setCursorPosition(2);
    QTest::keyClick(fixture.line(1), Qt::Key_7);
    runInLoop([&] { fixture.treeProbeIn->setFocus(); });
    QVERIFY(driver.done());
}

void tst_PortEditing::removeWithoutASelectionStillMarksTheDocument()
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

void tst_PortEditing::signalRowOfAProbeInGoesFromTheTreeAlone()
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

void tst_PortEditing::signalRowOfAProbeOutStays()
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

void tst_PortEditing::signalRowOfTheOnlyProbeOutRaisesTheWarning()
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

void tst_PortEditing::removedFocusedLineIsHarmless()
{
    PageFixture fixture(makeCore({{}}, {{bus("p", 8)}, {bus("q", 8)}}));
    fixture.show();
    fixture.treeProbeOut->topLevelItem(0)->setSelected(true);
    fixture.line(0)->setFocus();
    fixture.line(0)->setCursorPosition(2);
    QTest::keyClicks(fixture.line(0), "5A");
    runInLoop([&] { fixture.call("onRemoveProbeOut"); });
    turnLoop();
    QCOMPARE(fixture.treeValue->topLevelItemCount(), 1);
    QCOMPARE(fixture.value(0), QString("0x00"));
}

// The user can select one row at a time; the slots take what is selected.
static void selectRows(QTreeWidget *tree, const QList<QTreeWidgetItem *> &rows)
{
    tree->setSelectionMode(QAbstractItemView::MultiSelection);
    for (QTreeWidgetItem *row : rows)
        row->setSelected(true);
    QCOMPARE(tree->selectedItems(), rows);
}

void tst_PortEditing::severalSelectedPortsGoOneAfterTheOther()
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

void tst_PortEditing::signalRowEndsTheRemovalOfProbeOutsAtOnce()
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

void tst_PortEditing::modifiedComesLast()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QStringList seen;
    const auto note = [&] {
        QStringList ports;
        for (const ProbeIn *port : fixture.core->getAllProbeIns())
            ports.append(QString("in %1").arg(port->number));
        for (const ProbeOut *port : fixture.core->getAllProbeOuts()) {
            const InitialValueLine *line = fixture.line(port->number);
            ports.append(QString("out %1 line %2 enabled %3")
                             .arg(port->number)
                             .arg(line ? line->index : -1)
                             .arg(line && line->isEnabled()));
        }
        seen = ports + treeLines(fixture.treeProbeIn->model())
            + treeLines(fixture.treeProbeOut->model());
    };
    connect(fixture.page, &ProbePortsOptionWidget::modified, this, note);
    fixture.child<QPushButton>("btnProbeInAdd")->click();
    QCOMPARE(seen,
             QStringList({"in 0", "in 1", "out 0 line 0 enabled 0", "Probe In0", "Probe In1",
                          "Probe Out0"}));
    fixture.child<QPushButton>("btnProbeOutAdd")->click();
    QCOMPARE(seen,
             QStringList({"in 0", "in 1", "out 0 line 0 enabled 0", "out 1 line 1 enabled 0",
                          "Probe In0", "Probe In1", "Probe Out0", "Probe Out1"}));
    fixture.treeProbeIn->topLevelItem(0)->setSelected(true);
    fixture.child<QPushButton>("btnProbeInRemove")->click();
    QCOMPARE(seen,
             QStringList({"in 0", "out 0 line 0 enabled 0", "out 1 line 1 enabled 0", "Probe In0",
                          "Probe Out0", "Probe Out1"}));
    fixture.treeProbeOut->topLevelItem(0)->setSelected(true);
    fixture.child<QPushButton>("btnProbeOutRemove")->click();
    QCOMPARE(seen, QStringList({"in 0", "out 0 line 0 enabled 0", "Probe In0", "Probe Out0"}));
}

MOLK_TEST_MAIN(tst_PortEditing)

#include "tst_portediting.moc"
