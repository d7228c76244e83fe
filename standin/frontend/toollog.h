// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Standin {

class DirectoryFarm;

/// Most lines that one tool run adds to the log; the number of those left out is said.
constexpr int MaximumLogLines = 1000;

/// One message of a tool, as it wrote it.
struct ToolMessage
{
    bool isError = false;
    bool isInternal = false; ///< The tool gave up.
    QByteArray code;         ///< As in "PINNOTFOUND"; mostly empty.
    QString file;            ///< Private name; empty if there is no place.
    int line = 0;
    int column = 0; ///< From 1; 0 if it isn't known.
    QString text;
};

/// The messages in what Verilator wrote, without quotations of the source, hints and totals.
HOST_EXPORT QVector<ToolMessage> readVerilatorLog(const QByteArray &text);

/// "ERROR: file:line:column: text" or "WARNING: ...", with the real path of the file. A place in a
/// file of ours is left out. The path and the text are printable, since both come from the design.
HOST_EXPORT QString logLine(const ToolMessage &message, const DirectoryFarm &farm);

/// The lines of \a messages, without repetitions.
HOST_EXPORT QStringList logLines(const QVector<ToolMessage> &messages, const DirectoryFarm &farm);

/// Turns what Verilator wrote into lines "ERROR: file:line:column: text" and "WARNING: ...", with
/// the real paths of files. Quotations of the source, hints and totals are left out, and so is
/// every repetition.
HOST_EXPORT QStringList rewriteVerilatorLog(const QByteArray &text, const DirectoryFarm &farm);

/// The messages in what GHDL wrote, without quotations of the source and notes.
HOST_EXPORT QVector<ToolMessage> readGhdlLog(const QByteArray &text);

/// The same for GHDL, whose error lines carry no word that says so.
///
/// \param failed false makes warnings of what would be errors.
HOST_EXPORT QStringList rewriteGhdlLog(const QByteArray &text, const DirectoryFarm &farm,
                                       bool failed);

/// True if a line of \a log reports an error.
HOST_EXPORT bool hasErrors(const QStringList &log);

/// \a log with its errors turned into warnings, for a reading that succeeded after all.
HOST_EXPORT QStringList asWarnings(const QStringList &log);

/// A name as one line of text, in which what is seen is what there is: control characters,
/// separators of lines and changes of the writing direction are written as escapes.
HOST_EXPORT QString printable(const QString &name);

} // namespace Standin
