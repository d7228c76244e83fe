// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilatorreading.h"

#include "frontend/progress.h"
#include "frontend/toolbox.h"
#include "frontend/toollog.h"
#include "frontend/verificationcode.h"
#include "frontend/verilogtext.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace Standin {

static const char nothingModule[] = "molk_nothing__";
static const char designFile[] = "design.v";
static const char resultFile[] = "result.xml";
static const qint64 longestLog = qint64(64) << 20;

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
        return plain;
    variant = other;
    second.log.append("WARNING: the sources are read with the macro VERILATOR defined");
    return second;
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

bool VerilatorReading::isVhdlTop(const QString &top) const
{
    const ScannedModule *module = design.find(top.toUtf8());
    return module && module->isVhdl;
}

/// The values that an instance in Verilog gives to generics. Only plain numbers and strings can be
/// carried over; other generics keep their defaults.
QVector<Setting> VerilatorReading::genericsOf(const ScannedModule &entity, const InstanceUse &use,
                                              QStringList *log) const
{
    QVector<Setting> generics;
    for (int i = 0; i < use.parameters.size(); ++i) {
        const ConnectionUse &parameter = use.parameters.at(i);
        const QByteArray name =
            parameter.name.isEmpty() ? entity.parameters.value(i) : parameter.name;
        QByteArray value = parameter.value;
        bool isNumber = false;
        value.toLongLong(&isNumber);
        if (value.startsWith('"') && value.size() >= 2)
            value = value.mid(1, value.size() - 2);
        else if (!isNumber)
            value.clear();
        if (name.isEmpty() || value.isEmpty())
            log->append("WARNING: the instance \"" + QString::fromUtf8(use.name)
                        + "\" gives a generic of \"" + QString::fromUtf8(entity.name)
                        + "\" a value that is no plain number; the default stays");
        else
            generics.append({QString::fromUtf8(name), QString::fromUtf8(value)});
    }
    return generics;
}

/// Gives the module that begins in \a text the name \a calledAs and parameters that do nothing, so
/// that instances in Verilog, which know neither VHDL's case nor that generics have been settled,
/// fit.
static QByteArray adaptHeader(const QByteArray &text, const ScannedModule &module,
                              const QByteArray &calledAs, const InstanceUse *use)
{
    const QByteArray old = "module " + module.name;
    if (text.mid(int(module.begin), old.size()) != old)
        return text;
    QByteArray header = "module " + calledAs;
    QList<QByteArray> parameters;
    if (use) {
        for (int i = 0; i < use->parameters.size(); ++i) {
            const QByteArray name = use->parameters.at(i).name;
            parameters.append((name.isEmpty() ? "molk_generic" + QByteArray::number(i) : name)
                              + " = 0");
        }
    }
    if (!parameters.isEmpty())
        header += " #(parameter " + parameters.join(", parameter ") + ')';
    QByteArray adapted = text;
    return adapted.replace(int(module.begin), old.size(), header);
}

bool VerilatorReading::addEntity(const QByteArray &entity, const InstanceUse *use,
                                 const QString &calledAs, Artifact *artifact, QStringList *log)
{
    const ScannedModule *scanned = design.find(entity);
    SynthesizedEntity result;
    const QVector<Setting> generics = use ? genericsOf(*scanned, *use, log) : sources.generics;
    if (!ghdl.synthesize(scanned->name, generics, &result, log))
        return false;
    const ScannedModule *module = nullptr;
    for (const ScannedModule &candidate : result.graph.all()) {
        if (candidate.name.compare(scanned->name, Qt::CaseInsensitive) == 0)
            module = &candidate;
    }
    const QByteArray wanted = use ? use->type : calledAs.toUtf8();
    if (module) {
        result.text = adaptHeader(result.text, *module, wanted, use);
        // A top is known by the name that it was asked for.
        artifact->sourceNames.insert(QString::fromUtf8(wanted),
                                     use ? QString::fromUtf8(scanned->name) : calledAs);
    }
    for (auto it = result.sourceNames.begin(); it != result.sourceNames.end(); ++it) {
        if (!artifact->sourceNames.contains(it.key()))
            artifact->sourceNames.insert(it.key(), it.value());
    }
    for (const ScannedModule &other : result.graph.all()) {
        ScannedModule part = other;
        if (module && part.name == module->name)
            part.name = wanted;
        translated.add(part);
    }
    const QString file = QString("vhdl%1.v").arg(translatedFiles.size() + 1);
    translatedFiles.append(file);
    return farm.write(file, result.text);
}

/// Translates the entities that are the top or that Verilog modules below the top instantiate.
bool VerilatorReading::translateVhdl(const QString &top, Artifact *artifact, QStringList *log)
{
    if (isVhdlTop(top) && !addEntity(top.toUtf8(), nullptr, top, artifact, log))
        return false;
    QHash<QByteArray, QVector<ConnectionUse>> done;
    const auto names = design.modulesBelow(top.toUtf8());
    for (const QString &name : names) {
        const ScannedModule *module = design.find(name.toUtf8());
        if (module->isVhdl)
            continue;
        for (const InstanceUse &use : module->instances) {
            const ScannedModule *type = design.find(use.type);
            if (!type || !type->isVhdl || done.contains(use.type))
                continue;
            done.insert(use.type, use.parameters);
            if (!addEntity(type->name, &use, QString(), artifact, log))
                return false;
        }
    }
    artifact->vhdlFiles = translatedFiles;
    return true;
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
              << "-Wno-IMPURE";
    arguments << QLatin1String(leavesOutChecks ? "--timing" : "--no-timing") << "--error-limit"
              << "1000";
    arguments << "--Mdir"
              << "made"
              << "--xml-output" << resultFile;
    arguments << "--top-module" << (top.isEmpty() ? QString(nothingModule) : top);
    return arguments << parametersOf(top) << designFile << translatedFiles << stubFile();
}

VerilatorReading::Attempt VerilatorReading::run(const QString &top)
{
    progress.enterStage(
        QLatin1String(top.isEmpty() ? "Checking the sources" : "Elaborating the design"));
    Attempt attempt;
    DesignGraph all = preprocessed.graph;
    for (const ScannedModule &module : translated.all())
        all.add(module);
    // VHDL entities that aren't needed have no text, and need no stub either.
    const QByteArray stubs = stubModules(all) + "module " + nothingModule + "; endmodule\n";
    ToolCommand command;
    command.program = tools.verilator();
    command.arguments = arguments(top);
    command.directory = farm.path();
    command.errorFile = farm.filePath("elaboration.log");
    const QByteArray text =
        leavesOutChecks ? withoutVerificationCode(preprocessed.text) : preprocessed.text;
    if (!farm.write(designFile, text) || !farm.write(stubFile(), stubs)) {
        attempt.log.append("ERROR: the directory for temporary files can't be written");
        return attempt;
    }
    farm.write("elaboration.log", QByteArray());
    attempt.result = tools.run(command, progress);
    attempt.log = rewriteVerilatorLog(farm.read("elaboration.log", longestLog), farm);
    if (attempt.result.succeeded())
        attempt.log = asWarnings(attempt.log);
    else if (attempt.result.outcome == ToolOutcome::Cancelled)
        attempt.log.clear();
    else if (attempt.result.outcome != ToolOutcome::Finished || !hasErrors(attempt.log))
        attempt.log.append("ERROR: "
                           + describeFailure(command.program, attempt.result, tools.limits()));
    return attempt;
}

bool VerilatorReading::isReported(int source, const QStringList &log) const
{
    const QString prefix = "ERROR: " + printable(sources.files.at(source).path) + ':';
    return std::any_of(log.begin(), log.end(),
                       [&](const QString &line) { return line.startsWith(prefix); });
}

/// Reads the design without what only checks it, which is where front ends lag behind the language,
/// and with waits in processes.
bool VerilatorReading::retryWithoutChecks(const QString &top, Attempt *attempt, QStringList *log)
{
    leavesOutChecks = true;
    const Attempt second = run(top);
    if (!second.result.succeeded())
        return false;
    *attempt = second;
    log->append("WARNING: assertions and coverage are left out, as they can't be read");
    return true;
}

/// Reads Verilog files with errors by the other keywords: the old ones if nothing was said, all of
/// them if a standard was named.
bool VerilatorReading::retryWithOtherKeywords(const QString &top, Attempt *attempt,
                                              QStringList *log)
{
    VerilogVariant other = variant;
    QStringList names;
    for (int i = 0; i < sources.files.size(); ++i) {
        const SourceFile::Language language = sources.files.at(i).language;
        const bool mayChange = language == SourceFile::Verilog
            || (language == SourceFile::SystemVerilog && !variant.keywords.at(i).isEmpty());
        if (!mayChange || !isReported(i, attempt->log))
            continue;
        other.keywords[i] = variant.keywords.at(i).isEmpty() ? "1364-2005" : "";
        names.append(printable(sources.files.at(i).path));
    }
    if (names.isEmpty())
        return false;
    const VerilogVariant oldVariant = variant;
    const PreprocessedText old = preprocessed;
    variant = other;
    preprocessed = preprocessor.run(variant);
    if (preprocessed.complete) {
        const Attempt second = run(top);
        if (second.result.succeeded()) {
            *attempt = second;
            for (const QString &name : qAsConst(names))
                log->append("WARNING: " + name + ": read by the keywords of another standard");
            return true;
        }
    }
    variant = oldVariant;
    preprocessed = old;
    return false;
}

bool VerilatorReading::retryAsVerilator(const QString &top, Attempt *attempt, QStringList *log)
{
    if (variant.definesVerilator)
        return false;
    VerilogVariant other = variant;
    other.definesVerilator = true;
    const PreprocessedText old = preprocessed;
    preprocessed = preprocessor.run(other);
    // Without code that depends on the macro the same errors would come again.
    if (preprocessed.complete && preprocessed.text != old.text) {
        const Attempt second = run(top);
        if (second.result.succeeded()) {
            *attempt = second;
            log->append("WARNING: the sources are read with the macro VERILATOR defined");
            return true;
        }
    }
    preprocessed = old;
    return false;
}

bool VerilatorReading::elaborate(const QString &top, Artifact *artifact, QStringList *log)
{
    // The name becomes an argument, so it must look like nothing else.
    static const QRegularExpression name("\\A[A-Za-z_][A-Za-z0-9_$]*\\z");
    if (!top.isEmpty() && !name.match(top).hasMatch()) {
        log->append("ERROR: the top module \"" + printable(top)
                    + "\" can't be elaborated by its name");
        return false;
    }
    if (sources.has(SourceFile::Vhdl) && !top.isEmpty() && !translateVhdl(top, artifact, log))
        return false;

    Attempt attempt = run(top);
    const bool mayRetry =
        !attempt.result.succeeded() && attempt.result.outcome == ToolOutcome::Finished;
    if (mayRetry && !retryWithoutChecks(top, &attempt, log)
        && !retryWithOtherKeywords(top, &attempt, log))
        retryAsVerilator(top, &attempt, log);
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
        for (const QString &name : wanted)
            names.insert(name);
    }
    for (const QString &path : preprocessed.included) {
        QString error;
        const QByteArray text = readRegularFile(path, tools.options().sourceBytes, &error);
        const auto wanted = includeDirectives(text);
        for (const QString &name : wanted)
            names.insert(name);
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
