// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"
#include "te/designfile.h"

#include <QMap>
#include <QString>
#include <QVariant>

namespace TE {

/// What the host knows of the current project's design.
class HOST_EXPORT DesignManager
{
public:
    virtual ~DesignManager();

    /// The design information map of the current project: "Top" holds the top module that the user
    /// set, if any; "Files" a list of maps, one for each enabled source file in compile order, each
    /// with the absolute path under "Path". Further keys may be present. Empty without a project.
    virtual QMap<QString, QVariant> getSourceFileInfo() const = 0;

    /// The project option \a name; an invalid variant if it isn't set. Among the names are
    /// "Synthesize_tool" (string), "IncludePath" (string list; relative ones are meant relative to
    /// workingDir()), "Verilog_Standard" (string) and "TopModule" (string).
    virtual QVariant getOptionValue(const QString &name) const = 0;

    /// The project's directory, absolute; empty without a project.
    virtual QString workingDir() const = 0;

    /// The record of the project file \a path; a default record if it isn't in the project.
    virtual DesignFile getFileInfo(const QString &path) const = 0;
};

} // namespace TE
