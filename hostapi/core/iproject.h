// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QString>

namespace Core {

/// A project of the host, as far as plug-ins change it.
class HOST_EXPORT IProject
{
public:
    virtual ~IProject();

    /// Adds the file \a path, absolute, to the project.
    /// \return false if it can't be added, or is in the project already.
    virtual bool addFile(const QString &path) = 0;
};

} // namespace Core
