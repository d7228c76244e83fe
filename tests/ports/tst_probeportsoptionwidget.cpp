// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "pagefixture.h"
#include "probedialog.h"
#include "signaldisplay.h"
#include "testwidgetsmain.h"
#include "treelines.h"

#include "host/event.h"
#include "netlist/netlistbuilder.h"

#include "fathom/rtlnetlist.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSplitter>

using namespace MOLK;

class tst_ProbePortsOptionWidget : public QObject
{
    Q_OBJECT

private slots:
    void classesAnswerToTheirNames();
    void signalsAndSlotsStandInOrder();
    void tabIsTheOnlyOne();
    void formHasItsNames();
    void formHasItsTexts();
    void formHasItsProperties();
    void freshCoreShowsOneOfEach();
    void coreIsShownInThreeTrees();
    void clockNameDoesntMarkTheDocument();
    void usedClockWithoutANameIsShown();
    void uncheckingKeepsTheClockName();
    void clockControlsFollowTheBox();
    void typingAClockNameIsAnEdit();
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

void tst_ProbePortsOptionWidget::classesAnswerToTheirNames()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QVERIFY(fixture.page->qt_metacast("MOLK::ProbePortsOptionWidget"));
    QVERIFY(fixture.page->qt_metacast("QWidget"));
    QCOMPARE(fixture.page->qt_metacast("QUtil::IEventHandler"),
             static_cast<void *>(static_cast<QUtil::IEventHandler *>(fixture.page)));
    QCOMPARE(fixture.page->metaObject()->className(), "MOLK::ProbePortsOptionWidget");
    QCOMPARE(fixture.widget->metaObject()->className(), "MOLK::MolkOptionWidget");
    QVERIFY(fixture.widget->qt_metacast("QTabWidget"));
}

void tst_ProbePortsOptionWidget::signalsAndSlotsStandInOrder()
{
    const auto methods = [](const QMetaObject &object, QMetaMethod::MethodType type) {
        QStringList names;
        for (int i = object.methodOffset(); i < object.methodCount(); ++i)
            if (object.method(i).methodType() == type)
                names.append(QString::fromLatin1(object.method(i).methodSignature()));
        return names;
    };
    const QMetaObject &page = ProbePortsOptionWidget::staticMetaObject;
    QCOMPARE(methods(page, QMetaMethod::Signal),
             QStringList({"modified()", "netlistChanged()", "ImpleChanged()"}));
    QCOMPARE(
        methods(page, QMetaMethod::Slot),
        QStringList(
            {"editProbeIn(QTreeWidgetItem*,int)", "editProbeOut(QTreeWidgetItem*,int)",
             "onProbeOutClicked(QTreeWidgetItem*,int)", "onValueTreeClicked(QTreeWidgetItem*,int)",
             "onProbeOutTreeCollapsed(QTreeWidgetItem*)",
             "onProbeOutTreeExpanded(QTreeWidgetItem*)", "onValueTreeCollapsed(QTreeWidgetItem*)",
             "onValueTreeExpanded(QTreeWidgetItem*)", "onAddProbeIn()", "onRemoveProbeIn()",
             "onAddProbeOut()", "onRemoveProbeOut()", "onCheckUserClock()",
             "onScrollProbeOutChanged()", "onScrollInitialValueChanged()", "onbtnUserClock()"}));
    QCOMPARE(methods(MolkOptionWidget::staticMetaObject, QMetaMethod::Signal),
             QStringList({"modifed()"}));
    QVERIFY(methods(MolkOptionWidget::staticMetaObject, QMetaMethod::Slot).isEmpty());
    QCOMPARE(methods(InitialValueLine::staticMetaObject, QMetaMethod::Slot),
             QStringList({"onTextChange()"}));
}

void tst_ProbePortsOptionWidget::tabIsTheOnlyOne()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QCOMPARE(fixture.widget->count(), 1);
    QCOMPARE(fixture.widget->tabText(0), QString("Probe Ports"));
    QCOMPARE(fixture.widget->widget(0), fixture.page);
    QCOMPARE(fixture.widget->core, fixture.core.get());
}

void tst_ProbePortsOptionWidget::formHasItsNames()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QCOMPARE(fixture.page->objectName(), QString("MOLK__ProbePortsOptionWidget"));

    // Each object with its class and the widget that it lies on.
    const char *const objects[][3] = {
        {"splitter", "QSplitter", "MOLK__ProbePortsOptionWidget"},
        {"groupBox", "QGroupBox", "splitter"},
        {"treeProbeIn", "QTreeWidget", "groupBox"},
        {"widget", "QWidget", "groupBox"},
        {"btnProbeInAdd", "QPushButton", "widget"},
        {"btnProbeInRemove", "QPushButton", "widget"},
        {"groupBox_2", "QGroupBox", "splitter"},
        {"widget_2", "QWidget", "groupBox_2"},
        {"widget_5", "QWidget", "widget_2"},
        {"labelPorts", "QLabel", "widget_5"},
        {"treeProbeOut", "QTreeWidget", "widget_5"},
        {"widget_6", "QWidget", "widget_2"},
        {"labelInitialValue", "QLabel", "widget_6"},
        {"treeValue", "QTreeWidget", "widget_6"},
        {"widget_7", "QWidget", "groupBox_2"},
        {"btnProbeOutAdd", "QPushButton", "widget_7"},
        {"btnProbeOutRemove", "QPushButton", "widget_7"},
        {"widget_3", "QWidget", "groupBox_2"},
        {"checkUserClock", "QCheckBox", "widget_3"},
        {"widget_4", "QWidget", "widget_3"},
        {"labelClock", "QLabel", "widget_4"},
        {"lineEditUserClock", "QLineEdit", "widget_4"},
        {"btnUserClock", "QPushButton", "widget_4"},
    };
    for (const auto &object : objects) {
        const auto *widget = fixture.child<QWidget>(object[0]);
        QVERIFY2(widget, object[0]);
        QCOMPARE(widget->metaObject()->className(), object[1]);
        QCOMPARE(widget->parentWidget()->objectName(), QString::fromLatin1(object[2]));
    }

    const char *const layouts[][2] = {
        {"verticalLayout_3", "MOLK__ProbePortsOptionWidget"},
        {"verticalLayout", "groupBox"},
        {"horizontalLayout", "widget"},
        {"verticalLayout_2", "groupBox_2"},
        {"horizontalLayout_3", "widget_2"},
        {"verticalLayout_5", "widget_5"},
        {"verticalLayout_6", "widget_6"},
        {"horizontalLayout_4", "widget_7"},
        {"verticalLayout_4", "widget_3"},
        {"horizontalLayout_2", "widget_4"},
    };
    for (const auto &layout : layouts) {
        const auto *found = fixture.child<QLayout>(layout[0]);
        QVERIFY2(found, layout[0]);
        QCOMPARE(found->parentWidget()->objectName(), QString::fromLatin1(layout[1]));
    }
}

void tst_ProbePortsOptionWidget::formHasItsTexts()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QCOMPARE(fixture.page->windowTitle(), QString("Form"));
    QCOMPARE(fixture.child<QGroupBox>("groupBox")->title(), QString("Probe In"));
    QCOMPARE(fixture.child<QGroupBox>("groupBox_2")->title(), QString("Probe Out"));
    QCOMPARE(fixture.child<QLabel>("labelPorts")->text(), QString("Ports"));
    QCOMPARE(fixture.child<QLabel>("labelInitialValue")->text(), QString("Initial Value"));
    QCOMPARE(fixture.child<QLabel>("labelClock")->text(), QString("Clock:"));
    QCOMPARE(fixture.child<QCheckBox>("checkUserClock")->text(),
             QString("Output Probe Synchronizes with User Clock"));
    QCOMPARE(fixture.child<QPushButton>("btnProbeInAdd")->text(), QString("Add"));
    QCOMPARE(fixture.child<QPushButton>("btnProbeInRemove")->text(), QString("Remove"));
    QCOMPARE(fixture.child<QPushButton>("btnProbeOutAdd")->text(), QString("Add"));
    QCOMPARE(fixture.child<QPushButton>("btnProbeOutRemove")->text(), QString("Remove"));
    QCOMPARE(fixture.child<QPushButton>("btnUserClock")->text(), QString("..."));
}

void tst_ProbePortsOptionWidget::formHasItsProperties()
{
    auto core = makeCore({{}}, {{}});
    Standin::Host host;
    ProbePortsOptionWidget page(core.get(), nullptr, nullptr);
    QCOMPARE(page.size(), QSize(852, 508));

    const auto *splitter = page.findChild<QSplitter *>();
    QCOMPARE(splitter->orientation(), Qt::Horizontal);
    QCOMPARE(splitter->widget(0)->objectName(), QString("groupBox"));
    QCOMPARE(splitter->widget(1)->objectName(), QString("groupBox_2"));
    for (auto *tree : page.findChildren<QTreeWidget *>()) {
        QCOMPARE(tree->headerItem()->text(0), QString("1"));
        QVERIFY(tree->header()->isHidden());
        QCOMPARE(tree->columnCount(), 1);
        QCOMPARE(tree->selectionMode(), QAbstractItemView::SingleSelection);
        QCOMPARE(tree->styleSheet(),
                 QString("QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }"));
        const bool shortens = tree->objectName() != "treeValue";
        QCOMPARE(tree->textElideMode(), shortens ? Qt::ElideMiddle : Qt::ElideRight);
    }

    const auto *clock = page.findChild<QLineEdit *>("lineEditUserClock");
    QCOMPARE(clock->minimumSize(), QSize(180, 0));
    for (const QWidget *fixed : {page.findChild<QWidget *>("lineEditUserClock"),
                                 page.findChild<QWidget *>("btnUserClock")}) {
        QCOMPARE(fixed->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(fixed->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    }

    const QLayoutItem *spacer = page.findChild<QLayout *>("horizontalLayout_4")->itemAt(2);
    QCOMPARE(spacer->sizeHint(), QSize(198, 41));
    spacer = page.findChild<QLayout *>("horizontalLayout_2")->itemAt(3);
    QCOMPARE(spacer->sizeHint(), QSize(40, 20));
    QCOMPARE(spacer->expandingDirections(), Qt::Horizontal);
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

void tst_ProbePortsOptionWidget::clockNameDoesntMarkTheDocument()
{
    auto core = makeCore({{}}, {{}});
    core->setUserClockName("top/clk");
    core->useUserClock = true;
    Standin::Host host;

    // The relay is the last thing to be connected.
    MolkOptionWidget widget(core.get(), nullptr, nullptr);
    QSignalSpy modifed(&widget, SIGNAL(modifed()));
    QCOMPARE(modifed.count(), 0);
    auto *clock = widget.findChild<QLineEdit *>("lineEditUserClock");
    QCOMPARE(clock->text(), QString("top/clk"));
    clock->setText("top/clk2");
    QCOMPARE(modifed.count(), 1);
}

void tst_ProbePortsOptionWidget::usedClockWithoutANameIsShown()
{
    auto core = makeCore({{}}, {{}});
    core->useUserClock = true;
    PageFixture fixture(std::move(core));
    QVERIFY(fixture.child<QCheckBox>("checkUserClock")->isChecked());
    for (const char *name : {"labelClock", "lineEditUserClock", "btnUserClock"})
        QVERIFY(fixture.child<QWidget>(name)->isEnabled());
}

void tst_ProbePortsOptionWidget::uncheckingKeepsTheClockName()
{
    auto core = makeCore({{}}, {{}});
    core->setUserClockName("top/clk");
    core->useUserClock = true;
    PageFixture fixture(std::move(core));
    auto *box = fixture.child<QCheckBox>("checkUserClock");
    box->click();
    QCOMPARE(fixture.child<QLineEdit>("lineEditUserClock")->text(), QString("top/clk"));
    QVERIFY(fixture.core->useUserClock);

    fixture.widget->storeToModel();
    QVERIFY(!fixture.core->useUserClock);
    QCOMPARE(fixture.core->getUserClockName(), QString("top/clk"));
    box->click();
    QCOMPARE(fixture.child<QLineEdit>("lineEditUserClock")->text(), QString("top/clk"));
}

void tst_ProbePortsOptionWidget::clockControlsFollowTheBox()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    for (const bool used : {true, false}) {
        modifed.clear();
        fixture.child<QCheckBox>("checkUserClock")->click();
        QCOMPARE(modifed.count(), 1);
        for (const char *name : {"labelClock", "lineEditUserClock", "btnUserClock"})
            QCOMPARE(fixture.child<QWidget>(name)->isEnabled(), used);
    }
    QVERIFY(!fixture.core->useUserClock);
}

void tst_ProbePortsOptionWidget::typingAClockNameIsAnEdit()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    fixture.child<QCheckBox>("checkUserClock")->click();
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    QTest::keyClicks(fixture.child<QLineEdit>("lineEditUserClock"), "clk");
    QCOMPARE(modifed.count(), 3);
    QCOMPARE(fixture.core->getUserClockName(), QString());
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

    fixture.widget->setNetlist(netlist.get());
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
