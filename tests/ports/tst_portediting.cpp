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

class tst_PortEditing : public QObject
{
    Q_OBJECT

private slots:
    void addedProbeInIsTheLast();
    void addedProbeOutIsTheLastWithAValue();
    void addedRowIsNeitherSelectedNorShown();
    void sixtyFourProbeInsAreTheMost();
    void sixtyFourProbeOutsAreTheMost();
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
