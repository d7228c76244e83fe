// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testwidgetsmain.h"

#include "host/host.h"

#include "core/iview.h"
#include "core/viewmanager.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>

#include <functional>
#include <memory>

using Core::ViewManager;
using Standin::DocumentArea;
using Standin::Host;

/// A view that says what happens to it, and does what a test tells it to.
class TestView : public Core::IView
{
    Q_OBJECT

public:
    TestView(const QString &title, QStringList *newsList)
        : news(newsList)
    {
        setWindowTitle(title);
    }

    ~TestView() override { news->append("deleted " + windowTitle()); }

    void onActivated() override
    {
        news->append("activated " + windowTitle());
        if (whenActivated)
            whenActivated();
    }

    void onDeactivated() override { news->append("deactivated " + windowTitle()); }

    std::function<void(QCloseEvent *)> whenClosing;
    std::function<void()> whenActivated;

public slots:
    /// What a plug-in's view does when it must go without a question.
    void closeFromInside()
    {
        parentWidget()->setAttribute(Qt::WA_DeleteOnClose, true);
        parentWidget()->close();
        news->append("still here " + windowTitle());
    }

protected:
    void closeEvent(QCloseEvent *event) override
    {
        news->append("asked " + windowTitle());
        if (whenClosing)
            whenClosing(event);
    }

private:
    QStringList *news;
};

class TestHostViews : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
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
    void dialogParentIsTheMainWindowElseTheArea();
    void shutDownReportsEveryViewAndDeletesIt();
    void servicesAreHarmlessWithoutAHost();

private:
    TestView *show(const QString &title);
    QTabWidget *tabs() const { return host->documentArea()->findChild<QTabWidget *>(); }

    std::unique_ptr<Host> host;
    QStringList news;
};

/// Writes down the view manager's signals among the views' own news.
class SignalNews : public QObject
{
    Q_OBJECT

public:
    explicit SignalNews(QStringList *newsList)
        : news(newsList)
    {
        connect(ViewManager::instance(), SIGNAL(viewActiveted(Core::IView *)), this,
                SLOT(onActivated(Core::IView *)));
        connect(ViewManager::instance(), SIGNAL(viewClosed(Core::IView *)), this,
                SLOT(onClosed(Core::IView *)));
    }

private slots:
    void onActivated(Core::IView *view)
    {
        news->append("viewActiveted " + (view ? view->windowTitle() : QString("null")));
    }

    void onClosed(Core::IView *view)
    {
        auto *known = qobject_cast<TestView *>(view);
        news->append("viewClosed " + (known ? known->windowTitle() : QString("unknown class")));
    }

private:
    QStringList *news;
};

static void turnEventLoop()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TestView *TestHostViews::show(const QString &title)
{
    auto *view = new TestView(title, &news);
    ViewManager::showView(view);
    return view;
}

void TestHostViews::init()
{
    host = std::make_unique<Host>();
}

void TestHostViews::cleanup()
{
    host.reset();
    news.clear();
}

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

void TestHostViews::closingAViewAsksItAndDeletesItLater()
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

void TestHostViews::closedViewIsOfItsClassWhenItIsTold()
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

void TestHostViews::refusedCloseChangesNothing()
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

void TestHostViews::tabButtonClosesAsAUserDoes()
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

void TestHostViews::closingTheActiveViewActivatesTheNext()
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

void TestHostViews::closingTheLastViewLeavesNoneActive()
{
    TestView *a = show("a");
    QSignalSpy spy(ViewManager::instance(), SIGNAL(viewActiveted(Core::IView *)));

    QVERIFY(ViewManager::closeView(a));

    QCOMPARE(spy.count(), 1);
    QVERIFY(!spy.at(0).at(0).value<Core::IView *>());
    QVERIFY(!host->documentArea()->activeView());
}

void TestHostViews::closingAnotherViewLeavesTheActiveOne()
{
    TestView *a = show("a");
    TestView *b = show("b");
    SignalNews told(&news);
    news.clear();

    QVERIFY(ViewManager::closeView(a));

    QCOMPARE(news, QStringList({"asked a", "viewClosed a"}));
    QCOMPARE(host->documentArea()->activeView(), b);
}

void TestHostViews::closingFromInsideAsksNothingAndDeletesLater()
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

void TestHostViews::closingTheParentWithoutTheAttributeDeletesToo()
{
    QPointer<TestView> a = show("a");
    a->parentWidget()->close();
    turnEventLoop();
    QVERIFY(!a);
}

void TestHostViews::closingFromInsideOwnCloseEventWorks()
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

void TestHostViews::closingAgainInTheCloseEventIsRefused()
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

void TestHostViews::closingFromOnActivatedWorks()
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

void TestHostViews::deletedViewDisappears()
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

void TestHostViews::deletedParentTakesTheViewAlong()
{
    TestView *a = show("a");
    SignalNews told(&news);
    news.clear();

    delete a->parentWidget();

    QCOMPARE(news,
             QStringList({"deactivated a", "viewClosed a", "viewActiveted null", "deleted a"}));
    QCOMPARE(tabs()->count(), 0);
}

void TestHostViews::viewDeletedInItsCloseEventCountsAsClosed()
{
    TestView *a = show("a");
    a->whenClosing = [a](QCloseEvent *) {
        delete a->parentWidget();
    };
    QVERIFY(ViewManager::closeView(a));
    QCOMPARE(tabs()->count(), 0);
}

void TestHostViews::closedViewIsNotShownAgain()
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

void TestHostViews::closingAnUnknownViewIsRefused()
{
    TestView view("never shown", &news);
    QVERIFY(!ViewManager::closeView(&view));
    QVERIFY(!ViewManager::closeView(nullptr));
    QCOMPARE(news, QStringList());
}

void TestHostViews::closingAllStopsAtTheFirstRefusal()
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

void TestHostViews::droppingAllAsksNone()
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

void TestHostViews::areaMayBelongToAWindowThatIsDeletedFirst()
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

void TestHostViews::refusedCallClosesNothing()
{
    TestView *a = show("a");
    TestView *b = show("b");
    host->refuse("closeView", 2);

    QVERIFY(ViewManager::closeView(b));
    QVERIFY(!ViewManager::closeView(a));
    QCOMPARE(news.count("asked a"), 0);
    QVERIFY(ViewManager::closeView(a));
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

void TestHostViews::shutDownReportsEveryViewAndDeletesIt()
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
