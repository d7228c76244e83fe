// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "molkoptionwidget.h"
#include "probedialog.h"
#include "shownview.h"
#include "testwidgetsmain.h"
#include "treelines.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileSystemWatcher>
#include <QLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTreeWidget>

#include <cstdio>

using namespace MOLK;

class tst_MolkViewReload : public QObject
{
    Q_OBJECT

private slots:
    void changeRaisesABannerAfterAWhile();
    void outsideActRaisesABanner_data();
    void outsideActRaisesABanner();
    void severalWritesRaiseOneBanner();
    void changeWhileTheBannerStandsIsIgnored();
    void fileThatComesBackBeforeTheQuestionCountsAsChanged();
    void fileThatComesBackBehindTheQuestionIsNotNoticed();
    void backgroundAndModifiedViewsAreAskedToo();
    void viewMayGoWhileItWaits();

    void cancelKeepsAllAndTheNextChangeAsksAgain();
    void cancelAfterAReplacementEndsTheWatch();
    void keepItKeepsAllAndASaveWritesTheFileAnew();
    void closeClosesWithoutQuestion();
    void closeWithoutParentOnlyClearsTheState();

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
    void bannerStaysInItsPlace();
};

static QString changedText(const QString &file)
{
    return "The file '" + QDir::toNativeSeparators(file)
        + "' changed on disk.\nDo you want to reload?";
}

static QString removedText(const QString &file)
{
    return "The file '" + QDir::toNativeSeparators(file)
        + "' has been removed on disk.\nDo you still want to keep it?";
}

static void append(const QString &file, const QByteArray &bytes)
{
    QFile opened(file);
    if (!opened.open(QIODevice::Append) || opened.write(bytes) != bytes.size())
        QTest::qFail("can't append", __FILE__, __LINE__);
}

// Puts `bytes` in place of `file` by renaming, as careful programs save.
static void replace(const QString &file, const QByteArray &bytes)
{
    QFile next(file + ".new");
    if (!next.open(QIODevice::WriteOnly) || next.write(bytes) != bytes.size())
        QTest::qFail("can't write", __FILE__, __LINE__);
    next.close();
    if (std::rename(QFile::encodeName(next.fileName()), QFile::encodeName(file)) != 0)
        QTest::qFail("can't rename", __FILE__, __LINE__);
}

static QStringList coreLines(const MolkView *view)
{
    return treeLines(child<QTreeWidget>(view, "treeWidget")->model());
}

// Raises the banner at once, as the end of the waiting does.
static ReloadBanner *raiseBanner(const ShownView &shown)
{
    documentOf(shown.view)->reloadPending = true;
    shown.view->checkForReload();
    return shown.banner();
}

void tst_MolkViewReload::changeRaisesABannerAfterAWhile()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    QSignalSpy changes(documentOf(shown.view)->watcher, SIGNAL(fileChanged(QString)));
    append(file, "\n");
    QVERIFY(changes.wait());
    QElapsedTimer waiting;
    waiting.start();
    QVERIFY(documentOf(shown.view)->reloadPending);
    QVERIFY(!shown.banner());
    QVERIFY(child<QWidget>(shown.view, "widget_3")->isHidden());

    QTRY_VERIFY(shown.banner());

    // The timer may be a little early, as coarse timers are.
    QVERIFY2(waiting.elapsed() >= 470, QByteArray::number(waiting.elapsed()));
    QCOMPARE(bannerText(shown.banner()), changedText(file));
    QVERIFY(shown.banner()->isVisible());
    QVERIFY(child<QWidget>(shown.view, "widget_3")->isVisible());
    QVERIFY(documentOf(shown.view)->reloadPending);
}

void tst_MolkViewReload::outsideActRaisesABanner_data()
{
    QTest::addColumn<QString>("act");
    QTest::addColumn<bool>("removed");
    for (const char *act : {"append", "truncate", "rewrite", "replace"})
        QTest::newRow(act) << act << false;
    for (const char *act : {"remove", "rename"})
        QTest::newRow(act) << act << true;
}

void tst_MolkViewReload::outsideActRaisesABanner()
{
    QFETCH(QString, act);
    QFETCH(bool, removed);
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);

    if (act == "append")
        append(file, "\n");
    else if (act == "truncate")
        QVERIFY(QFile::resize(file, 10));
    else if (act == "rewrite")
        bench.write("a.molk", ViewBench::read(file));
    else if (act == "replace")
        replace(file, ViewBench::read(file));
    else if (act == "remove")
        QVERIFY(QFile::remove(file));
    else if (act == "rename")
        QVERIFY(QFile::rename(file, file + ".old"));

    QTRY_VERIFY(shown.banner());
    QCOMPARE(bannerText(shown.banner()), removed ? removedText(file) : changedText(file));
}

void tst_MolkViewReload::severalWritesRaiseOneBanner()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    QSignalSpy changes(documentOf(shown.view)->watcher, SIGNAL(fileChanged(QString)));

    for (int i = 0; i < 3; ++i) {
        append(file, "\n");
        QTRY_COMPARE(changes.count(), i + 1);
    }

    QTRY_VERIFY(shown.banner());
    QCOMPARE(shown.banners().size(), 1);
}

void tst_MolkViewReload::changeWhileTheBannerStandsIsIgnored()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    append(file, "\n");
    QTRY_VERIFY(shown.banner());
    const QPointer<ReloadBanner> first = shown.banner();
    QSignalSpy changes(documentOf(shown.view)->watcher, SIGNAL(fileChanged(QString)));

    // Another view that hears of the change asks later than this one would.
    const ShownView witness(bench, file);
    QVERIFY(witness.view);
    append(file, "\n");
    QTRY_VERIFY(witness.banner());

    QVERIFY(changes.count() > 0);
    QCOMPARE(shown.banners(), QList<ReloadBanner *>({first.data()}));
}

void tst_MolkViewReload::fileThatComesBackBeforeTheQuestionCountsAsChanged()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(documentOf(shown.view)->reloadPending);
    bench.writeCores(2);

    QTRY_VERIFY(shown.banner());

    QCOMPARE(bannerText(shown.banner()), changedText(file));
    press(shown.banner(), "btnA");
    QCOMPARE(coreLines(shown.view), QStringList({"molk_0", "molk_1"}));
}

void tst_MolkViewReload::fileThatComesBackBehindTheQuestionIsNotNoticed()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(shown.banner());
    const QPointer<ReloadBanner> first = shown.banner();

    bench.writeCores(2);
    QCoreApplication::processEvents();

    QCOMPARE(shown.banners(), QList<ReloadBanner *>({first.data()}));
    QCOMPARE(bannerText(first), removedText(file));
}

void tst_MolkViewReload::backgroundAndModifiedViewsAreAskedToo()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    shown.view->onModified();
    shown.page->hide();

    append(file, "\n");

    QTRY_VERIFY(shown.banner());
    QVERIFY(shown.view->isModified());
}

void tst_MolkViewReload::viewMayGoWhileItWaits()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView witness(bench, file);
    QVERIFY(witness.view);
    {
        const ShownView shown(bench, file);
        QVERIFY(shown.view);
        append(file, "\n");
        QTRY_VERIFY(documentOf(shown.view)->reloadPending);
    }

    QTRY_VERIFY(witness.banner());
}

void tst_MolkViewReload::cancelKeepsAllAndTheNextChangeAsksAgain()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    shown.view->onModified();
    bench.write("a.molk", ViewBench::read(bench.writeCores(2, "b.molk")));
    QTRY_VERIFY(shown.banner());
    const QPointer<ReloadBanner> banner = shown.banner();

    press(banner, "btnB");

    QVERIFY(!banner);
    QVERIFY(!documentOf(shown.view)->reloadPending);
    QCOMPARE(coreLines(shown.view), QStringList("molk_0"));
    QVERIFY(shown.view->isModified());
    QCOMPARE(shown.view->windowTitle(), QString("a.molk *"));
    // The place of the banners stays, empty.
    QVERIFY(child<QWidget>(shown.view, "widget_3")->isVisible());
    QCOMPARE(child<QWidget>(shown.view, "widget_3")->layout()->count(), 0);

    append(file, "\n");
    QTRY_VERIFY(shown.banner());
}

void tst_MolkViewReload::cancelAfterAReplacementEndsTheWatch()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    replace(file, ViewBench::read(file));
    QTRY_VERIFY(shown.banner());

    press(shown.banner(), "btnB");

    QCOMPARE(documentOf(shown.view)->watcher->files(), QStringList());
}

void tst_MolkViewReload::keepItKeepsAllAndASaveWritesTheFileAnew()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(shown.banner());
    const QPointer<ReloadBanner> banner = shown.banner();

    press(banner, "btnA");

    QVERIFY(!banner);
    QVERIFY(!documentOf(shown.view)->reloadPending);
    QVERIFY(!shown.view->isModified());
    QCOMPARE(coreLines(shown.view), QStringList("molk_0"));
    QCOMPARE(documentOf(shown.view)->watcher->files(), QStringList());

    QVERIFY(shown.view->save());
    QVERIFY(checkMOLKFile(file));
    QCOMPARE(documentOf(shown.view)->watcher->files(), QStringList(file));
    append(file, "\n");
    QTRY_VERIFY(shown.banner());
}

void tst_MolkViewReload::closeClosesWithoutQuestion()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    shown.view->onModified();
    QSignalSpy status(shown.view, SIGNAL(modificationStatusChanged(bool)));
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(shown.banner());
    ModalDriver driver;

    press(shown.banner(), "btnB");

    QCOMPARE(status, QList<QVariantList>({{false}}));
    QTRY_VERIFY(!shown.page);
    QVERIFY(!shown.view);
    QVERIFY(!QFile::exists(file));
}

void tst_MolkViewReload::closeWithoutParentOnlyClearsTheState()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    view->onModified();
    QVERIFY(QFile::remove(file));
    documentOf(view)->reloadPending = true;
    view->checkForReload();
    const QPointer<ReloadBanner> banner = view->findChild<ReloadBanner *>();

    child<QPushButton>(banner, "btnB")->click();

    QVERIFY(!banner);
    QVERIFY(!documentOf(view)->reloadPending);
    QVERIFY(!view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
}

void tst_MolkViewReload::reloadShowsTheFile()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    QList<MolkCore *> cores = {coreWatching(0, "top/rst"), coreWatching(1, "top/clk")};
    cores[1]->setUserClockName("top/clk");
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);
    QTRY_VERIFY(shown.banner());
    const QPointer<ReloadBanner> banner = shown.banner();

    press(banner, "btnA");

    QVERIFY(!banner);
    QVERIFY(!documentOf(shown.view)->reloadPending);
    QCOMPARE(coreLines(shown.view), QStringList({"molk_0", "molk_1"}));
    const QList<MolkOptionWidget *> pages = documentOf(shown.view)->optionWidgets;
    QCOMPARE(pages.size(), 2);
    QCOMPARE(treeLines(child<QTreeWidget>(pages.at(0), "treeProbeIn")->model()),
             QStringList({"Probe In0", "  top/rst"}));
    QCOMPARE(child<QLineEdit>(pages.at(1), "lineEditUserClock")->text(), QString("top/clk"));
    QVERIFY(!shown.view->isModified());
    // Edits of the new pages reach the view.
    child<QPushButton>(pages.at(1), "btnProbeInAdd")->click();
    QVERIFY(shown.view->isModified());
}

void tst_MolkViewReload::reloadOfFewerCoresShowsTheFirst()
{
    ViewBench bench;
    const QString file = bench.writeCores(5);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    shown.view->changeMolkWidget(4);
    bench.writeCores(3);

    press(raiseBanner(shown), "btnA");

    QCOMPARE(coreLines(shown.view), QStringList({"molk_0", "molk_1", "molk_2"}));
    const auto *stack = child<QStackedWidget>(shown.view, "stackedWidget");
    QCOMPARE(stack->count(), 3);
    QCOMPARE(stack->currentWidget(), documentOf(shown.view)->optionWidgets.first());
    QCOMPARE(child<QTreeWidget>(shown.view, "treeWidget")->currentItem()->text(0),
             QString("molk_0"));
}

void tst_MolkViewReload::reloadWithoutCoresGivesOneAndTheStar()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(2));
    QVERIFY(shown.view);
    bench.writeSkeleton();

    press(raiseBanner(shown), "btnA");

    QCOMPARE(coreLines(shown.view), QStringList("molk_0"));
    QCOMPARE(documentOf(shown.view)->cores.first()->id, 0);
    QVERIFY(shown.view->isModified());
    QCOMPARE(shown.view->windowTitle(), QString("a.molk *"));
    QCOMPARE(shortTitle(shown.view), QString("a.molk *"));
    QCOMPARE(child<QStackedWidget>(shown.view, "stackedWidget")->currentIndex(), 0);
}

void tst_MolkViewReload::reloadKeepsTheModifiedStateAndTheTitles()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    shown.view->onModified();
    QSignalSpy status(shown.view, SIGNAL(modificationStatusChanged(bool)));
    bench.writeCores(2);

    press(raiseBanner(shown), "btnA");

    QVERIFY(shown.view->isModified());
    QCOMPARE(shown.view->windowTitle(), QString("a.molk *"));
    QCOMPARE(status.count(), 0);
}

void tst_MolkViewReload::reloadKeepsTheNetlist()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    const FATHOM::RtlNetlist *netlist = documentOf(shown.view)->netlist;
    bench.host.clearCalls();

    press(raiseBanner(shown), "btnA");

    QCOMPARE(documentOf(shown.view)->netlist, netlist);
    QCOMPARE(bench.host.callsOf({"getSourceFileInfo", "catchRtlModules"}), QStringList());
}

void tst_MolkViewReload::reloadDropsTheOldPages()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(2));
    QVERIFY(shown.view);
    QList<QPointer<MolkOptionWidget>> old;
    const QList<MolkOptionWidget *> pages = documentOf(shown.view)->optionWidgets;
    for (MolkOptionWidget *page : pages)
        old.append(page);

    press(raiseBanner(shown), "btnA");

    QVERIFY(!shown.view->isModified());
    QTRY_VERIFY(!old.at(0) && !old.at(1));
}

void tst_MolkViewReload::reloadWatchesAReplacedFileAgain()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    replace(file, ViewBench::read(file));
    QTRY_VERIFY(shown.banner());

    press(shown.banner(), "btnA");

    QCOMPARE(documentOf(shown.view)->watcher->files(), QStringList(file));
    append(file, "\n");
    QTRY_VERIFY(shown.banner());
}

void tst_MolkViewReload::reloadPutsTheNumbersInOrder()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    const QList<MolkCore *> cores = {coreWatching(4, "top/clk"), coreWatching(2, "top/clk")};
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);

    press(raiseBanner(shown), "btnA");

    QCOMPARE(coreLines(shown.view), QStringList({"molk_0", "molk_1"}));
    QCOMPARE(documentOf(shown.view)->cores.at(1)->id, 1);
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
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    shown.view->onModified();
    QSignalSpy status(shown.view, SIGNAL(modificationStatusChanged(bool)));
    bench.write("a.molk", content);
    QTRY_VERIFY(shown.banner());
    const QPointer<ReloadBanner> banner = shown.banner();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), shown.view.data());
        QCOMPARE(box->windowTitle(), QString("Reload Molk"));
        QCOMPARE(box->text(), QString("Invalid MOLK file."));
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        // Nothing has been touched yet.
        QVERIFY(banner);
        QCOMPARE(coreLines(shown.view), QStringList("molk_0"));
        QVERIFY(shown.view->isModified());
        box->button(QMessageBox::Ok)->click();
    });

    press(banner, "btnA");

    QVERIFY(!banner);
    QCOMPARE(status, QList<QVariantList>({{false}}));
    QTRY_VERIFY(!shown.page);
    QCOMPARE(ViewBench::read(file), content);
}

void tst_MolkViewReload::fileRemovedBeforeTheAnswerClosesTheView()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    append(file, "\n");
    QTRY_VERIFY(shown.banner());
    QVERIFY(QFile::remove(file));
    ModalDriver driver;
    driver.expectMessage("Reload Molk", "Invalid MOLK file.", QMessageBox::Ok);

    press(shown.banner(), "btnA");

    QTRY_VERIFY(!shown.page);
}

void tst_MolkViewReload::unfitFileLeavesAModelOfAViewWithoutParent()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(2));
    QVERIFY(view);
    view->onModified();
    bench.write("a.molk", "no");
    ModalDriver driver;
    driver.expectMessage("Reload Molk", "Invalid MOLK file.", QMessageBox::Ok);

    view->onBannerReload();

    QCOMPARE(coreLines(view.get()), QStringList({"molk_0", "molk_1"}));
    QCOMPARE(documentOf(view)->cores.size(), 2);
    QVERIFY(!view->isModified());
}

void tst_MolkViewReload::slotsWithoutABannerAreHarmless()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1));
    QVERIFY(view);
    documentOf(view)->reloadPending = true;

    view->onBannerCancel();
    QVERIFY(!documentOf(view)->reloadPending);
    view->onBannerKeep();
    view->onBannerReload();
    view->onBannerClose();

    QCOMPARE(coreLines(view.get()), QStringList("molk_0"));
}

void tst_MolkViewReload::viewMayGoWhileTheWarningStands()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    bench.write("a.molk", "no");
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { delete shown.page; });

    shown.view->onBannerReload();

    QVERIFY(!shown.view);
}

void tst_MolkViewReload::fileMayBeReloadedUnderAnOpenDialog()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);
    auto *tree = child<QTreeWidget>(shown.view, "treeProbeIn");
    QPointer<ProbeDialog> dialog;
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *open) {
        dialog = open;
        bench.writeCores(2);
        // A user can't reach the banner; a host may answer it.
        shown.view->onBannerReload();
    });

    // The page goes, and its dialog with it.
    QMetaObject::invokeMethod(tree, "itemDoubleClicked",
                              Q_ARG(QTreeWidgetItem *, tree->topLevelItem(0)), Q_ARG(int, 0));

    QVERIFY(!dialog);
    QCOMPARE(coreLines(shown.view), QStringList({"molk_0", "molk_1"}));
    QVERIFY(!shown.view->isModified());
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
    ViewBench bench;
    const QString file = bench.path("a.molk");
    const QList<MolkCore *> cores = {coreWatching(0, "top/clk")};
    SignalItem item;
    item.name = "top/rst";
    cores.first()->getProbeOut(0)->setSignalNet({item});
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);
    const ShownView shown(bench, file);
    QVERIFY(shown.view);
    QVERIFY(QTest::qWaitForWindowActive(shown.page));
    auto *values = child<QTreeWidget>(shown.view, "treeValue");
    auto *line = qobject_cast<QLineEdit *>(values->itemWidget(values->topLevelItem(0), 0));
    QVERIFY(line);
    line->setFocus();
    line->setCursorPosition(2);
    QTest::keyClick(line, Qt::Key(key));
    QVERIFY(shown.view->isModified());
    const QPointer<QWidget> guard = line;
    // The page loses the focus when it is taken out, which commits the value.
    ModalDriver driver;
    if (tooWide)
        driver.expectDialog<QMessageBox>(
            [](QMessageBox *box) { box->button(QMessageBox::Ok)->click(); });

    shown.view->onBannerReload();

    QTRY_VERIFY(!guard);
    QCOMPARE(coreLines(shown.view), QStringList("molk_0"));
}

void tst_MolkViewReload::bannerStaysInItsPlace()
{
    ViewBench bench;
    const ShownView shown(bench, bench.writeCores(1));
    QVERIFY(shown.view);

    const ReloadBanner *banner = raiseBanner(shown);

    auto *place = child<QWidget>(shown.view, "widget_3");
    QCOMPARE(banner->parentWidget(), place);
    QCOMPARE(place->layout()->indexOf(const_cast<ReloadBanner *>(banner)), 0);
    QVERIFY(place->isVisible());
}

MOLK_TEST_MAIN(tst_MolkViewReload)
#include "tst_molkviewreload.moc"
