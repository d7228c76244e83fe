// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/ghdlstage.h"

#include "frontend/directoryfarm.h"
#include "frontend/ghdltext.h"
#include "frontend/progress.h"
#include "frontend/toolbox.h"
#include "frontend/toollog.h"
#include "frontend/verilogscanner.h"
#include "frontend/verilogtext.h"

#include <QRegularExpression>

#include <algorithm>

namespace Standin {

GhdlStage::GhdlStage(const DesignSources &designSources, DirectoryFarm &privateFarm,
                     ToolBox &toolBox, Progress &progressOfReading)
    : sources(designSources)
    , farm(privateFarm)
    , tools(toolBox)
    , progress(progressOfReading)
{
    // Units of different standards can't be linked, so one standard holds for all files: the one
    // they agree on, else the newest, which takes nearly all that the older ones do.
    for (const SourceFile &file : sources.files) {
        if (file.language != SourceFile::Vhdl)
            continue;
        if (standard.isEmpty())
            standard = file.standard;
        else if (standard != file.standard)
            standard = "08";
    }
}

void GhdlStage::scan(DesignGraph *graph)
{
    VhdlNetTypes types;
    bool mayKeep = true;
    for (const SourceFile &file : sources.files) {
        if (file.language != SourceFile::Vhdl)
            continue;
        types.add(file.text);
        // One of the design's own would be in the way.
        mayKeep = mayKeep && !declaresKeep(file.text);
    }
    types.resolve();
    for (const SourceFile &file : sources.files) {
        if (file.language != SourceFile::Vhdl)
            continue;
        const QByteArray text = withoutBlanksInNames(maskVhdlPragmas(file.text));
        const int before = entities.all().size();
        scanVhdl(text, &entities);
        QString library = file.library.toLower();
        static const QRegularExpression name("\\A[a-z][a-z0-9_]*\\z");
        if (!name.match(library).hasMatch())
            library = "work";
        for (int i = before; i < entities.all().size(); ++i)
            libraries.insert(entities.all().at(i).name.toLower(), library);
        const QString copy = farm.addSource(file.path, ".vhd").section('/', 1);
        QVector<VhdlInsertion> insertions;
        const QByteArray kept = mayKeep ? withKeptSignals(text, types, &insertions) : text;
        farm.write(copy, kept);
        partOfCopy.insert(copy, parts.size());
        parts.append({copy, library, VhdlRepair(kept), insertions});
    }
    for (const ScannedModule &entity : entities.all())
        graph->add(entity);
}

QStringList GhdlStage::options(const QString &library) const
{
    return {"--std=" + QString::fromLatin1(standard),
            "-fsynopsys",
            "-fexplicit",
            "-frelaxed",
            "-Wno-hide",
            "--work=" + library,
            "--workdir=.",
            "-P."};
}

GhdlStage::Run GhdlStage::run(const QStringList &arguments, const QString &output)
{
    ToolCommand command;
    command.program = tools.ghdl();
    command.arguments = arguments;
    command.directory = farm.path();
    command.outputFile = output.isEmpty() ? QString() : farm.filePath(output);
    command.errorFile = farm.filePath("ghdl.log");
    command.makesText = true;
    // A tool that doesn't start leaves no log, and must not be judged by an old one.
    farm.write("ghdl.log", QByteArray());
    Run run;
    run.result = tools.runConfined(command, progress, &run.log);
    const QByteArray said = farm.readLog("ghdl.log");
    const bool failed = !run.result.succeeded();
    if (failed && said.contains("raised STORAGE_ERROR"))
        run.result.outcome = ToolOutcome::OutOfMemory;
    const auto messages = readGhdlLog(said);
    QVector<ToolMessage> others;
    for (const ToolMessage &message : messages)
        (failed && message.isError ? run.errors : others).append(message);
    for (ToolMessage &message : others)
        message.isError = false;
    run.log += linesOf(others);
    // A tool that was ended seldom says so itself.
    const bool hasReason = run.result.outcome == ToolOutcome::Finished && !run.errors.isEmpty();
    if (failed && run.result.outcome != ToolOutcome::Cancelled && !hasReason) {
        ToolMessage message;
        message.isError = true;
        message.text = describeFailure(command.program, run.result, tools.limitsOf(command));
        run.errors.append(message);
    }
    return run;
}

/// A message with its place in the file as it was given.
ToolMessage GhdlStage::placed(const ToolMessage &message) const
{
    ToolMessage result = message;
    const int part = partOfCopy.value(message.file, -1);
    for (const VhdlInsertion &insertion :
         part < 0 ? QVector<VhdlInsertion>() : parts.at(part).insertions) {
        if (result.line == insertion.line && result.column > insertion.column)
            result.column -= std::min(insertion.length, result.column - insertion.column);
    }
    return result;
}

QString GhdlStage::lineOf(const ToolMessage &message) const
{
    return logLine(placed(message), farm);
}

QStringList GhdlStage::linesOf(const QVector<ToolMessage> &messages) const
{
    QVector<ToolMessage> all;
    for (const ToolMessage &message : messages)
        all.append(placed(message));
    return logLines(all, farm);
}

/// GHDL isn't there or has met a limit, so that no other try helps.
bool GhdlStage::mustStop(const Run &run) const
{
    return progress.isCancelled() || run.result.outcome == ToolOutcome::NotStarted
        || run.result.outcome == ToolOutcome::TimedOut || ranIntoLimit(run.result);
}

bool GhdlStage::analyse(QStringList *log)
{
    progress.enterStage("Compiling the VHDL sources");
    const bool compiled = compileAll();
    found.removeDuplicates();
    *log += found;
    found.clear();
    return compiled;
}

/// GHDL makes one module of each set of generics, named after the entity with something behind.
QHash<QString, QString> GhdlStage::namesOf(const DesignGraph &graph) const
{
    QHash<QString, QString> names;
    for (const ScannedModule &module : graph.all()) {
        QByteArray prefix = module.name;
        while (!prefix.isEmpty() && !entities.find(prefix))
            prefix.truncate(std::max(0, prefix.lastIndexOf('_')));
        if (!prefix.isEmpty())
            names.insert(QString::fromUtf8(module.name),
                         QString::fromUtf8(entities.find(prefix)->name));
    }
    return names;
}

GhdlStage::Run GhdlStage::synthesizeOnce(const QByteArray &entity, const QVector<Setting> &generics)
{
    QStringList arguments = QStringList("--synth") + options(libraries.value(entity.toLower()))
        << "--out=verilog";
    for (const Setting &generic : generics)
        arguments << "-g" + generic.name + '=' + generic.value;
    arguments << QString::fromUtf8(entity);
    return run(arguments, "synthesized.v");
}

bool GhdlStage::synthesize(const QByteArray &entity, const QVector<Setting> &generics,
                           SynthesizedEntity *result, QStringList *log)
{
    progress.enterStage("Synthesizing the VHDL sources");
    // What isn't an identifier would be taken for an option or for several words.
    static const QRegularExpression name("\\A[A-Za-z][A-Za-z0-9_]*\\z");
    if (!name.match(QString::fromUtf8(entity)).hasMatch()) {
        log->append("ERROR: the entity \"" + printable(QString::fromUtf8(entity))
                    + "\" can't be elaborated by its name");
        return false;
    }
    // The reason has been told.
    if (isStopped)
        return false;
    Run last = synthesizeOnce(entity, generics);
    const bool done = last.result.succeeded() || repairSynthesis(entity, generics, &last);
    found.removeDuplicates();
    *log += found + last.log;
    found.clear();
    if (!done) {
        *log += linesOf(last.errors);
        return false;
    }
    const QByteArray raw = farm.read("synthesized.v", tools.options().textBytes);
    const QByteArray text =
        withEscapedKeywords(withoutUnknownValues(stripComments(withEscapedNames(raw))));
    result->text = withoutBlackBoxes(text, scanVerilog(text), entities);
    result->graph = scanVerilog(result->text);
    result->sourceNames = namesOf(result->graph);
    return true;
}

} // namespace Standin
