// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "hostviewtest.h"

#include "core/viewmanager.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QTabWidget>

using Core::ViewManager;

TestView::TestView(const QString &title, QStringList *newsList)
    : news(newsList)
{
    setWindowTitle(title);
}

TestView::~TestView()
{
    news->append("deleted " + windowTitle());
}

void TestView::onActivated()
{
    news->append("activated " + windowTitle());
    if (whenActivated)
        whenActivated();
}

void TestView::onDeactivated()
{
    news->append("deactivated " + windowTitle());
}

void TestView::closeFromInside()
{
    parentWidget()->setAttribute(Qt::WA_DeleteOnClose, true);
    parentWidget()->close();
    news->append("still here " + windowTitle());
}

void TestView::closeEvent(QCloseEvent *event)
{
    news->append("asked " + windowTitle());
    if (whenClosing)
        whenClosing(event);
}

SignalNews::SignalNews(QStringList *newsList)
    : news(newsList)
{
    connect(ViewManager::instance(), SIGNAL(viewActiveted(Core::IView *)), this,
            SLOT(onActivated(Core::IView *)));
    connect(ViewManager::instance(), SIGNAL(viewClosed(Core::IView *)), this,
            SLOT(onClosed(Core::IView *)));
}

void SignalNews::onActivated(Core::IView *view)
{
    news->append("viewActiveted " + (view ? view->windowTitle() : QString("null")));
}

void SignalNews::onClosed(Core::IView *view)
{
    auto *known = qobject_cast<TestView *>(view);
    news->append("viewClosed " + (known ? known->windowTitle() : QString("unknown class")));
}

TestView *HostViewTest::show(const QString &title)
{
    auto *view = new TestView(title, &news);
    ViewManager::showView(view);
    return view;
}

QTabWidget *HostViewTest::tabs() const
{
    return host->documentArea()->findChild<QTabWidget *>();
}

void HostViewTest::turnEventLoop()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void HostViewTest::init()
{
    host = std::make_unique<Standin::Host>();
}

void HostViewTest::cleanup()
{
    host.reset();
    news.clear();
}
