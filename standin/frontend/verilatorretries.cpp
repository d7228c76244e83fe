// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The part of VerilatorReading that goes on when the design can't be read as it is.

#include "frontend/designrepair.h"
#include "frontend/progress.h"
#include "frontend/shortestfront.h"
#include "frontend/sourceplaces.h"
#include "frontend/toolbox.h"
#include "frontend/toollog.h"
#include "frontend/verilatorreading.h"
#include "frontend/verilogscanner.h"

#include <algorithm>

namespace Standin {

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
    const Attempt second = run(top, designText());
    if (!second.result.succeeded()) {
        // Errors in what was left out count for nothing, whatever else is tried.
        if (second.result.outcome == ToolOutcome::Finished)
            *attempt = second;
        return false;
    }
    *attempt = second;
    log->append("WARNING: assertions and coverage are left out, as they can't be read");
    return true;
}

static int syntaxErrorsIn(const QString &file, const QVector<ToolMessage> &messages)
{
    return int(std::count_if(messages.begin(), messages.end(), [&](const ToolMessage &message) {
        return message.isError && message.file == file
            && (message.text.startsWith("syntax error") || message.text.startsWith("Unexpected '"));
    }));
}

/// The keywords that suit each source best, by what the tool says with those of \a one and of \a
/// other; where they are equal, those of \a one.
VerilogVariant VerilatorReading::betterKeywords(const VerilogVariant &one,
                                                const QVector<ToolMessage> &messagesOfOne,
                                                const VerilogVariant &other,
                                                const QVector<ToolMessage> &messagesOfOther) const
{
    VerilogVariant better = one;
    for (int i = 0; i < sources.files.size(); ++i) {
        const QString name = preprocessor.privateName(i);
        if (syntaxErrorsIn(name, messagesOfOther) < syntaxErrorsIn(name, messagesOfOne))
            better.keywords[i] = other.keywords.at(i);
    }
    return better;
}

VerilatorReading::Attempt VerilatorReading::runVariant(const VerilogVariant &wanted,
                                                       const QString &top)
{
    variant = wanted;
    preprocessed = preprocessor.run(variant);
    closeTop(top, nullptr);
    return run(top, designText());
}

/// Reads Verilog files with errors by the other keywords: the old ones if nothing was said, all of
/// them if a standard was named. Files that have less errors so stay with them, whatever errors
/// there are besides.
bool VerilatorReading::retryWithOtherKeywords(const QString &top, Attempt *attempt,
                                              QStringList *log)
{
    VerilogVariant other = variant;
    for (int i = 0; i < sources.files.size(); ++i) {
        const SourceFile::Language language = sources.files.at(i).language;
        const bool mayChange = language == SourceFile::Verilog
            || (language == SourceFile::SystemVerilog && !variant.keywords.at(i).isEmpty());
        if (mayChange && isReported(i, attempt->log))
            other.keywords[i] = variant.keywords.at(i).isEmpty() ? "1364-2005" : "";
    }
    const VerilogVariant old = variant;
    const PreprocessedText oldText = preprocessed;
    if (other.keywords == old.keywords)
        return false;
    Attempt next = runVariant(other, top);
    if (!next.result.succeeded()) {
        const VerilogVariant better = betterKeywords(old, attempt->messages, other, next.messages);
        if (better.keywords != other.keywords && better.keywords != old.keywords)
            next = runVariant(better, top);
        other = better;
    }
    if (other.keywords == old.keywords || next.result.outcome != ToolOutcome::Finished) {
        variant = old;
        preprocessed = oldText;
        return false;
    }
    *attempt = next;
    for (int i = 0; i < sources.files.size(); ++i) {
        if (other.keywords.at(i) != old.keywords.at(i))
            log->append("WARNING: " + printable(sources.files.at(i).path)
                        + ": read by the keywords of another standard");
    }
    return next.result.succeeded();
}

bool VerilatorReading::retryAsVerilator(const QString &top, Attempt *attempt, QStringList *log)
{
    if (variant.definesVerilator)
        return false;
    VerilogVariant other = variant;
    other.definesVerilator = true;
    const PreprocessedText old = preprocessed;
    preprocessed = preprocessor.run(other);
    closeTop(top, nullptr);
    // Without code that depends on the macro the same errors would come again.
    if (preprocessed.complete && preprocessed.text != old.text) {
        const Attempt second = run(top, designText());
        if (second.result.succeeded()) {
            *attempt = second;
            log->append("WARNING: the sources are read with the macro VERILATOR defined");
            return true;
        }
    }
    preprocessed = old;
    return false;
}

static void addOnce(const QString &line, QStringList *lines)
{
    if (!lines->contains(line))
        lines->append(line);
}

/// Leaves modules empty until the tool doesn't crash any more: all of them first, then whichever
/// half of those it takes.
VerilatorReading::Attempt VerilatorReading::isolateCrash(const QString &top, DesignRepair *repair,
                                                         QStringList *errors)
{
    QStringList names = scanVerilog(repair->text()).modulesBelow(top.toUtf8());
    if (names.isEmpty())
        return Attempt();
    // The top goes last: the most depends on it.
    names.removeAll(top);
    names.append(top);
    bool toPorts = false;
    const auto without = [&](int first, int last) {
        DesignRepair attempt = *repair;
        QSet<QByteArray> empty;
        for (int i = first; i < last; ++i)
            empty.insert(names.at(i).toUtf8());
        attempt.gut(empty, toPorts);
        return attempt;
    };
    DesignRepair best = without(0, names.size());
    Attempt result = run(top, best.text());
    if (!result.result.succeeded() && !progress.isCancelled()) {
        toPorts = true;
        best = without(0, names.size());
        result = run(top, best.text());
    }
    if (!result.result.succeeded() || progress.isCancelled())
        return result;
    const int works = shortestFront(names.size(), [&](int first) {
        const DesignRepair next = without(0, first);
        const bool succeeds = !progress.isCancelled() && run(top, next.text()).result.succeeded();
        best = succeeds ? next : best;
        return succeeds;
    });
    errors->append("ERROR: the module \"" + printable(names.at(works - 1))
                   + "\" can't be read: the tool fails on it");
    const DesignRepair single = without(works - 1, works);
    result = run(top, single.text());
    // The result of the last run is what lies in the directory.
    if (!result.result.succeeded() && !progress.isCancelled())
        result = run(top, best.text());
    return result;
}

/// Takes out the instances by which modules contain each other, which the tool never comes out of.
bool VerilatorReading::breakCircles(DesignRepair *repair, QStringList *log) const
{
    const SourcePlaces places(repair->text());
    const auto uses = scanVerilog(repair->text()).closingCircles();
    for (const InstanceUse &use : uses) {
        const SourcePlaces::Stretch *stretch = places.stretchAt(use.typeOffset);
        ToolMessage message;
        message.isError = true;
        message.file = stretch ? stretch->file : QString();
        message.line = places.lineAt(use.typeOffset);
        message.text = "the module \"" + printable(QString::fromUtf8(use.type))
            + "\" contains itself by way of others";
        log->append(logLine(message, farm));
    }
    repair->takeOutInstances(uses);
    return !uses.isEmpty();
}

/// Reads the design without what the errors are in. The errors stay errors, so that they are told.
void VerilatorReading::repair(const QString &top, Attempt *attempt)
{
    DesignRepair repaired(designText(), top.toUtf8());
    QSet<QString> names;
    for (int i = 0; i < sources.files.size(); ++i)
        names.insert(preprocessor.privateName(i));
    QStringList log;
    const auto unended = repaired.endModules(names);
    for (const DesignRepair::Unended &module : unended) {
        ToolMessage message;
        message.isError = true;
        message.file = module.file;
        message.line = module.line;
        message.text =
            '"' + printable(QString::fromUtf8(module.name)) + "\" isn't ended in its file";
        log.append(logLine(message, farm));
    }
    const bool hadCircles = breakCircles(&repaired, &log);
    // What the lack of an end or a circle leads to is told far from where it is.
    Attempt next = unended.isEmpty() && !hadCircles ? *attempt : run(top, repaired.text());
    for (int round = 0;
         !next.result.succeeded() && round < DesignRepair::MaximumRounds && !progress.isCancelled();
         ++round) {
        QVector<DesignRepair::Concern> concerns;
        const bool isPlaced = repaired.takeOut(next.messages, &concerns);
        for (int i = 0; i < next.messages.size(); ++i) {
            ToolMessage message = asInSources(next.messages.at(i));
            if (concerns.at(i) == DesignRepair::Concern::Consequence)
                continue;
            message.isError = message.isError && concerns.at(i) == DesignRepair::Concern::Design;
            addOnce(logLine(message, farm), &log);
        }
        if (isPlaced)
            next = run(top, repaired.text());
        else
            next = isolateCrash(top, &repaired, &log);
        if (!isPlaced && round > 0)
            break;
        if (next.result.outcome == ToolOutcome::Cancelled
            || next.result.outcome == ToolOutcome::TimedOut || ranIntoLimit(next.result))
            break;
    }
    if (next.result.succeeded())
        log.append("WARNING: the netlist lacks what can't be read");
    else if (next.result.outcome != ToolOutcome::Cancelled && !hasErrors(log))
        log += next.log;
    attempt->result = next.result;
    attempt->log = log;
}

} // namespace Standin
