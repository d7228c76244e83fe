// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Standin {

class DirectoryFarm;

/// Most lines that one tool run adds to the log; the number of those left out is said.
constexpr int MaximumLogLines = 1000;

/// Turns what Verilator wrote into lines "ERROR: file:line:column: text" and "WARNING: ...", with
/// the real paths of files. Quotations of the source, hints and totals are left out, and so is
/// every repetition.
HOST_EXPORT QStringList rewriteVerilatorLog(const QByteArray &text, const DirectoryFarm &farm);

/// The same for GHDL, whose error lines carry no word that says so.
///
/// \param failed false makes warnings of what would be errors.
HOST_EXPORT QStringList rewriteGhdlLog(const QByteArray &text, const DirectoryFarm &farm,
                                       bool failed);

/// True if a line of \a log reports an error.
HOST_EXPORT bool hasErrors(const QStringList &log);

/// \a log with its errors turned into warnings, for a reading that succeeded after all.
HOST_EXPORT QStringList asWarnings(const QStringList &log);

/// A file name as one line of text: control characters are written as escapes.
HOST_EXPORT QString printable(const QString &name);

} // namespace Standin
