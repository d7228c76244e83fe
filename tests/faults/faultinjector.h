// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Makes the system refuse, or the process end, at a chosen call that changes a directory.
///
/// The functions of the C library by which files are opened, written, synchronised, renamed,
/// removed and closed are replaced in the whole program, Qt's libraries included, and pass through
/// unless the injector is armed. Calls count as steps if they name something below the chosen
/// directory, or go to a file that was opened there while armed.
namespace Faults {

enum class Kind {
    None,       ///< Only counts.
    KillBefore, ///< The process is killed, as by power that fails, ahead of the step.
    KillAfter,  ///< It is killed when the step is done.
    KillAmidst, ///< It is killed when a write has written half; as KillAfter for other steps.
    Fail,       ///< The step fails.
    FailOn,     ///< This step and all later writes and openings fail.
    Shorten     ///< A write writes half and says so, which is no error.
};

/// Arms the injector.
///
/// \param directory absolute, as the program names it.
/// \param step counted from 1.
/// \param error the errno of failing steps.
void arm(const QString &directory, int step, Kind kind, int error = 0);

/// Plays, while armed, a file system on which a file can't be made without a name.
void refuseUnnamedFiles(bool on);

/// Lets everything pass again, and returns the names of the functions called since arm(), one for
/// each step.
QStringList disarm();

} // namespace Faults
