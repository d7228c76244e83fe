// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/designgraph.h"
#include "frontend/designsources.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>

namespace Standin {

class DirectoryFarm;
class Progress;
class ToolBox;
struct ToolResult;

/// One entity with everything below it, as Verilog text.
struct SynthesizedEntity
{
    QByteArray text;
    DesignGraph graph;                   ///< The modules in the text.
    QHash<QString, QString> sourceNames; ///< Module in the text to entity, where they differ.
};

/// Turns the VHDL files of a design into Verilog with GHDL's synthesis.
///
/// GHDL evaluates functions of the design, and those can write files. So it runs confined, and
/// nothing is ever simulated.
class HOST_EXPORT GhdlStage
{
public:
    /// The arguments must outlive the stage.
    GhdlStage(const DesignSources &sources, DirectoryFarm &farm, ToolBox &tools,
              Progress &progress);

    /// Adds the entities of all files to \a graph.
    void scan(DesignGraph *graph);

    /// Compiles all files. They need not be in order: files that lack something are taken again
    /// after the others.
    ///
    /// \param log receives an "ERROR" line in case of failure.
    bool analyse(QStringList *log);

    /// Synthesizes the entity \a entity with \a generics. Black boxes are left out of the text.
    ///
    /// \param log receives an "ERROR" line in case of failure.
    bool synthesize(const QByteArray &entity, const QVector<Setting> &generics,
                    SynthesizedEntity *result, QStringList *log);

private:
    struct Unit
    {
        QString copy; ///< Name of the copy in the private directory.
        QString library;
    };

    QStringList options(const QString &library) const;
    ToolResult run(const QStringList &arguments, const QString &output, QStringList *log);
    bool analyseAll(QStringList *log);
    bool analyseOneByOne(QStringList *log);
    QHash<QString, QString> namesOf(const DesignGraph &graph) const;

    const DesignSources &sources;
    DirectoryFarm &farm;
    ToolBox &tools;
    Progress &progress;
    QVector<Unit> units;
    QByteArray standard;
    bool failedHard = false; ///< GHDL itself failed, so that no other try helps.
    DesignGraph entities;
    QHash<QByteArray, QString> libraries; ///< Lower-case entity to its library.
};

/// \a text without the modules of \a graph that are empty and no entity of \a entities.
HOST_EXPORT QByteArray withoutBlackBoxes(const QByteArray &text, const DesignGraph &graph,
                                         const DesignGraph &entities);

} // namespace Standin
