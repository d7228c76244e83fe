// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "managertest.h"
#include "modaldriver.h"
#include "saving.h"
#include "testwidgetsmain.h"

#include "dev/devicearg.h"

#include <QDir>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>

using namespace MOLK;

class tst_MolkViewManager : public ManagerTest
{
    Q_OBJECT

private slots:
    void openedFileGetsAView();
    void openedViewIsRegisteredAndThenShown();
    void openedViewIsLogged();
    void viewKeepsTheNameAsItWasGiven();
    void viewKnowsItsDeviceOnlyAfterOpening();
    void openFileIsBroughtForward_data();
    void openFileIsBroughtForward();
    void fileThatDiffersInCaseGetsAViewOfItsOwn();
    void missingFileIsReportedAndLeavesNothing();
    void markupInTheReportIsShownAsItIs();
    void refusedNetlistIsReportedOnce();
    void fileOpenedInsideItsOwnOpeningGetsOneView();

    void closeFindsTheView();
    void closeOfAnUnknownFileDoesNothing();
    void refusedCloseKeepsTheView();
    void viewsComeInOrderOfOpening();
    void viewOfAnotherKindIsNoneOfOurs();
};

void tst_MolkViewManager::openedFileGetsAView()
{
    const QString file = bench->writeCores(1);

    QVERIFY(MolkViewManager::openMolkView(file, DEV::DeviceArg("OD-500")));

    QCOMPARE(manager()->molkViews().size(), 1);
    MolkView *view = manager()->molkViews().first();
    QCOMPARE(view->file(), file);
    QCOMPARE(view->device(), QString("OD-500"));
    QCOMPARE(bench->host.documentArea()->views(), QList<Core::IView *>({view}));
    QCOMPARE(bench->host.documentArea()->activeView(), view);
}

void tst_MolkViewManager::openedViewIsRegisteredAndThenShown()
{
    bench->host.clearCalls();

    QVERIFY(open(bench->writeCores(1)));

    QCOMPARE(bench->host.callsOf({"resultFile", "catchRtlModules", "catchRtlNetsWithProgressDialog",
                                  "registerContext", "showView", "viewActiveted"}),
             QStringList({"resultFile RES.netlist", "catchRtlModules top=top",
                          "catchRtlNetsWithProgressDialog",
                          "registerContext MOLK.MolkViewManager.Context on", "showView a.molk",
                          "viewActiveted a.molk"}));
}

void tst_MolkViewManager::openedViewIsLogged()
{
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^create molk view:  MOLK::MolkView\\("));

    QVERIFY(open(bench->writeCores(1)));
}

void tst_MolkViewManager::viewKeepsTheNameAsItWasGiven()
{
    bench->writeCores(1);
    const QString given = bench->dir.path() + "/./a.molk";

    MolkView *view = open(given);

    QVERIFY(view);
    QCOMPARE(view->file(), given);
}

void tst_MolkViewManager::viewKnowsItsDeviceOnlyAfterOpening()
{
    QString during = "never asked";
    bench->host.extraction().duringNetlist([&] {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (const auto *view = qobject_cast<MolkView *>(window))
                during = view->device();
        }
        QVERIFY(manager()->molkViews().isEmpty());
    });

    MolkView *view = open(bench->writeCores(1));
    QVERIFY(view);

    QCOMPARE(during, QString());
    QCOMPARE(view->device(), QString("OD-500"));
}

void tst_MolkViewManager::openFileIsBroughtForward_data()
{
    QTest::addColumn<QString>("form");
    QTest::newRow("same") << "%1/a.molk";
    QTest::newRow("dot") << "%1/./a.molk";
    QTest::newRow("dot-dot") << "%1/none/../a.molk";
    QTest::newRow("relative") << "a.molk";
}

void tst_MolkViewManager::openFileIsBroughtForward()
{
    QFETCH(QString, form);
    MolkView *first = open(bench->writeCores(1));
    QVERIFY(first);
    QVERIFY(open(bench->writeCores(1, "b.molk")));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(bench->dir.path()));
    const QString again = form.contains("%1") ? form.arg(bench->dir.path()) : form;
    bench->host.clearCalls();

    QVERIFY(MolkViewManager::openMolkView(again, DEV::DeviceArg("OD-900")));

    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(manager()->molkViews().size(), 2);
    QCOMPARE(first->device(), QString("OD-500"));
    QCOMPARE(bench->host.calls(), QStringList({"showView a.molk", "viewActiveted a.molk"}));
}

void tst_MolkViewManager::fileThatDiffersInCaseGetsAViewOfItsOwn()
{
    QVERIFY(open(bench->writeCores(1, "a.molk")));

    QVERIFY(open(bench->writeCores(1, "A.molk")));

    QCOMPARE(manager()->molkViews().size(), 2);
}

void tst_MolkViewManager::missingFileIsReportedAndLeavesNothing()
{
    const QString file = bench->path("missing.molk");
    bench->host.clearCalls();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), bench->host.documentArea());
        QCOMPARE(box->windowTitle(), QString("Error"));
        QCOMPARE(box->text(), file + " open file failed.");
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });

    QVERIFY(MolkViewManager::openMolkView(file, DEV::DeviceArg()));

    QVERIFY(manager()->molkViews().isEmpty());
    QCOMPARE(bench->host.callsOf({"registerContext", "showView"}), QStringList());
    QVERIFY(!saveAction()->isEnabled());
}

void tst_MolkViewManager::markupInTheReportIsShownAsItIs()
{
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([](QMessageBox *box) {
        QCOMPARE(box->textFormat(), Qt::PlainText);
        box->button(QMessageBox::Ok)->click();
    });

    MolkViewManager::openMolkView("<b>missing", DEV::DeviceArg());
}

void tst_MolkViewManager::refusedNetlistIsReportedOnce()
{
    bench->host.design().setSourceFiles({});
    ModalDriver driver;
    driver.expectMessage("Error", "Design files are not exist.", QMessageBox::Ok);

    QVERIFY(MolkViewManager::openMolkView(bench->writeCores(1), DEV::DeviceArg()));

    QVERIFY(manager()->molkViews().isEmpty());
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        QVERIFY(!qobject_cast<MolkView *>(window));
}

void tst_MolkViewManager::fileOpenedInsideItsOwnOpeningGetsOneView()
{
    const QString file = bench->writeCores(1);
    bool inner = false;
    bench->host.extraction().duringNetlist(
        [&] { inner = MolkViewManager::openMolkView(file, DEV::DeviceArg()); });

    QVERIFY(open(file));

    QVERIFY(inner);
    QCOMPARE(manager()->molkViews().size(), 1);
    // And it isn't taken for being opened for ever.
    bench->host.documentArea()->dropAllViews();
    QVERIFY(open(file));
}

void tst_MolkViewManager::closeFindsTheView()
{
    const QString file = bench->writeCores(1);
    QPointer<MolkView> view = open(file);
    QVERIFY(view);
    bench->host.clearCalls();

    QVERIFY(MolkViewManager::closeMolkView(bench->dir.path() + "/x/../a.molk"));

    QCOMPARE(bench->host.callsOf({"closeView", "viewClosed"}),
             QStringList({"closeView a.molk", "viewClosed a.molk"}));
    QVERIFY(manager()->molkViews().isEmpty());
    QTRY_VERIFY(!view);
}

void tst_MolkViewManager::closeOfAnUnknownFileDoesNothing()
{
    QVERIFY(open(bench->writeCores(1)));
    bench->host.clearCalls();

    QVERIFY(!MolkViewManager::closeMolkView(bench->path("b.molk")));
    QVERIFY(!MolkViewManager::closeMolkView(bench->path("A.molk")));

    QCOMPARE(bench->host.calls(), QStringList());
    QCOMPARE(manager()->molkViews().size(), 1);
}

void tst_MolkViewManager::refusedCloseKeepsTheView()
{
    const QString file = bench->writeCores(1);
    MolkView *view = open(file);
    QVERIFY(view);
    view->onModified();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Cancel);

    QVERIFY(MolkViewManager::closeMolkView(file));

    QCOMPARE(manager()->molkViews(), QList<MolkView *>({view}));
}

void tst_MolkViewManager::viewsComeInOrderOfOpening()
{
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    MolkView *a = open(bench->writeCores(1, "a.molk"));
    MolkViewManager::openMolkView(bench->path("b.molk"), DEV::DeviceArg());

    QList<MolkView *> views = manager()->molkViews();
    QCOMPARE(views, QList<MolkView *>({b, a}));
    // The list is a copy.
    views.clear();
    QCOMPARE(manager()->molkViews().size(), 2);
}

void tst_MolkViewManager::viewOfAnotherKindIsNoneOfOurs()
{
    MolkView *view = open(bench->writeCores(1));
    auto *other = new OtherView;
    Core::ViewManager::showView(other);
    Core::ViewManager::closeView(other);

    QCOMPARE(manager()->molkViews(), QList<MolkView *>({view}));
}

MOLK_TEST_MAIN(tst_MolkViewManager)
#include "tst_molkviewmanager.moc"
