// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "corelist.h"
#include "diskchanges.h"
#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "molkoptionwidget.h"
#include "probedialog.h"
#include "signalitems.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "viewtest.h"

#include <QFileSystemWatcher>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTreeWidget>

using namespace MOLK;

class tst_MolkViewReload : public ViewTest
{
    Q_OBJECT

private slots:
    void reloadShowsTheFile();
    void reloadOfFewerCoresShowsTheFirst();
    void reloadWithoutCoresGivesOneAndTheStar();
    void reloadKeepsTheModifiedStateAndTheTitles();
    void reloadKeepsTheNetlist();
    void reloadDropsTheOldPages();
    void reloadWatchesAReplacedFileAgain();
    void reloadPutsTheNumbersInOrder();

    void unfitFileClosesTheView_data();
    void unfitFileClosesTheView();
    void fileRemovedBeforeTheAnswerClosesTheView();
    void unfitFileLeavesAModelOfAViewWithoutParent();

    void slotsWithoutABannerAreHarmless();
    void viewMayGoWhileTheWarningStands();
    void fileMayBeReloadedUnderAnOpenDialog();
    void lineWithTheFocusMayGoInAReload_data();
    void lineWithTheFocusMayGoInAReload();
};

void tst_MolkViewReload::reloadShowsTheFile()
{
    QVERIFY(showCores());
    QList<MolkCore *> cores = {coreWatching(0, "top/rst"), coreWatching(1, "top/clk")};
    cores[1]->setUserClockName("top/clk");
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);
    QTRY_VERIFY(shown->banner());
    const QPointer<ReloadBanner> banner = shown->banner();

    press(banner, "btnA");

    QVERIFY(!banner);
    QVERIFY(!document()->reloadPending);
    QCOMPARE(coreLines(shown->view), QStringList({"molk_0", "molk_1"}));
    const QList<MolkOptionWidget *> pages = document()->optionWidgets;
    QCOMPARE(pages.size(), 2);
    QCOMPARE(treeLines(child<QTreeWidget>(pages.at(0), "treeProbeIn")->model()),
             QStringList({"Probe In0", "  top/rst"}));
    QCOMPARE(child<QLineEdit>(pages.at(1), "lineEditUserClock")->text(), QString("top/clk"));
    QVERIFY(!shown->view->isModified());
    // Edits of the new pages reach the view.
    child<QPushButton>(pages.at(1), "btnProbeInAdd")->click();
    QVERIFY(shown->view->isModified());
}

void tst_MolkViewReload::reloadOfFewerCoresShowsTheFirst()
{
    QVERIFY(showCores(5));
    shown->view->changeMolkWidget(4);
    bench->writeCores(3);

    press(raiseBanner(*shown), "btnA");

    QCOMPARE(coreLines(shown->view), QStringList({"molk_0", "molk_1", "molk_2"}));
    const auto *stack = child<QStackedWidget>(shown->view, "stackedWidget");
    QCOMPARE(stack->count(), 3);
    QCOMPARE(stack->currentWidget(), document()->optionWidgets.first());
    QCOMPARE(child<QTreeWidget>(shown->view, "treeWidget")->currentItem()->text(0),
             QString("molk_0"));
}

void tst_MolkViewReload::reloadWithoutCoresGivesOneAndTheStar()
{
    QVERIFY(showCores(2));
    bench->writeSkeleton();

    press(raiseBanner(*shown), "btnA");

    QCOMPARE(coreLines(shown->view), QStringList("molk_0"));
    QCOMPARE(document()->cores.first()->id, 0);
    QVERIFY(shown->view->isModified());
    QCOMPARE(shown->view->windowTitle(), QString("a.molk *"));
    QCOMPARE(shortTitle(shown->view), QString("a.molk *"));
    QCOMPARE(child<QStackedWidget>(shown->view, "stackedWidget")->currentIndex(), 0);
}

void tst_MolkViewReload::reloadKeepsTheModifiedStateAndTheTitles()
{
    QVERIFY(showCores());
    shown->view->onModified();
    QSignalSpy status(shown->view, SIGNAL(modificationStatusChanged(bool)));
    bench->writeCores(2);

    press(raiseBanner(*shown), "btnA");

    QVERIFY(shown->view->isModified());
    QCOMPARE(shown->view->windowTitle(), QString("a.molk *"));
    QCOMPARE(status.count(), 0);
}

void tst_MolkViewReload::reloadKeepsTheNetlist()
{
    QVERIFY(showCores());
    FATHOM::RtlNetlist *netlist = document()->netlist;
    bench->host.clearCalls();

    press(raiseBanner(*shown), "btnA");

    QCOMPARE(document()->netlist, netlist);
    // The new pages search it as the old ones did.
    QCOMPARE(netlistOf(document()->optionWidgets.at(0)), netlist);
    QCOMPARE(bench->host.callsOf({"getSourceFileInfo", "catchRtlModules"}), QStringList());
}

void tst_MolkViewReload::reloadDropsTheOldPages()
{
    QVERIFY(showCores(2));
    QList<QPointer<MolkOptionWidget>> old;
    const QList<MolkOptionWidget *> pages = document()->optionWidgets;
    for (MolkOptionWidget *page : pages)
        old.append(page);

    press(raiseBanner(*shown), "btnA");

    QVERIFY(!shown->view->isModified());
    QTRY_VERIFY(!old.at(0) && !old.at(1));
}

void tst_MolkViewReload::reloadWatchesAReplacedFileAgain()
{
    QVERIFY(showCores());
    replace(file, ViewBench::read(file));
    QTRY_VERIFY(shown->banner());

    press(shown->banner(), "btnA");

    QCOMPARE(document()->watcher->files(), QStringList(file));
    append(file, "\n");
    QTRY_VERIFY(shown->banner());
}

void tst_MolkViewReload::reloadPutsTheNumbersInOrder()
{
    QVERIFY(showCores());
    const QList<MolkCore *> cores = {coreWatching(4, "top/clk"), coreWatching(2, "top/clk")};
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);

    press(raiseBanner(*shown), "btnA");

    QCOMPARE(coreLines(shown->view), QStringList({"molk_0", "molk_1"}));
    QCOMPARE(document()->cores.at(1)->id, 1);
}

void tst_MolkViewReload::unfitFileClosesTheView_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("other-format") << QByteArray("module top; endmodule\n");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("half-written") << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                                "<MOLK_CONFIG>\n    <Version>1.0</Version>\n");
    QTest::newRow("other-version") << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                                 "<MOLK_CONFIG>\n    <Version>9.0</Version>\n"
                                                 "</MOLK_CONFIG>\n");
}

void tst_MolkViewReload::unfitFileClosesTheView()
{
    QFETCH(QByteArray, content);
    QVERIFY(showCores());
    shown->view->onModified();
    QSignalSpy status(shown->view, SIGNAL(modificationStatusChanged(bool)));
    bench->write("a.molk", content);
    QTRY_VERIFY(shown->banner());
    const QPointer<ReloadBanner> banner = shown->banner();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), shown->view.data());
        QCOMPARE(box->windowTitle(), QString("Reload Molk"));
        QCOMPARE(box->text(), QString("Invalid MOLK file."));
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        // Nothing has been touched yet.
        QVERIFY(banner);
        QCOMPARE(coreLines(shown->view), QStringList("molk_0"));
        QVERIFY(shown->view->isModified());
        box->button(QMessageBox::Ok)->click();
    });

    press(banner, "btnA");

    QVERIFY(!banner);
    QCOMPARE(status, QList<QVariantList>({{false}}));
    QTRY_VERIFY(!shown->page);
    QCOMPARE(ViewBench::read(file), content);
}

void tst_MolkViewReload::fileRemovedBeforeTheAnswerClosesTheView()
{
    QVERIFY(showCores());
    append(file, "\n");
    QTRY_VERIFY(shown->banner());
    QVERIFY(QFile::remove(file));
    ModalDriver driver;
    driver.expectMessage("Reload Molk", "Invalid MOLK file.", QMessageBox::Ok);

    press(shown->banner(), "btnA");

    QTRY_VERIFY(!shown->page);
}

void tst_MolkViewReload::unfitFileLeavesAModelOfAViewWithoutParent()
{
    QVERIFY(openCores(2));
    view->onModified();
    bench->write("a.molk", "no");
    ModalDriver driver;
    driver.expectMessage("Reload Molk", "Invalid MOLK file.", QMessageBox::Ok);

    view->onBannerReload();

    QCOMPARE(coreLines(view.get()), QStringList({"molk_0", "molk_1"}));
    QCOMPARE(document()->cores.size(), 2);
    QVERIFY(!view->isModified());
}

void tst_MolkViewReload::slotsWithoutABannerAreHarmless()
{
    QVERIFY(openCores());
    document()->reloadPending = true;

    view->onBannerCancel();
    QVERIFY(!document()->reloadPending);
    view->onBannerKeep();
    view->onBannerReload();
    view->onBannerClose();

    QCOMPARE(coreLines(view.get()), QStringList("molk_0"));
}

void tst_MolkViewReload::viewMayGoWhileTheWarningStands()
{
    QVERIFY(showCores());
    bench->write("a.molk", "no");
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { delete shown->page; });

    shown->view->onBannerReload();

    QVERIFY(!shown->view);
}

void tst_MolkViewReload::fileMayBeReloadedUnderAnOpenDialog()
{
    QVERIFY(showCores());
    auto *tree = child<QTreeWidget>(shown->view, "treeProbeIn");
    QPointer<ProbeDialog> dialog;
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *open) {
        dialog = open;
        bench->writeCores(2);
        // A user can't reach the banner; a host may answer it.
        shown->view->onBannerReload();
    });

    // The page goes, and its dialog with it.
    QMetaObject::invokeMethod(tree, "itemDoubleClicked",
                              Q_ARG(QTreeWidgetItem *, tree->topLevelItem(0)), Q_ARG(int, 0));

    QVERIFY(!dialog);
    QCOMPARE(coreLines(shown->view), QStringList({"molk_0", "molk_1"}));
    QVERIFY(!shown->view->isModified());
}

void tst_MolkViewReload::lineWithTheFocusMayGoInAReload_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("tooWide");
    QTest::newRow("value-that-fits") << int(Qt::Key_1) << false;
    QTest::newRow("value-that-is-too-wide") << int(Qt::Key_F) << true;
}

void tst_MolkViewReload::lineWithTheFocusMayGoInAReload()
{
    QFETCH(int, key);
    QFETCH(bool, tooWide);
    file = bench->path("a.molk");
    const QList<MolkCore *> cores = {coreWatching(0, "top/clk")};
    cores.first()->getProbeOut(0)->setSignalNet({net("top/rst")});
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);
    QVERIFY(showFile(file));
    QVERIFY(QTest::qWaitForWindowActive(shown->page));
    auto *values = child<QTreeWidget>(shown->view, "treeValue");
    auto *line = qobject_cast<QLineEdit *>(values->itemWidget(values->topLevelItem(0), 0));
    QVERIFY(line);
    line->setFocus();
    line->setCursorPosition(2);
    QTest::keyClick(line, Qt::Key(key));
    QVERIFY(shown->view->isModified());
    const QPointer<QWidget> guard = line;
    // The page loses the focus when it is taken out, which commits the value.
    ModalDriver driver;
    if (tooWide)
        driver.expectDialog<QMessageBox>(
            [](QMessageBox *box) { box->button(QMessageBox::Ok)->click(); });

    shown->view->onBannerReload();

    QTRY_VERIFY(!guard);
    QCOMPARE(coreLines(shown->view), QStringList("molk_0"));
}

MOLK_TEST_MAIN(tst_MolkViewReload)
#include "tst_molkviewreload.moc"
