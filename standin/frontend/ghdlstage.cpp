// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/ghdlstage.h"

#include "frontend/directoryfarm.h"
#include "frontend/progress.h"
#include "frontend/toolbox.h"
#include "frontend/toollog.h"
#include "frontend/verilogscanner.h"
#include "frontend/verilogtext.h"

#include <QRegularExpression>

#include <algorithm>
#include <csignal>

namespace Standin {

static const qint64 longestText = qint64(1) << 30;

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
    for (const SourceFile &file : sources.files) {
        if (file.language != SourceFile::Vhdl)
            continue;
        const QByteArray text = maskVhdlPragmas(file.text);
        const int before = entities.all().size();
        scanVhdl(text, &entities);
        Unit unit;
        unit.library = file.library.toLower();
        static const QRegularExpression name("\\A[a-z][a-z0-9_]*\\z");
        if (!name.match(unit.library).hasMatch())
            unit.library = "work";
        for (int i = before; i < entities.all().size(); ++i)
            libraries.insert(entities.all().at(i).name.toLower(), unit.library);
        unit.copy = farm.addSource(file.path, ".vhd").section('/', 1);
        farm.write(unit.copy, text);
        units.append(unit);
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
            "--work=" + library,
            "--workdir=.",
            "-P."};
}

ToolResult GhdlStage::run(const QStringList &arguments, const QString &output, QStringList *log)
{
    ToolCommand command;
    command.program = tools.ghdl();
    command.arguments = arguments;
    command.directory = farm.path();
    command.outputFile = output.isEmpty() ? QString() : farm.filePath(output);
    command.errorFile = farm.filePath("ghdl.log");
    // A tool that doesn't start leaves no log, and must not be judged by an old one.
    farm.write("ghdl.log", QByteArray());
    ToolResult result = tools.runConfined(command, progress, log);
    const bool failed = !result.succeeded();
    const QByteArray said = farm.readLog("ghdl.log");
    // Other programs that get no memory abort.
    if (failed && said.contains("raised STORAGE_ERROR"))
        result = {ToolOutcome::Crashed, SIGABRT};
    QStringList lines = rewriteGhdlLog(said, farm, failed);
    failedHard = failed && result.outcome != ToolOutcome::Finished;
    // A tool that was ended seldom says so itself.
    if (result.outcome != ToolOutcome::Cancelled && (failedHard || (failed && !hasErrors(lines))))
        lines.append("ERROR: " + describeFailure(command.program, result, tools.limits()));
    *log += lines;
    return result;
}

/// Files of one library that stand together are compiled in one run.
bool GhdlStage::analyseAll(QStringList *log)
{
    for (int i = 0; i < units.size();) {
        const QString library = units.at(i).library;
        QStringList arguments = QStringList("-a") + options(library);
        for (; i < units.size() && units.at(i).library == library; ++i)
            arguments.append(units.at(i).copy);
        if (!run(arguments, QString(), log).succeeded())
            return false;
    }
    return true;
}

/// Compiles until nothing is left or a whole round brings nothing further.
bool GhdlStage::analyseOneByOne(QStringList *log)
{
    QVector<Unit> left = units;
    while (!left.isEmpty()) {
        QVector<Unit> refused;
        QStringList round;
        for (const Unit &unit : qAsConst(left)) {
            QStringList lines;
            const QStringList arguments = QStringList("-a") + options(unit.library) << unit.copy;
            const bool compiled = run(arguments, QString(), &lines).succeeded();
            round += lines;
            if (failedHard || progress.isCancelled()) {
                *log += round;
                return false;
            }
            if (!compiled)
                refused.append(unit);
        }
        if (refused.size() == left.size()) {
            *log += round;
            return false;
        }
        left = refused;
    }
    return true;
}

bool GhdlStage::analyse(QStringList *log)
{
    progress.enterStage("Compiling the VHDL sources");
    QStringList lines;
    if (analyseAll(&lines)) {
        *log += lines;
        return true;
    }
    if (failedHard || progress.isCancelled() || units.size() == 1) {
        *log += lines;
        return false;
    }
    return analyseOneByOne(log);
}

QByteArray withoutBlackBoxes(const QByteArray &text, const DesignGraph &graph,
                             const DesignGraph &entities)
{
    static const QRegularExpression shape("\\)\\s*;\\s*endmodule\\z");
    QByteArray result = text;
    // The same black box comes once for each set of generics.
    for (const DesignGraph::Place &module : graph.declarations()) {
        if (entities.find(module.name))
            continue;
        const int length = int(module.end - module.begin);
        const QByteArray body = text.mid(int(module.begin), length);
        // A module with a body has a statement, so its last semicolon isn't the header's.
        if (body.count(';') != 1 || !shape.match(QString::fromUtf8(body)).hasMatch())
            continue;
        for (int i = int(module.begin); i < int(module.begin) + length; ++i) {
            if (result.at(i) != '\n')
                result[i] = ' ';
        }
    }
    return result;
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
    QStringList arguments = QStringList("--synth") + options(libraries.value(entity.toLower()))
        << "--out=verilog";
    for (const Setting &generic : generics)
        arguments << "-g" + generic.name + '=' + generic.value;
    arguments << QString::fromUtf8(entity);
    if (!run(arguments, "synthesized.v", log).succeeded())
        return false;
    const QByteArray text = stripComments(farm.read("synthesized.v", longestText));
    result->text = withoutBlackBoxes(text, scanVerilog(text), entities);
    result->graph = scanVerilog(result->text);
    result->sourceNames = namesOf(result->graph);
    return true;
}

} // namespace Standin
