// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/viewservice.h"

#include "host/calllog.h"
#include "host/documentarea.h"

#include "core/iview.h"

#include <QApplication>

static Standin::ViewService *currentService = nullptr;

namespace Core {

ViewManager::ViewManager(QObject *parent)
    : QObject(parent)
{
}

ViewManager::~ViewManager() = default;

ViewManager *ViewManager::instance()
{
    return currentService;
}

void ViewManager::showView(IView *view)
{
    if (!currentService || !view)
        return;
    Standin::record("showView " + view->windowTitle());
    currentService->area()->showView(view);
}

bool ViewManager::closeView(IView *view)
{
    if (!currentService || !view)
        return false;
    Standin::record("closeView " + view->windowTitle());
    if (Standin::isRefused("closeView"))
        return false;
    return currentService->area()->closeView(view);
}

void ViewManager::registerContext(QWidget *widget, const QString &context, bool on)
{
    Standin::record("registerContext " + context + QLatin1String(on ? " on" : " off"));
    if (currentService && widget)
        currentService->setContext(widget, context, on);
}

QWidget *ViewManager::dialogParent()
{
    if (!currentService)
        return nullptr;
    if (currentService->mainWindow)
        return currentService->mainWindow;
    return currentService->existingArea();
}

} // namespace Core

namespace Standin {

ViewService::ViewService()
    : Core::ViewManager(nullptr)
{
    currentService = this;
    qRegisterMetaType<Core::IView *>("Core::IView*"); // for spies and queued connections
    connect(qApp, SIGNAL(focusChanged(QWidget *, QWidget *)), this,
            SIGNAL(activeContextsChanged()));
}

ViewService::~ViewService()
{
    if (documentArea && !documentArea->parent())
        delete documentArea;
    currentService = nullptr;
}

ViewService *ViewService::current()
{
    return currentService;
}

DocumentArea *ViewService::area()
{
    if (!documentArea) {
        documentArea = new DocumentArea;
        connect(documentArea, SIGNAL(viewActivated(Core::IView *)), this,
                SLOT(onViewActivated(Core::IView *)));
        connect(documentArea, SIGNAL(viewClosed(Core::IView *)), this,
                SLOT(onViewClosed(Core::IView *)));
    }
    return documentArea;
}

DocumentArea *ViewService::existingArea() const
{
    return documentArea;
}

void ViewService::setContext(QWidget *widget, const QString &name, bool on)
{
    QStringList &names = contexts[widget];
    names.removeAll(name);
    if (on)
        names.append(name);
    if (names.isEmpty())
        contexts.remove(widget);
    connect(widget, SIGNAL(destroyed(QObject *)), this, SLOT(onWidgetDestroyed(QObject *)),
            Qt::UniqueConnection);
    emit activeContextsChanged();
}

QStringList ViewService::activeContexts() const
{
    QStringList names;
    appendContexts(names, QApplication::focusWidget());
    if (documentArea)
        appendContexts(names, documentArea->activeView());
    names.removeDuplicates();
    return names;
}

void ViewService::appendContexts(QStringList &names, const QWidget *widget) const
{
    for (; widget; widget = widget->parentWidget())
        names += contexts.value(widget);
}

void ViewService::onViewActivated(Core::IView *view)
{
    record("viewActiveted " + (view ? view->windowTitle() : QString("null")));
    emit viewActiveted(view);
    emit activeContextsChanged();
}

void ViewService::onViewClosed(Core::IView *view)
{
    record("viewClosed " + view->windowTitle());
    emit viewClosed(view);
    emit activeContextsChanged();
}

void ViewService::onWidgetDestroyed(QObject *widget)
{
    if (contexts.remove(widget) > 0)
        emit activeContextsChanged();
}

} // namespace Standin
