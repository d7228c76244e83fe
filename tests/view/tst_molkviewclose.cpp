// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "saving.h"
#include "signalitems.h"
#include "testwidgetsmain.h"
#include "viewtest.h"

#include <QCheckBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>

using namespace MOLK;

class tst_MolkViewClose : public ViewTest
{
    Q_OBJECT

private slots:
    void cleanViewClosesWithoutQuestion();
    void closeWithOkSaves();
    void closeWithDiscardKeepsTheFile();
    void closeIsRefusedBy_data();
    void closeIsRefusedBy();
    void closeWithFaultsIsRefused();
    void closeSavesForSynplifyToo();
    void closeAfterAFailedWriteIsRefused();
    void viewMayGoWhileItAsksAboutClosing();
    void viewMayGoWhileItReportsAFailedWrite();
    void viewMayGoWithTheFocusInAValue();
};

void tst_MolkViewClose::cleanViewClosesWithoutQuestion()
{
    QVERIFY(openCores());
    ModalDriver driver;

    QVERIFY(view->close());
}

void tst_MolkViewClose::closeWithOkSaves()
{
    QVERIFY(openCores());
    const QByteArray before = ViewBench::read(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), view.get());
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

void tst_MolkViewClose::closeWithDiscardKeepsTheFile()
{
    QVERIFY(openCores());
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

void tst_MolkViewClose::closeIsRefusedBy_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("cancel") << false;
    QTest::newRow("escape") << true;
}

void tst_MolkViewClose::closeIsRefusedBy()
{
    QFETCH(bool, byKey);
    QVERIFY(openCores());
    const QByteArray before = ViewBench::read(file);
    view->onModified();
    ModalDriver driver;
    driver.expectCancelled(byKey);

    QVERIFY(!view->close());

    QVERIFY(view->isModified());
    QCOMPARE(ViewBench::read(file), before);
}

void tst_MolkViewClose::closeWithFaultsIsRefused()
{
    QVERIFY(openCores());
    child<QCheckBox>(view, "checkUserClock")->click();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Ok);
    expectFaults(driver, view.get(), "Molk 0: No synchronization clock specified");

    QVERIFY(!view->close());

    QVERIFY(view->isModified());
}

void tst_MolkViewClose::closeSavesForSynplifyToo()
{
    QVERIFY(openCores());
    bench->host.design().setOptionValue("Synthesize_tool", "Synplify");
    const QByteArray before = ViewBench::read(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Ok);

    QVERIFY(view->close());

    QVERIFY(ViewBench::read(file) != before);
}

void tst_MolkViewClose::closeAfterAFailedWriteIsRefused()
{
    QVERIFY(openFile(bench->write(unwritableName(), ViewBench::read(bench->writeCores(1)))));
    view->onModified();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Ok);
    expectFailedWrite(driver, file);

    QVERIFY(!view->close());
}

void tst_MolkViewClose::viewMayGoWhileItAsksAboutClosing()
{
    QVERIFY(openCores());
    view->onModified();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });

    view->close();

    QVERIFY(!view);
}

void tst_MolkViewClose::viewMayGoWhileItReportsAFailedWrite()
{
    QVERIFY(openFile(bench->write(unwritableName(), ViewBench::read(bench->writeCores(1)))));
    view->onModified();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Ok);
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });

    view->close();

    QVERIFY(!view);
}

void tst_MolkViewClose::viewMayGoWithTheFocusInAValue()
{
    QList<MolkCore *> cores = {coreWatching(0, "top/clk")};
    cores.first()->getProbeOut(0)->setSignalNet({net("top/rst")});
    file = bench->path("a.molk");
    QVERIFY(writeMOLKConfigToXml(cores, file));
    qDeleteAll(cores);
    QVERIFY(openFile(file));
    view->show();
    QVERIFY(QTest::qWaitForWindowActive(view.get()));
    auto *values = child<QTreeWidget>(view, "treeValue");
    QWidget *line = values->itemWidget(values->topLevelItem(0), 0);
    line->setFocus();
    QVERIFY(line->hasFocus());

    view.reset();
}

MOLK_TEST_MAIN(tst_MolkViewClose)
#include "tst_molkviewclose.moc"
