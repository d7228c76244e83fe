// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/extraction.h"
#include "frontend/toolrunner.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Standin {

class Progress;

/// The tools that the front ends use, as the options say, and the count of their runs.
class HOST_EXPORT ToolBox
{
public:
    explicit ToolBox(const ExtractionOptions &options);

    const ExtractionOptions &options() const { return settings; }
    ToolLimits limitsOf(const ToolCommand &command) const;
    int runs() const { return started; }

    QString verilator() const;
    QString ghdl() const;

    /// Runs a tool that doesn't write anywhere but where it is told, and once more if it says that
    /// it got no memory. Its files are then those of the second run, and both count as runs().
    ToolResult run(const ToolCommand &command, Progress &progress);

    /// Runs a tool that the design can make write anywhere: in a file system that is read-only but
    /// for the command's directory, without network.
    ///
    /// Where that can't be had it runs without, and \a log receives a warning, once a ToolBox.
    ToolResult runConfined(const ToolCommand &command, Progress &progress, QStringList *log);

private:
    enum class Confinement { Unknown, Works, WorksWithoutProc, Missing };

    ToolCommand confined(const ToolCommand &command, Confinement kind) const;
    Confinement probe(const QString &directory, Progress &progress);

    ExtractionOptions settings;
    int started = 0;
    Confinement confinement = Confinement::Unknown;
    bool warned = false;
};

} // namespace Standin
