// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/objectpool.h"

#include "host/calllog.h"

#include "addin/iplugin.h"

#include <QPointer>

namespace {

struct Entry
{
    Addin::IPlugin *owner = nullptr;
    QPointer<QObject> object; // something else may have deleted it
};

} // namespace

// Never destroyed, so that a plug-in object that outlives main() still finds the pool.
static QList<Entry> &entries()
{
    static auto *all = new QList<Entry>;
    return *all;
}

namespace Addin {

IPlugin::IPlugin() = default;

IPlugin::~IPlugin()
{
    Standin::ObjectPool::instance()->release(this);
}

void IPlugin::addAutoReleasedObject(QObject *object)
{
    if (!object)
        return;
    Standin::record("addAutoReleasedObject " + QLatin1String(object->metaObject()->className()));
    Standin::ObjectPool::instance()->add(this, object);
}

} // namespace Addin

namespace Standin {

ObjectPool *ObjectPool::instance()
{
    static ObjectPool pool;
    return &pool;
}

QList<QObject *> ObjectPool::objects() const
{
    QList<QObject *> alive;
    for (const Entry &entry : qAsConst(entries())) {
        if (entry.object)
            alive.append(entry.object);
    }
    return alive;
}

void ObjectPool::add(Addin::IPlugin *owner, QObject *object)
{
    if (!objects().contains(object))
        entries().append({owner, object});
}

void ObjectPool::release(Addin::IPlugin *owner)
{
    // One at a time: a destructor may add or delete others.
    QList<Entry> &all = entries();
    int i = all.size() - 1;
    while (i >= 0) {
        if (all.at(i).owner != owner) {
            --i;
            continue;
        }
        delete all.takeAt(i).object;
        i = all.size() - 1;
    }
}

} // namespace Standin
