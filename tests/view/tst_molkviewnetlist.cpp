// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "messagedlg.h"
#include "modaldriver.h"
#include "molkcore.h"
#include "molkoptionwidget.h"
#include "netlistguard.h"
#include "privateaccess.h"
#include "testwidgetsmain.h"
#include "viewtest.h"
#include "watchednetlist.h"

#include "netlist/netlistbuilder.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextEdit>

using namespace MOLK;

struct IncludePaths
{
    using Type = QStringList (MolkView::*)();
    friend Type member(IncludePaths);
};
template struct PrivateAccess<IncludePaths, &MolkView::includePaths>;

struct GetRtlModules
{
    using Type = void (MolkView::*)(QMap<QString, QVariant> &, QStringList &, QStringList &,
                                    QStringList &);
    friend Type member(GetRtlModules);
};
template struct PrivateAccess<GetRtlModules, &MolkView::getRtlModules>;

class tst_MolkViewNetlist : public ViewTest
{
    Q_OBJECT

private slots:
    void goodDesignIsInstalledOnAllPages();
    void servicesAreAskedInOrder();
    void designInformationGoesUnchanged_data();
    void designInformationGoesUnchanged();
    void noSourceFilesAskNoService();
    void filesWithoutPathCount();
    void errorInTheLogShowsTheWholeLog();
    void errorFurtherOnIsNoError();
    void refusalShowsOneBox_data();
    void refusalShowsOneBox();
    void rejectedNetlistIsFreed();
    void refusalLeavesNoNetlist();
    void missingNetlistIsRefusedInSilence();
    void missingTopMayBeNullOrEmpty();
    void readKeepsSignalsThatAreGone();
    void relativeIncludePathsBecomeAbsolute();
    void modulesServiceIsForwarded();
};

void tst_MolkViewNetlist::goodDesignIsInstalledOnAllPages()
{
    QVERIFY(openCores(2));
    auto *opened = document();
    const NetlistGuard old(opened->netlist);
    QSignalSpy first(opened->optionWidgets.at(0)->widget(0), SIGNAL(netlistChanged()));
    QSignalSpy second(opened->optionWidgets.at(1)->widget(0), SIGNAL(netlistChanged()));
    FATHOM::RtlNetlist *next = benchNetlist();
    bench->host.extraction().queueNetlist(next);

    QVERIFY(view->readRtlNetlist());

    QCOMPARE(opened->netlist, next);
    QVERIFY(old.get() == nullptr);
    // Once for the netlist that went, once for the one that came.
    QCOMPARE(first.count(), 2);
    QCOMPARE(second.count(), 2);
    QVERIFY(!view->isModified());
}

void tst_MolkViewNetlist::servicesAreAskedInOrder()
{
    QVERIFY(openCores());
    bench->host.clearCalls();

    QVERIFY(view->readRtlNetlist());

    QCOMPARE(bench->host.calls(),
             QStringList({"getSourceFileInfo", "catchRtlModules top=top",
                          "catchRtlNetsWithProgressDialog"}));
}

void tst_MolkViewNetlist::designInformationGoesUnchanged_data()
{
    QTest::addColumn<QVariantMap>("info");

    const QVariantMap source = {
        {"Path", "/rtl/a.v"}, {"Type", 2}, {"Defines", QVariantMap{{"A", ""}}}};
    const QVariantList files = {source, QVariantMap(), QVariantMap{{"Path", ""}}};
    QTest::newRow("every-key") << QMap<QString, QVariant>{
        {"Top", "top"},
        {"Files", files},
        {"IncludePath", QStringList({"/inc", ""})},
        {"Parameters", QVariantMap{{"W", 3}}},
        {"x", QVariant()},
        {"", 1.5}};
    QTest::newRow("empty-top") << QMap<QString, QVariant>{{"Top", ""}, {"Files", files}};
    // A look at the map must not leave the key in it.
    QTest::newRow("no-top") << QMap<QString, QVariant>{{"Files", files}};
    QTest::newRow("top-of-another-type") << QMap<QString, QVariant>{{"Top", 0}, {"Files", files}};
}

void tst_MolkViewNetlist::designInformationGoesUnchanged()
{
    QFETCH(QVariantMap, info);
    QVERIFY(openCores());
    bench->host.design().setSourceFileInfo(info);
    const bool namesOther = info.value("Top").toString() == "0";
    ModalDriver driver;
    if (namesOther)
        driver.expectMessage("Error",
                             "Get module \"0\" failed, just received default module \"top\".",
                             QMessageBox::Ok);

    QCOMPARE(view->readRtlNetlist(), !namesOther);

    QCOMPARE(bench->host.extraction().givenInfo(), info);
}

void tst_MolkViewNetlist::noSourceFilesAskNoService()
{
    QVERIFY(openCores());
    bench->host.design().setSourceFileInfo({{"Top", "top"}, {"Files", QVariantList()}});
    bench->host.clearCalls();
    ModalDriver driver;
    driver.expectMessage("Error", "Design files are not exist.", QMessageBox::Ok);

    QVERIFY(!view->readRtlNetlist());

    QCOMPARE(bench->host.callsOf(netlistServices), QStringList("getSourceFileInfo"));
    QVERIFY(document()->netlist == nullptr);
}

void tst_MolkViewNetlist::filesWithoutPathCount()
{
    QVERIFY(openCores());
    bench->host.design().setSourceFileInfo({{"Files", QVariantList({QVariantMap()})}});

    QVERIFY(view->readRtlNetlist());
}

void tst_MolkViewNetlist::errorInTheLogShowsTheWholeLog()
{
    QVERIFY(openCores());
    bench->host.extraction().queueModules(
        {{"top"}, {"top", "sub"}, {"INFO: reading a.v", "ERROR: a.v:3:1: syntax", "INFO: done"}});
    bench->host.clearCalls();
    ModalDriver driver;
    driver.expectDialog<MessageDlg>([&](MessageDlg *dialog) {
        QCOMPARE(dialog->parentWidget(), view.get());
        QCOMPARE(dialog->windowTitle(), QString("Design files contain some errors."));
        QCOMPARE(child<QTextEdit>(dialog, "textEdit")->toPlainText(),
                 QString("INFO: reading a.v\nERROR: a.v:3:1: syntax\nINFO: done"));
        child<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok)->click();
    });

    QVERIFY(!view->readRtlNetlist());

    QCOMPARE(bench->host.callsOf(netlistServices),
             QStringList({"getSourceFileInfo", "catchRtlModules top=top"}));
}

void tst_MolkViewNetlist::errorFurtherOnIsNoError()
{
    QVERIFY(openCores());
    bench->host.extraction().queueModules({{"top"}, {"top"}, {"0 ERROR", "Error: none"}});

    QVERIFY(view->readRtlNetlist());
}

void tst_MolkViewNetlist::refusalShowsOneBox_data()
{
    QTest::addColumn<QString>("top");
    QTest::addColumn<QStringList>("topModules");
    QTest::addColumn<QStringList>("modules");
    QTest::addColumn<QString>("received");
    QTest::addColumn<bool>("usesJtag");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");

    const QStringList none;
    const QStringList one = {"a"};
    const QStringList two = {"a", "b"};
    QTest::newRow("set-top-is-missing")
        << "c" << one << none << "a" << false << "Invalid Top Module"
        << "No module named \"c\", please reset top module.";
    QTest::newRow("no-module") << "" << none << none << "a" << false
                               << "Design files contain some errors"
                               << "Get no module from design.";
    QTest::newRow("two-tops") << "" << two << two << "a" << false << "Multiple Top Module"
                              << "Multiple top, please set top module.";
    QTest::newRow("no-top") << "" << none << two << "a" << false << "Multiple Top Module"
                            << "Multiple top, please set top module.";
    QTest::newRow("two-tops-though-one-is-set")
        << "a" << two << two << "a" << false << "Design files contain some errors"
        << "Get no module from design.";
    QTest::newRow("other-top-received")
        << "a" << one << two << "b" << false << "Error"
        << "Get module \"a\" failed, just received default module \"b\".";
    QTest::newRow("jtag") << "a" << one << two << "a" << true << "Error"
                          << "OD_JTAG used in design conflicts with MOLK.";
    QTest::newRow("other-top-and-jtag")
        << "a" << one << two << "b" << true << "Error"
        << "Get module \"a\" failed, just received default module \"b\".";
    QTest::newRow("markup") << "<b>" << one << none << "a" << false << "Invalid Top Module"
                            << "No module named \"<b>\", please reset top module.";
}

void tst_MolkViewNetlist::refusalShowsOneBox()
{
    QFETCH(QString, top);
    QFETCH(QStringList, topModules);
    QFETCH(QStringList, modules);
    QFETCH(QString, received);
    QFETCH(bool, usesJtag);
    QFETCH(QString, title);
    QFETCH(QString, text);
    QVERIFY(openCores());
    bench->host.design().setSourceFiles({"/design/a.v"}, top);
    bench->host.extraction().queueModules({topModules, modules, {}});
    Standin::NetlistBuilder builder(received);
    builder.setUsesJtag(usesJtag);
    bench->host.extraction().queueNetlist(builder.build());
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), view.get());
        QCOMPARE(box->windowTitle(), title);
        QCOMPARE(box->text(), text);
        QCOMPARE(box->textFormat(), Qt::PlainText);
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });

    QVERIFY(!view->readRtlNetlist());

    QVERIFY(document()->netlist == nullptr);
}

void tst_MolkViewNetlist::rejectedNetlistIsFreed()
{
    QVERIFY(openCores());
    int alive = 0;
    bench->host.extraction().queueNetlist(new WatchedNetlist("top", &alive, true));
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(alive, 0);
        box->button(QMessageBox::Ok)->click();
    });

    QVERIFY(!view->readRtlNetlist());
}

void tst_MolkViewNetlist::refusalLeavesNoNetlist()
{
    QVERIFY(openCores());
    const NetlistGuard old(document()->netlist);
    QSignalSpy told(document()->optionWidgets.first()->widget(0), SIGNAL(netlistChanged()));
    view->onModified();
    bench->host.extraction().queueModules({{}, {}, {}});
    ModalDriver driver;
    driver.expectMessage("Invalid Top Module", "No module named \"top\", please reset top module.",
                         QMessageBox::Ok);

    QVERIFY(!view->readRtlNetlist());

    QVERIFY(old.get() == nullptr);
    QVERIFY(document()->netlist == nullptr);
    QCOMPARE(told.count(), 1);
    QVERIFY(view->isModified());
    QCOMPARE(document()->cores.size(), 1);
}

void tst_MolkViewNetlist::missingNetlistIsRefusedInSilence()
{
    QVERIFY(openCores());
    bench->host.refuse("catchRtlNetsWithProgressDialog");
    ModalDriver driver;
    QTest::ignoreMessage(QtDebugMsg, "the host delivered no netlist");

    QVERIFY(!view->readRtlNetlist());

    QVERIFY(document()->netlist == nullptr);
}

void tst_MolkViewNetlist::missingTopMayBeNullOrEmpty()
{
    QVERIFY(openCores());
    const QVariantList files = {QVariantMap{{"Path", "/a.v"}}};

    bench->host.design().setSourceFileInfo({{"Files", files}});
    QVERIFY(view->readRtlNetlist());
    bench->host.design().setSourceFileInfo({{"Files", files}, {"Top", ""}});
    QVERIFY(view->readRtlNetlist());
}

void tst_MolkViewNetlist::readKeepsSignalsThatAreGone()
{
    QVERIFY(openCores());
    bench->host.extraction().queueNetlist(Standin::NetlistBuilder("top").build());

    QVERIFY(view->readRtlNetlist());

    const MolkCore *core = document()->cores.first();
    QCOMPARE(core->getProbeIn(0)->singleSignals(), QStringList("top/clk"));
    QVERIFY(core->getProbeIn(0)->getSignalNet().first().found);
}

void tst_MolkViewNetlist::relativeIncludePathsBecomeAbsolute()
{
    newView();
    bench->host.design().setWorkingDir("/project/build");
    QCOMPARE((view.get()->*member(IncludePaths()))(), QStringList());

    bench->host.design().setOptionValue(
        "IncludePath", QStringList({"inc", "../rtl/./x/", "/abs/../inc", "inc", ""}));

    QCOMPARE((view.get()->*member(IncludePaths()))(),
             QStringList({"/project/build/inc", "/project/rtl/x", "/abs/../inc",
                          "/project/build/inc", "/project/build"}));
}

void tst_MolkViewNetlist::modulesServiceIsForwarded()
{
    newView();
    bench->host.extraction().queueModules({{"a"}, {"a", "b"}, {"INFO"}});
    bench->host.clearCalls();
    QMap<QString, QVariant> info = {{"Top", "a"}};
    QStringList topModules;
    QStringList modules;
    QStringList messages;

    (view.get()->*member(GetRtlModules()))(info, topModules, modules, messages);

    QCOMPARE(topModules, QStringList("a"));
    QCOMPARE(modules, QStringList({"a", "b"}));
    QCOMPARE(messages, QStringList("INFO"));
    QCOMPARE(bench->host.calls(), QStringList("catchRtlModules top=a"));
}

MOLK_TEST_MAIN(tst_MolkViewNetlist)
#include "tst_molkviewnetlist.moc"
