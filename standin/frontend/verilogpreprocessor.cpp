// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogpreprocessor.h"

#include "frontend/directoryfarm.h"
#include "frontend/progress.h"
#include "frontend/toolbox.h"
#include "frontend/toollog.h"
#include "frontend/verilogdialect.h"
#include "frontend/verilogscanner.h"
#include "frontend/verilogtext.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace Standin {

VerilogPreprocessor::VerilogPreprocessor(const DesignSources &designSources,
                                         DirectoryFarm &privateFarm, ToolBox &toolBox,
                                         Progress &progressOfReading)
    : sources(designSources)
    , farm(privateFarm)
    , tools(toolBox)
    , progress(progressOfReading)
    , includes(sources.includePath, tools.options().sourceBytes, farm)
{
    for (const SourceFile &file : sources.files) {
        const bool isVerilog =
            file.language == SourceFile::Verilog || file.language == SourceFile::SystemVerilog;
        names.append(isVerilog ? farm.addSource(file.path, ".v") : QString());
    }
    for (const QString &path : sources.includePath) {
        const QString name = farm.addIncludeDirectory(path);
        if (name.isEmpty())
            missingDirectories.append("WARNING: " + printable(path)
                                      + ": there is no such include directory");
        else
            includeNames.append(name);
    }
}

static QByteArray defineLine(const Setting &define)
{
    return "`define " + (define.name + ' ' + define.value).toUtf8() + '\n';
}

static QByteArray mended(const QByteArray &text, const SourceMend &mend)
{
    if (mend.isLeftOut)
        return QByteArray();
    if (mend.emptyLines.isEmpty())
        return text + mend.tail;
    QList<QByteArray> lines = text.split('\n');
    for (int line : mend.emptyLines) {
        if (line <= lines.size())
            lines[line - 1].clear();
    }
    return lines.join('\n') + mend.tail;
}

/// The source as the preprocessor gets it. What is added stands ahead of the `line directive or
/// behind the text, so that places in messages stay right.
QByteArray VerilogPreprocessor::copyOf(int index, const VerilogVariant &variant)
{
    const SourceFile &file = sources.files.at(index);
    const QByteArray keywords = variant.keywords.value(index);
    // What one file sets must not change how another is read.
    QByteArray copy = "`default_nettype wire\n";
    for (const Setting &define : file.defines)
        copy += defineLine(define);
    if (!keywords.isEmpty())
        copy += "`begin_keywords \"" + keywords + "\"\n";
    copy += "`line 1 \"" + names.at(index).toUtf8() + "\" 0\n";
    QByteArray text = file.text;
    if (text.startsWith("\xEF\xBB\xBF"))
        text.remove(0, 3);
    text = includes.led(maskedVerilog(text), QFileInfo(file.path).absolutePath());
    const auto mend = variant.mends.constFind(index);
    copy += mend == variant.mends.constEnd() ? text : mended(text, *mend);
    copy += '\n';
    if (!keywords.isEmpty())
        copy += "`end_keywords\n";
    for (const Setting &define : file.defines) {
        copy += "`undef " + define.name.toUtf8() + '\n';
        for (const Setting &global : sources.defines) {
            if (global.name == define.name)
                copy += defineLine(global);
        }
    }
    return copy;
}

QStringList VerilogPreprocessor::arguments(const VerilogVariant &variant) const
{
    QStringList arguments = {"-E", "-Wno-fatal", "--error-limit", "1000", "--relative-includes"};
    if (!variant.definesVerilator)
        arguments << "-UVERILATOR"
                  << "-Uverilator"
                  << "-Uverilator3";
    arguments << "-DSYNTHESIS";
    for (const Setting &define : sources.defines)
        arguments << "-D" + define.name + (define.value.isEmpty() ? "" : "=" + define.value);
    for (const QString &name : includeNames)
        arguments << "+incdir+" + name;
    return arguments;
}

/// Conditions, comments and arguments that a source doesn't end go on through all that follow.
static bool isEndless(const ToolMessage &message)
{
    return message.isError
        && (message.text.startsWith("EOF in") || message.text.contains("not terminated at EOF")
            || message.text.contains("with no matching `if"));
}

int VerilogPreprocessor::mend(const QVector<ToolMessage> &messages, VerilogVariant *variant) const
{
    const auto endless =
        std::find_if(messages.begin(), messages.end(), [&](const ToolMessage &message) {
            return isEndless(message) && names.contains(message.file)
                && !variant->mends.value(names.indexOf(message.file)).isLeftOut;
        });
    if (endless == messages.end())
        return -1;
    const int source = names.indexOf(endless->file);
    SourceMend &mend = variant->mends[source];
    // The first error of a source whose arguments don't end is where they begin.
    const auto first =
        std::find_if(messages.begin(), messages.end(), [&](const ToolMessage &message) {
            return message.isError && message.file == endless->file;
        });
    if (endless->text.contains("not terminated at EOF"))
        mend.tail += "\n`endif\n";
    else if (endless->text.contains("comment"))
        mend.tail += "*/";
    else if (endless->text.contains("with no matching `if"))
        mend.emptyLines.insert(endless->line);
    else if (first->line > 0 && !isEndless(*first))
        mend.emptyLines.insert(first->line);
    else
        mend.isLeftOut = true;
    mend.isLeftOut = mend.isLeftOut || ++mend.rounds > 16;
    return source;
}

PreprocessedText VerilogPreprocessor::run(const VerilogVariant &variant)
{
    PreprocessedText result;
    result.log = missingDirectories;
    ToolCommand command;
    command.program = tools.verilator();
    command.arguments = arguments(variant);
    command.directory = farm.path();
    command.outputFile = farm.filePath("preprocessed.v");
    command.errorFile = farm.filePath("preprocessor.log");
    command.makesText = true;
    bool any = false;
    for (int i = 0; i < names.size(); ++i) {
        if (names.at(i).isEmpty())
            continue;
        const QString copy = names.at(i).section('/', 1);
        if (!farm.write(copy, copyOf(i, variant))) {
            result.log.append("ERROR: the directory for temporary files can't be written");
            return result;
        }
        command.arguments.append(copy);
        any = true;
    }
    if (!any) {
        result.complete = true;
        return result;
    }

    progress.enterStage("Preprocessing the sources");
    const ToolResult run = tools.run(command, progress);
    if (run.outcome == ToolOutcome::Cancelled)
        return result;
    // Half of a text that is too long would be too long for all that follows as well.
    if (!ranIntoLimit(run))
        runBeside([&] {
            const QByteArray raw = farm.read("preprocessed.v", tools.options().textBytes);
            result.included = includedFiles(raw, farm);
            result.text = withPackagesFirst(stripComments(raw));
            result.graph = scanVerilog(result.text);
        });
    result.messages = readVerilatorLog(farm.readLog("preprocessor.log"));
    result.log += logLines(result.messages, farm);
    if (run.outcome != ToolOutcome::Finished || (run.exitCode != 0 && !hasErrors(result.log)))
        result.log.append("ERROR: "
                          + describeFailure(command.program, run, tools.limitsOf(command)));
    result.complete = run.succeeded();
    if (result.complete)
        result.log = asWarnings(result.log);
    return result;
}

QStringList includedFiles(const QByteArray &preprocessed, const DirectoryFarm &farm)
{
    QSet<QByteArray> seen;
    QStringList files;
    for (int at = preprocessed.startsWith("`line ") ? 0 : preprocessed.indexOf("\n`line "); at >= 0;
         at = preprocessed.indexOf("\n`line ", at + 1)) {
        int end = preprocessed.indexOf('\n', at + 1);
        if (end < 0)
            end = preprocessed.size();
        const QByteArray line = preprocessed.mid(at, end - at);
        const int open = line.indexOf('"');
        const int close = line.lastIndexOf('"');
        const QByteArray name = line.mid(open + 1, close - open - 1);
        if (open < 0 || close <= open || seen.contains(name))
            continue;
        seen.insert(name);
        const QString privateName = QString::fromUtf8(name);
        const QString real = farm.realPath(privateName);
        if (!real.isNull() && !farm.isSource(privateName))
            files.append(real);
    }
    files.removeDuplicates();
    return files;
}

QVector<IncludeDirective> includeDirectives(const QByteArray &source)
{
    QVector<IncludeDirective> found;
    static const QByteArray word("`include");
    int next = 0;
    for (int at = source.indexOf(word); at >= 0; at = source.indexOf(word, next)) {
        next = at + 1;
        int open = at + word.size();
        while (open < source.size() && (source.at(open) == ' ' || source.at(open) == '\t'))
            ++open;
        const char quote = open < source.size() ? source.at(open) : '\0';
        if (quote != '"' && quote != '<')
            continue;
        // Only the rest of the line is searched, or a text full of open quotes would take long.
        int close = open + 1;
        while (close < source.size() && source.at(close) != '\n'
               && source.at(close) != (quote == '"' ? '"' : '>'))
            ++close;
        if (close == source.size() || source.at(close) == '\n')
            continue;
        found.append({QString::fromUtf8(source.mid(open + 1, close - open - 1)), open + 1, close});
        // What stands in the name is no directive.
        next = close;
    }
    return found;
}

} // namespace Standin
