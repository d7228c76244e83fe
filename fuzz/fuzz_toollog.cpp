// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// What a tool says holds names and texts of the design. Whatever it says, the log has lines of
// printable text, each of which says what it is.

#include "frontend/directoryfarm.h"
#include "frontend/toollog.h"

#include <QSet>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace Standin;

static const DirectoryFarm &farm()
{
    static DirectoryFarm made;
    static const bool isFilled = !made.addSource("/design/a\nb.v", ".v").isEmpty()
        && !made.addSource("/design/c.vhd", ".vhd").isEmpty();
    if (!isFilled)
        std::abort();
    return made;
}

static void check(const QStringList &log)
{
    for (const QString &line : log) {
        if (!line.startsWith("ERROR: ") && !line.startsWith("WARNING: "))
            std::abort();
        if (std::any_of(line.begin(), line.end(),
                        [](QChar c) { return c.category() == QChar::Other_Control; }))
            std::abort();
    }
    if (QSet<QString>(log.begin(), log.end()).size() != log.size())
        std::abort();
    const auto warnings = std::count_if(
        log.begin(), log.end(), [](const QString &line) { return line.startsWith("WARNING"); });
    if (warnings > MaximumLogLines + 1 || hasErrors(log) != (warnings < log.size()))
        std::abort();
    if (hasErrors(asWarnings(log)) || asWarnings(log).size() != log.size())
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray said(reinterpret_cast<const char *>(data), int(size));
    check(rewriteVerilatorLog(said, farm()));
    check(rewriteGhdlLog(said, farm(), true));
    check(rewriteGhdlLog(said, farm(), false));
    return 0;
}
