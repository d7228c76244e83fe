// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

namespace QUtil {

class IEvent;

/// Receives events of the names that it is subscribed to.
class HOST_EXPORT IEventHandler
{
public:
    virtual ~IEventHandler();

    /// Called on the user interface thread for each event. \a event is valid during the call only.
    virtual void handleIEvent(const IEvent *event) = 0;
};

} // namespace QUtil
