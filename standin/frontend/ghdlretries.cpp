// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The part of GhdlStage that compiles in whatever order it takes, and goes on when sources can't be
// read as they are.

#include "frontend/directoryfarm.h"
#include "frontend/ghdlstage.h"
#include "frontend/progress.h"
#include "frontend/shortestfront.h"
#include "frontend/toolbox.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace Standin {

// A file that is faulty for more rounds is given up.
static constexpr int MaximumRounds = 100;

/// Compiles parts of one library in one run, which ends with the first that can't be.
GhdlStage::Run GhdlStage::compile(const QVector<int> &wanted)
{
    QStringList arguments = QStringList("-a") + options(parts.at(wanted.first()).library);
    for (int part : wanted)
        arguments.append(parts.at(part).copy);
    return run(arguments, QString());
}

/// Compiles those of \a wanted that can be, in their order, and as many in one run as stand
/// together. \return the others.
QVector<GhdlStage::Refusal> GhdlStage::compileWhatCanBe(const QVector<int> &wanted)
{
    QVector<Refusal> refused;
    for (int i = 0; i < wanted.size();) {
        QVector<int> batch;
        const QString library = parts.at(wanted.at(i)).library;
        for (int k = i; k < wanted.size() && parts.at(wanted.at(k)).library == library; ++k)
            batch.append(wanted.at(k));
        Run attempt = compile(batch);
        if (mustStop(attempt)) {
            refused.append({wanted.at(i), attempt});
            break;
        }
        int good = attempt.result.succeeded() ? batch.size() : 0;
        if (!attempt.result.succeeded() && batch.size() > 1) {
            // The errors are in the part that ended the run; those ahead are compiled once more,
            // as nothing is kept of such a run.
            const QString file = attempt.errors.last().file;
            const auto faulty = std::find_if(batch.begin(), batch.end(),
                                             [&](int part) { return parts.at(part).copy == file; });
            good = faulty == batch.end() ? 0 : int(faulty - batch.begin());
            batch.resize(std::max(1, good));
            attempt = compile(batch);
            good = attempt.result.succeeded() ? batch.size() : 0;
        }
        if (good > 0) {
            order += batch;
            found += attempt.log;
        } else {
            batch.resize(1);
            refused.append({batch.first(), attempt});
        }
        i += batch.size();
    }
    return refused;
}

/// Compiles all parts anew: until nothing is left, or a whole round brings nothing further, and
/// then without what the errors are in.
bool GhdlStage::compileAll()
{
    const QDir directory(farm.path(), "*.cf", QDir::Name, QDir::Files);
    const auto libraryFiles = directory.entryList();
    for (const QString &file : libraryFiles)
        QFile::remove(farm.filePath(file));
    // What once worked works best in the same order.
    QVector<int> left = order;
    for (int part = 0; part < parts.size(); ++part) {
        if (!left.contains(part))
            left.append(part);
    }
    order.clear();
    left.erase(std::remove_if(left.begin(), left.end(),
                              [&](int part) { return parts.at(part).isLeftOut; }),
               left.end());
    while (!left.isEmpty()) {
        const QVector<Refusal> refused = compileWhatCanBe(left);
        if (!refused.isEmpty() && mustStop(refused.last().run)) {
            for (const ToolMessage &error : refused.last().run.errors)
                found.append(lineOf(error));
            found += refused.last().run.log;
            isStopped = true;
            return false;
        }
        const bool isStuck = refused.size() == left.size();
        left.clear();
        for (const Refusal &refusal : refused)
            left.append(refusal.part);
        if (isStuck && !repairRefused(refused))
            return false;
        left.erase(std::remove_if(
                       left.begin(), left.end(),
                       [&](int part) { return parts.at(part).isLeftOut || order.contains(part); }),
                   left.end());
    }
    return !order.isEmpty();
}

/// True if an error is the lack of something in a part that can't be compiled yet either.
bool GhdlStage::dependsOnOthers(const ToolMessage &error, const QSet<QByteArray> &names) const
{
    static const QRegularExpression quoted("[\"']([A-Za-z_][\\w]*)[\"'(]");
    auto matches = quoted.globalMatch(error.text);
    while (matches.hasNext()) {
        if (names.contains(matches.next().captured(1).toLower().toUtf8()))
            return true;
    }
    return false;
}

/// Mends one of the parts that can't be compiled, one that doesn't wait for another if there is
/// any.
bool GhdlStage::repairRefused(const QVector<Refusal> &refused)
{
    QHash<QByteArray, int> owners;
    for (const Refusal &refusal : refused) {
        const auto names = parts.at(refusal.part).repair.unitNames();
        for (const QByteArray &name : names)
            owners.insert(name, refusal.part);
    }
    const auto othersOf = [&](int part) {
        QSet<QByteArray> others;
        for (auto owner = owners.cbegin(); owner != owners.cend(); ++owner) {
            if (owner.value() != part)
                others.insert(owner.key());
        }
        return others;
    };
    for (const Refusal &refusal : refused) {
        const QSet<QByteArray> others = othersOf(refusal.part);
        QVector<ToolMessage> own;
        for (const ToolMessage &error : refusal.run.errors) {
            if (!dependsOnOthers(error, others))
                own.append(error);
        }
        if (!own.isEmpty())
            return repairPart(refusal.part, own, others);
    }
    // They wait for each other.
    return repairPart(refused.first().part, refused.first().run.errors, QSet<QByteArray>());
}

void GhdlStage::leaveOut(int part, const QString &reason)
{
    parts[part].isLeftOut = true;
    const auto names = parts.at(part).repair.unitNames();
    for (const QByteArray &name : names)
        losses.names.insert(name);
    ToolMessage message;
    message.isError = true;
    message.text = printable(farm.realPath(parts.at(part).copy)) + ": " + reason;
    found.append(lineOf(message));
}

/// Takes out of a part what its errors are in, and notes them. \return false if nothing was there.
bool GhdlStage::takeOut(int part, const QVector<ToolMessage> &errors)
{
    QVector<VhdlRepair::Concern> concerns;
    const bool any = parts[part].repair.takeOut(errors, &losses, &concerns);
    for (int i = 0; i < errors.size(); ++i) {
        ToolMessage message = errors.at(i);
        if (concerns.at(i) == VhdlRepair::Concern::Consequence)
            continue;
        message.isError = concerns.at(i) == VhdlRepair::Concern::Design;
        found.append(lineOf(message));
    }
    return any && farm.write(parts.at(part).copy, parts.at(part).repair.text());
}

/// Mends a part until it can be compiled or waits for \a others.
///
/// \return false if GHDL itself fails.
bool GhdlStage::repairPart(int part, QVector<ToolMessage> errors, const QSet<QByteArray> &others)
{
    for (int round = 0; round < MaximumRounds; ++round) {
        errors.erase(std::remove_if(errors.begin(), errors.end(),
                                    [&](const ToolMessage &error) {
                                        return error.file != parts.at(part).copy;
                                    }),
                     errors.end());
        // Whether it was so or has been made so, there is nothing to be told as an error.
        if (!errors.isEmpty() && errors.first().text.startsWith("design file is empty")) {
            errors.first().isError = false;
            found.append(lineOf(errors.first()));
            parts[part].isLeftOut = true;
            return true;
        }
        if (errors.isEmpty() || !takeOut(part, errors)) {
            leaveOut(part, "the file can't be read");
            return true;
        }
        const Run attempt = compile({part});
        if (mustStop(attempt))
            return false;
        if (attempt.result.succeeded()) {
            order.append(part);
            found += attempt.log;
            return true;
        }
        errors.clear();
        for (const ToolMessage &error : attempt.errors) {
            if (!dependsOnOthers(error, others))
                errors.append(error);
        }
        if (errors.isEmpty())
            return true;
    }
    leaveOut(part, "there are too many errors in the file");
    return true;
}

/// Synthesizes without what the errors are in, again and again.
bool GhdlStage::repairSynthesis(const QByteArray &entity, const QVector<Setting> &generics,
                                Run *last)
{
    for (int round = 0; round < MaximumRounds && !progress.isCancelled(); ++round) {
        if (last->result.outcome == ToolOutcome::NotStarted)
            return false;
        if (mustStop(*last))
            return isolateCrash(entity, generics, last);
        if (last->result.succeeded()) {
            found.append("WARNING: the netlist lacks what can't be read");
            return true;
        }
        QHash<QString, QVector<ToolMessage>> byFile;
        for (const ToolMessage &error : qAsConst(last->errors))
            byFile[error.file].append(error);
        bool any = false;
        for (int part = 0; part < parts.size(); ++part) {
            const auto errors = byFile.value(parts.at(part).copy);
            any = (!errors.isEmpty() && takeOut(part, errors)) || any;
        }
        if (!any)
            return isolateCrash(entity, generics, last);
        if (!compileAll())
            return false;
        *last = synthesizeOnce(entity, generics);
    }
    return false;
}

/// Empties architectures until GHDL doesn't fail any more: all of them first, then whichever of
/// those it takes.
bool GhdlStage::isolateCrash(const QByteArray &entity, const QVector<Setting> &generics, Run *last)
{
    struct Candidate
    {
        int part;
        VhdlRepair::Architecture architecture;
    };
    QVector<Candidate> candidates;
    QVector<Candidate> ofTop;
    for (int part = 0; part < parts.size(); ++part) {
        const auto architectures = parts.at(part).repair.architectures();
        for (const VhdlRepair::Architecture &each : architectures) {
            const bool isTop = each.entity == entity.toLower();
            (isTop ? ofTop : candidates).append({part, each});
        }
    }
    // The top goes last: the most depends on it.
    candidates += ofTop;
    const QVector<Part> whole = parts;
    const QStringList before = found;
    bool toPorts = false;
    const auto without = [&](int first, int end) {
        parts = whole;
        for (int i = first; i < end; ++i)
            parts[candidates.at(i).part].repair.gut({candidates.at(i).architecture.key}, toPorts);
        for (const Part &part : qAsConst(parts))
            farm.write(part.copy, part.repair.text());
        if (progress.isCancelled() || !compileAll())
            return false;
        *last = synthesizeOnce(entity, generics);
        return last->result.succeeded();
    };
    const bool isLimit = mustStop(*last);
    const QStringList atLimit = before + linesOf(last->errors) + last->log;
    bool works = without(0, candidates.size());
    if (!works && !progress.isCancelled()) {
        toPorts = true;
        works = without(0, candidates.size());
    }
    if (!works)
        return false;
    // Whoever has met a limit isn't sent against it again.
    if (isLimit) {
        found = atLimit;
        found.append("WARNING: the netlist lacks what can't be read");
        return true;
    }
    const int fewest =
        shortestFront(candidates.size(), [&](int first) { return without(0, first); });
    const Candidate &culprit = candidates.at(fewest - 1);
    works = without(fewest - 1, fewest) || without(0, fewest);
    ToolMessage message;
    message.isError = true;
    message.file = parts.at(culprit.part).copy;
    message.line = culprit.architecture.line;
    message.text = "the architecture of \"" + QString::fromUtf8(culprit.architecture.entity)
        + "\" can't be read: the tool fails on it";
    found = before + QStringList(lineOf(message));
    found.append("WARNING: the netlist lacks what can't be read");
    return works;
}

} // namespace Standin
