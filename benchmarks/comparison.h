// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "results.h"

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

#include <functional>

/// Lets a program with windows do without a display. To be called before the QApplication is made.
void useNoDisplay();

/// One side of a comparison: what is measured, and what goes before and after it unmeasured.
struct Side
{
    std::function<void()> work;
    std::function<void()> prepare = [] {
    };
    std::function<void()> cleanUp = [] {
    };
};

/// What a piece of work took, in milliseconds by two clocks.
struct Duration
{
    double processor = 0; ///< Of all threads of this process, in the kernel too.
    double wall = 0;
};

/// The clock by which a case is judged.
///
/// The ratio of two pieces of work that only compute is that of their processor times. What else
/// runs on the machine stretches wall times by whole factors from one second to the next, and a
/// median of a few rounds doesn't take that out; it reaches processor times only through the shared
/// caches, and these the interleaved bound shares. Our programs have one thread that works, and so
/// the processor time is what a user waits for on a machine of his own.
///
/// It leaves out waiting for a disk or a child process. So what reads or writes files as part of
/// the case is judged by the wall clock.
enum class Clock { Processor, Wall };

/// Measures cases against bounds in the same process, prints a line for each and keeps the results
/// for the file in which those of all programs are gathered.
class Comparison
{
public:
    /// How often each side is run; the median counts.
    static constexpr int Rounds = 7;

    /// Takes a program's arguments, `[--results FILE] [PATTERN]`.
    ///
    /// Only cases whose names match the regular expression PATTERN are run, or all of them if it is
    /// the program's own name. The results are added to those in FILE.
    Comparison(int argc, char *argv[]);

    /// Whether a case of this name is to be run. Set-up that takes time should ask first.
    bool wants(const char *name) const;

    /// Whether any of these cases is.
    bool wantsAny(std::initializer_list<const char *> names) const;

    /// Runs both sides in turn, so that both meet the same machine. The ratio is that of the
    /// medians of their times. Does nothing if the case isn't wanted.
    void time(const char *name, double target, int size, const Side &value, const Side &bound,
              Clock clock = Clock::Processor);

    /// As time() for what was measured by the caller, in turn as well and at least Rounds times.
    void times(const char *name, double target, int size, const QVector<Duration> &values,
               const QVector<Duration> &bounds, Clock clock = Clock::Processor);

    /// Takes a case that was measured by other means than a clock.
    void print(const char *name, double ratio, double target, double value, double bound,
               const char *unit, int size);

    /// Adds the results to the file. To be called last.
    /// \return 0 if all targets were met, 1 if some weren't, 2 if the results couldn't be kept.
    int exitCode() const;

    /// What the work of \a side takes.
    static Duration duration(const Side &side);
    static Duration duration(const std::function<void()> &work);

    /// The processor time of duration().
    static double milliseconds(const Side &side);

    static double median(QVector<double> values);

    /// The middle one of \a durations by one clock.
    static double median(const QVector<Duration> &durations, Clock clock);

    /// Bytes that are allocated on the heap now.
    static double heap();

private:
    bool all = false;
    QRegularExpression wanted;
    QString path;
    QVector<CaseResult> results;
};
