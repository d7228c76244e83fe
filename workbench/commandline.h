// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

namespace Workbench {

/// Exit codes of the workbench's programs.
enum ExitCode {
    Success = 0,
    Failure = 1, ///< What was asked for can't be done; the cause stands in stderr.
    UsageError = 2,
};

/// What the arguments of the workbench ask for.
struct CommandLine
{
    enum Request {
        Run,
        PrintText, ///< Print \a text and end well: help and version.
        Refuse,    ///< Print \a text to stderr and end with UsageError.
    };

    Request request = Run;
    QString text;

    // All paths are absolute.
    QString project;         ///< EDAM file; empty if none is named.
    QStringList designFiles; ///< Files that make an ad-hoc project, in the order given.
    QStringList documents;   ///< Files to open in views, in the order given.
    QString top;             ///< Top module to use instead of the project's; empty if not given.
    QString plugin;          ///< Plug-in library; empty to look for it.
    bool dark = false;       ///< Dark colours whatever the desktop says.
};

/// Reads \a arguments, the program's name first. Nothing is looked up in the file system.
CommandLine parseCommandLine(const QStringList &arguments);

} // namespace Workbench
