// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

namespace Standin {

class Event;

/// The sending side of the host's event bus; QUtil::EventManager is the receiving side. There is
/// one bus in the process, which works with and without a Host.
class HOST_EXPORT EventBus
{
public:
    static EventBus *instance();

    /// Hands \a event to every handler that is subscribed to its name now, in the order of
    /// subscription, and returns when the last one has returned.
    ///
    /// A handler that is unsubscribed in the meantime and hasn't been reached is left out; one that
    /// is subscribed in the meantime hears from the next event on. Handlers may send events.
    void send(const Event &event);

    /// How many subscriptions there are, each handler counted once for each name.
    int subscriptionCount() const;

private:
    EventBus() = default;
};

} // namespace Standin
