// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

class QWidget;

namespace FATHOM {
class RtlNetlist;
}

namespace Standin {

/// What the extraction runs with. The defaults are those of the application; tests change them.
struct ExtractionOptions
{
    QString verilator;  ///< Program; empty looks for "verilator_bin" in PATH and /usr/bin.
    QString ghdl;       ///< Program; empty looks for "ghdl" in PATH and /usr/bin.
    QString bubblewrap; ///< Program; empty looks for "bwrap" in PATH and /usr/bin.

    /// Directory of the results kept on disk, made when needed; empty stands for "extraction" below
    /// QStandardPaths::CacheLocation.
    QString cacheDirectory;
    qint64 cacheBytes = qint64(512) << 20; ///< Most that is kept there; 0 keeps nothing on disk.

    qint64 memoryBytes = qint64(4) << 30;  ///< Most memory of one tool run.
    int timeoutSeconds = 120;              ///< Longest one tool run may take.
    qint64 outputBytes = qint64(2) << 30;  ///< Longest file that a tool may write,
    qint64 textBytes = qint64(256) << 20;  ///< and if it is a text that is taken into memory.
    qint64 sourceBytes = qint64(64) << 20; ///< Longest source file that is taken.

    int dialogDelay = 500; ///< Milliseconds after which a reading shows its dialog.
};

/// The net extraction service: reads the sources of a design with whatever front end fits, and
/// delivers candidate tops, modules and log, then the netlist.
///
/// Both operations run a nested event loop behind a modal progress dialog with a Cancel button, so
/// anything may happen during a call, another call included; the later one to end is then the one
/// whose design catchNets() delivers. An Extraction may be destroyed during a call: the call then
/// ends as cancelled.
///
/// Nothing in the design's names or files reaches a shell. Tools run in a private directory with
/// limits on memory, time and output, and no tool outlives the call.
class HOST_EXPORT Extraction
{
public:
    explicit Extraction(const ExtractionOptions &options = ExtractionOptions());
    ~Extraction();

    Extraction(const Extraction &) = delete;
    Extraction &operator=(const Extraction &) = delete;

    /// Reads the design that \a info describes, keys as in designinfo.h.
    ///
    /// If the top module is known, because \a info names it or because only one module isn't
    /// instantiated, the design is elaborated too, so that errors of the elaboration are found in
    /// \a messages and catchNets() has its answer ready. What hasn't changed since it was last read
    /// isn't read again.
    ///
    /// \param topModules set to the modules that no other module instantiates, in order of
    ///        declaration; with a top module in \a info to this one alone, or to nothing if there
    ///        is no such module.
    /// \param modules set to the modules below and with the top module that \a info names, or to
    ///        all modules; to nothing if there is no such module.
    /// \param messages set to the log. Lines that report an error have the form
    ///        "ERROR: file:line:column: text", as far as a place is known, others begin with
    ///        "WARNING: " or "INFO: ". Errors don't keep the rest of the design from being read:
    ///        the netlist then lacks what they are in. A call that the user cancels ends with
    ///        the line "ERROR: cancelled".
    /// \param parent parent of the progress dialog; may be null.
    void catchModules(QStringList &topModules, QStringList &modules, QStringList &messages,
                      const QMap<QString, QVariant> &info, QWidget *parent);

    /// Delivers the netlist of the design that catchModules() read last.
    ///
    /// \param netlist set to a new netlist that the caller owns; never null, and its top never
    /// null.
    ///        If there is nothing to deliver (no unique top, a top that can't be read at all,
    ///        cancelled), the top has the name of the top module as far as it is known, else "",
    ///        and nothing below.
    /// \param log set to the messages of catchModules(), followed by those of this call.
    /// \param parent parent of the progress dialog; may be null.
    void catchNets(FATHOM::RtlNetlist **netlist, QStringList &log, QWidget *parent);

    /// How many tools were started since construction, failed starts included.
    int toolRuns() const;

private:
    struct Private;
    std::shared_ptr<Private> d;
};

} // namespace Standin
