// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QString>

namespace QUtil {

class IEventHandler;

/// The host's event bus.
///
/// An event reaches the handlers of its name in the order of their subscription. A handler may
/// subscribe, unsubscribe and destroy handlers, itself included, while it is called.
class HOST_EXPORT EventManager
{
public:
    /// The one event manager; never null.
    static EventManager *instance();

    /// From here on \a handler hears events named \a eventName. A second subscription to the same
    /// name changes nothing. The handler isn't owned and must unsubscribe before it is destroyed.
    void subscribe(IEventHandler *handler, const QString &eventName);

    /// Ends one subscription; nothing happens if there is none.
    void unsubscribe(IEventHandler *handler, const QString &eventName);

    /// Ends all subscriptions of \a handler.
    void unsubscribeAll(IEventHandler *handler);

private:
    EventManager() = default;
};

} // namespace QUtil
