// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Workbench {

/// One line of the extraction's log, taken apart.
struct LogLine
{
    enum Severity { Information, Warning, Error };

    Severity severity = Information;
    QString text;   ///< What is said, without severity and place.
    QString file;   ///< Absolute path as the log names it; empty if no place is named.
    int line = 0;   ///< Counted from 1; 0 if unknown.
    int column = 0; ///< Counted from 1; 0 if unknown.
};

/// Reads \a text of the form "ERROR: file:line:column: text", "WARNING: ..." or "INFO: ...", where
/// the place, or the column alone, may be missing. A text without one of these words is information
/// as it stands.
LogLine parseLogLine(const QString &text);

} // namespace Workbench
