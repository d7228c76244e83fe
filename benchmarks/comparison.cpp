// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "comparison.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <malloc.h>
#include <time.h>

#include <algorithm>
#include <cstdio>

static double processorMilliseconds()
{
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

// All but the one remark that the offscreen platform makes about each window.
static void showMessages(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.contains("propagateSizeHints"))
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

void useNoDisplay()
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(showMessages);
}

Comparison::Comparison(int argc, char *argv[])
{
    QString pattern;
    for (int i = 1; i < argc; ++i) {
        const QString argument = QString::fromLocal8Bit(argv[i]);
        if (argument == "--results" && i + 1 < argc)
            path = QString::fromLocal8Bit(argv[++i]);
        else
            pattern = argument;
    }
    wanted.setPattern(pattern);
    if (!wanted.isValid())
        qFatal("no regular expression: %s", qPrintable(pattern));
    all = pattern == QFileInfo(QString::fromLocal8Bit(argv[0])).fileName();
}

bool Comparison::wants(const char *name) const
{
    return all || wanted.match(QString::fromLatin1(name)).hasMatch();
}

bool Comparison::wantsAny(std::initializer_list<const char *> names) const
{
    return std::any_of(names.begin(), names.end(),
                       [this](const char *name) { return wants(name); });
}

void Comparison::time(const char *name, double target, int size, const Side &value,
                      const Side &bound, Clock clock)
{
    if (!wants(name))
        return;
    QVector<Duration> values;
    QVector<Duration> bounds;
    for (int i = 0; i < Rounds; ++i) {
        bounds.append(duration(bound));
        values.append(duration(value));
    }
    times(name, target, size, values, bounds, clock);
}

void Comparison::times(const char *name, double target, int size, const QVector<Duration> &values,
                       const QVector<Duration> &bounds, Clock clock)
{
    if (values.size() < Rounds || bounds.size() < Rounds)
        qFatal("%s was measured too few times", name);
    const double value = median(values, clock);
    const double bound = median(bounds, clock);
    print(name, value / bound, target, value, bound,
          clock == Clock::Processor ? "ms processor" : "ms wall", size);
}

void Comparison::print(const char *name, double ratio, double target, double value, double bound,
                       const char *unit, int size)
{
    if (!wants(name))
        return;
    const CaseResult result = {QString::fromLatin1(name), ratio, target, value, bound,
                               QString::fromLatin1(unit), size};
    std::printf("%-24s ratio %7.3f target %6.2f value %10.2f bound %10.2f %s size %d%s\n", name,
                ratio, target, value, bound, unit, size, result.passed() ? "" : "  MISSED");
    std::fflush(stdout);
    addResult(&results, result);
}

int Comparison::exitCode() const
{
    if (!path.isEmpty()) {
        bool ok = false;
        QVector<CaseResult> gathered = readResults(path, &ok);
        for (const CaseResult &result : results)
            addResult(&gathered, result);
        if (!ok || !writeResults(path, gathered))
            return 2;
    }
    const bool passed = std::all_of(results.begin(), results.end(),
                                    [](const CaseResult &result) { return result.passed(); });
    return passed ? 0 : 1;
}

Duration Comparison::duration(const Side &side)
{
    side.prepare();
    const Duration taken = duration(side.work);
    side.cleanUp();
    return taken;
}

Duration Comparison::duration(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    const double start = processorMilliseconds();
    work();
    return {processorMilliseconds() - start, double(timer.nsecsElapsed()) / 1e6};
}

double Comparison::milliseconds(const Side &side)
{
    return duration(side).processor;
}

double Comparison::median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double Comparison::median(const QVector<Duration> &durations, Clock clock)
{
    QVector<double> values;
    for (const Duration &each : durations)
        values.append(clock == Clock::Processor ? each.processor : each.wall);
    return median(values);
}

double Comparison::heap()
{
    const auto info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}
