// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkoptionwidget.h"
#include "netlistguard.h"
#include "probedialog.h"
#include "shownview.h"
#include "testwidgetsmain.h"

#include "netlist/netlistbuilder.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"

#include <QFile>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>

using namespace MOLK;
using Standin::Event;

class tst_MolkViewEvents : public QObject
{
    Q_OBJECT

private slots:
    void eventIsDecided_data();
    void eventIsDecided();
    void changeOfKindReadsBothKinds();
    void otherPayloadsAreNotRead();
    void bannerHasItsPlaceAndButtons();
    void secondChangeKeepsTheFirstWords();
    void unsubscribedViewHearsNothing();
    void everyViewAsksForItself();
    void hiddenViewAsksToo();

    void reloadReadsTheDesignAnew();
    void reloadReadsTheNewTopModule();
    void reloadKeepsTheModifiedState();
    void cancelKeepsTheNetlistAndTheNextChangeAsksAgain();
    void refusedReloadClosesTheViewWithoutQuestion();
    void refusedReloadOfAViewWithoutParentKeepsAskingOff();
    void changeDuringAReloadIsIgnored();
    void changeDuringTheFirstReadRaisesABanner();

    void bothKindsOfBannersStandTogether();
    void dormantBannerStaysHidden();
    void slotsWithoutABannerAreHarmless();
    void viewMayGoDuringAReload();
    void viewMayGoInAnEvent();
    void reloadClosesADialogOnAProbeOut();
};

static const QString filesText = "Design files changed. Do you want to reload?";
static const QString topText = "Top module changed. Do you want to reload?";

static TE::DesignFile designFile(const QString &path, int type, bool enable)
{
    TE::DesignFile file;
    file.path = path;
    file.type = type;
    file.enable = enable;
    return file;
}

static Event filesChanged()
{
    return Event("TE.Option.Change", {{"option", "IncludePath"}});
}

static Event topChanged()
{
    return Event("TE.Option.Change", {{"option", "TopModule"}});
}

void tst_MolkViewEvents::eventIsDecided_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariantMap>("values");
    QTest::addColumn<QString>("text");

    using Values = QVariantMap;
    const auto file = [](const QString &path) {
        return Values{{"file", path}};
    };
    for (const char *name : {"TE.File.Add", "TE.File.Modified"}) {
        const QByteArray row(name);
        QTest::newRow(row + "-kind-1") << name << file("/on1") << "";
        QTest::newRow(row + "-kind-2") << name << file("/on2") << filesText;
        QTest::newRow(row + "-kind-3") << name << file("/on3") << filesText;
        QTest::newRow(row + "-kind-4") << name << file("/on4") << filesText;
        QTest::newRow(row + "-kind-5") << name << file("/on5") << "";
        QTest::newRow(row + "-disabled") << name << file("/off3") << "";
        QTest::newRow(row + "-unknown-file") << name << file("/none") << "";
        QTest::newRow(row + "-no-payload") << name << Values() << "";
    }

    const auto removed = [](const QVariant &type, const QVariant &enable) {
        return Values{{"type", type}, {"enable", enable}};
    };
    const QString remove = "TE.File.Remove";
    QTest::newRow("remove-kind-1") << remove << removed(1, true) << "";
    QTest::newRow("remove-kind-2") << remove << removed(2, true) << filesText;
    QTest::newRow("remove-kind-4") << remove << removed(4, true) << filesText;
    QTest::newRow("remove-kind-5") << remove << removed(5, true) << "";
    QTest::newRow("remove-negative-kind") << remove << removed(-2, true) << "";
    QTest::newRow("remove-disabled") << remove << removed(3, false) << "";
    QTest::newRow("remove-without-enable") << remove << Values{{"type", 3}} << "";
    QTest::newRow("remove-kind-as-text") << remove << removed("3", "true") << filesText;
    QTest::newRow("remove-no-payload") << remove << Values() << "";

    const QString enable = "TE.File.Change.Enable";
    QTest::newRow("switched-on") << enable << removed(2, true) << filesText;
    QTest::newRow("switched-off") << enable << removed(2, false) << filesText;
    QTest::newRow("switched-other-kind") << enable << removed(1, true) << "";
    QTest::newRow("switched-no-payload") << enable << Values() << "";

    const auto changed = [](int previous, int type) {
        return Values{{"previous", previous}, {"type", type}};
    };
    const QString type = "TE.File.Change.Type";
    QTest::newRow("kind-2-to-7") << type << changed(2, 7) << filesText;
    QTest::newRow("kind-7-to-2") << type << changed(7, 2) << filesText;
    QTest::newRow("kind-2-to-4") << type << changed(2, 4) << filesText;
    QTest::newRow("kind-7-to-8") << type << changed(7, 8) << "";
    QTest::newRow("kind-1-to-5") << type << changed(1, 5) << "";
    QTest::newRow("kind-without-previous") << type << Values{{"type", 3}} << filesText;
    QTest::newRow("kind-without-new") << type << Values{{"previous", 3}} << filesText;
    QTest::newRow("kind-no-payload") << type << Values() << "";
    QTest::newRow("kind-far-out") << type << changed(INT_MIN, INT_MAX) << "";

    const auto option = [](const QString &name) {
        return Values{{"option", name}};
    };
    const QString change = "TE.Option.Change";
    QTest::newRow("include-path") << change << option("IncludePath") << filesText;
    QTest::newRow("verilog-standard") << change << option("Verilog_Standard") << filesText;
    QTest::newRow("top-module") << change << option("TopModule") << topText;
    QTest::newRow("top-key-of-the-map") << change << option("Top") << "";
    QTest::newRow("synthesis-tool") << change << option("Synthesize_tool") << "";
    QTest::newRow("device-option") << change << option("Device") << "";
    QTest::newRow("option-of-other-case") << change << option("topmodule") << "";
    QTest::newRow("option-no-payload") << change << Values() << "";

    QTest::newRow("device-change") << "TE.Device.Change" << Values{{"type", 3}} << "";
    QTest::newRow("event-of-other-case") << "te.file.remove" << removed(3, true) << "";
    QTest::newRow("no-name") << "" << removed(3, true) << "";
}

void tst_MolkViewEvents::eventIsDecided()
{
    QFETCH(QString, name);
    QFETCH(QVariantMap, values);
    QFETCH(QString, text);
    ViewBench bench;
    for (int kind = 1; kind <= 5; ++kind) {
        bench.host.design().setFileInfo(designFile(QString("/on%1").arg(kind), kind, true));
        bench.host.design().setFileInfo(designFile(QString("/off%1").arg(kind), kind, false));
    }
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);

    // Straight to the handler: it decides by itself, whatever it is subscribed to.
    const Event event(name, values);
    shown.view->handleIEvent(&event);

    QCOMPARE(shown.banners().size(), text.isEmpty() ? 0 : 1);
    if (shown.banner())
        QCOMPARE(bannerText(shown.banner()), text);
    QVERIFY(!shown.view->isModified());
}

namespace {

// Writes down the keys that are read.
class ReadEvent : public QUtil::IEvent
{
public:
    ReadEvent(const QString &eventName, const QVariantMap &payload)
        : name(eventName)
        , values(payload)
    {
    }

    QString type() const override { return name; }

    QVariant get(const QString &key) const override
    {
        read.append(key);
        return values.value(key);
    }

    mutable QStringList read;

private:
    QString name;
    QVariantMap values;
};

} // namespace

void tst_MolkViewEvents::changeOfKindReadsBothKinds()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    const ReadEvent event("TE.File.Change.Type", {{"type", 2}, {"previous", 3}});

    shown.view->handleIEvent(&event);

    QCOMPARE(event.read, QStringList({"type", "previous"}));
}

void tst_MolkViewEvents::otherPayloadsAreNotRead()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);

    const ReadEvent enable("TE.File.Change.Enable", {{"type", 1}, {"enable", true}});
    shown.view->handleIEvent(&enable);
    QCOMPARE(enable.read, QStringList("type"));
    const ReadEvent unknown("TE.Device.Change", {{"type", 3}});
    shown.view->handleIEvent(&unknown);
    QCOMPARE(unknown.read, QStringList());

    // Behind a banner not even the name is looked at.
    const Event first = filesChanged();
    shown.view->handleIEvent(&first);
    const ReadEvent second("TE.File.Change.Enable", {{"type", 2}});
    shown.view->handleIEvent(&second);
    QCOMPARE(second.read, QStringList());
}

void tst_MolkViewEvents::bannerHasItsPlaceAndButtons()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);

    bench.host.events().send(filesChanged());

    QVERIFY(shown.banner());
    auto *place = child<QWidget>(shown.view, "widget_3");
    QVERIFY(place->isVisible());
    QCOMPARE(shown.banner()->parentWidget(), place);
    QCOMPARE(place->layout()->count(), 1);
    QCOMPARE(child<QPushButton>(shown.banner(), "btnA")->text(), QString("Reload"));
    QCOMPARE(child<QPushButton>(shown.banner(), "btnB")->text(), QString("Cancel"));
}

void tst_MolkViewEvents::secondChangeKeepsTheFirstWords()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);

    bench.host.events().send(filesChanged());
    bench.host.events().send(topChanged());
    bench.host.events().send(filesChanged());

    QCOMPARE(shown.banners().size(), 1);
    QCOMPARE(bannerText(shown.banner()), filesText);
}

void tst_MolkViewEvents::unsubscribedViewHearsNothing()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);

    shown.view->unsubscribeEvent();
    bench.host.events().send(filesChanged());
    QVERIFY(!shown.banner());

    shown.view->subscribeEvent();
    bench.host.events().send(filesChanged());
    QVERIFY(shown.banner());
}

void tst_MolkViewEvents::everyViewAsksForItself()
{
    ViewBench bench;
    const ShownView first(bench, bench.writeCores(1, "a.molk"));
    const ShownView second(bench, bench.writeCores(1, "b.molk"));
    QVERIFY(first.view && second.view);

    bench.host.events().send(filesChanged());
    QCOMPARE(first.banners().size(), 1);
    QCOMPARE(second.banners().size(), 1);

    press(first.banner(), "btnB");
    QCOMPARE(first.banners().size(), 0);
    QCOMPARE(second.banners().size(), 1);
    bench.host.events().send(topChanged());
    QCOMPARE(bannerText(first.banner()), topText);
    QCOMPARE(bannerText(second.banner()), filesText);
}

void tst_MolkViewEvents::hiddenViewAsksToo()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    shown.page->hide();

    bench.host.events().send(filesChanged());

    QVERIFY(shown.banner());
    shown.page->show();
    QVERIFY(shown.banner()->isVisible());
}

void tst_MolkViewEvents::reloadReadsTheDesignAnew()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(2));
    QVERIFY(shown.view);
    const NetlistGuard old(documentOf(shown.view)->netlist);
    FATHOM::RtlNetlist *next = benchNetlist();
    bench.host.extraction().queueNetlist(next);
    bench.host.events().send(filesChanged());
    const QPointer<ReloadBanner> banner = shown.banner();
    bench.host.extraction().duringNetlist([&] {
        // The banner goes first.
        QVERIFY(!banner);
        QVERIFY(!old.get());
    });

    press(banner, "btnA");

    QCOMPARE(documentOf(shown.view)->netlist, next);
    QVERIFY(child<QWidget>(shown.view, "widget_3")->isVisible());
    QCOMPARE(child<QWidget>(shown.view, "widget_3")->layout()->count(), 0);
    // The view listens again.
    bench.host.events().send(topChanged());
    QCOMPARE(bannerText(shown.banner()), topText);
}

void tst_MolkViewEvents::reloadReadsTheNewTopModule()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    bench.host.events().send(filesChanged());
    bench.host.serveDesign("next", [] { return Standin::NetlistBuilder("next").build(); });
    bench.host.events().send(topChanged());
    QCOMPARE(bannerText(shown.banner()), filesText);

    press(shown.banner(), "btnA");

    QCOMPARE(documentOf(shown.view)->netlist->top->name(), QString("next"));
    QVERIFY(!shown.banner());
}

void tst_MolkViewEvents::reloadKeepsTheModifiedState()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    shown.view->onModified();
    QSignalSpy status(shown.view, SIGNAL(modificationStatusChanged(bool)));
    bench.host.events().send(filesChanged());

    press(shown.banner(), "btnA");

    QVERIFY(shown.view->isModified());
    QCOMPARE(shown.view->windowTitle(), QString("a.molk *"));
    QCOMPARE(status.count(), 0);
}

void tst_MolkViewEvents::cancelKeepsTheNetlistAndTheNextChangeAsksAgain()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    const FATHOM::RtlNetlist *netlist = documentOf(shown.view)->netlist;
    bench.host.events().send(filesChanged());
    const QPointer<ReloadBanner> banner = shown.banner();
    bench.host.clearCalls();

    press(banner, "btnB");

    QVERIFY(!banner);
    QCOMPARE(documentOf(shown.view)->netlist, netlist);
    QCOMPARE(bench.host.calls(), QStringList());
    bench.host.events().send(topChanged());
    QCOMPARE(bannerText(shown.banner()), topText);
}

void tst_MolkViewEvents::refusedReloadClosesTheViewWithoutQuestion()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const QByteArray before = ViewBench::read(file);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    child<QPushButton>(shown.view, "btnProbeInAdd")->click();
    QSignalSpy status(shown.view, SIGNAL(modificationStatusChanged(bool)));
    bench.host.events().send(filesChanged());
    bench.host.extraction().queueModules({{}, {}, {}});
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->windowTitle(), QString("Invalid Top Module"));
        QVERIFY(shown.view->isModified());
        box->button(QMessageBox::Ok)->click();
    });

    press(shown.banner(), "btnA");

    QCOMPARE(status, QList<QVariantList>({{false}}));
    QTRY_VERIFY(!shown.page);
    QVERIFY(!shown.view);
    QCOMPARE(ViewBench::read(file), before);
}

void tst_MolkViewEvents::refusedReloadOfAViewWithoutParentKeepsAskingOff()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1));
    QVERIFY(view);
    view->onModified();
    bench.host.events().send(filesChanged());
    bench.host.design().setSourceFiles({});
    ModalDriver driver;
    driver.expectMessage("Error", "Design files are not exist.", QMessageBox::Ok);

    child<QPushButton>(view, "btnA")->click();

    QVERIFY(!view->isModified());
    QVERIFY(documentOf(view)->netlist == nullptr);
    bench.host.events().send(filesChanged());
    QVERIFY(!view->findChild<ReloadBanner *>());
    // It can still be saved; its cores keep the names of their modules.
    QVERIFY(view->save());
}

void tst_MolkViewEvents::changeDuringAReloadIsIgnored()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    bench.host.events().send(filesChanged());
    bench.host.extraction().duringNetlist([&] {
        bench.host.events().send(topChanged());
        QVERIFY(!shown.banner());
    });

    press(shown.banner(), "btnA");

    QVERIFY(!shown.banner());
    bench.host.events().send(topChanged());
    QVERIFY(shown.banner());
}

void tst_MolkViewEvents::changeDuringTheFirstReadRaisesABanner()
{
    ViewBench bench;
    bench.host.extraction().duringNetlist([&] { bench.host.events().send(filesChanged()); });

    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);

    QCOMPARE(shown.banners().size(), 1);
    QVERIFY(shown.banner()->isVisible());
    press(shown.banner(), "btnA");
    QVERIFY(documentOf(shown.view)->netlist);
    QVERIFY(!shown.banner());
}

void tst_MolkViewEvents::bothKindsOfBannersStandTogether()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    bench.host.events().send(filesChanged());
    QFile outside(file);
    QVERIFY(outside.open(QIODevice::Append));
    QVERIFY(outside.write("\n") == 1);
    outside.close();
    QTRY_COMPARE(shown.banners().size(), 2);
    const QPointer<ReloadBanner> ofDesign = shown.banners().at(0);
    const QPointer<ReloadBanner> ofFile = shown.banners().at(1);
    QCOMPARE(bannerText(ofDesign), filesText);
    QVERIFY(bannerText(ofFile).contains("changed on disk"));
    auto *place = child<QWidget>(shown.view, "widget_3");
    QCOMPARE(place->layout()->indexOf(ofDesign), 0);
    QCOMPARE(place->layout()->indexOf(ofFile), 1);
    QTRY_VERIFY(ofFile->isVisible());

    press(ofDesign, "btnA");
    QVERIFY(!ofDesign);
    QVERIFY(ofFile);
    QVERIFY(documentOf(shown.view)->reloadPending);
    bench.host.events().send(topChanged());
    QCOMPARE(shown.banners().size(), 2);

    press(ofFile, "btnB");
    QCOMPARE(shown.banners().size(), 1);
    QCOMPARE(bannerText(shown.banner()), topText);
    // While the design's banner stands its events stay ignored.
    bench.host.events().send(filesChanged());
    QCOMPARE(shown.banners().size(), 1);
}

void tst_MolkViewEvents::dormantBannerStaysHidden()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);

    bench.host.events().send(filesChanged());

    QVERIFY(child<QWidget>(shown.view, "widget_2")->isHidden());
    shown.view->onOKBtn();
    QVERIFY(shown.banner());
    // It doesn't answer the question either.
    bench.host.events().send(topChanged());
    QCOMPARE(shown.banners().size(), 1);
}

void tst_MolkViewEvents::slotsWithoutABannerAreHarmless()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);

    shown.view->onReloadCancel();
    shown.view->onRtlReload();

    QVERIFY(documentOf(shown.view)->netlist);
    bench.host.events().send(filesChanged());
    QVERIFY(shown.banner());
    shown.view->onReloadCancel();
    // The banner wasn't the sender, so it stays; the view asks again all the same.
    bench.host.events().send(filesChanged());
    QCOMPARE(shown.banners().size(), 2);
}

void tst_MolkViewEvents::viewMayGoDuringAReload()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    bench.host.events().send(filesChanged());
    bench.host.extraction().duringNetlist([&] { delete shown.page; });

    press(shown.banner(), "btnA");

    QVERIFY(!shown.view);
}

void tst_MolkViewEvents::viewMayGoInAnEvent()
{
    ViewBench bench;
    const ShownView first(bench, bench.writeCores(1, "a.molk"));
    const ShownView second(bench, bench.writeCores(1, "b.molk"));
    QVERIFY(first.view && second.view);
    bench.host.extraction().duringNetlist([&] {
        delete second.page;
        bench.host.events().send(filesChanged());
    });

    QVERIFY(first.view->readRtlNetlist());

    QCOMPARE(first.banners().size(), 1);
    QVERIFY(!second.view);
}

void tst_MolkViewEvents::reloadClosesADialogOnAProbeOut()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    auto *tree = child<QTreeWidget>(shown.view, "treeProbeOut");
    bool wasOpen = false;
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *dialog) {
        wasOpen = dialog->isVisible();
        QVERIFY(shown.view->readRtlNetlist());
        QVERIFY(!dialog->isVisible());
    });

    QMetaObject::invokeMethod(tree, "itemDoubleClicked",
                              Q_ARG(QTreeWidgetItem *, tree->topLevelItem(0)), Q_ARG(int, 0));

    QVERIFY(wasOpen);
    QVERIFY(!shown.view->isModified());
}

MOLK_TEST_MAIN(tst_MolkViewEvents)
#include "tst_molkviewevents.moc"
