// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designchanges.h"
#include "testwidgetsmain.h"
#include "viewtest.h"

#include <QLayout>
#include <QPushButton>

using namespace MOLK;
using Standin::Event;

class tst_MolkViewEvents : public ViewTest
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
};

static TE::DesignFile designFile(const QString &path, int type, bool enable)
{
    TE::DesignFile file;
    file.path = path;
    file.type = type;
    file.enable = enable;
    return file;
}

void tst_MolkViewEvents::eventIsDecided_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariantMap>("values");
    QTest::addColumn<QString>("text");

    using Values = QVariantMap;
    const auto about = [](const QString &path) {
        return Values{{"file", path}};
    };
    for (const char *name : {"TE.File.Add", "TE.File.Modified"}) {
        const QByteArray row(name);
        QTest::newRow(row + "-kind-1") << name << about("/on1") << "";
        QTest::newRow(row + "-kind-2") << name << about("/on2") << filesText();
        QTest::newRow(row + "-kind-3") << name << about("/on3") << filesText();
        QTest::newRow(row + "-kind-4") << name << about("/on4") << filesText();
        QTest::newRow(row + "-kind-5") << name << about("/on5") << "";
        QTest::newRow(row + "-disabled") << name << about("/off3") << "";
        QTest::newRow(row + "-unknown-file") << name << about("/none") << "";
        QTest::newRow(row + "-no-payload") << name << Values() << "";
    }

    const auto removed = [](const QVariant &type, const QVariant &enable) {
        return Values{{"type", type}, {"enable", enable}};
    };
    const QString remove = "TE.File.Remove";
    QTest::newRow("remove-kind-1") << remove << removed(1, true) << "";
    QTest::newRow("remove-kind-2") << remove << removed(2, true) << filesText();
    QTest::newRow("remove-kind-4") << remove << removed(4, true) << filesText();
    QTest::newRow("remove-kind-5") << remove << removed(5, true) << "";
    QTest::newRow("remove-negative-kind") << remove << removed(-2, true) << "";
    QTest::newRow("remove-disabled") << remove << removed(3, false) << "";
    QTest::newRow("remove-without-enable") << remove << Values{{"type", 3}} << "";
    QTest::newRow("remove-kind-as-text") << remove << removed("3", "true") << filesText();
    QTest::newRow("remove-no-payload") << remove << Values() << "";

    const QString enable = "TE.File.Change.Enable";
    QTest::newRow("switched-on") << enable << removed(2, true) << filesText();
    QTest::newRow("switched-off") << enable << removed(2, false) << filesText();
    QTest::newRow("switched-other-kind") << enable << removed(1, true) << "";
    QTest::newRow("switched-no-payload") << enable << Values() << "";

    const auto changed = [](int previous, int type) {
        return Values{{"previous", previous}, {"type", type}};
    };
    const QString type = "TE.File.Change.Type";
    QTest::newRow("kind-2-to-7") << type << changed(2, 7) << filesText();
    QTest::newRow("kind-7-to-2") << type << changed(7, 2) << filesText();
    QTest::newRow("kind-2-to-4") << type << changed(2, 4) << filesText();
    QTest::newRow("kind-7-to-8") << type << changed(7, 8) << "";
    QTest::newRow("kind-1-to-5") << type << changed(1, 5) << "";
    QTest::newRow("kind-without-previous") << type << Values{{"type", 3}} << filesText();
    QTest::newRow("kind-without-new") << type << Values{{"previous", 3}} << filesText();
    QTest::newRow("kind-no-payload") << type << Values() << "";
    QTest::newRow("kind-far-out") << type << changed(INT_MIN, INT_MAX) << "";

    const auto option = [](const QString &name) {
        return Values{{"option", name}};
    };
    const QString change = "TE.Option.Change";
    QTest::newRow("include-path") << change << option("IncludePath") << filesText();
    QTest::newRow("verilog-standard") << change << option("Verilog_Standard") << filesText();
    QTest::newRow("top-module") << change << option("TopModule") << topText();
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
    for (int kind = 1; kind <= 5; ++kind) {
        bench->host.design().setFileInfo(designFile(QString("/on%1").arg(kind), kind, true));
        bench->host.design().setFileInfo(designFile(QString("/off%1").arg(kind), kind, false));
    }
    QVERIFY(showFile(bench->writeCores(1)));

    // Straight to the handler: it decides by itself, whatever it is subscribed to.
    const Event event(name, values);
    shown->view->handleIEvent(&event);

    QCOMPARE(shown->banners().size(), text.isEmpty() ? 0 : 1);
    if (shown->banner())
        QCOMPARE(bannerText(shown->banner()), text);
    QVERIFY(!shown->view->isModified());
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
    QVERIFY(showCores());
    const ReadEvent event("TE.File.Change.Type", {{"type", 2}, {"previous", 3}});

    shown->view->handleIEvent(&event);

    QCOMPARE(event.read, QStringList({"type", "previous"}));
}

void tst_MolkViewEvents::otherPayloadsAreNotRead()
{
    QVERIFY(showCores());

    const ReadEvent enable("TE.File.Change.Enable", {{"type", 1}, {"enable", true}});
    shown->view->handleIEvent(&enable);
    QCOMPARE(enable.read, QStringList("type"));
    const ReadEvent unknown("TE.Device.Change", {{"type", 3}});
    shown->view->handleIEvent(&unknown);
    QCOMPARE(unknown.read, QStringList());

    // Behind a banner not even the name is looked at.
    const Event first = filesChanged();
    shown->view->handleIEvent(&first);
    const ReadEvent second("TE.File.Change.Enable", {{"type", 2}});
    shown->view->handleIEvent(&second);
    QCOMPARE(second.read, QStringList());
}

void tst_MolkViewEvents::bannerHasItsPlaceAndButtons()
{
    QVERIFY(showCores());

    bench->host.events().send(filesChanged());

    QVERIFY(shown->banner());
    auto *place = child<QWidget>(shown->view, "widget_3");
    QVERIFY(place->isVisible());
    QCOMPARE(shown->banner()->parentWidget(), place);
    QCOMPARE(place->layout()->count(), 1);
    QCOMPARE(child<QPushButton>(shown->banner(), "btnA")->text(), QString("Reload"));
    QCOMPARE(child<QPushButton>(shown->banner(), "btnB")->text(), QString("Cancel"));
}

void tst_MolkViewEvents::secondChangeKeepsTheFirstWords()
{
    QVERIFY(showCores());

    bench->host.events().send(filesChanged());
    bench->host.events().send(topChanged());
    bench->host.events().send(filesChanged());

    QCOMPARE(shown->banners().size(), 1);
    QCOMPARE(bannerText(shown->banner()), filesText());
}

void tst_MolkViewEvents::unsubscribedViewHearsNothing()
{
    QVERIFY(showCores());

    shown->view->unsubscribeEvent();
    bench->host.events().send(filesChanged());
    QVERIFY(!shown->banner());

    shown->view->subscribeEvent();
    bench->host.events().send(filesChanged());
    QVERIFY(shown->banner());
}

void tst_MolkViewEvents::everyViewAsksForItself()
{
    const ShownView first(*bench, bench->writeCores(1, "a.molk"));
    const ShownView second(*bench, bench->writeCores(1, "b.molk"));
    QVERIFY(first.view && second.view);

    bench->host.events().send(filesChanged());
    QCOMPARE(first.banners().size(), 1);
    QCOMPARE(second.banners().size(), 1);

    press(first.banner(), "btnB");
    QCOMPARE(first.banners().size(), 0);
    QCOMPARE(second.banners().size(), 1);
    bench->host.events().send(topChanged());
    QCOMPARE(bannerText(first.banner()), topText());
    QCOMPARE(bannerText(second.banner()), filesText());
}

void tst_MolkViewEvents::hiddenViewAsksToo()
{
    QVERIFY(showCores());
    shown->page->hide();

    bench->host.events().send(filesChanged());

    QVERIFY(shown->banner());
    shown->page->show();
    QVERIFY(shown->banner()->isVisible());
}

MOLK_TEST_MAIN(tst_MolkViewEvents)
#include "tst_molkviewevents.moc"
