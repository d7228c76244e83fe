// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "hostviewtest.h"
#include "testwidgetsmain.h"

#include "core/viewmanager.h"

#include <QCloseEvent>
#include <QPointer>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>

using Core::ViewManager;

/// How views go: closed by the user, by the host or from inside, deleted, or with the host.
class TestHostViewsClosing : public HostViewTest
{
    Q_OBJECT

private slots:
    void closingAViewAsksItAndDeletesItLater();
    void closedViewIsOfItsClassWhenItIsTold();
    void refusedCloseChangesNothing();
    void tabButtonClosesAsAUserDoes();
    void closingTheActiveViewActivatesTheNext();
    void closingTheLastViewLeavesNoneActive();
    void closingAnotherViewLeavesTheActiveOne();
    void closingFromInsideAsksNothingAndDeletesLater();
    void closingTheParentWithoutTheAttributeDeletesToo();
    void closingFromInsideOwnCloseEventWorks();
    void closingAgainInTheCloseEventIsRefused();
    void closingFromOnActivatedWorks();
    void deletedViewDisappears();
    void deletedParentTakesTheViewAlong();
    void viewDeletedInItsCloseEventCountsAsClosed();
    void closedViewIsNotShownAgain();
    void closingAnUnknownViewIsRefused();
    void closingAllStopsAtTheFirstRefusal();
    void droppingAllAsksNone();
    void areaMayBelongToAWindowThatIsDeletedFirst();
    void refusedCallClosesNothing();
    void shutDownReportsEveryViewAndDeletesIt();
};

void TestHostViewsClosing::closingAViewAsksItAndDeletesItLater()
{
    TestView *a = show("a");
    SignalNews told(&news);
    news.clear();

    QVERIFY(ViewManager::closeView(a));
    QCOMPARE(news, QStringList({"asked a", "deactivated a", "viewClosed a", "viewActiveted null"}));

    turnEventLoop();
    QCOMPARE(news.last(), QString("deleted a"));
    QCOMPARE(tabs()->count(), 0);
}

void TestHostViewsClosing::closedViewIsOfItsClassWhenItIsTold()
{
    SignalNews told(&news);
    TestView *a = show("a");
    delete a->parentWidget();
    QVERIFY(news.contains("viewClosed a"));

    TestView *b = show("b");
    b->closeFromInside();
    QVERIFY(news.contains("viewClosed b"));
    QVERIFY(!news.contains("viewClosed unknown class"));
}

void TestHostViewsClosing::refusedCloseChangesNothing()
{
    TestView *a = show("a");
    a->whenClosing = [](QCloseEvent *event) {
        event->ignore();
    };
    SignalNews told(&news);
    news.clear();

    QVERIFY(!ViewManager::closeView(a));

    turnEventLoop();
    QCOMPARE(news, QStringList({"asked a"}));
    QCOMPARE(host->documentArea()->activeView(), a);
    QVERIFY(!a->isHidden());
}

void TestHostViewsClosing::tabButtonClosesAsAUserDoes()
{
    show("a");
    SignalNews told(&news);
    host->documentArea()->show();
    news.clear();

    QWidget *button = tabs()->tabBar()->tabButton(0, QTabBar::RightSide);
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);

    QCOMPARE(news.mid(0, 3), QStringList({"asked a", "deactivated a", "viewClosed a"}));
}

void TestHostViewsClosing::closingTheActiveViewActivatesTheNext()
{
    show("a");
    TestView *b = show("b");
    SignalNews told(&news);
    news.clear();

    QVERIFY(ViewManager::closeView(b));

    QCOMPARE(news,
             QStringList(
                 {"asked b", "deactivated b", "viewClosed b", "activated a", "viewActiveted a"}));
}

void TestHostViewsClosing::closingTheLastViewLeavesNoneActive()
{
    TestView *a = show("a");
    QSignalSpy spy(ViewManager::instance(), SIGNAL(viewActiveted(Core::IView *)));

    QVERIFY(ViewManager::closeView(a));

    QCOMPARE(spy.count(), 1);
    QVERIFY(!spy.at(0).at(0).value<Core::IView *>());
    QVERIFY(!host->documentArea()->activeView());
}

void TestHostViewsClosing::closingAnotherViewLeavesTheActiveOne()
{
    TestView *a = show("a");
    TestView *b = show("b");
    SignalNews told(&news);
    news.clear();

    QVERIFY(ViewManager::closeView(a));

    QCOMPARE(news, QStringList({"asked a", "viewClosed a"}));
    QCOMPARE(host->documentArea()->activeView(), b);
}

void TestHostViewsClosing::closingFromInsideAsksNothingAndDeletesLater()
{
    TestView *a = show("a");
    SignalNews told(&news);
    news.clear();

    a->closeFromInside();
    QCOMPARE(news,
             QStringList({"deactivated a", "viewClosed a", "viewActiveted null", "still here a"}));

    turnEventLoop();
    QCOMPARE(news.last(), QString("deleted a"));
    QCOMPARE(news.count("viewClosed a"), 1);
}

void TestHostViewsClosing::closingTheParentWithoutTheAttributeDeletesToo()
{
    QPointer<TestView> a = show("a");
    a->parentWidget()->close();
    turnEventLoop();
    QVERIFY(!a);
}

void TestHostViewsClosing::closingFromInsideOwnCloseEventWorks()
{
    TestView *a = show("a");
    SignalNews told(&news);
    news.clear();
    a->whenClosing = [a](QCloseEvent *event) {
        a->closeFromInside();
        event->ignore();
    };

    QVERIFY(ViewManager::closeView(a));

    turnEventLoop();
    QCOMPARE(news,
             QStringList({"asked a", "deactivated a", "viewClosed a", "viewActiveted null",
                          "still here a", "deleted a"}));
}

void TestHostViewsClosing::closingAgainInTheCloseEventIsRefused()
{
    TestView *a = show("a");
    bool inner = true;
    a->whenClosing = [a, &inner](QCloseEvent *) {
        inner = ViewManager::closeView(a);
    };

    QVERIFY(ViewManager::closeView(a));

    QVERIFY(!inner);
    QCOMPARE(news.count("asked a"), 1);
}

void TestHostViewsClosing::closingFromOnActivatedWorks()
{
    TestView *a = show("a");
    auto *b = new TestView("b", &news);
    b->whenActivated = [b] {
        b->closeFromInside();
    };
    SignalNews told(&news);
    news.clear();

    ViewManager::showView(b);

    QCOMPARE(news,
             QStringList({"deactivated a", "activated b", "deactivated b", "viewClosed b",
                          "activated a", "viewActiveted a", "still here b"}));
    QCOMPARE(host->documentArea()->activeView(), a);
}

void TestHostViewsClosing::deletedViewDisappears()
{
    TestView *a = show("a");
    TestView *b = show("b");
    SignalNews told(&news);
    news.clear();

    delete b;

    QCOMPARE(news, QStringList({"deleted b", "activated a", "viewActiveted a"}));
    QCOMPARE(host->documentArea()->views(), QList<Core::IView *>{a});
    QCOMPARE(tabs()->count(), 1);
}

void TestHostViewsClosing::deletedParentTakesTheViewAlong()
{
    TestView *a = show("a");
    SignalNews told(&news);
    news.clear();

    delete a->parentWidget();

    QCOMPARE(news,
             QStringList({"deactivated a", "viewClosed a", "viewActiveted null", "deleted a"}));
    QCOMPARE(tabs()->count(), 0);
}

void TestHostViewsClosing::viewDeletedInItsCloseEventCountsAsClosed()
{
    TestView *a = show("a");
    a->whenClosing = [a](QCloseEvent *) {
        delete a->parentWidget();
    };
    QVERIFY(ViewManager::closeView(a));
    QCOMPARE(tabs()->count(), 0);
}

void TestHostViewsClosing::closedViewIsNotShownAgain()
{
    TestView *a = show("a");
    QVERIFY(ViewManager::closeView(a));
    SignalNews told(&news);
    news.clear();

    ViewManager::showView(a);
    QVERIFY(!ViewManager::closeView(a));

    QCOMPARE(news, QStringList());
    QCOMPARE(tabs()->count(), 0);
}

void TestHostViewsClosing::closingAnUnknownViewIsRefused()
{
    TestView view("never shown", &news);
    QVERIFY(!ViewManager::closeView(&view));
    QVERIFY(!ViewManager::closeView(nullptr));
    QCOMPARE(news, QStringList());
}

void TestHostViewsClosing::closingAllStopsAtTheFirstRefusal()
{
    TestView *a = show("a");
    show("b");
    show("c");
    a->whenClosing = [](QCloseEvent *event) {
        event->ignore();
    };
    news.clear();

    QVERIFY(!host->documentArea()->closeAllViews());
    QCOMPARE(news.filter("asked"), QStringList({"asked c", "asked b", "asked a"}));
    QCOMPARE(host->documentArea()->views(), QList<Core::IView *>{a});

    a->whenClosing = nullptr;
    QVERIFY(host->documentArea()->closeAllViews());
    QVERIFY(host->documentArea()->views().isEmpty());
}

void TestHostViewsClosing::droppingAllAsksNone()
{
    TestView *a = show("a");
    show("b");
    show("c");
    ViewManager::showView(a);
    SignalNews told(&news);
    news.clear();

    host->documentArea()->dropAllViews();

    QCOMPARE(news,
             QStringList({"viewClosed b", "viewClosed c", "deactivated a", "viewClosed a",
                          "viewActiveted null"}));
}

void TestHostViewsClosing::areaMayBelongToAWindowThatIsDeletedFirst()
{
    auto *window = new QWidget;
    host->documentArea()->setParent(window);
    show("a");
    SignalNews told(&news);
    news.clear();

    delete window;
    QCOMPARE(news,
             QStringList({"deactivated a", "viewClosed a", "viewActiveted null", "deleted a"}));

    news.clear();
    show("b");
    QCOMPARE(news, QStringList({"activated b", "viewActiveted b"}));
}

void TestHostViewsClosing::refusedCallClosesNothing()
{
    TestView *a = show("a");
    TestView *b = show("b");
    host->refuse("closeView", 2);

    QVERIFY(ViewManager::closeView(b));
    QVERIFY(!ViewManager::closeView(a));
    QCOMPARE(news.count("asked a"), 0);
    QVERIFY(ViewManager::closeView(a));
}

void TestHostViewsClosing::shutDownReportsEveryViewAndDeletesIt()
{
    show("a");
    show("b");
    SignalNews told(&news);
    news.clear();

    host->shutDown();
    QCOMPARE(news,
             QStringList({"viewClosed a", "deactivated b", "viewClosed b", "viewActiveted null",
                          "deleted a", "deleted b"}));

    news.clear();
    host.reset();
    QCOMPARE(news, QStringList());
}

MOLK_TEST_MAIN(TestHostViewsClosing)
#include "tst_hostviewsclosing.moc"
