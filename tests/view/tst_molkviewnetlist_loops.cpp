// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "messagedlg.h"
#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "testwidgetsmain.h"
#include "viewtest.h"
#include "watchednetlist.h"

#include <QCheckBox>
#include <QLineEdit>

using namespace MOLK;

/// What may happen in the event loops that turn while a netlist is read.
class tst_MolkViewNetlistLoops : public ViewTest
{
    Q_OBJECT

private slots:
    void saveDuringAReadKeepsTheModuleNames();
    void viewMayGoWhileModulesAreRead();
    void viewMayGoWhileNetsAreRead();
    void viewMayGoWhileTheLogIsShown();
    void viewMayGoWhileTheRefusalIsShown();
    void readInsideAReadLeavesOneNetlist();
};

void tst_MolkViewNetlistLoops::saveDuringAReadKeepsTheModuleNames()
{
    QVERIFY(openCores());
    QVERIFY(view->save());
    child<QLineEdit>(view, "lineEditUserClock")->setText("top/clk");
    ModalDriver driver;
    bench->host.extraction().duringNetlist([&] {
        QVERIFY(document()->netlist == nullptr);
        QVERIFY(view->save());

        child<QCheckBox>(view, "checkUserClock")->setChecked(true);
        driver.expectDialog<QMessageBox>([](QMessageBox *box) {
            QCOMPARE(box->detailedText(),
                     QString("Molk 0: The output probe synchronizes with user clock does not "
                             "exist"));
            box->button(QMessageBox::Ok)->click();
        });
        QVERIFY(!view->save());
    });

    QVERIFY(view->readRtlNetlist());

    const QList<MolkCore *> written = readMOLKConfigFromXml(file, nullptr, nullptr);
    QCOMPARE(written.size(), 1);
    QCOMPARE(written.first()->getModuleName(), QString("top"));
    QCOMPARE(written.first()->getUserClockName(), QString("top/clk"));
    qDeleteAll(written);
    QVERIFY(view->save());
}

void tst_MolkViewNetlistLoops::viewMayGoWhileModulesAreRead()
{
    QVERIFY(openCores());
    bench->host.extraction().duringModules([&] { view.reset(); });
    bench->host.clearCalls();

    QVERIFY(!view->readRtlNetlist());

    QVERIFY(!view);
    QCOMPARE(bench->host.callsOf(netlistServices),
             QStringList({"getSourceFileInfo", "catchRtlModules top=top"}));
}

void tst_MolkViewNetlistLoops::viewMayGoWhileNetsAreRead()
{
    QVERIFY(openCores());
    int alive = 0;
    bench->host.extraction().queueNetlist(new WatchedNetlist("top", &alive));
    bench->host.extraction().duringNetlist([&] { view.reset(); });

    QVERIFY(!view->readRtlNetlist());

    QVERIFY(!view);
    QCOMPARE(alive, 0);
}

void tst_MolkViewNetlistLoops::viewMayGoWhileTheLogIsShown()
{
    QVERIFY(openCores());
    bench->host.extraction().queueModules({{"top"}, {"top"}, {"ERROR"}});
    ModalDriver driver;
    driver.expectDialog<MessageDlg>([&](MessageDlg *) { view.reset(); });

    QVERIFY(!view->readRtlNetlist());

    QVERIFY(!view);
}

void tst_MolkViewNetlistLoops::viewMayGoWhileTheRefusalIsShown()
{
    QVERIFY(openCores());
    bench->host.extraction().queueModules({{}, {}, {}});
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });

    QVERIFY(!view->readRtlNetlist());

    QVERIFY(!view);
}

void tst_MolkViewNetlistLoops::readInsideAReadLeavesOneNetlist()
{
    QVERIFY(openCores());
    int alive = 0;
    bench->host.serveDesign("top", [&] { return new WatchedNetlist("top", &alive); });
    bench->host.extraction().duringNetlist([&] {
        QVERIFY(view->readRtlNetlist());
        QVERIFY(document()->netlist);
    });

    QVERIFY(view->readRtlNetlist());

    QCOMPARE(alive, 1);
    QVERIFY(document()->netlist);
    view.reset();
    QCOMPARE(alive, 0);
}

MOLK_TEST_MAIN(tst_MolkViewNetlistLoops)
#include "tst_molkviewnetlist_loops.moc"
