// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QString>
#include <QVariant>

namespace QUtil {

/// An event on the host's bus: a name and values under keys.
class HOST_EXPORT IEvent
{
public:
    virtual ~IEvent();

    /// The event's name, such as "TE.File.Add".
    virtual QString type() const = 0;

    /// The value under \a key; an invalid variant if the event has none.
    virtual QVariant get(const QString &key) const = 0;
};

} // namespace QUtil
