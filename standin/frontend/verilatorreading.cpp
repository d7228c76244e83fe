// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilatorreading.h"

#include "frontend/progress.h"
#include "frontend/sourceplaces.h"
#include "frontend/toolbox.h"
#include "frontend/toollog.h"
#include "frontend/verilogdialect.h"
#include "frontend/verilogscanner.h"
#include "frontend/verilogtext.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace Standin {

static const char nothingModule[] = "molk_nothing__";
static const char designFile[] = "design.v";
static const char resultFile[] = "result.xml";

VerilatorReading::VerilatorReading(const DesignSources &designSources, ToolBox &toolBox,
                                   Progress &progressOfReading)
    : sources(designSources)
    , tools(toolBox)
    , progress(progressOfReading)
    , preprocessor(sources, farm, tools, progress)
    , ghdl(sources, farm, tools, progress)
{
    for (const SourceFile &file : qAsConst(sources.files)) {
        const bool isVerilog =
            file.language == SourceFile::Verilog || file.language == SourceFile::SystemVerilog;
        variant.keywords.append(isVerilog ? file.standard : QByteArray());
    }
}

/// Preprocesses the sources, with the macros of Verilator if they can't be had without.
PreprocessedText VerilatorReading::preprocess()
{
    const PreprocessedText plain = preprocessor.run(variant);
    if (plain.complete || plain.text.isEmpty() || progress.isCancelled())
        return plain;
    VerilogVariant other = variant;
    other.definesVerilator = true;
    PreprocessedText second = preprocessor.run(other);
    if (!second.complete)
        return withoutEndlessSources(plain);
    variant = other;
    second.log.append("WARNING: the sources are read with the macro VERILATOR defined");
    return second;
}

/// Mends the sources that swallow those behind them. Their errors stay in the log.
PreprocessedText VerilatorReading::withoutEndlessSources(PreprocessedText text)
{
    QStringList log;
    for (int source = preprocessor.mend(text.messages, &variant);
         source >= 0 && !progress.isCancelled();
         source = preprocessor.mend(text.messages, &variant)) {
        for (const ToolMessage &message : qAsConst(text.messages)) {
            if (message.isError && message.file == preprocessor.privateName(source))
                log.append(logLine(message, farm));
        }
        text = preprocessor.run(variant);
    }
    log.removeDuplicates();
    text.log = log + text.log;
    return text;
}

ModuleLists VerilatorReading::scan(QStringList *log)
{
    if (!farm.isValid()) {
        log->append("ERROR: there is no place for temporary files");
        return ModuleLists();
    }
    preprocessed = preprocess();
    *log += preprocessed.log;
    design = preprocessed.graph;
    if (sources.has(SourceFile::Vhdl) && !progress.isCancelled()) {
        ghdl.scan(&design);
        ghdl.analyse(log);
    }
    return moduleLists(design, sources.top);
}

/// Only parameters that the top has may be given, or the tool refuses them all.
QStringList VerilatorReading::parametersOf(const QString &top) const
{
    QStringList arguments;
    const ScannedModule *module = preprocessed.graph.find(top.toUtf8());
    for (const Setting &parameter : sources.parameters) {
        if (module && module->parameters.contains(parameter.name.toUtf8()))
            arguments << "-G" + parameter.name + '=' + parameter.value;
    }
    return arguments;
}

QStringList VerilatorReading::arguments(const QString &top) const
{
    // Only what would not be legal everywhere stays an error: some of the warnings switched off
    // here by name are errors otherwise.
    QStringList arguments = {"--xml-only", "-O0", "--bbox-unsup", "--bbox-sys"};
    arguments << "-Wno-fatal"
              << "-Wno-lint"
              << "-Wno-style"
              << "-Wno-BLKLOOPINIT"
              << "-Wno-CONTASSREG"
              << "-Wno-IMPURE"
              << "-Wno-TIMESCALEMOD"
              << "-Wwarn-ENUMVALUE"
              << "-Wwarn-PROCASSWIRE"
              << "-Wwarn-ASSIGNIN"
              // Of a generate loop it takes sixteen times as many rounds.
              << "--unroll-count"
              << "1024";
    arguments << QLatin1String(leavesOutChecks ? "--timing" : "--no-timing") << "--error-limit"
              << "1000";
    arguments << "--Mdir"
              << "made"
              << "--xml-output" << resultFile;
    arguments << "--top-module" << (top.isEmpty() ? QString(nothingModule) : top);
    return arguments << parametersOf(top) << designFile << stubFile();
}

/// The preprocessed text as it is to be read now.
QByteArray VerilatorReading::designText() const
{
    const QByteArray text =
        translated.isEmpty() ? preprocessed.text : preprocessed.text + '\n' + translated;
    return leavesOutChecks ? inPlainDialect(text) : text;
}

static bool isPlainName(const QString &name)
{
    static const QRegularExpression shape("\\A[A-Za-z_][A-Za-z0-9_$]*\\z");
    return shape.match(name).hasMatch();
}

/// Makes the interfaces that the top module's ports stand for part of the design, and takes out
/// what the tool wouldn't tell apart from a top with an escaped name.
///
/// \param log may be null.
void VerilatorReading::closeTop(const QString &top, QStringList *log)
{
    if (top.isEmpty())
        return;
    fitInstances();
    if (!isPlainName(top)) {
        const QStringList below = preprocessed.graph.modulesBelow(top.toUtf8());
        QSet<QByteArray> needed;
        for (const QString &name : below)
            needed.insert(name.toUtf8());
        preprocessed.text = withModules(preprocessed.text, preprocessed.graph, needed);
        preprocessed.graph = scanVerilog(preprocessed.text);
    }
    const auto &modules = preprocessed.graph.all();
    const bool hasInterfaces =
        std::any_of(modules.begin(), modules.end(), [](const ScannedModule &module) {
            return module.kind == ScannedModule::Interface;
        });
    if (!hasInterfaces)
        return;
    QVector<InterfacePort> ports;
    const QByteArray text = withoutInterfacePorts(preprocessed.text, top.toUtf8(), &ports);
    if (ports.isEmpty())
        return;
    const SourcePlaces places(preprocessed.text);
    for (const InterfacePort &port : qAsConst(ports)) {
        if (!log)
            break;
        const SourcePlaces::Stretch *stretch = places.stretchAt(port.offset);
        ToolMessage message;
        message.file = stretch ? stretch->file : QString();
        message.line = places.lineAt(port.offset);
        message.text = "the interface port \"" + printable(QString::fromUtf8(port.name))
            + "\" of the top module is taken for an interface in it";
        log->append(logLine(message, farm));
    }
    preprocessed.text = text;
    preprocessed.graph = scanVerilog(text);
}

VerilatorReading::Attempt VerilatorReading::run(const QString &top, const QByteArray &text)
{
    progress.enterStage(
        QLatin1String(top.isEmpty() ? "Checking the sources" : "Elaborating the design"));
    Attempt attempt;
    const bool isWhole = text.constData() == preprocessed.text.constData();
    const DesignGraph all = isWhole ? preprocessed.graph : scanVerilog(text);
    // VHDL entities that aren't needed have no text, and need no stub either.
    const QByteArray stubs = stubModules(all) + "module " + nothingModule + "; endmodule\n";
    ToolCommand command;
    command.program = tools.verilator();
    command.arguments = arguments(top);
    command.directory = farm.path();
    command.errorFile = farm.filePath("elaboration.log");
    if (!farm.write(designFile, text) || !farm.write(stubFile(), stubs)) {
        attempt.log.append("ERROR: the directory for temporary files can't be written");
        return attempt;
    }
    farm.write("elaboration.log", QByteArray());
    attempt.result = tools.run(command, progress);
    attempt.messages = readVerilatorLog(farm.readLog("elaboration.log"));
    QVector<ToolMessage> told;
    for (const ToolMessage &message : qAsConst(attempt.messages))
        told.append(asInSources(message));
    attempt.log = logLines(told, farm);
    if (attempt.result.succeeded())
        attempt.log = asWarnings(attempt.log);
    else if (attempt.result.outcome == ToolOutcome::Cancelled)
        attempt.log.clear();
    else if (attempt.result.outcome != ToolOutcome::Finished || !hasErrors(attempt.log))
        attempt.log.append(
            "ERROR: " + describeFailure(command.program, attempt.result, tools.limitsOf(command)));
    return attempt;
}

bool VerilatorReading::elaborate(const QString &top, Artifact *artifact, QStringList *log)
{
    // The name becomes an argument, so it must look like nothing else, and not like something that
    // the tool would replace.
    static const QRegularExpression name("\\A[A-Za-z0-9_.:;<>=!?&|(){}\\[\\]#^~*/,]+\\z");
    if (!top.isEmpty() && !isPlainName(top) && !name.match(top).hasMatch()) {
        log->append("ERROR: the top module \"" + printable(top)
                    + "\" can't be elaborated by its name");
        return false;
    }
    // Without any text there was an error before that, and no other would say more.
    if (design.isEmpty() && !preprocessed.complete)
        return false;
    if (sources.has(SourceFile::Vhdl) && !top.isEmpty() && !translateVhdl(top, artifact, log))
        return false;

    closeTop(top, log);
    Attempt attempt = run(top, designText());
    const bool mayRetry = !attempt.result.succeeded()
        && (attempt.result.outcome == ToolOutcome::Finished
            || (attempt.result.outcome == ToolOutcome::Crashed && !ranIntoLimit(attempt.result)));
    if (mayRetry && !retryWithoutChecks(top, &attempt, log)
        && !retryWithOtherKeywords(top, &attempt, log) && !retryAsVerilator(top, &attempt, log))
        repair(top, &attempt);
    *log += attempt.log;
    if (!attempt.result.succeeded() || top.isEmpty())
        return false;
    artifact->file = farm.filePath(resultFile);
    artifact->top = top;
    return true;
}

QStringList VerilatorReading::absentFiles() const
{
    // Includes of the sources are searched in their own directory and along the include path; what
    // appears ahead of the file that was found would be read in its place.
    QSet<QString> names;
    for (const SourceFile &file : sources.files) {
        const auto wanted = includeDirectives(file.text);
        for (const IncludeDirective &directive : wanted)
            names.insert(directive.name);
    }
    for (const QString &path : preprocessed.included) {
        QString error;
        const QByteArray text = readRegularFile(path, tools.options().sourceBytes, &error);
        const auto wanted = includeDirectives(text);
        for (const IncludeDirective &directive : wanted)
            names.insert(directive.name);
    }
    QStringList absent;
    const QStringList directories = farm.searchedDirectories();
    for (const QString &name : qAsConst(names)) {
        for (const QString &directory : directories) {
            const QString path = directory + '/' + name;
            if (!QFileInfo::exists(path))
                absent.append(path);
        }
    }
    return absent;
}

} // namespace Standin
