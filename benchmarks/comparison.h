// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QVector>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>

/// One side of a comparison: what is measured, and what goes before and after it unmeasured.
struct Side
{
    std::function<void()> work;
    std::function<void()> prepare = [] {
    };
    std::function<void()> cleanUp = [] {
    };
};

/// Measures cases against bounds in the same process and prints a line for each.
class Comparison
{
public:
    /// Takes a program's arguments: if there is one, only the cases that hold it in their names
    /// are run.
    Comparison(int argc, char *argv[])
        : wanted(argc > 1 ? argv[1] : "")
    {
    }

    bool wants(const char *name) const { return std::strstr(name, wanted) != nullptr; }

    /// Runs both sides in turn, so that both meet the same machine, and prints the ratio of the
    /// medians of their times. The case passes if it is \a target or less.
    void time(const char *name, double target, int size, const Side &value, const Side &bound)
    {
        if (!wants(name))
            return;
        QVector<double> values;
        QVector<double> bounds;
        for (int i = 0; i < rounds; ++i) {
            bounds.append(milliseconds(bound));
            values.append(milliseconds(value));
        }
        print(name, median(values) / median(bounds), target, median(values), median(bounds), "ms",
              size);
    }

    void print(const char *name, double ratio, double target, double value, double bound,
               const char *unit, int size)
    {
        std::printf("%-22s ratio %7.3f target %6.2f value %10.2f bound %10.2f %s size %d%s\n", name,
                    ratio, target, value, bound, unit, size, ratio <= target ? "" : "  MISSED");
        std::fflush(stdout);
        passed = passed && ratio <= target;
    }

    int exitCode() const { return passed ? 0 : 1; }

    static double milliseconds(const Side &side)
    {
        side.prepare();
        QElapsedTimer timer;
        timer.start();
        side.work();
        const double taken = double(timer.nsecsElapsed()) / 1e6;
        side.cleanUp();
        return taken;
    }

    static double median(QVector<double> values)
    {
        std::sort(values.begin(), values.end());
        return values.at(values.size() / 2);
    }

    /// Bytes that are allocated on the heap now.
    static double heap()
    {
        const auto info = mallinfo2();
        return double(info.uordblks) + double(info.hblkhd);
    }

private:
    static const int rounds = 7;
    const char *wanted;
    bool passed = true;
};
