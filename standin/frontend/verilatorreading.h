// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "frontend/directoryfarm.h"
#include "frontend/frontend.h"
#include "frontend/ghdlstage.h"
#include "frontend/toollog.h"
#include "frontend/toolrunner.h"
#include "frontend/verilogpreprocessor.h"

namespace Standin {

class DesignRepair;

/// The steps of VerilatorFrontEnd for one design.
class VerilatorReading : public Reading
{
public:
    VerilatorReading(const DesignSources &sources, ToolBox &tools, Progress &progress);

    /// Name of the file that holds the stubs, as the XML has it.
    static QString stubFile() { return "stubs.v"; }

    ModuleLists scan(QStringList *log) override;
    bool elaborate(const QString &top, Artifact *artifact, QStringList *log) override;
    QStringList dependencies() const override { return preprocessed.included; }
    QStringList absentFiles() const override;

private:
    struct Attempt
    {
        ToolResult result;
        QVector<ToolMessage> messages;
        QStringList log;
    };

    PreprocessedText preprocess();
    PreprocessedText withoutEndlessSources(PreprocessedText text);
    bool isVhdlTop(const QString &top) const;
    bool translateVhdl(const QString &top, Artifact *artifact, QStringList *log);
    bool translateEntities(const QString &top, Artifact *artifact, QStringList *log);
    bool addEntity(const QByteArray &entity, const InstanceUse *use, const QString &calledAs,
                   Artifact *artifact, QStringList *log);
    QVector<Setting> genericsOf(const ScannedModule &entity, const InstanceUse &use,
                                QStringList *log) const;
    QVector<Setting> genericsOfTop(const ScannedModule &entity) const;
    void fitInstances();
    ToolMessage asInSources(const ToolMessage &message) const;
    QByteArray designText() const;
    void closeTop(const QString &top, QStringList *log);
    Attempt run(const QString &top, const QByteArray &text);
    QStringList arguments(const QString &top) const;
    QStringList parametersOf(const QString &top) const;
    bool retryWithoutChecks(const QString &top, Attempt *attempt, QStringList *log);
    Attempt runVariant(const VerilogVariant &wanted, const QString &top);
    VerilogVariant betterKeywords(const VerilogVariant &one,
                                  const QVector<ToolMessage> &messagesOfOne,
                                  const VerilogVariant &other,
                                  const QVector<ToolMessage> &messagesOfOther) const;
    bool retryWithOtherKeywords(const QString &top, Attempt *attempt, QStringList *log);
    bool retryAsVerilator(const QString &top, Attempt *attempt, QStringList *log);
    void repair(const QString &top, Attempt *attempt);
    bool breakCircles(DesignRepair *repair, QStringList *log) const;
    Attempt isolateCrash(const QString &top, DesignRepair *repair, QStringList *errors);
    bool isReported(int source, const QStringList &log) const;

    DesignSources sources;
    ToolBox &tools;
    Progress &progress;
    DirectoryFarm farm;
    VerilogPreprocessor preprocessor;
    GhdlStage ghdl;
    VerilogVariant variant;
    PreprocessedText preprocessed;
    DesignGraph design;    ///< Of both languages.
    QByteArray translated; ///< The modules made from VHDL, with directives that name their files.
    QStringList translatedFiles;
    QSet<QByteArray> translatedModules;
    QHash<QByteArray, QByteArray> entityModules; ///< By entity and generics.
    QHash<QByteArray, int> entityVariants;       ///< How many modules there are of each entity.
    bool leavesOutChecks = false;                ///< See retryWithoutChecks().
};

} // namespace Standin
