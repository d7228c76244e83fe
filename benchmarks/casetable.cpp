// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Prints what all benchmark programs have gathered in one file as one table. Exits with 1 if a
// target was missed, and with 2 if there are no results.

#include "results.h"

#include <algorithm>
#include <cstdio>

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
        return 2;
    }
    bool ok = false;
    const QVector<CaseResult> results = readResults(QString::fromLocal8Bit(argv[1]), &ok);
    if (!ok || results.isEmpty()) {
        std::fprintf(stderr, "no case was run\n");
        return 2;
    }
    std::fputs(qPrintable(tableOf(results)), stdout);
    const bool passed = std::all_of(results.begin(), results.end(),
                                    [](const CaseResult &result) { return result.passed(); });
    return passed ? 0 : 1;
}
