// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

namespace Core {

class IProject;

/// Knows the project that the user works on.
class HOST_EXPORT ProjectManager
{
public:
    /// The project that is open, or null. Owned by the host.
    static IProject *currentProject();
};

} // namespace Core
