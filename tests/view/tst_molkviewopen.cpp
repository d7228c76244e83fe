// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "viewtest.h"

#include <QDockWidget>
#include <QFileSystemWatcher>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTreeWidget>

using namespace MOLK;

class tst_MolkViewOpen : public ViewTest
{
    Q_OBJECT

private slots:
    void skeletonOpensWithOneCoreAndIsModified();
    void fileWithCoresOpensClean();
    void missingFileIsRefused();
    void refusalNamesTheFileAsItWasGiven();
    void unreadableFileIsRefused_data();
    void unreadableFileIsRefused();
    void refusalNeedsNoErrorString();
    void refusedNetlistLeavesTheErrorEmpty();
    void numbersOfTheFileGiveWayToPositions();
    void fileIsKeptAsGivenAndWatched();
    void openLogsItself();
    void deviceIsOnlyKept();
};

void tst_MolkViewOpen::skeletonOpensWithOneCoreAndIsModified()
{
    QVERIFY(openFile(bench->writeSkeleton()));

    QCOMPARE(document()->cores.size(), 1);
    QCOMPARE(document()->cores.first()->id, 0);
    QCOMPARE(treeLines(child<QTreeWidget>(view, "treeWidget")->model()), QStringList("molk_0"));
    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk"));
    QCOMPARE(shortTitle(view.get()), QString("a.molk *"));
}

void tst_MolkViewOpen::fileWithCoresOpensClean()
{
    QVERIFY(openCores(3));

    QCOMPARE(treeLines(child<QTreeWidget>(view, "treeWidget")->model()),
             QStringList({"molk_0", "molk_1", "molk_2"}));
    QCOMPARE(child<QStackedWidget>(view, "stackedWidget")->count(), 3);
    QCOMPARE(child<QStackedWidget>(view, "stackedWidget")->currentIndex(), 0);
    QCOMPARE(child<QDockWidget>(view, "dockWidget_2")->windowTitle(), QString("molk_0"));
    QVERIFY(!view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk"));
    QCOMPARE(shortTitle(view.get()), QString());
    QVERIFY(document()->netlist);
}

void tst_MolkViewOpen::missingFileIsRefused()
{
    newView();
    file = bench->path("missing.molk");
    QString error;

    QVERIFY(!view->open(file, QString(), &error));

    QCOMPARE(error, file + " open file failed.");
    QCOMPARE(view->file(), file);
    QCOMPARE(document()->watcher->files(), QStringList());
    QCOMPARE(bench->host.callsOf({"catchRtlModules"}), QStringList());
}

void tst_MolkViewOpen::refusalNamesTheFileAsItWasGiven()
{
    newView();
    QString error;

    QVERIFY(!view->open("./none/../missing.molk", QString(), &error));

    QCOMPARE(error, QString("./none/../missing.molk open file failed."));
}

void tst_MolkViewOpen::unreadableFileIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no-xml") << QByteArray("module top;");
    QTest::newRow("other-root") << QByteArray("<?xml version=\"1.0\"?>\n<CONFIG/>\n");
    QTest::newRow("cut-off") << QByteArray("<?xml version=\"1.0\"?>\n<MOLK_CONFIG>\n<Version>1.0");
}

void tst_MolkViewOpen::unreadableFileIsRefused()
{
    QFETCH(QByteArray, content);
    newView();
    file = bench->write("bad.molk", content);
    QString error;

    QVERIFY(!view->open(file, QString(), &error));

    QCOMPARE(error, file + " open file failed.");
    QVERIFY(document()->cores.isEmpty());
    // The watch begins before the file is looked at.
    QCOMPARE(document()->watcher->files(), QStringList(file));
}

void tst_MolkViewOpen::refusalNeedsNoErrorString()
{
    newView();

    QVERIFY(!view->open(bench->path("missing.molk"), QString(), nullptr));
}

void tst_MolkViewOpen::refusedNetlistLeavesTheErrorEmpty()
{
    bench->host.design().setSourceFiles({});
    newView();
    QString error;
    ModalDriver driver;
    driver.expectMessage("Error", "Design files are not exist.", QMessageBox::Ok);

    QVERIFY(!view->open(bench->writeCores(1), QString(), &error));

    QCOMPARE(error, QString());
}

void tst_MolkViewOpen::numbersOfTheFileGiveWayToPositions()
{
    QList<MolkCore *> cores = {coreWatching(5, "top/clk"), coreWatching(5, "top/clk")};
    cores[0]->addProbeIn(9);
    cores[1]->addProbeOut(0);
    file = bench->path("odd.molk");
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);

    QVERIFY(openFile(file));

    const QList<MolkCore *> opened = document()->cores;
    QCOMPARE(opened.at(0)->id, 0);
    QCOMPARE(opened.at(1)->id, 1);
    QCOMPARE(opened.at(0)->getProbeIn(1)->number, 1);
    QCOMPARE(opened.at(1)->getProbeOut(1)->number, 1);
    QCOMPARE(treeLines(child<QTreeWidget>(view, "treeWidget")->model()),
             QStringList({"molk_0", "molk_1"}));
    QVERIFY(!view->isModified());
}

void tst_MolkViewOpen::fileIsKeptAsGivenAndWatched()
{
    bench->writeCores(1);
    const QString given = bench->dir.path() + "/./a.molk";

    QVERIFY(openFile(given));

    QCOMPARE(view->file(), given);
    QCOMPARE(document()->watcher->files(), QStringList(given));
    QCOMPARE(view->windowTitle(), QString("a.molk"));
}

void tst_MolkViewOpen::openLogsItself()
{
    QTest::ignoreMessage(QtDebugMsg, " This is open file to Molk");

    QVERIFY(bench->openView(bench->writeCores(1)));
}

void tst_MolkViewOpen::deviceIsOnlyKept()
{
    QVERIFY(openCores());
    QSignalSpy status(view.get(), SIGNAL(modificationStatusChanged(bool)));

    view->setDevice("OD-500");

    QCOMPARE(view->device(), QString("OD-500"));
    QCOMPARE(status.count(), 0);
}

MOLK_TEST_MAIN(tst_MolkViewOpen)
#include "tst_molkviewopen.moc"
