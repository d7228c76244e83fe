// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "pagefixture.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "turnloop.h"

#include "host/event.h"
#include "netlist/netlistbuilder.h"

#include "fathom/rtlnetlist.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalSpy>

using namespace MOLK;

class tst_ProbePortsOptionWidget : public QObject
{
    Q_OBJECT

private slots:
    void tabIsTheOnlyOne();
    void freshCoreShowsOneOfEach();
    void coreIsShownInThreeTrees();
    void storeWritesWhatOnlyWidgetsHold();
    void storeFindsLinesByThePortsNumber();
    void storeTakesAValueStillBeingTyped();
    void netlistMakesProbeInRowsAnew();
    void netlistKeepsExpansion();
    void everyNetlistIsTold();
    void probeInRefreshEmitsNothing();
    void deviceChangeChangesNothing();
    void pageLeavesTheEventBus();
    void pageOutlivesItsCore();
    void eventFilterFiltersNothing();
};

// Everything that the page shows, one line each.
static QStringList shownState(const PageFixture &fixture)
{
    QStringList state = treeLines(fixture.treeProbeIn->model());
    state += treeLines(fixture.treeProbeOut->model());
    for (int i = 0; i < fixture.treeValue->topLevelItemCount(); ++i)
        state += fixture.value(i) + " " + fixture.bits(i);
    state += fixture.child<QLineEdit>("lineEditUserClock")->text();
    if (fixture.child<QCheckBox>("checkUserClock")->isChecked())
        state.append("used");
    return state;
}

void tst_ProbePortsOptionWidget::tabIsTheOnlyOne()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QCOMPARE(fixture.widget->count(), 1);
    QCOMPARE(fixture.widget->tabText(0), QString("Probe Ports"));
    QCOMPARE(fixture.widget->widget(0), fixture.page);
    QCOMPARE(fixture.widget->core, fixture.core.get());
}

void tst_ProbePortsOptionWidget::freshCoreShowsOneOfEach()
{
    PageFixture fixture(std::make_unique<MolkCore>(0));
    QCOMPARE(treeLines(fixture.treeProbeIn->model()), QStringList({"Probe In0"}));
    QCOMPARE(treeLines(fixture.treeProbeOut->model()), QStringList({"Probe Out0"}));
    QCOMPARE(treeLines(fixture.treeValue->model()), QStringList({""}));
    QCOMPARE(fixture.value(0), QString("0x0"));
    QVERIFY(!fixture.line(0)->isEnabled());
    QCOMPARE(fixture.line(0)->index, 0);
    QVERIFY(!fixture.child<QCheckBox>("checkUserClock")->isChecked());
    QCOMPARE(fixture.child<QLineEdit>("lineEditUserClock")->text(), QString());
    for (const char *name : {"labelClock", "lineEditUserClock", "btnUserClock"})
        QVERIFY(!fixture.child<QWidget>(name)->isEnabled());
}

void tst_ProbePortsOptionWidget::coreIsShownInThreeTrees()
{
    auto core = makeCore({{net("top/a"), bus("top/q", 2)}, {}}, {{}, {bus("top/q", 2), net("b")}});
    core->getProbeOut(1)->setValue("0x5");
    PageFixture fixture(std::move(core));

    QCOMPARE(treeLines(fixture.treeProbeIn->model()),
             QStringList({"Probe In0", "  top/a", "  top/q[1:0]", "    top/q[1]", "    top/q[0]",
                          "Probe In1"}));
    QCOMPARE(treeLines(fixture.treeProbeOut->model()),
             QStringList({"Probe Out0", "Probe Out1", "  top/q[1:0]", "  b"}));
    QCOMPARE(treeLines(fixture.treeValue->model()), QStringList({"", "", "  ", "  "}));
    QCOMPARE(fixture.value(0), QString("0x0"));
    QCOMPARE(fixture.value(1), QString("0x5"));
    QCOMPARE(fixture.bits(1), QString("10|1"));
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(fixture.treeProbeIn->topLevelItem(i)->type(), 1001);
        QCOMPARE(fixture.treeProbeOut->topLevelItem(i)->type(), 1001);
        QCOMPARE(fixture.treeValue->topLevelItem(i)->type(), 1001);
        QCOMPARE(fixture.line(i)->index, i);
    }
}

void tst_ProbePortsOptionWidget::storeWritesWhatOnlyWidgetsHold()
{
    PageFixture fixture(makeCore({{}}, {{bus("top/q", 8)}, {}}));
    fixture.core->getProbeOut(1)->setValue("stale");
    fixture.child<QCheckBox>("checkUserClock")->click();
    fixture.child<QLineEdit>("lineEditUserClock")->setText("top/clk");
    fixture.line(0)->setText("0x5A");
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));

    fixture.widget->storeToModel();
    QCOMPARE(fixture.core->getUserClockName(), QString("top/clk"));
    QVERIFY(fixture.core->useUserClock);
    QCOMPARE(fixture.core->getProbeOut(0)->getValue(), QString("0x5A"));
    QCOMPARE(fixture.core->getProbeOut(1)->getValue(), QString("0x0"));
    QCOMPARE(modifed.count(), 0);
}

void tst_ProbePortsOptionWidget::storeFindsLinesByThePortsNumber()
{
    PageFixture fixture(makeCore({{}}, {{bus("top/p", 4)}, {bus("top/q", 4)}}));
    fixture.line(0)->setText("0x1");
    fixture.line(1)->setText("0x2");
    fixture.core->getProbeOut(0)->number = 1;
    fixture.core->getProbeOut(1)->number = 7;
    fixture.widget->storeToModel();
    QCOMPARE(fixture.core->getProbeOut(0)->getValue(), QString("0x2"));
    QCOMPARE(fixture.core->getProbeOut(1)->getValue(), QString("0x0"));
}

void tst_ProbePortsOptionWidget::storeTakesAValueStillBeingTyped()
{
    PageFixture fixture(makeCore({{}}, {{bus("top/q", 6)}}));
    fixture.show();
    fixture.line(0)->setFocus();
    fixture.line(0)->setCursorPosition(2);
    QTest::keyClicks(fixture.line(0), "7F");
    fixture.widget->storeToModel();
    QCOMPARE(fixture.core->getProbeOut(0)->getValue(), QString("0x7F"));
    QCOMPARE(fixture.bits(0), QString("000000"));
    fixture.line(0)->setText("0x00");
}

void tst_ProbePortsOptionWidget::netlistMakesProbeInRowsAnew()
{
    std::unique_ptr<FATHOM::RtlNetlist> netlist(Standin::NetlistBuilder("top").build());
    PageFixture fixture(makeCore({{net("top/a")}}, {{net("top/b")}}));
    fixture.core->getProbeIn(0)->setSignalNet({net("top/c"), net("top/d")});
    fixture.core->getProbeOut(0)->setSignalNet({net("top/e")});
    QSignalSpy modified(fixture.page, SIGNAL(modified()));

    // Whoever is told of the netlist finds the new rows.
    QStringList told;
    connect(fixture.page, &ProbePortsOptionWidget::netlistChanged, this,
            [&] { told = treeLines(fixture.treeProbeIn->model()); });
    fixture.widget->setNetlist(netlist.get());
    QCOMPARE(told, QStringList({"Probe In0", "  top/c", "  top/d"}));
    QCOMPARE(treeLines(fixture.treeProbeIn->model()),
             QStringList({"Probe In0", "  top/c", "  top/d"}));
    QCOMPARE(treeLines(fixture.treeProbeOut->model()), QStringList({"Probe Out0", "  top/b"}));
    QCOMPARE(modified.count(), 0);
}

void tst_ProbePortsOptionWidget::netlistKeepsExpansion()
{
    PageFixture fixture(makeCore({{net("top/a")}, {net("top/b")}}, {{}}));
    QTreeWidgetItem *port = fixture.treeProbeIn->topLevelItem(1);
    fixture.treeProbeIn->expandItem(port);
    fixture.widget->setNetlist(nullptr);
    QCOMPARE(fixture.treeProbeIn->topLevelItem(1), port);
    QVERIFY(port->isExpanded());
    QVERIFY(!fixture.treeProbeIn->topLevelItem(0)->isExpanded());
    QCOMPARE(port->child(0)->text(0), QString("top/b"));
}

void tst_ProbePortsOptionWidget::everyNetlistIsTold()
{
    std::unique_ptr<FATHOM::RtlNetlist> netlist(Standin::NetlistBuilder("top").build());
    PageFixture fixture(makeCore({{}}, {{}}));
    QSignalSpy changed(fixture.page, SIGNAL(netlistChanged()));
    fixture.widget->setNetlist(nullptr);
    QCOMPARE(changed.count(), 1);
    fixture.widget->setNetlist(netlist.get());
    QCOMPARE(changed.count(), 2);
    fixture.widget->setNetlist(netlist.get());
    QCOMPARE(changed.count(), 3);
}

void tst_ProbePortsOptionWidget::probeInRefreshEmitsNothing()
{
    PageFixture fixture(makeCore({{net("top/a")}}, {{}}));
    fixture.treeProbeIn->setCurrentItem(fixture.treeProbeIn->topLevelItem(0));
    QSignalSpy modified(fixture.page, SIGNAL(modified()));
    QSignalSpy changed(fixture.page, SIGNAL(netlistChanged()));
    fixture.page->refreshProbeInSignals();
    QCOMPARE(modified.count(), 0);
    QCOMPARE(changed.count(), 0);
    QVERIFY(fixture.treeProbeIn->topLevelItem(0)->isSelected());

    fixture.treeProbeIn->clear();
    fixture.page->refreshProbeInSignals();
    QCOMPARE(fixture.treeProbeIn->topLevelItemCount(), 0);
}

void tst_ProbePortsOptionWidget::deviceChangeChangesNothing()
{
    auto core = makeCore({{net("top/a")}}, {{bus("top/q", 4)}});
    core->setUserClockName("top/clk");
    PageFixture fixture(std::move(core));
    QCOMPARE(fixture.host.callsOf({"subscribe"}), QStringList({"subscribe TE.Device.Change"}));
    const QStringList before = shownState(fixture);
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));

    fixture.host.events().send(Standin::Event("TE.Device.Change"));
    const Standin::Event other("TE.File.Add");
    fixture.page->handleIEvent(&other);
    QCOMPARE(shownState(fixture), before);
    QCOMPARE(modifed.count(), 0);
}

void tst_ProbePortsOptionWidget::pageLeavesTheEventBus()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    fixture.host.clearCalls();
    fixture.widget.reset();
    QCOMPARE(fixture.host.callsOf({"unsubscribe", "unsubscribeAll"}).size(), 1);
    fixture.host.events().send(Standin::Event("TE.Device.Change"));
}

void tst_ProbePortsOptionWidget::pageOutlivesItsCore()
{
    PageFixture fixture(makeCore({{net("top/a")}}, {{bus("top/q", 4)}}));
    fixture.core.reset();
    fixture.widget.reset();
    turnLoop();
    QVERIFY(!fixture.widget);
}

void tst_ProbePortsOptionWidget::eventFilterFiltersNothing()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QEvent event(QEvent::KeyPress);
    QVERIFY(!fixture.page->eventFilter(fixture.treeProbeIn, &event));
}

MOLK_TEST_MAIN(tst_ProbePortsOptionWidget)

#include "tst_probeportsoptionwidget.moc"
