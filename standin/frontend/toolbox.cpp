// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/toolbox.h"

#include "frontend/progress.h"

#include <QFileInfo>

#include <algorithm>

namespace Standin {

ToolBox::ToolBox(const ExtractionOptions &options)
    : settings(options)
{
}

ToolLimits ToolBox::limitsOf(const ToolCommand &command) const
{
    ToolLimits limits;
    limits.memoryBytes = settings.memoryBytes;
    limits.fileBytes = settings.outputBytes;
    if (command.makesText)
        limits.fileBytes = std::min(limits.fileBytes, settings.textBytes);
    limits.seconds = settings.timeoutSeconds;
    return limits;
}

QString ToolBox::verilator() const
{
    // The script called "verilator" goes through a shell; this is the program behind it.
    return findTool(settings.verilator, "verilator_bin");
}

QString ToolBox::ghdl() const
{
    return findTool(settings.ghdl, "ghdl");
}

ToolResult ToolBox::run(const ToolCommand &command, Progress &progress)
{
    ++started;
    const ToolResult result = runTool(command, limitsOf(command), progress);
    if (result.outcome != ToolOutcome::OutOfMemory)
        return result;
    // A tool that has lost its way may ask for more memory than there is, but hardly twice.
    ++started;
    return runTool(command, limitsOf(command), progress);
}

ToolCommand ToolBox::confined(const ToolCommand &command, Confinement kind) const
{
    ToolCommand outer = command;
    outer.program = findTool(settings.bubblewrap, "bwrap");
    outer.arguments = QStringList{"--ro-bind", "/", "/", "--dev", "/dev", "--tmpfs", "/tmp"};
    if (kind == Confinement::Works)
        outer.arguments << "--proc"
                        << "/proc";
    outer.arguments << "--bind" << command.directory << command.directory << "--unshare-all"
                    << "--die-with-parent"
                    << "--new-session"
                    << "--chdir" << command.directory << "--" << command.program
                    << command.arguments;
    return outer;
}

/// Tries confinement on a program that does nothing. Containers often forbid the name spaces that
/// it needs, or only a fresh /proc.
ToolBox::Confinement ToolBox::probe(const QString &directory, Progress &progress)
{
    if (!QFileInfo(findTool(settings.bubblewrap, "bwrap")).isExecutable())
        return Confinement::Missing;
    ToolCommand nothing;
    nothing.program = "/bin/true";
    nothing.directory = directory;
    for (Confinement kind : {Confinement::Works, Confinement::WorksWithoutProc}) {
        if (run(confined(nothing, kind), progress).succeeded())
            return kind;
    }
    return Confinement::Missing;
}

/// Bubblewrap ends with 128 and the signal that the program inside died of.
static ToolResult resultInside(ToolResult result)
{
    static constexpr int Signalled = 128;
    if (result.outcome == ToolOutcome::Finished && result.exitCode > Signalled) {
        result.outcome = ToolOutcome::Crashed;
        result.exitCode -= Signalled;
    }
    return result;
}

ToolResult ToolBox::runConfined(const ToolCommand &command, Progress &progress, QStringList *log)
{
    // What confines it would only say that it has failed.
    if (!QFileInfo(command.program).isExecutable())
        return run(command, progress);
    if (confinement == Confinement::Unknown) {
        const Confinement found = probe(command.directory, progress);
        if (progress.isCancelled()) {
            ToolResult result;
            result.outcome = ToolOutcome::Cancelled;
            return result;
        }
        confinement = found;
    }
    if (confinement != Confinement::Missing)
        return resultInside(run(confined(command, confinement), progress));
    if (!warned)
        log->append("WARNING: bubblewrap is missing or can't be used here, so GHDL runs without "
                    "confinement; VHDL from a source that you don't trust could write to your "
                    "files");
    warned = true;
    return run(command, progress);
}

} // namespace Standin
