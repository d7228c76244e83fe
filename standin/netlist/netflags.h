// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFlags>

namespace Standin {

/// What a single net or a bit of a bus is not fit for.
enum NetFlag {
    NoProbeIn = 1,  ///< It carries nothing to watch.
    NoProbeOut = 2, ///< A probe can't drive it.
};
Q_DECLARE_FLAGS(NetFlags, NetFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(NetFlags)

} // namespace Standin
