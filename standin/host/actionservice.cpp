// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/actionservice.h"

#include "host/calllog.h"
#include "host/proxyaction.h"
#include "host/viewservice.h"

#include "core/actionmanager.h"

static Standin::ActionService *currentService = nullptr;

namespace Core {

bool ActionManager::registerAction(QAction *action, const QString &id, const QString &context)
{
    Standin::record("registerAction " + id + " " + context);
    if (!currentService || !action || Standin::isRefused("registerAction"))
        return false;
    return currentService->add(action, id, context);
}

} // namespace Core

namespace Standin {

ActionService::ActionService(ViewService *viewService)
    : views(viewService)
{
    currentService = this;
    connect(views, SIGNAL(activeContextsChanged()), this, SLOT(refreshProxies()));
}

ActionService::~ActionService()
{
    currentService = nullptr;
}

ActionService *ActionService::current()
{
    return currentService;
}

bool ActionService::add(QAction *action, const QString &id, const QString &context)
{
    const Place place(id, context);
    QAction *known = actions.value(place);
    if (known)
        return known == action;

    actions.insert(place, action);
    connect(action, SIGNAL(destroyed(QObject *)), this, SLOT(onActionDestroyed(QObject *)),
            Qt::UniqueConnection);
    refreshProxies();
    return true;
}

QAction *ActionService::activeAction(const QString &id) const
{
    const QStringList contexts = views->activeContexts();
    for (const QString &context : contexts) {
        if (QAction *action = actions.value(Place(id, context)))
            return action;
    }
    return nullptr;
}

QAction *ActionService::proxyAction(const QString &id)
{
    ProxyAction *&proxy = proxies[id];
    if (!proxy) {
        proxy = new ProxyAction(this);
        proxy->follow(activeAction(id));
    }
    return proxy;
}

void ActionService::refreshProxies()
{
    for (auto proxy = proxies.cbegin(); proxy != proxies.cend(); ++proxy)
        (*proxy)->follow(activeAction(proxy.key()));
}

void ActionService::onActionDestroyed(QObject *action)
{
    for (auto entry = actions.begin(); entry != actions.end();)
        entry = *entry == action ? actions.erase(entry) : std::next(entry);
    refreshProxies();
}

} // namespace Standin
