// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QString>
#include <QStringList>

namespace Standin {

class Progress;

/// What one run of a tool may use.
struct ToolLimits
{
    qint64 memoryBytes = qint64(4) << 30; ///< Address space; 0 for no limit.
    qint64 fileBytes = qint64(2) << 30;   ///< Longest file that it may write; 0 for no limit.
    int seconds = 120;                    ///< Wall time, and the same again of processor time.
};

/// A program with its arguments, as the system call takes them: no shell reads any of it.
struct ToolCommand
{
    QString program; ///< Absolute path.
    QStringList arguments;
    QString directory;  ///< Working directory; also the run's home and place for temporary files.
    QString outputFile; ///< Receives the standard output; empty throws it away.
    QString errorFile;  ///< Receives the standard error; empty throws it away.
    bool makesText = false; ///< What it writes is taken into memory as a whole.
};

enum class ToolOutcome {
    Finished,    ///< It ended by itself; see the exit code.
    Crashed,     ///< A signal ended it, a limit's among them.
    OutOfMemory, ///< It gave up because it got no memory, by what it said.
    NotStarted,  ///< There is no such program, or it can't be run.
    TimedOut,
    Cancelled,
};

struct ToolResult
{
    ToolOutcome outcome = ToolOutcome::NotStarted;
    int exitCode = -1;

    bool succeeded() const { return outcome == ToolOutcome::Finished && exitCode == 0; }
};

/// Runs a tool to its end while the caller's event loop turns.
///
/// The tool gets a process group of its own, a small clean environment, no standard input, and the
/// limits. The whole group is killed when the time is over, when \a progress is cancelled, and when
/// the loop ends for another reason, as it does when the application quits, which then cancels \a
/// progress; and the tool dies with this process.
///
/// A program of C++ that ends for want of memory says so in its error file.
HOST_EXPORT ToolResult runTool(const ToolCommand &command, const ToolLimits &limits,
                               Progress &progress);

/// True if a run crashed by a limit, as far as that can be told: then others of the same design
/// will.
HOST_EXPORT bool ranIntoLimit(const ToolResult &result);

/// One sentence that says why a run failed, for the log: names the program, and the limit that it
/// ran into as far as that can be told.
HOST_EXPORT QString describeFailure(const QString &program, const ToolResult &result,
                                    const ToolLimits &limits);

/// Finds a tool: \a configured if it isn't empty, else \a name in PATH, else in /usr/bin.
///
/// \return an absolute path; if nothing is found, \a configured, or \a name in /usr/bin, so that
/// the
///         failing start has a name to report.
HOST_EXPORT QString findTool(const QString &configured, const QString &name);

/// Something that changes when the program at \a path is replaced: its real path, size and time of
/// change. Empty if there is no such program.
HOST_EXPORT QByteArray toolIdentity(const QString &path);

} // namespace Standin
