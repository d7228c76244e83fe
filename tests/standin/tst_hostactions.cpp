// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testwidgetsmain.h"

#include "host/host.h"

#include "core/actionmanager.h"
#include "core/iview.h"
#include "core/viewmanager.h"

#include <QAction>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <memory>

using Core::ActionManager;
using Core::ViewManager;
using Standin::Host;

class TestHostActions : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void actionIsLiveInItsContextOnly();
    void contextOfTheActiveViewDecides();
    void viewsShareAContext();
    void contextOfAChildWinsOverItsViews();
    void focusOutsideTheViewsLeavesTheActiveViewsContext();
    void dialogOfAViewKeepsItsContext();
    void contextIsUntied();
    void twoActionsDoNotShareAPlace();
    void sameActionMayBeRegisteredAgain();
    void oneActionMayStandInSeveralPlaces();
    void deletedActionIsForgotten();
    void deletedWidgetIsForgotten();
    void refusedRegistrationAnswersFalse();
    void proxyIsOneForAnId();
    void proxyIsDisabledWithoutALiveAction();
    void proxyShowsAndFollowsTheLiveAction();
    void proxyKeepsItsTextWhileTheLiveActionHasNone();
    void proxyShowsItsOwnTextAgainWithoutALiveAction();
    void proxyTriggersTheLiveAction();
    void proxyOfADisabledActionTriggersNothing();
    void proxyMadeLateIsUpToDate();
    void callsAreRecorded();
    void registrationIsHarmlessWithoutAHost();

private:
    Core::IView *show(const QString &context);

    std::unique_ptr<Host> host;
};

static const QString save = "Core.Action.Save";

Core::IView *TestHostActions::show(const QString &context)
{
    auto *view = new Core::IView;
    ViewManager::registerContext(view, context, true);
    ViewManager::showView(view);
    return view;
}

void TestHostActions::init()
{
    host = std::make_unique<Host>();
}

void TestHostActions::cleanup()
{
    host.reset();
}

void TestHostActions::actionIsLiveInItsContextOnly()
{
    QAction action;
    QVERIFY(ActionManager::registerAction(&action, save, "A"));
    QVERIFY(!host->activeAction(save));

    show("A");

    QCOMPARE(host->activeAction(save), &action);
    QVERIFY(!host->activeAction("Core.Action.Close"));
}

void TestHostActions::contextOfTheActiveViewDecides()
{
    QAction a;
    QAction b;
    ActionManager::registerAction(&a, save, "A");
    ActionManager::registerAction(&b, save, "B");
    Core::IView *viewA = show("A");
    Core::IView *viewB = show("B");
    QCOMPARE(host->activeAction(save), &b);

    ViewManager::showView(viewA);
    QCOMPARE(host->activeAction(save), &a);

    ViewManager::closeView(viewA);
    QCOMPARE(host->activeAction(save), &b);

    ViewManager::closeView(viewB);
    QVERIFY(!host->activeAction(save));
}

void TestHostActions::viewsShareAContext()
{
    QAction action;
    ActionManager::registerAction(&action, save, "A");
    show("A");
    QCOMPARE(host->activeAction(save), &action);
    show("A");
    QCOMPARE(host->activeAction(save), &action);
    show("B");
    QVERIFY(!host->activeAction(save));
}

void TestHostActions::contextOfAChildWinsOverItsViews()
{
    QAction outer;
    QAction inner;
    ActionManager::registerAction(&outer, save, "outer");
    ActionManager::registerAction(&inner, save, "inner");
    auto *view = new Core::IView;
    auto *one = new QLineEdit;
    auto *two = new QLineEdit;
    auto *layout = new QVBoxLayout(view);
    layout->addWidget(one);
    layout->addWidget(two);
    ViewManager::registerContext(view, "outer", true);
    ViewManager::registerContext(one, "inner", true);
    ViewManager::showView(view);
    host->documentArea()->show();
    QApplication::setActiveWindow(host->documentArea());

    one->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), one);
    QCOMPARE(host->activeAction(save), &inner);

    two->setFocus();
    QCOMPARE(host->activeAction(save), &outer);
}

void TestHostActions::focusOutsideTheViewsLeavesTheActiveViewsContext()
{
    QAction action;
    ActionManager::registerAction(&action, save, "A");
    show("A");
    QLineEdit elsewhere;
    elsewhere.show();
    QApplication::setActiveWindow(&elsewhere);
    elsewhere.setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), &elsewhere);

    QCOMPARE(host->activeAction(save), &action);
}

void TestHostActions::dialogOfAViewKeepsItsContext()
{
    QAction a;
    QAction b;
    ActionManager::registerAction(&a, save, "A");
    ActionManager::registerAction(&b, save, "B");
    Core::IView *viewA = show("A");
    show("B");

    auto *dialog = new QWidget(viewA, Qt::Dialog);
    auto *edit = new QLineEdit(dialog);
    dialog->show();
    QApplication::setActiveWindow(dialog);
    edit->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), edit);

    QCOMPARE(host->activeAction(save), &a);
}

void TestHostActions::contextIsUntied()
{
    QAction action;
    ActionManager::registerAction(&action, save, "A");
    Core::IView *view = show("A");

    ViewManager::registerContext(view, "A", false);
    QVERIFY(!host->activeAction(save));

    ViewManager::registerContext(view, "never tied", false);
    ViewManager::registerContext(nullptr, "A", true);
    QVERIFY(!host->activeAction(save));
}

void TestHostActions::twoActionsDoNotShareAPlace()
{
    QAction first;
    QAction second;
    QVERIFY(ActionManager::registerAction(&first, save, "A"));
    QVERIFY(!ActionManager::registerAction(&second, save, "A"));
    show("A");
    QCOMPARE(host->activeAction(save), &first);
}

void TestHostActions::sameActionMayBeRegisteredAgain()
{
    QAction action;
    QVERIFY(ActionManager::registerAction(&action, save, "A"));
    QVERIFY(ActionManager::registerAction(&action, save, "A"));
}

void TestHostActions::oneActionMayStandInSeveralPlaces()
{
    auto action = std::make_unique<QAction>();
    ActionManager::registerAction(action.get(), save, "A");
    ActionManager::registerAction(action.get(), save, "B");
    ActionManager::registerAction(action.get(), "other", "A");
    show("A");
    QCOMPARE(host->activeAction("other"), action.get());

    action.reset();
    QVERIFY(!host->activeAction(save));
    QVERIFY(!host->activeAction("other"));
    show("B");
    QVERIFY(!host->activeAction(save));
}

void TestHostActions::deletedActionIsForgotten()
{
    show("A");
    {
        QAction action;
        ActionManager::registerAction(&action, save, "A");
        QCOMPARE(host->activeAction(save), &action);
    }
    QVERIFY(!host->activeAction(save));

    QAction next;
    QVERIFY(ActionManager::registerAction(&next, save, "A"));
}

void TestHostActions::deletedWidgetIsForgotten()
{
    QAction action;
    ActionManager::registerAction(&action, save, "A");
    delete show("A");
    QVERIFY(!host->activeAction(save));
}

void TestHostActions::refusedRegistrationAnswersFalse()
{
    QAction action;
    host->refuse("registerAction");
    QVERIFY(!ActionManager::registerAction(&action, save, "A"));
    QVERIFY(ActionManager::registerAction(&action, save, "A"));
    QVERIFY(!ActionManager::registerAction(nullptr, save, "B"));
}

void TestHostActions::proxyIsOneForAnId()
{
    QCOMPARE(host->proxyAction(save), host->proxyAction(save));
    QVERIFY(host->proxyAction(save) != host->proxyAction("other"));
}

void TestHostActions::proxyIsDisabledWithoutALiveAction()
{
    QAction *proxy = host->proxyAction(save);
    proxy->setText("&Save");
    QVERIFY(!proxy->isEnabled());

    QAction action("live");
    ActionManager::registerAction(&action, save, "A");
    QVERIFY(!proxy->isEnabled());
    QCOMPARE(proxy->text(), QString("&Save"));
}

void TestHostActions::proxyShowsAndFollowsTheLiveAction()
{
    QAction *proxy = host->proxyAction(save);
    QAction action("&Save \"a\"");
    action.setToolTip("Save \"a\"");
    ActionManager::registerAction(&action, save, "A");
    show("A");
    QCOMPARE(proxy->text(), QString("&Save \"a\""));
    QCOMPARE(proxy->toolTip(), QString("Save \"a\""));
    QVERIFY(proxy->isEnabled());

    action.setText("&Save \"a *\"");
    action.setToolTip("Save \"a *\"");
    action.setEnabled(false);
    QCOMPARE(proxy->text(), QString("&Save \"a *\""));
    QCOMPARE(proxy->toolTip(), QString("Save \"a *\""));
    QVERIFY(!proxy->isEnabled());
}

void TestHostActions::proxyKeepsItsTextWhileTheLiveActionHasNone()
{
    QAction *proxy = host->proxyAction(save);
    proxy->setText("&Save");
    proxy->setToolTip("Save the document");
    QAction action;
    ActionManager::registerAction(&action, save, "A");
    show("A");

    QCOMPARE(proxy->text(), QString("&Save"));
    QCOMPARE(proxy->toolTip(), QString("Save the document"));
    QVERIFY(proxy->isEnabled());
}

void TestHostActions::proxyShowsItsOwnTextAgainWithoutALiveAction()
{
    QAction *proxy = host->proxyAction(save);
    proxy->setText("&Save");
    proxy->setToolTip("Save the document");
    auto action = std::make_unique<QAction>("live");
    ActionManager::registerAction(action.get(), save, "A");
    show("A");
    QCOMPARE(proxy->text(), QString("live"));

    show("B");
    QCOMPARE(proxy->text(), QString("&Save"));
    QCOMPARE(proxy->toolTip(), QString("Save the document"));
    QVERIFY(!proxy->isEnabled());

    ViewManager::closeView(host->documentArea()->activeView());
    QCOMPARE(proxy->text(), QString("live"));
    action.reset();
    QCOMPARE(proxy->text(), QString("&Save"));
    QVERIFY(!proxy->isEnabled());
}

void TestHostActions::proxyTriggersTheLiveAction()
{
    QAction a;
    QAction b;
    ActionManager::registerAction(&a, save, "A");
    ActionManager::registerAction(&b, save, "B");
    QSignalSpy spyA(&a, SIGNAL(triggered()));
    QSignalSpy spyB(&b, SIGNAL(triggered()));
    QAction *proxy = host->proxyAction(save);

    show("A");
    proxy->trigger();
    QCOMPARE(spyA.count(), 1);
    QCOMPARE(spyB.count(), 0);

    show("B");
    proxy->trigger();
    QCOMPARE(spyA.count(), 1);
    QCOMPARE(spyB.count(), 1);
}

void TestHostActions::proxyOfADisabledActionTriggersNothing()
{
    QAction action;
    action.setEnabled(false);
    ActionManager::registerAction(&action, save, "A");
    show("A");
    QSignalSpy spy(&action, SIGNAL(triggered()));

    host->proxyAction(save)->trigger();

    QCOMPARE(spy.count(), 0);
}

void TestHostActions::proxyMadeLateIsUpToDate()
{
    QAction action("live");
    ActionManager::registerAction(&action, save, "A");
    show("A");

    QCOMPARE(host->proxyAction(save)->text(), QString("live"));
    QVERIFY(host->proxyAction(save)->isEnabled());
}

void TestHostActions::callsAreRecorded()
{
    QAction action;
    QWidget widget;
    ActionManager::registerAction(&action, save, "MOLK.MolkViewManager.Context");
    ViewManager::registerContext(&widget, "A", true);
    ViewManager::registerContext(&widget, "A", false);

    QCOMPARE(host->calls(),
             QStringList({"registerAction Core.Action.Save MOLK.MolkViewManager.Context",
                          "registerContext A on", "registerContext A off"}));
}

void TestHostActions::registrationIsHarmlessWithoutAHost()
{
    host.reset();
    QAction action;
    QVERIFY(!ActionManager::registerAction(&action, save, "A"));
}

MOLK_TEST_MAIN(TestHostActions)
#include "tst_hostactions.moc"
