// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/documentarea.h"

#include "host/viewpage.h"

#include "core/iview.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDynamicPropertyChangeEvent>
#include <QScopedValueRollback>
#include <QTabWidget>
#include <QVBoxLayout>

// The short title is a dynamic property, because the class of all views has no fields of its own.
static const char shortTitleProperty[] = "shortTitle";

namespace Core {

IView::IView(QWidget *parent)
    : QWidget(parent)
{
}

IView::~IView() = default;

void IView::setShortTitle(const QString &title)
{
    setProperty(shortTitleProperty, title);
}

void IView::onActivated() {}

void IView::onDeactivated() {}

} // namespace Core

namespace Standin {

DocumentArea::DocumentArea(QWidget *parent)
    : QWidget(parent)
    , tabs(new QTabWidget(this))
{
    tabs->setObjectName("documentTabs");
    tabs->setDocumentMode(true);
    tabs->setTabsClosable(true);
    tabs->setMovable(true);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabs);

    connect(tabs, SIGNAL(currentChanged(int)), this, SLOT(onCurrentChanged()));
    connect(tabs, SIGNAL(tabCloseRequested(int)), this, SLOT(onTabCloseRequested(int)));
}

DocumentArea::~DocumentArea()
{
    dropAllViews();
}

Core::IView *DocumentArea::activeView() const
{
    return activePage ? activePage->view : nullptr;
}

QList<Core::IView *> DocumentArea::views() const
{
    QList<Core::IView *> all;
    for (int i = 0; i < tabs->count(); ++i) {
        auto *page = static_cast<ViewPage *>(tabs->widget(i));
        if (page->view)
            all.append(page->view);
    }
    return all;
}

QString DocumentArea::tabText(Core::IView *view) const
{
    ViewPage *page = pages.value(view);
    if (!page)
        return QString();
    return tabs->tabText(tabs->indexOf(page)).replace("&&", "&");
}

void DocumentArea::showView(Core::IView *view)
{
    if (!view)
        return;

    ViewPage *page = pages.value(view);
    if (!page) {
        if (qobject_cast<ViewPage *>(view->parentWidget()))
            return;
        page = addPage(view);
    }

    {
        QScopedValueRollback<bool> guard(changingTabs, true);
        tabs->setCurrentWidget(page);
    }
    view->show();
    if (!view->isAncestorOf(QApplication::focusWidget()))
        view->setFocus(Qt::OtherFocusReason);

    // Showing a view and moving the focus run code of views, which may have closed this one.
    if (pages.value(view) != page)
        return;
    if (activePage == page)
        emit viewActivated(view);
    else
        activate(page);
}

bool DocumentArea::closeView(Core::IView *view)
{
    QPointer<ViewPage> page = pages.value(view);
    if (!page || page->asking)
        return false;

    // The event is sent by hand: QWidget::close() would hide the view, and may end the program
    // when no window is visible.
    page->asking = true;
    QCloseEvent event;
    QApplication::sendEvent(view, &event);
    if (!page || page->left)
        return true;

    page->asking = false;
    if (!event.isAccepted())
        return false;
    leave(page);
    return true;
}

bool DocumentArea::closeAllViews()
{
    while (!pages.isEmpty()) {
        Core::IView *view = activePage ? activePage->view : views().constFirst();
        if (!closeView(view))
            return false;
    }
    return true;
}

void DocumentArea::dropAllViews()
{
    // The active view last, so that none is activated only to be dropped in turn.
    const QList<Core::IView *> all = views();
    for (Core::IView *view : all) {
        ViewPage *page = pages.value(view);
        if (page && page != activePage)
            leave(page);
    }
    while (tabs->count() > 0)
        leave(static_cast<ViewPage *>(tabs->widget(0)));
}

bool DocumentArea::eventFilter(QObject *watched, QEvent *event)
{
    const bool isTitle = event->type() == QEvent::WindowTitleChange
        || (event->type() == QEvent::DynamicPropertyChange
            && static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName()
                == shortTitleProperty);
    if (isTitle) {
        if (ViewPage *page = pages.value(watched)) {
            refreshTitle(page);
            emit viewTitleChanged(page->view);
        }
    }
    return QWidget::eventFilter(watched, event);
}

void DocumentArea::onCurrentChanged()
{
    if (!changingTabs)
        activateCurrent();
}

void DocumentArea::onTabCloseRequested(int index)
{
    if (auto *page = static_cast<ViewPage *>(tabs->widget(index)))
        closeView(page->view);
}

void DocumentArea::onViewDestroyed(QObject *view)
{
    // What is left of the view isn't of its class any more, so its closing can't be reported.
    ViewPage *page = pages.value(view);
    if (!page)
        return;
    page->view = nullptr;
    pages.remove(view);
    leave(page);
}

ViewPage *DocumentArea::addPage(Core::IView *view)
{
    auto *page = new ViewPage(view, this);
    pages.insert(view, page);
    view->installEventFilter(this);
    connect(view, SIGNAL(destroyed(QObject *)), this, SLOT(onViewDestroyed(QObject *)));

    QScopedValueRollback<bool> guard(changingTabs, true);
    tabs->addTab(page, QString());
    refreshTitle(page);
    return page;
}

// Everything that a view's leaving means, apart from its deletion.
void DocumentArea::forget(ViewPage *page)
{
    page->left = true;
    Core::IView *view = page->view;
    const bool wasActive = page == activePage;
    if (view) {
        pages.remove(view);
        view->removeEventFilter(this);
        disconnect(view, nullptr, this, nullptr);
    }
    if (wasActive) {
        activePage = nullptr;
        if (view)
            view->onDeactivated();
    }
    {
        QScopedValueRollback<bool> guard(changingTabs, true);
        tabs->removeTab(tabs->indexOf(page));
    }
    if (view)
        emit viewClosed(view);
    if (!wasActive)
        return;

    activateCurrent();
    if (!activePage)
        emit viewActivated(nullptr);
}

void DocumentArea::leave(ViewPage *page)
{
    // What loses the focus may show a message, from whose event loop the view may leave as well.
    const QPointer<ViewPage> guard(page);
    const bool hadFocus = page->isAncestorOf(QApplication::focusWidget());
    if (hadFocus)
        tabs->setFocus();
    if (!guard || guard->left)
        return;

    page->hide();
    page->deleteLater();
    forget(page);
    if (hadFocus && activePage && tabs->hasFocus())
        activePage->view->setFocus();
}

void DocumentArea::activateCurrent()
{
    auto *page = static_cast<ViewPage *>(tabs->currentWidget());
    if (page && page != activePage)
        activate(page);
}

void DocumentArea::activate(ViewPage *page)
{
    ViewPage *before = activePage;
    activePage = page;
    if (before && before->view)
        before->view->onDeactivated();
    // Either call may have shown or closed a view, which then has told its own news.
    if (activePage == page)
        page->view->onActivated();
    if (activePage == page)
        emit viewActivated(page->view);
}

void DocumentArea::refreshTitle(ViewPage *page)
{
    const int index = tabs->indexOf(page);
    QString text = page->view->property(shortTitleProperty).toString();
    if (text.isEmpty())
        text = page->view->windowTitle();
    tabs->setTabText(index, text.replace("&", "&&"));
    tabs->setTabToolTip(index, page->view->windowTitle());
}

} // namespace Standin
