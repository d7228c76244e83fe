// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "resources.h"

#include "initialvalueline.h"
#include "modaldriver.h"
#include "molkcore.h"
#include "molkinserterplugin.h"
#include "molkoptionwidget.h"
#include "molksignalselectdialog.h"
#include "molkviewmanager.h"
#include "probedialog.h"
#include "reloadbanner.h"
#include "singleshots.h"
#include "testwidgetsmain.h"
#include "turnloop.h"
#include "viewbench.h"

#include "dev/devicearg.h"

#include <QAction>
#include <QLoggingCategory>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>

using namespace MOLK;

/// One process opens, edits, saves, reloads and closes over and over, and holds no more at the end
/// than when it had warmed up.
///
/// MOLK_CYCLES in the environment says how often; a thousand is the proof, a few find what is lost
/// in each.
class TestEndurance : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cyclesLeaveNothingBehind();
    void cleanupTestCase();

private:
    void cycle();
    void editPorts();
    void saveAndReload();
    QList<QObject *> lastingObjects() const;

    QTemporaryDir temporary; // Nobody else's files come and go here.
    std::unique_ptr<ViewBench> bench;
    std::unique_ptr<MolkInserterPlugin> plugin;
    QString file;
    QPointer<MolkView> view;
};

static const int warmUp = 20;

static int wantedCycles()
{
    const int cycles = qEnvironmentVariableIntValue("MOLK_CYCLES");
    return cycles > 0 ? cycles : 40;
}

void TestEndurance::initTestCase()
{
    QVERIFY(temporary.isValid());
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    QCOMPARE(QDir::tempPath(), temporary.path());
    // There would be too many of them for the report at the end to be shown.
    QLoggingCategory::setFilterRules("default.debug=false");
    bench = std::make_unique<ViewBench>();
    bench->host.setRecording(false);
    plugin = std::make_unique<MolkInserterPlugin>();
    QVERIFY(plugin->initialize());
    bench->host.documentArea()->resize(900, 600);
    bench->host.documentArea()->show();
    QVERIFY(QTest::qWaitForWindowExposed(bench->host.documentArea()));
}

void TestEndurance::cleanupTestCase()
{
    plugin->shutdown();
    bench.reset();
}

// What stays from one cycle to the next, and so could gather connections.
QList<QObject *> TestEndurance::lastingObjects() const
{
    QList<QObject *> objects = {qApp, Core::ViewManager::instance(), MolkViewManager::instance(),
                                bench->host.documentArea()};
    objects += MolkViewManager::instance()->findChildren<QObject *>();
    objects += bench->host.documentArea()->findChildren<QObject *>();
    return objects;
}

static void addNets(ProbeDialog *dialog)
{
    child<QToolButton>(dialog, "btnAdd")->click();
    dialog->accept();
}

static void pickNets(MolkSignalSelectDialog *search)
{
    child<QPushButton>(search, "pushButtonSearch")->click();
    child<QPushButton>(search, "btnAddAll")->click();
    search->accept();
}

static void doubleClick(QTreeWidget *tree)
{
    const QPoint place = tree->visualItemRect(tree->topLevelItem(0)).center();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

// Ports, nets for both directions, a value, and a core that comes and goes.
void TestEndurance::editPorts()
{
    QWidget *page = documentOf(view)->optionWidgets.first();
    child<QPushButton>(page, "btnProbeInAdd")->click();
    child<QPushButton>(page, "btnProbeOutAdd")->click();
    for (const QString &tree : {QString("treeProbeIn"), QString("treeProbeOut")}) {
        ModalDriver driver;
        driver.expectDialog<ProbeDialog>(addNets);
        driver.expectDialog<MolkSignalSelectDialog>(pickNets);
        doubleClick(child<QTreeWidget>(page, tree));
    }
    auto *values = child<QTreeWidget>(page, "treeValue");
    auto *line = qobject_cast<InitialValueLine *>(values->itemWidget(values->topLevelItem(0), 0));
    // The focus only moves in a window that is active, which none is behind a dialog.
    QApplication::setActiveWindow(bench->host.documentArea());
    line->setFocus();
    line->setCursorPosition(line->displayText().size() - 1);
    QTest::keyClicks(line, "1");
    values->setFocus();
    QVERIFY(line->bitString().endsWith('1'));

    ModalDriver driver;
    driver.expectMessage("Remove MOLk", "Do you want to remove MOLK 1 ?", QMessageBox::Ok);
    documentOf(view)->addCore(1);
    documentOf(view)->removeCore(1);
}

void TestEndurance::saveAndReload()
{
    MolkViewManager::instance()->findChild<QAction *>()->trigger();
    QVERIFY(!view->isModified());

    // The file changes outside.
    bench->writeCores(2);
    QTRY_VERIFY(documentOf(view)->reloadPending);
    fireSingleShots(500);
    child<QPushButton>(view->findChild<ReloadBanner *>(), "btnA")->click();
    QCOMPARE(documentOf(view)->cores.size(), 2);

    // The design changes.
    bench->host.events().send(Standin::Event("TE.Option.Change", {{"option", "TopModule"}}));
    child<QPushButton>(view->findChild<ReloadBanner *>(), "btnA")->click();
    QVERIFY(documentOf(view)->netlist);
}

void TestEndurance::cycle()
{
    file = bench->writeCores(1);
    MolkViewManager::openMolkView(file, DEV::DeviceArg("OD-500"));
    view = MolkViewManager::instance()->molkViews().value(0);
    QVERIFY(view);
    editPorts();
    saveAndReload();
    QVERIFY(MolkViewManager::closeMolkView(file));
    turnLoop();
    QVERIFY(!view);
}

void TestEndurance::cyclesLeaveNothingBehind()
{
    const int cycles = wantedCycles();
    for (int i = 0; i < warmUp && !QTest::currentTestFailed(); ++i)
        cycle();
    const Resources before = resourcesNow();
    const int receivers = receiversOf(lastingObjects());
    const int subscriptions = bench->host.events().subscriptionCount();

    for (int i = 0; i < cycles && !QTest::currentTestFailed(); ++i)
        cycle();
    const Resources after = resourcesNow();
    const qint64 growth = after.allocatedBytes - before.allocatedBytes;
    qInfo("%d cycles: %.1f bytes a cycle, %d files, %d watches, %d widgets, %d temporary files, "
          "%d receivers, %d subscriptions",
          cycles, double(growth) / cycles, after.files, after.watches, after.widgets,
          after.temporaryFiles, receiversOf(lastingObjects()),
          bench->host.events().subscriptionCount());

    QCOMPARE(after.files, before.files);
    QCOMPARE(after.watches, before.watches);
    QCOMPARE(after.widgets, before.widgets);
    QCOMPARE(after.temporaryFiles, before.temporaryFiles);
    QCOMPARE(receiversOf(lastingObjects()), receivers);
    QCOMPARE(bench->host.events().subscriptionCount(), subscriptions);
    // Some caches fill for longer than the warm-up takes, but only once.
    QVERIFY2(growth < 48 * 1024 + 32 * cycles, qPrintable(QString::number(growth)));
}

MOLK_TEST_MAIN(TestEndurance)
#include "tst_endurance.moc"
