// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/designgraph.h"
#include "frontend/designsources.h"
#include "frontend/toollog.h"
#include "frontend/toolrunner.h"
#include "frontend/vhdlrepair.h"
#include "frontend/vhdlsignals.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVector>

namespace Standin {

class DirectoryFarm;
class Progress;
class ToolBox;

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
    /// after the others. What holds an error is taken out, so that the rest can be compiled.
    ///
    /// \param log receives an "ERROR" line for each error.
    /// \return false if nothing can be compiled.
    bool analyse(QStringList *log);

    /// Synthesizes the entity \a entity with \a generics. Black boxes are left out of the text, and
    /// so is what can't be synthesized.
    ///
    /// \param log receives an "ERROR" line for each error.
    /// \return false if nothing can be synthesized.
    bool synthesize(const QByteArray &entity, const QVector<Setting> &generics,
                    SynthesizedEntity *result, QStringList *log);

private:
    /// One source file.
    struct Part
    {
        QString copy; ///< Name of the copy in the private directory.
        QString library;
        VhdlRepair repair;
        QVector<VhdlInsertion> insertions;
        bool isLeftOut = false;
    };

    struct Run
    {
        ToolResult result;
        QVector<ToolMessage> errors; ///< The other messages have gone to the log.
        QStringList log;
    };

    /// A file that can't be compiled now.
    struct Refusal
    {
        int part;
        Run run;
    };

    QStringList options(const QString &library) const;
    Run run(const QStringList &arguments, const QString &output);
    ToolMessage placed(const ToolMessage &message) const;
    QString lineOf(const ToolMessage &message) const;
    QStringList linesOf(const QVector<ToolMessage> &messages) const;
    bool mustStop(const Run &run) const;
    Run synthesizeOnce(const QByteArray &entity, const QVector<Setting> &generics);

    // ghdlretries.cpp
    Run compile(const QVector<int> &wanted);
    QVector<Refusal> compileWhatCanBe(const QVector<int> &wanted);
    bool compileAll();
    bool dependsOnOthers(const ToolMessage &error, const QSet<QByteArray> &names) const;
    bool repairRefused(const QVector<Refusal> &refused);
    bool repairPart(int part, QVector<ToolMessage> errors, const QSet<QByteArray> &others);
    bool takeOut(int part, const QVector<ToolMessage> &errors);
    void leaveOut(int part, const QString &reason);
    bool isolateCrash(const QByteArray &entity, const QVector<Setting> &generics, Run *last);
    bool repairSynthesis(const QByteArray &entity, const QVector<Setting> &generics, Run *last);

    QHash<QString, QString> namesOf(const DesignGraph &graph) const;

    const DesignSources &sources;
    DirectoryFarm &farm;
    ToolBox &tools;
    Progress &progress;
    QVector<Part> parts;
    QHash<QString, int> partOfCopy;
    QVector<int> order;     ///< In which the parts were compiled.
    bool isStopped = false; ///< See mustStop().
    VhdlLosses losses;
    QStringList found; ///< What was taken out, as lines of the log.
    QByteArray standard;
    DesignGraph entities;
    QHash<QByteArray, QString> libraries; ///< Lower-case entity to its library.
};

} // namespace Standin
