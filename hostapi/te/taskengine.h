// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

namespace TE {

class DesignManager;
class FlowManager;

/// The way to the host's design services.
class HOST_EXPORT TaskEngine
{
public:
    /// The one engine; never null.
    static TaskEngine *instance();

    /// Never null; owned by the engine.
    DesignManager *designManager() const;

    /// Never null; owned by the engine.
    FlowManager *flowManager() const;

private:
    TaskEngine() = default;
};

} // namespace TE
