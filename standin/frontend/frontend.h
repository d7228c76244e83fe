// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/designgraph.h"
#include "frontend/designsources.h"
#include "netlist/moduletable.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>

namespace Standin {

class Progress;
class ToolBox;

/// The elaborated design as a front end leaves it: a file that the same front end can load again,
/// in this process or a later one.
struct Artifact
{
    QString file;
    QString top;
    QStringList vhdlFiles;               ///< See XmlReadOptions.
    QHash<QString, QString> sourceNames; ///< See XmlReadOptions.
};

/// One reading of one design. It holds what the steps share, such as the private directory, and
/// everything goes with it. The steps run nested event loops; a step that was cancelled ends early
/// with whatever it has.
class HOST_EXPORT Reading
{
public:
    virtual ~Reading();

    /// Finds the modules. Comes first.
    ///
    /// \param log receives what was noticed.
    /// \return the lists for the top module of the sources, as complete as can be in spite of
    /// errors.
    virtual ModuleLists scan(QStringList *log) = 0;

    /// Elaborates the design below \a top, one of the modules found.
    ///
    /// \param top may be empty: then the sources are only checked, and there is no artifact.
    /// \param log receives what was noticed.
    /// \return true if \a artifact was set, which in spite of errors holds what can be read; else
    /// \a log has an "ERROR" line, unless \a top is empty.
    virtual bool elaborate(const QString &top, Artifact *artifact, QStringList *log) = 0;

    /// Files read besides the sources.
    virtual QStringList dependencies() const { return QStringList(); }

    /// Paths at which the reading would have found another file than it did, had there been one.
    virtual QStringList absentFiles() const { return QStringList(); }
};

/// A way to read a design. Another one is one more class, added to frontEnds().
class HOST_EXPORT FrontEnd
{
public:
    virtual ~FrontEnd();

    /// A name for log and cache.
    virtual QString name() const = 0;

    /// True if this front end can read a design with these files.
    virtual bool accepts(const DesignSources &sources) const = 0;

    /// Changes whenever a tool that this front end needs for \a sources is replaced.
    virtual QByteArray identity(const DesignSources &sources, const ToolBox &tools) const = 0;

    /// False if reading again costs no more than keeping the result.
    virtual bool isWorthKeeping() const { return true; }

    virtual std::unique_ptr<Reading> read(const DesignSources &sources, ToolBox &tools,
                                          Progress &progress) const = 0;

    /// Loads an artifact. It runs in a thread of its own.
    ///
    /// \return false, and the reason in \a error, if it can't be read.
    virtual bool load(const Artifact &artifact, ModuleTable *table, QString *error) const = 0;
};

/// All front ends; the first that accepts a design reads it.
HOST_EXPORT const std::vector<std::unique_ptr<FrontEnd>> &frontEnds();

} // namespace Standin
