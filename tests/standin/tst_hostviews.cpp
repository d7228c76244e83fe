// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "hostviewtest.h"
#include "testwidgetsmain.h"

#include "core/viewmanager.h"

#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>

using Core::ViewManager;
using Standin::DocumentArea;

/// Views as they are shown: their parents, which one is active, and their titles.
class TestHostViews : public HostViewTest
{
    Q_OBJECT

private slots:
    void shownViewGetsAParentOfItsOwn();
    void shownViewBecomesActive();
    void showingAnotherViewMovesTheActivity();
    void showingTheActiveViewTellsSoAgain();
    void showingAViewBringsItForward();
    void clickOnATabActivatesItsView();
    void tabShowsTheShortTitleElseTheWindowTitle();
    void tabShowsAmpersandsAsTheyAre();
    void tabToolTipIsTheWindowTitle();
    void titleChangesAreTold();
    void dialogParentIsTheMainWindowElseTheArea();
    void servicesAreHarmlessWithoutAHost();
};

void TestHostViews::shownViewGetsAParentOfItsOwn()
{
    TestView *a = show("a");
    TestView *b = show("b");

    QVERIFY(a->parentWidget());
    QVERIFY(b->parentWidget());
    QVERIFY(a->parentWidget() != b->parentWidget());
    QCOMPARE(a->parentWidget()->findChildren<Core::IView *>(), QList<Core::IView *>{a});
    QCOMPARE(host->documentArea()->views(), (QList<Core::IView *>{a, b}));
}

void TestHostViews::shownViewBecomesActive()
{
    SignalNews told(&news);
    TestView *a = show("a");

    QCOMPARE(news, QStringList({"activated a", "viewActiveted a"}));
    QCOMPARE(host->documentArea()->activeView(), a);
    QCOMPARE(host->calls(), QStringList({"showView a", "viewActiveted a"}));
}

void TestHostViews::showingAnotherViewMovesTheActivity()
{
    show("a");
    SignalNews told(&news);
    news.clear();

    show("b");

    QCOMPARE(news, QStringList({"deactivated a", "activated b", "viewActiveted b"}));
}

void TestHostViews::showingTheActiveViewTellsSoAgain()
{
    TestView *a = show("a");
    SignalNews told(&news);
    news.clear();

    ViewManager::showView(a);

    QCOMPARE(news, QStringList({"viewActiveted a"}));
    QCOMPARE(tabs()->count(), 1);
}

void TestHostViews::showingAViewBringsItForward()
{
    TestView *a = show("a");
    show("b");
    SignalNews told(&news);
    news.clear();

    ViewManager::showView(a);

    QCOMPARE(news, QStringList({"deactivated b", "activated a", "viewActiveted a"}));
    QCOMPARE(tabs()->currentWidget(), a->parentWidget());
    QCOMPARE(tabs()->count(), 2);
}

void TestHostViews::clickOnATabActivatesItsView()
{
    TestView *a = show("a");
    show("b");
    SignalNews told(&news);
    host->documentArea()->show();
    news.clear();

    QTest::mouseClick(tabs()->tabBar(), Qt::LeftButton, {}, tabs()->tabBar()->tabRect(0).center());

    QCOMPARE(news, QStringList({"deactivated b", "activated a", "viewActiveted a"}));
    QCOMPARE(host->documentArea()->activeView(), a);
}

void TestHostViews::tabShowsTheShortTitleElseTheWindowTitle()
{
    TestView *a = show("a.molk");
    QCOMPARE(tabs()->tabText(0), QString("a.molk"));

    a->setShortTitle("a *");
    QCOMPARE(tabs()->tabText(0), QString("a *"));
    QCOMPARE(a->windowTitle(), QString("a.molk"));

    a->setWindowTitle("b.molk");
    QCOMPARE(tabs()->tabText(0), QString("a *"));
    QCOMPARE(host->documentArea()->tabText(a), QString("a *"));

    auto *c = new TestView("c.molk", &news);
    c->setShortTitle("short before it was shown");
    ViewManager::showView(c);
    QCOMPARE(host->documentArea()->tabText(c), QString("short before it was shown"));
}

void TestHostViews::tabShowsAmpersandsAsTheyAre()
{
    TestView *a = show("a&b.molk");
    QCOMPARE(tabs()->tabText(0), QString("a&&b.molk"));
    QCOMPARE(host->documentArea()->tabText(a), QString("a&b.molk"));
}

void TestHostViews::tabToolTipIsTheWindowTitle()
{
    TestView *a = show("a.molk");
    a->setShortTitle("a");
    QCOMPARE(tabs()->tabToolTip(0), QString("a.molk"));
}

void TestHostViews::titleChangesAreTold()
{
    TestView *a = show("a");
    QSignalSpy spy(host->documentArea(), SIGNAL(viewTitleChanged(Core::IView *)));

    a->setWindowTitle("a *");
    a->setShortTitle("a *");
    a->setProperty("something else", 1);

    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(0).at(0).value<Core::IView *>(), a);
}

void TestHostViews::dialogParentIsTheMainWindowElseTheArea()
{
    QVERIFY(!ViewManager::dialogParent());

    DocumentArea *area = host->documentArea();
    QCOMPARE(ViewManager::dialogParent(), area);

    {
        QWidget window;
        host->setMainWindow(&window);
        QCOMPARE(ViewManager::dialogParent(), &window);
    }
    QCOMPARE(ViewManager::dialogParent(), area);
}

void TestHostViews::servicesAreHarmlessWithoutAHost()
{
    host.reset();
    TestView view("a", &news);

    QVERIFY(!ViewManager::instance());
    ViewManager::showView(&view);
    QVERIFY(!ViewManager::closeView(&view));
    ViewManager::registerContext(&view, "context", true);
    QVERIFY(!ViewManager::dialogParent());
    QVERIFY(!view.parentWidget());
}

MOLK_TEST_MAIN(TestHostViews)
#include "tst_hostviews.moc"
