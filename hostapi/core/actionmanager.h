// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QString>

class QAction;

namespace Core {

/// The host's table of actions: menu entries and shortcuts stand for an identifier, and the active
/// context decides which plug-in's action they trigger.
class HOST_EXPORT ActionManager
{
public:
    /// Makes \a action what the identifier \a id stands for while \a context is active.
    ///
    /// \param action stays the caller's; the registration ends by itself when it is deleted.
    /// \return false if another action is registered for the same two names already.
    static bool registerAction(QAction *action, const QString &id, const QString &context);
};

} // namespace Core
