// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "molkoptionwidget.h"
#include "saving.h"
#include "testwidgetsmain.h"
#include "viewtest.h"

#include <QCheckBox>
#include <QDir>
#include <QFileSystemWatcher>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

using namespace MOLK;

class tst_MolkViewSave : public ViewTest
{
    Q_OBJECT

private slots:
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
    void viewMayGoWhileItReportsFaults();
};

void tst_MolkViewSave::firstEditNotifiesOnceAndThenChangesTheTitles()
{
    QVERIFY(openCores());
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

void tst_MolkViewSave::editOfAPageModifiesTheView()
{
    QVERIFY(openCores());

    child<QPushButton>(view, "btnProbeInAdd")->click();

    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
}

void tst_MolkViewSave::setModifiedAlwaysNotifiesAndKeepsTheTitles()
{
    QVERIFY(openCores());
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

void tst_MolkViewSave::saveWritesAndClearsTheStarAfterNotifying()
{
    QVERIFY(openCores());
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

void tst_MolkViewSave::saveOfACleanViewNotifiesNobody()
{
    QVERIFY(openCores());
    QSignalSpy status(view.get(), SIGNAL(modificationStatusChanged(bool)));

    QVERIFY(view->save());

    QCOMPARE(status.count(), 0);
    QCOMPARE(shortTitle(view.get()), QString("a.molk"));
}

void tst_MolkViewSave::saveStoresThePagesAndTheTopModule()
{
    QVERIFY(openCores(2));
    const MolkCore *second = document()->cores.at(1);
    // A name from another design gives way, too.
    document()->cores.at(0)->setModuleName("old");
    child<QLineEdit>(document()->optionWidgets.at(1), "lineEditUserClock")->setText("top/clk");
    child<QCheckBox>(document()->optionWidgets.at(1), "checkUserClock")->click();
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

void tst_MolkViewSave::saveAgainWritesTheSameBytes()
{
    QVERIFY(openCores(2));

    QVERIFY(view->save());
    const QByteArray first = ViewBench::read(file);
    QVERIFY(view->save());

    QCOMPARE(ViewBench::read(file), first);
}

void tst_MolkViewSave::saveIsRefusedForSynplify()
{
    QVERIFY(openCores());
    const QByteArray before = ViewBench::read(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    child<QLineEdit>(view, "lineEditUserClock")->setText("top/clk");
    bench->host.design().setOptionValue("Synthesize_tool", "Synplify");
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), view.get());
        QCOMPARE(box->windowTitle(), QString("Error"));
        QCOMPARE(box->text(),
                 QString("For RTL Design, MOLK is only available for OndrelSynthesis. Please "
                         "change Synthesis Tool to OndrelSynthesis in Configurations."));
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });

    QVERIFY(!view->save());

    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
    QCOMPARE(ViewBench::read(file), before);
    // The pages weren't even stored.
    QCOMPARE(document()->cores.first()->getUserClockName(), QString());
}

void tst_MolkViewSave::saveAllowsAnyOtherTool_data()
{
    QTest::addColumn<QVariant>("tool");
    QTest::newRow("not-set") << QVariant();
    QTest::newRow("empty") << QVariant(QString());
    QTest::newRow("own") << QVariant("OndrelSynthesis");
    QTest::newRow("other-case") << QVariant("synplify");
    QTest::newRow("longer") << QVariant("Synplify Pro");
}

void tst_MolkViewSave::saveAllowsAnyOtherTool()
{
    QFETCH(QVariant, tool);
    QVERIFY(openCores());
    bench->host.design().setOptionValue("Synthesize_tool", tool);

    QVERIFY(view->save());
}

void tst_MolkViewSave::faultsForbidTheSaveAndStayInTheModel()
{
    QVERIFY(openCores());
    const QByteArray before = ViewBench::read(file);
    child<QCheckBox>(view, "checkUserClock")->click();
    child<QLineEdit>(view, "lineEditUserClock")->setText("top/none");
    ModalDriver driver;
    expectFaults(driver, view.get(),
                 "Molk 0: The output probe synchronizes with user clock does not exist");

    QVERIFY(!view->save());

    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
    QCOMPARE(ViewBench::read(file), before);
    QCOMPARE(document()->watcher->files(), QStringList(file));
    QCOMPARE(document()->cores.first()->getUserClockName(), QString("top/none"));
    QVERIFY(document()->cores.first()->useUserClock);
}

void tst_MolkViewSave::validationNeedsNoReport()
{
    QVERIFY(openCores(2));
    auto *opened = document();
    QString report = "old";
    QVERIFY(opened->validate(nullptr));
    QVERIFY(opened->validate(&report));
    QCOMPARE(report, QString());

    opened->cores.at(0)->getProbeIn(0)->setSignalNet({});
    opened->cores.at(1)->useUserClock = true;
    QVERIFY(!opened->validate(nullptr));
    QVERIFY(!opened->validate(&report));
    QCOMPARE(report,
             QString("Molk 0: At least one Probe In port or Probe Out port should be enabled\n"
                     "Molk 1: No synchronization clock specified"));
    QVERIFY(!view->isModified());
}

void tst_MolkViewSave::failedWriteKeepsFileStarAndWatch()
{
    QVERIFY(openFile(bench->write(unwritableName(), ViewBench::read(bench->writeCores(1)))));
    const QByteArray before = ViewBench::read(file);
    view->onModified();
    QSignalSpy status(view.get(), SIGNAL(modificationStatusChanged(bool)));
    ModalDriver driver;
    expectFailedWrite(driver, file);

    QVERIFY(!view->save());

    QVERIFY(view->isModified());
    QCOMPARE(status.count(), 0);
    QCOMPARE(view->windowTitle(), unwritableName() + " *");
    QCOMPARE(ViewBench::read(file), before);
    QCOMPARE(document()->watcher->files(), QStringList(file));
    QCOMPARE(document()->cores.first()->getModuleName(), QString("top"));
}

void tst_MolkViewSave::vanishedDirectoryIsReported()
{
    QVERIFY(QDir(bench->dir.path()).mkdir("sub"));
    QVERIFY(openFile(bench->writeCores(1, "sub/a.molk")));
    view->onModified();
    QVERIFY(QDir(bench->path("sub")).removeRecursively());
    ModalDriver driver;
    expectFailedWrite(driver, file);

    QVERIFY(!view->save());

    QVERIFY(view->isModified());
}

void tst_MolkViewSave::ownSaveIsNoOutsideChange()
{
    QVERIFY(openCores());
    QSignalSpy changes(document()->watcher, SIGNAL(fileChanged(QString)));

    QVERIFY(view->save());
    QCoreApplication::processEvents();
    QVERIFY(!document()->reloadPending);

    // A change from outside that comes later is the first that is seen.
    QFile outside(file);
    QVERIFY(outside.open(QIODevice::Append));
    QVERIFY(outside.write("\n") == 1);
    outside.close();
    QVERIFY(changes.wait());
    QCOMPARE(changes.count(), 1);
}

void tst_MolkViewSave::markupInTheFileNameIsShownAsItIs()
{
    QVERIFY(openFile(bench->writeCores(1, "<b>x.molk")));
    view->onModified();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->textFormat(), Qt::PlainText);
        QVERIFY(box->text().contains("<b>x.molk"));
        box->button(QMessageBox::Discard)->click();
    });

    QVERIFY(view->close());
}

void tst_MolkViewSave::viewMayGoWhileItReportsFaults()
{
    QVERIFY(openFile(bench->writeSkeleton()));
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });

    QVERIFY(!view->save());

    QVERIFY(!view);
}

MOLK_TEST_MAIN(tst_MolkViewSave)
#include "tst_molkviewsave.moc"
