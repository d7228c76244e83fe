// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "managertest.h"
#include "modaldriver.h"
#include "saving.h"
#include "testwidgetsmain.h"

#include "dev/devicearg.h"

#include <QPointer>
#include <QPushButton>

using namespace MOLK;

class tst_SaveAction : public ManagerTest
{
    Q_OBJECT

private slots:
    void actionFollowsTheActiveView();
    void actionTextLagsBehindTheTitle();
    void skeletonEnablesTheActionAtOnce();
    void backgroundViewLeavesTheActionAlone();
    void otherViewDisablesTheActionAndKeepsItsText();
    void disabledActionStillSavesTheLastView();
    void triggerSavesAndDisables();
    void triggerOnACleanViewSavesNothing();
    void failedSaveKeepsTheActionEnabled();
    void closedActiveViewDisablesTheAction();
    void closedBackgroundViewKeepsTheAction();
    void viewDestroyedWithoutReportIsForgotten();
    void viewDestroyedAfterItsReportRefreshesNothing();
    void discardedViewIsGone();
};

void tst_SaveAction::actionFollowsTheActiveView()
{
    QVERIFY(open(bench->writeCores(1, "a.molk")));
    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | off"));
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    QCOMPARE(actionState(), QString("&Save \"b.molk\" | Save \"b.molk\" | off"));

    b->onModified();
    QVERIFY(saveAction()->isEnabled());
    MolkViewManager::openMolkView(bench->path("a.molk"), DEV::DeviceArg());
    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | off"));
    MolkViewManager::openMolkView(bench->path("b.molk"), DEV::DeviceArg());
    QCOMPARE(actionState(), QString("&Save \"b.molk *\" | Save \"b.molk *\" | on"));
}

void tst_SaveAction::actionTextLagsBehindTheTitle()
{
    MolkView *view = open(bench->writeCores(1));
    QVERIFY(view);

    view->onModified();
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | on"));

    QVERIFY(view->save());
    QCOMPARE(view->windowTitle(), QString("a.molk"));
    QCOMPARE(actionState(), QString("&Save \"a.molk *\" | Save \"a.molk *\" | off"));

    Core::ViewManager::showView(view);
    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | off"));
}

void tst_SaveAction::skeletonEnablesTheActionAtOnce()
{
    QVERIFY(open(bench->writeSkeleton()));

    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | on"));
}

void tst_SaveAction::backgroundViewLeavesTheActionAlone()
{
    MolkView *a = open(bench->writeCores(1, "a.molk"));
    QVERIFY(open(bench->writeCores(1, "b.molk")));
    const QString before = actionState();

    a->onModified();

    QCOMPARE(actionState(), before);
    Core::ViewManager::showView(a);
    QCOMPARE(actionState(), QString("&Save \"a.molk *\" | Save \"a.molk *\" | on"));
}

void tst_SaveAction::otherViewDisablesTheActionAndKeepsItsText()
{
    MolkView *view = open(bench->writeCores(1));
    view->onModified();

    Core::ViewManager::showView(new OtherView);

    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | off"));
    // The view behind is still the one that the manager means.
    view->setModified(false);
    view->setModified(true);
    QVERIFY(!saveAction()->isEnabled());
    Core::ViewManager::showView(view);
    QVERIFY(saveAction()->isEnabled());
}

void tst_SaveAction::disabledActionStillSavesTheLastView()
{
    const QString file = bench->writeCores(1);
    MolkView *view = open(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    const QByteArray before = ViewBench::read(file);
    Core::ViewManager::showView(new OtherView);

    saveAction()->trigger();

    QVERIFY(!view->isModified());
    QVERIFY(ViewBench::read(file) != before);
    QVERIFY(!saveAction()->isEnabled());
}

void tst_SaveAction::triggerSavesAndDisables()
{
    const QString file = bench->writeCores(1);
    MolkView *view = open(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    const QByteArray before = ViewBench::read(file);

    bench->host.activeAction("Core.Action.Save")->trigger();

    QVERIFY(!view->isModified());
    QVERIFY(ViewBench::read(file) != before);
    QVERIFY(!saveAction()->isEnabled());
}

void tst_SaveAction::triggerOnACleanViewSavesNothing()
{
    MolkView *view = open(bench->writeCores(1));
    QVERIFY(view);
    bench->host.clearCalls();

    saveAction()->trigger();

    // The save begins with this question.
    QCOMPARE(bench->host.callsOf({"getOptionValue"}), QStringList());
}

void tst_SaveAction::failedSaveKeepsTheActionEnabled()
{
    MolkView *view = open(bench->writeCores(1));
    view->onModified();
    bench->host.design().setOptionValue("Synthesize_tool", "Synplify");
    ModalDriver driver;
    driver.expectDialog<QMessageBox>(
        [](QMessageBox *box) { box->button(QMessageBox::Ok)->click(); });

    saveAction()->trigger();

    QVERIFY(saveAction()->isEnabled());
}

void tst_SaveAction::closedActiveViewDisablesTheAction()
{
    QVERIFY(open(bench->writeCores(1, "a.molk")));
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    b->setModified(true);
    QVERIFY(saveAction()->isEnabled());
    QStringList states;
    const auto connection = connect(Core::ViewManager::instance(), &Core::ViewManager::viewClosed,
                                    this, [&] { states.append(actionState()); });
    b->setModified(false);

    QVERIFY(MolkViewManager::closeMolkView(bench->path("b.molk")));

    disconnect(connection);
    // The other view is open, but nobody has made it active at that moment.
    QCOMPARE(states, QStringList("&Save \"b.molk\" | Save \"b.molk\" | off"));
}

void tst_SaveAction::closedBackgroundViewKeepsTheAction()
{
    QVERIFY(open(bench->writeCores(1, "a.molk")));
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    b->onModified();

    QVERIFY(MolkViewManager::closeMolkView(bench->path("a.molk")));

    // It was refreshed from the active view, whose title has its star by now.
    QCOMPARE(actionState(), QString("&Save \"b.molk *\" | Save \"b.molk *\" | on"));
}

void tst_SaveAction::viewDestroyedWithoutReportIsForgotten()
{
    MolkView *a = open(bench->writeCores(1, "a.molk"));
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    b->setModified(true);
    QVERIFY(saveAction()->isEnabled());
    Core::ViewManager *viewManager = Core::ViewManager::instance();
    viewManager->blockSignals(true);

    delete b;

    viewManager->blockSignals(false);
    QCOMPARE(manager()->molkViews(), QList<MolkView *>({a}));
    QVERIFY(!saveAction()->isEnabled());
    saveAction()->trigger();
}

void tst_SaveAction::viewDestroyedAfterItsReportRefreshesNothing()
{
    MolkView *a = open(bench->writeCores(1, "a.molk"));
    const QPointer<MolkView> b = open(bench->writeCores(1, "b.molk"));
    QVERIFY(MolkViewManager::closeMolkView(bench->path("b.molk")));
    Core::ViewManager::showView(a);
    QVERIFY(b);
    a->onModified();

    QTRY_VERIFY(!b);

    // Its closing was news; its deletion isn't. The text lags until there is some.
    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | on"));
}

void tst_SaveAction::discardedViewIsGone()
{
    const QString file = bench->writeCores(1);
    QPointer<MolkView> view = open(file);
    view->onModified();
    ModalDriver driver;
    driver.expectMessage("Save", closeQuestion(file), QMessageBox::Discard);

    QVERIFY(MolkViewManager::closeMolkView(file));

    QVERIFY(manager()->molkViews().isEmpty());
    QVERIFY(!saveAction()->isEnabled());
    QTRY_VERIFY(!view);
}

MOLK_TEST_MAIN(tst_SaveAction)
#include "tst_saveaction.moc"
