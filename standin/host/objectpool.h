// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QList>
#include <QObject>

namespace Addin {
class IPlugin;
}

namespace Standin {

/// What the plug-ins have handed to the host, found by type. There is one pool in the process,
/// which works with and without a Host.
class HOST_EXPORT ObjectPool
{
public:
    static ObjectPool *instance();

    /// All objects that are alive, in the order in which they came.
    QList<QObject *> objects() const;

    /// The objects of the type \a Type, or of one derived from it, in the order in which they came.
    template<typename Type>
    QList<Type *> objects() const
    {
        QList<Type *> found;
        const QList<QObject *> all = objects();
        for (QObject *object : all) {
            if (auto *wanted = qobject_cast<Type *>(object))
                found.append(wanted);
        }
        return found;
    }

    /// Takes \a object over in the name of \a owner. An object that is in the pool already stays
    /// as it is.
    void add(Addin::IPlugin *owner, QObject *object);

    /// Deletes what came from \a owner and is still alive, newest first.
    void release(Addin::IPlugin *owner);

private:
    ObjectPool() = default;
};

} // namespace Standin
