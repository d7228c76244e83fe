// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "molkoptionwidget.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "viewbench.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTreeWidget>

using namespace MOLK;

class tst_MolkView : public QObject
{
    Q_OBJECT

private slots:
    void formHasItsObjects();
    void formHasItsProperties();
    void changedBannerHasItsProperties();
    void newViewIsEmptyAndClean();
    void newViewHasItsActionsAndWatchesNothing();
    void answersForItsTypes();
    void subscribesWhenMadeAndUnsubscribesWhenGone();
    void okHidesTheChangedBanner();
    void narrowViewCutsOffNoCore();

    void skeletonOpensWithOneCoreAndIsModified();
    void fileWithCoresOpensClean();
    void missingFileIsRefused();
    void unreadableFileIsRefused_data();
    void unreadableFileIsRefused();
    void refusalNeedsNoErrorString();
    void refusedNetlistLeavesTheErrorEmpty();
    void numbersOfTheFileGiveWayToPositions();
    void fileIsKeptAsGivenAndWatched();
    void openLogsItself();
    void deviceIsOnlyKept();

    void firstEditNotifiesOnceAndThenChangesTheTitles();
    void editOfAPageModifiesTheView();
    void setModifiedAlwaysNotifiesAndKeepsTheTitles();

    void saveWritesAndClearsTheStarAfterNotifying();
    void saveOfACleanViewNotifiesNobody();
    void saveStoresThePagesAndTheTopModule();
    void saveAgainWritesTheSameBytes();
    void saveIsRefusedForSynplify();
    void saveAllowsAnyOtherTool_data();
    void saveAllowsAnyOtherTool();
    void faultsForbidTheSaveAndStayInTheModel();
    void validationNeedsNoReport();
    void failedWriteKeepsFileStarAndWatch();
    void vanishedDirectoryIsReported();
    void ownSaveIsNoOutsideChange();
    void markupInTheFileNameIsShownAsItIs();

    void cleanViewClosesWithoutQuestion();
    void closeWithOkSaves();
    void closeWithDiscardKeepsTheFile();
    void closeIsRefusedBy_data();
    void closeIsRefusedBy();
    void closeWithFaultsIsRefused();
    void closeSavesForSynplifyToo();
    void closeAfterAFailedWriteIsRefused();

    void viewMayGoWhileItAsksAboutClosing();
    void viewMayGoWhileItReportsFaults();
    void viewMayGoWhileItReportsAFailedWrite();
    void viewMayGoWithTheFocusInAValue();
};

// The named objects below `object`, one line each, without those that Qt's own widgets make.
static void appendObjects(const QObject *object, const QString &indent, QStringList &lines)
{
    for (const QObject *child : object->children()) {
        const QString name = child->objectName();
        if (name.isEmpty() || name.startsWith("qt_"))
            continue;
        lines.append(indent + QLatin1String(child->metaObject()->className()) + " " + name);
        appendObjects(child, indent + "  ", lines);
    }
}

void tst_MolkView::formHasItsObjects()
{
    ViewBench bench;
    MolkView view;

    QStringList lines;
    appendObjects(&view, QString(), lines);

    const QStringList wanted = {
        "QVBoxLayout verticalLayout_3",
        "QWidget widget_3",
        "QWidget widget_2",
        "  QHBoxLayout horizontalLayout",
        "  QLabel warningIcon",
        "  QLabel warningText",
        "  QPushButton okBtn",
        "QWidget widget",
        "  QHBoxLayout horizontalLayout",
        "  QDockWidget dockWidget",
        "    QWidget dockWidgetContents",
        "      QVBoxLayout verticalLayout",
        "      QTreeWidget treeWidget",
        "  QDockWidget dockWidget_2",
        "    QWidget dockWidgetContents_2",
        "      QVBoxLayout verticalLayout_2",
        "      QStackedWidget stackedWidget",
    };
    QCOMPARE(lines, wanted);
}

void tst_MolkView::formHasItsProperties()
{
    ViewBench bench;
    MolkView view;

    QCOMPARE(view.objectName(), QString("MOLK__MolkView"));
    QVERIFY(view.isEnabled());
    QCOMPARE(view.windowTitle(), QString());
    QCOMPARE(view.layout()->spacing(), 0);
    QCOMPARE(view.layout()->indexOf(child<QWidget>(&view, "widget_3")), 0);
    QCOMPARE(view.layout()->indexOf(child<QWidget>(&view, "widget_2")), 1);
    auto *panes = view.findChild<QWidget *>("widget", Qt::FindDirectChildrenOnly);
    QCOMPARE(view.layout()->indexOf(panes), 2);

    auto *paneLayout = qobject_cast<QHBoxLayout *>(panes->layout());
    QVERIFY(paneLayout);
    QCOMPARE(paneLayout->spacing(), 0);
    QCOMPARE(paneLayout->contentsMargins(), QMargins());
    QCOMPARE(paneLayout->stretch(0), 1);
    QCOMPARE(paneLayout->stretch(1), 7);

    const auto *tree = child<QTreeWidget>(&view, "treeWidget");
    QVERIFY(tree->isHeaderHidden());
    QCOMPARE(tree->headerItem()->text(0), QString("1"));
    QCOMPARE(tree->contextMenuPolicy(), Qt::CustomContextMenu);
    QCOMPARE(tree->selectionMode(), QAbstractItemView::SingleSelection);
    for (const char *name : {"dockWidget", "dockWidget_2"}) {
        const auto *dock = child<QDockWidget>(&view, QLatin1String(name));
        QCOMPARE(dock->features(), QDockWidget::NoDockWidgetFeatures);
        QCOMPARE(dock->widget()->layout()->spacing(), 0);
        QCOMPARE(dock->widget()->layout()->contentsMargins(), QMargins());
    }
    QCOMPARE(child<QDockWidget>(&view, "dockWidget")->windowTitle(), QString("MOLK Core"));
    QCOMPARE(child<QDockWidget>(&view, "dockWidget_2")->windowTitle(), QString());

    const auto *banners = child<QWidget>(&view, "widget_3");
    QVERIFY(banners->isHidden());
    auto *bannerLayout = qobject_cast<QHBoxLayout *>(banners->layout());
    QVERIFY(bannerLayout);
    QCOMPARE(bannerLayout->spacing(), 0);
    QCOMPARE(bannerLayout->contentsMargins(), QMargins());
}

void tst_MolkView::changedBannerHasItsProperties()
{
    ViewBench bench;
    MolkView view;

    const auto *banner = child<QWidget>(&view, "widget_2");
    QVERIFY(banner->isHidden());
    QCOMPARE(banner->windowTitle(), QString("Form"));
    QCOMPARE(banner->layout()->contentsMargins(), QMargins(10, 0, 0, 0));
    QCOMPARE(child<QLabel>(banner, "warningIcon")->text(), QString());
    QCOMPARE(child<QLabel>(banner, "warningText")->text(),
             QString("Netlist File has been changed."));
    QCOMPARE(child<QPushButton>(banner, "okBtn")->text(), QString("OK"));
    QCOMPARE(child<QPushButton>(banner, "okBtn")->maximumSize(), QSize(32, QWIDGETSIZE_MAX));
    QLayoutItem *last = banner->layout()->itemAt(banner->layout()->count() - 1);
    QVERIFY(last->spacerItem());
    QCOMPARE(last->sizeHint(), QSize(120, 20));
    QVERIFY(last->expandingDirections() == Qt::Horizontal);
}

void tst_MolkView::newViewIsEmptyAndClean()
{
    ViewBench bench;
    MolkView view;

    QCOMPARE(view.size(), QSize(672, 471));
    QCOMPARE(view.file(), QString());
    QCOMPARE(view.device(), QString());
    QVERIFY(!view.isModified());
    QCOMPARE(shortTitle(&view), QString());
    QCOMPARE(child<QTreeWidget>(&view, "treeWidget")->topLevelItemCount(), 0);
    QCOMPARE(child<QStackedWidget>(&view, "stackedWidget")->count(), 0);
}

void tst_MolkView::newViewHasItsActionsAndWatchesNothing()
{
    ViewBench bench;
    MolkView view;
    const auto *document = documentOf(&view);

    QCOMPARE(document->q, &view);
    QVERIFY(document->parent() == nullptr);
    QVERIFY(document->cores.isEmpty());
    QVERIFY(document->optionWidgets.isEmpty());
    QVERIFY(document->netlist == nullptr);
    QVERIFY(!document->reloadPending);
    QCOMPARE(document->addAction->text(), QString("Add"));
    QCOMPARE(document->removeAction->text(), QString("Remove"));
    QCOMPARE(document->watcher->files(), QStringList());
    QVERIFY(document->modificationChanged != nullptr);
}

void tst_MolkView::answersForItsTypes()
{
    ViewBench bench;
    MolkView view;

    QCOMPARE(view.qt_metacast("MOLK::MolkView"), static_cast<void *>(&view));
    QCOMPARE(view.qt_metacast("QUtil::IEventHandler"),
             static_cast<void *>(static_cast<QUtil::IEventHandler *>(&view)));
    QCOMPARE(view.qt_metacast("Core::IView"), static_cast<void *>(&view));
    QVERIFY(view.qt_metacast("MOLK::MolkOptionWidget") == nullptr);
    QVERIFY(view.qt_metacast(nullptr) == nullptr);
}

void tst_MolkView::subscribesWhenMadeAndUnsubscribesWhenGone()
{
    ViewBench bench;
    const QStringList events = {"TE.File.Add",         "TE.File.Remove",   "TE.File.Change.Enable",
                                "TE.File.Change.Type", "TE.File.Modified", "TE.Option.Change"};
    auto view = std::make_unique<MolkView>();
    QStringList wanted = events;
    QCOMPARE(bench.host.calls(), wanted.replaceInStrings("TE.", "subscribe TE."));

    bench.host.clearCalls();
    view.reset();
    wanted = events;
    QCOMPARE(bench.host.calls(), wanted.replaceInStrings("TE.", "unsubscribe TE."));
}

void tst_MolkView::okHidesTheChangedBanner()
{
    ViewBench bench;
    MolkView view;
    auto *banner = child<QWidget>(&view, "widget_2");
    view.show();
    banner->show();
    QVERIFY(banner->isVisible());

    QTest::mouseClick(child<QPushButton>(banner, "okBtn"), Qt::LeftButton);

    QVERIFY(banner->isHidden());
}

void tst_MolkView::narrowViewCutsOffNoCore()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(16));
    QVERIFY(view);
    view->resize(view->minimumSizeHint().width(), 600);
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.get()));

    const auto *tree = child<QTreeWidget>(view, "treeWidget");
    QCOMPARE(tree->horizontalScrollBar()->maximum(), 0);
    const auto *last = tree->topLevelItem(15);
    const int textWidth = tree->fontMetrics().horizontalAdvance(last->text(0));
    QVERIFY(tree->visualItemRect(last).width() >= textWidth);
    const auto *dock = child<QDockWidget>(view, "dockWidget");
    QVERIFY(dock->width() >= dock->fontMetrics().horizontalAdvance(dock->windowTitle()));
}

void tst_MolkView::skeletonOpensWithOneCoreAndIsModified()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeSkeleton());
    QVERIFY(view);

    QCOMPARE(documentOf(view)->cores.size(), 1);
    QCOMPARE(documentOf(view)->cores.first()->id, 0);
    QCOMPARE(treeLines(child<QTreeWidget>(view, "treeWidget")->model()), QStringList("molk_0"));
    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk"));
    QCOMPARE(shortTitle(view.get()), QString("a.molk *"));
}

void tst_MolkView::fileWithCoresOpensClean()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(3));
    QVERIFY(view);

    QCOMPARE(treeLines(child<QTreeWidget>(view, "treeWidget")->model()),
             QStringList({"molk_0", "molk_1", "molk_2"}));
    QCOMPARE(child<QStackedWidget>(view, "stackedWidget")->count(), 3);
    QCOMPARE(child<QStackedWidget>(view, "stackedWidget")->currentIndex(), 0);
    QCOMPARE(child<QDockWidget>(view, "dockWidget_2")->windowTitle(), QString("molk_0"));
    QVERIFY(!view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk"));
    QCOMPARE(shortTitle(view.get()), QString());
    QVERIFY(documentOf(view)->netlist);
}

void tst_MolkView::missingFileIsRefused()
{
    ViewBench bench;
    MolkView view;
    const QString file = bench.path("missing.molk");
    QString error;

    QVERIFY(!view.open(file, QString(), &error));

    QCOMPARE(error, file + " open file failed.");
    QCOMPARE(view.file(), file);
    QCOMPARE(documentOf(&view)->watcher->files(), QStringList());
    QCOMPARE(bench.host.callsOf({"catchRtlModules"}), QStringList());
}

void tst_MolkView::unreadableFileIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no-xml") << QByteArray("module top;");
    QTest::newRow("other-root") << QByteArray("<?xml version=\"1.0\"?>\n<CONFIG/>\n");
    QTest::newRow("cut-off") << QByteArray("<?xml version=\"1.0\"?>\n<MOLK_CONFIG>\n<Version>1.0");
}

void tst_MolkView::unreadableFileIsRefused()
{
    QFETCH(QByteArray, content);
    ViewBench bench;
    MolkView view;
    const QString file = bench.write("bad.molk", content);
    QString error;

    QVERIFY(!view.open(file, QString(), &error));

    QCOMPARE(error, file + " open file failed.");
    QVERIFY(documentOf(&view)->cores.isEmpty());
}

void tst_MolkView::refusalNeedsNoErrorString()
{
    ViewBench bench;
    MolkView view;

    QVERIFY(!view.open(bench.path("missing.molk"), QString(), nullptr));
}

void tst_MolkView::refusedNetlistLeavesTheErrorEmpty()
{
    ViewBench bench;
    bench.host.design().setSourceFiles({});
    MolkView view;
    QString error;
    ModalDriver driver;
    driver.expectMessage("Error", "Design files are not exist.", QMessageBox::Ok);

    QVERIFY(!view.open(bench.writeCores(1), QString(), &error));

    QCOMPARE(error, QString());
}

void tst_MolkView::numbersOfTheFileGiveWayToPositions()
{
    ViewBench bench;
    QList<MolkCore *> cores = {coreWatching(5, "top/clk"), coreWatching(5, "top/clk")};
    cores[0]->addProbeIn(9);
    cores[1]->addProbeOut(0);
    const QString file = bench.path("odd.molk");
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);

    const auto view = bench.openView(file);
    QVERIFY(view);

    const QList<MolkCore *> opened = documentOf(view)->cores;
    QCOMPARE(opened.at(0)->id, 0);
    QCOMPARE(opened.at(1)->id, 1);
    QCOMPARE(opened.at(0)->getProbeIn(1)->number, 1);
    QCOMPARE(opened.at(1)->getProbeOut(1)->number, 1);
    QCOMPARE(treeLines(child<QTreeWidget>(view, "treeWidget")->model()),
             QStringList({"molk_0", "molk_1"}));
    QVERIFY(!view->isModified());
}

void tst_MolkView::fileIsKeptAsGivenAndWatched()
{
    ViewBench bench;
    bench.writeCores(1);
    const QString given = bench.dir.path() + "/./a.molk";

    const auto view = bench.openView(given);
    QVERIFY(view);

    QCOMPARE(view->file(), given);
    QCOMPARE(documentOf(view)->watcher->files(), QStringList(given));
    QCOMPARE(view->windowTitle(), QString("a.molk"));
}

void tst_MolkView::openLogsItself()
{
    ViewBench bench;
    QTest::ignoreMessage(QtDebugMsg, " This is open file to Molk");

    QVERIFY(bench.openView(bench.writeCores(1)));
}

void tst_MolkView::deviceIsOnlyKept()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1));
    QVERIFY(view);
    QSignalSpy status(view.get(), SIGNAL(modificationStatusChanged(bool)));

    view->setDevice("OD-500");

    QCOMPARE(view->device(), QString("OD-500"));
    QCOMPARE(status.count(), 0);
}

void tst_MolkView::firstEditNotifiesOnceAndThenChangesTheTitles()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1));
    QVERIFY(view);
    QStringList seen;
    connect(view.get(), &MolkView::modificationStatusChanged, this, [&](bool modified) {
        seen.append(QString("%1 %2").arg(modified).arg(view->windowTitle()));
        QCOMPARE(view->isModified(), modified);
    });

    view->onModified();
    view->onModified();

    QCOMPARE(seen, QStringList("1 a.molk"));
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
    QCOMPARE(shortTitle(view.get()), QString("a.molk *"));
}

void tst_MolkView::editOfAPageModifiesTheView()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1));
    QVERIFY(view);

    child<QPushButton>(view, "btnProbeInAdd")->click();

    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
}

void tst_MolkView::setModifiedAlwaysNotifiesAndKeepsTheTitles()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1));
    QVERIFY(view);
    view->onModified();
    QSignalSpy status(view.get(), SIGNAL(modificationStatusChanged(bool)));

    view->setModified(false);
    view->setModified(false);
    view->setModified(true);

    QCOMPARE(status, QList<QVariantList>({{false}, {false}, {true}}));
    QVERIFY(view->isModified());
    view->setModified(false);
    QVERIFY(!view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
    QCOMPARE(shortTitle(view.get()), QString("a.molk *"));
}

void tst_MolkView::saveWritesAndClearsTheStarAfterNotifying()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    QStringList seen;
    connect(view.get(), &MolkView::modificationStatusChanged, this, [&](bool modified) {
        seen.append(QString("%1 %2").arg(modified).arg(view->windowTitle()));
    });
    QTest::ignoreMessage(QtDebugMsg, "save zor");

    QVERIFY(view->save());

    QCOMPARE(seen, QStringList("0 a.molk *"));
    QVERIFY(!view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk"));
    QCOMPARE(shortTitle(view.get()), QString("a.molk"));
    const QList<MolkCore *> written = readMOLKConfigFromXml(file, nullptr, nullptr);
    QCOMPARE(written.size(), 1);
    QCOMPARE(written.first()->getAllProbeIns().size(), 2);
    qDeleteAll(written);
}

void tst_MolkView::saveOfACleanViewNotifiesNobody()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1));
    QVERIFY(view);
    QSignalSpy status(view.get(), SIGNAL(modificationStatusChanged(bool)));

    QVERIFY(view->save());

    QCOMPARE(status.count(), 0);
    QCOMPARE(shortTitle(view.get()), QString("a.molk"));
}

void tst_MolkView::saveStoresThePagesAndTheTopModule()
{
    ViewBench bench;
    const QString file = bench.writeCores(2);
    const auto view = bench.openView(file);
    QVERIFY(view);
    const MolkCore *second = documentOf(view)->cores.at(1);
    child<QLineEdit>(documentOf(view)->optionWidgets.at(1), "lineEditUserClock")
        ->setText("top/clk");
    child<QCheckBox>(documentOf(view)->optionWidgets.at(1), "checkUserClock")->click();
    QCOMPARE(second->getUserClockName(), QString());

    QVERIFY(view->save());

    QCOMPARE(second->getUserClockName(), QString("top/clk"));
    QVERIFY(second->useUserClock);
    const QList<MolkCore *> written = readMOLKConfigFromXml(file, nullptr, nullptr);
    QCOMPARE(written.size(), 2);
    for (const MolkCore *core : written)
        QCOMPARE(core->getModuleName(), QString("top"));
    QVERIFY(written.at(1)->useUserClock);
    qDeleteAll(written);
}

void tst_MolkView::saveAgainWritesTheSameBytes()
{
    ViewBench bench;
    const QString file = bench.writeCores(2);
    const auto view = bench.openView(file);
    QVERIFY(view);

    QVERIFY(view->save());
    const QByteArray first = ViewBench::read(file);
    QVERIFY(view->save());

    QCOMPARE(ViewBench::read(file), first);
}

void tst_MolkView::saveIsRefusedForSynplify()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    const QByteArray before = ViewBench::read(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    child<QLineEdit>(view, "lineEditUserClock")->setText("top/clk");
    bench.host.design().setOptionValue("Synthesize_tool", "Synplify");
    ModalDriver driver;
    driver.expectMessage(
        "Error",
        "For RTL Design, MOLK is only available for OndrelSynthesis. Please change Synthesis Tool "
        "to OndrelSynthesis in Configurations.",
        QMessageBox::Ok);

    QVERIFY(!view->save());

    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
    QCOMPARE(ViewBench::read(file), before);
    // The pages weren't even stored.
    QCOMPARE(documentOf(view)->cores.first()->getUserClockName(), QString());
}

void tst_MolkView::saveAllowsAnyOtherTool_data()
{
    QTest::addColumn<QVariant>("tool");
    QTest::newRow("not-set") << QVariant();
    QTest::newRow("empty") << QVariant(QString());
    QTest::newRow("own") << QVariant("OndrelSynthesis");
    QTest::newRow("other-case") << QVariant("synplify");
    QTest::newRow("longer") << QVariant("Synplify Pro");
}

void tst_MolkView::saveAllowsAnyOtherTool()
{
    QFETCH(QVariant, tool);
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1));
    QVERIFY(view);
    bench.host.design().setOptionValue("Synthesize_tool", tool);

    QVERIFY(view->save());
}

// What a user sees of a save whose configuration has faults.
static void expectFaults(ModalDriver &driver, const QString &report)
{
    driver.expectDialog<QMessageBox>([report](QMessageBox *box) {
        QCOMPARE(box->windowTitle(), QString("Error"));
        QCOMPARE(box->text(), QString("Your settings contain some errors.             "));
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->detailedText(), report);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        QCOMPARE(box->defaultButton(), qobject_cast<QPushButton *>(box->button(QMessageBox::Ok)));
        QCOMPARE(box->escapeButton(), box->button(QMessageBox::Ok));
        QTest::keyClick(box, Qt::Key_Escape);
    });
}

void tst_MolkView::faultsForbidTheSaveAndStayInTheModel()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    const QByteArray before = ViewBench::read(file);
    child<QCheckBox>(view, "checkUserClock")->click();
    child<QLineEdit>(view, "lineEditUserClock")->setText("top/none");
    ModalDriver driver;
    expectFaults(driver, "Molk 0: The output probe synchronizes with user clock does not exist");

    QVERIFY(!view->save());

    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
    QCOMPARE(ViewBench::read(file), before);
    QCOMPARE(documentOf(view)->watcher->files(), QStringList(file));
    QCOMPARE(documentOf(view)->cores.first()->getUserClockName(), QString("top/none"));
    QVERIFY(documentOf(view)->cores.first()->useUserClock);
}

void tst_MolkView::validationNeedsNoReport()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(2));
    QVERIFY(view);
    auto *document = documentOf(view);
    QString report = "old";
    QVERIFY(document->validate(nullptr));
    QVERIFY(document->validate(&report));
    QCOMPARE(report, QString());

    document->cores.at(0)->getProbeIn(0)->setSignalNet({});
    document->cores.at(1)->useUserClock = true;
    QVERIFY(!document->validate(nullptr));
    QVERIFY(!document->validate(&report));
    QCOMPARE(report,
             QString("Molk 0: At least one Probe In port or Probe Out port should be enabled\n"
                     "Molk 1: No synchronization clock specified"));
    QVERIFY(!view->isModified());
}

// The longest name that a file may have leaves no room for the one that is written in its place, so
// that every write fails while the file stays where it is.
static QString unwritableName()
{
    return QString(250, 'a') + ".molk";
}

void tst_MolkView::failedWriteKeepsFileStarAndWatch()
{
    ViewBench bench;
    const QString file = bench.write(unwritableName(), ViewBench::read(bench.writeCores(1)));
    const auto view = bench.openView(file);
    QVERIFY(view);
    const QByteArray before = ViewBench::read(file);
    view->onModified();
    QSignalSpy status(view.get(), SIGNAL(modificationStatusChanged(bool)));
    ModalDriver driver;
    driver.expectMessage("Error", "Can not save to " + QDir::toNativeSeparators(file),
                         QMessageBox::Ok);

    QVERIFY(!view->save());

    QVERIFY(view->isModified());
    QCOMPARE(status.count(), 0);
    QCOMPARE(view->windowTitle(), unwritableName() + " *");
    QCOMPARE(ViewBench::read(file), before);
    QCOMPARE(documentOf(view)->watcher->files(), QStringList(file));
    QCOMPARE(documentOf(view)->cores.first()->getModuleName(), QString("top"));
}

void tst_MolkView::vanishedDirectoryIsReported()
{
    ViewBench bench;
    QVERIFY(QDir(bench.dir.path()).mkdir("sub"));
    const QString file = bench.writeCores(1, "sub/a.molk");
    const auto view = bench.openView(file);
    QVERIFY(view);
    view->onModified();
    QVERIFY(QDir(bench.path("sub")).removeRecursively());
    ModalDriver driver;
    driver.expectMessage("Error", "Can not save to " + QDir::toNativeSeparators(file),
                         QMessageBox::Ok);

    QVERIFY(!view->save());

    QVERIFY(view->isModified());
}

void tst_MolkView::ownSaveIsNoOutsideChange()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    QSignalSpy changes(documentOf(view)->watcher, SIGNAL(fileChanged(QString)));

    QVERIFY(view->save());
    QCoreApplication::processEvents();
    QVERIFY(!documentOf(view)->reloadPending);

    // A change from outside that comes later is the first that is seen.
    QFile outside(file);
    QVERIFY(outside.open(QIODevice::Append));
    QVERIFY(outside.write("\n") == 1);
    outside.close();
    QVERIFY(changes.wait());
    QCOMPARE(changes.count(), 1);
}

void tst_MolkView::markupInTheFileNameIsShownAsItIs()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1, "<b>x.molk"));
    QVERIFY(view);
    view->onModified();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->textFormat(), Qt::PlainText);
        QVERIFY(box->text().contains("<b>x.molk"));
        box->button(QMessageBox::Discard)->click();
    });

    QVERIFY(view->close());
}

void tst_MolkView::cleanViewClosesWithoutQuestion()
{
    ViewBench bench;
    const auto view = bench.openView(bench.writeCores(1));
    QVERIFY(view);
    ModalDriver driver;

    QVERIFY(view->close());
}

static QString closeQuestion(const QString &file)
{
    return "Save changes to \"" + QDir::toNativeSeparators(file) + "\" ?";
}

void tst_MolkView::closeWithOkSaves()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    const QByteArray before = ViewBench::read(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->windowTitle(), QString("Save"));
        QCOMPARE(box->text(), closeQuestion(file));
        QCOMPARE(box->icon(), QMessageBox::Question);
        QCOMPARE(box->standardButtons(),
                 QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel);
        QCOMPARE(box->defaultButton(), qobject_cast<QPushButton *>(box->button(QMessageBox::Ok)));
        QTest::keyClick(box, Qt::Key_Return);
    });

    QVERIFY(view->close());

    QVERIFY(!view->isModified());
    QVERIFY(ViewBench::read(file) != before);
}

void tst_MolkView::closeWithDiscardKeepsTheFile()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    const QByteArray before = ViewBench::read(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    QSignalSpy status(view.get(), SIGNAL(modificationStatusChanged(bool)));
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Discard);

    QVERIFY(view->close());

    // The view goes away, so nobody is told of anything.
    QVERIFY(view->isModified());
    QCOMPARE(status.count(), 0);
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
    QCOMPARE(ViewBench::read(file), before);
}

void tst_MolkView::closeIsRefusedBy_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("cancel") << false;
    QTest::newRow("escape") << true;
}

void tst_MolkView::closeIsRefusedBy()
{
    QFETCH(bool, byKey);
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    const QByteArray before = ViewBench::read(file);
    view->onModified();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([byKey](QMessageBox *box) {
        if (byKey)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->button(QMessageBox::Cancel)->click();
    });

    QVERIFY(!view->close());

    QVERIFY(view->isModified());
    QCOMPARE(ViewBench::read(file), before);
}

void tst_MolkView::closeWithFaultsIsRefused()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    child<QCheckBox>(view, "checkUserClock")->click();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Ok);
    expectFaults(driver, "Molk 0: No synchronization clock specified");

    QVERIFY(!view->close());

    QVERIFY(view->isModified());
}

void tst_MolkView::closeSavesForSynplifyToo()
{
    ViewBench bench;
    const QString file = bench.writeCores(1);
    const auto view = bench.openView(file);
    QVERIFY(view);
    bench.host.design().setOptionValue("Synthesize_tool", "Synplify");
    const QByteArray before = ViewBench::read(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Ok);

    QVERIFY(view->close());

    QVERIFY(ViewBench::read(file) != before);
}

void tst_MolkView::closeAfterAFailedWriteIsRefused()
{
    ViewBench bench;
    const QString file = bench.write(unwritableName(), ViewBench::read(bench.writeCores(1)));
    const auto view = bench.openView(file);
    QVERIFY(view);
    view->onModified();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Ok);
    driver.expectMessage("Error", "Can not save to " + QDir::toNativeSeparators(file),
                         QMessageBox::Ok);

    QVERIFY(!view->close());
}

void tst_MolkView::viewMayGoWhileItAsksAboutClosing()
{
    ViewBench bench;
    QPointer<MolkView> view = bench.openView(bench.writeCores(1)).release();
    QVERIFY(view);
    view->onModified();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { delete view; });

    view->close();

    QVERIFY(!view);
}

void tst_MolkView::viewMayGoWhileItReportsFaults()
{
    ViewBench bench;
    QPointer<MolkView> view = bench.openView(bench.writeSkeleton()).release();
    QVERIFY(view);
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { delete view; });

    QVERIFY(!view->save());

    QVERIFY(!view);
}

void tst_MolkView::viewMayGoWhileItReportsAFailedWrite()
{
    ViewBench bench;
    const QString file = bench.write(unwritableName(), ViewBench::read(bench.writeCores(1)));
    QPointer<MolkView> view = bench.openView(file).release();
    QVERIFY(view);
    view->onModified();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Ok);
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { delete view; });

    view->close();

    QVERIFY(!view);
}

void tst_MolkView::viewMayGoWithTheFocusInAValue()
{
    ViewBench bench;
    QList<MolkCore *> cores = {coreWatching(0, "top/clk")};
    SignalItem item;
    item.name = "top/rst";
    cores.first()->getProbeOut(0)->setSignalNet({item});
    const QString file = bench.path("a.molk");
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);
    auto view = bench.openView(file);
    QVERIFY(view);
    view->show();
    QVERIFY(QTest::qWaitForWindowActive(view.get()));
    auto *values = child<QTreeWidget>(view, "treeValue");
    QWidget *line = values->itemWidget(values->topLevelItem(0), 0);
    line->setFocus();
    QVERIFY(line->hasFocus());

    view.reset();
}

MOLK_TEST_MAIN(tst_MolkView)
#include "tst_molkview.moc"
