// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "logline.h"

#include <QRegularExpression>

namespace Workbench {

// A file name may hold colons itself, so the place is what ends in ":number:" with the shortest
// possible name in front.
static void takePlace(LogLine &line)
{
    static const QRegularExpression place(
        QStringLiteral("^(.+?):(\\d{1,9}):(?:(\\d{1,9}):)? +(.*)$"),
        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = place.match(line.text);
    if (!match.hasMatch())
        return;
    line.file = match.captured(1);
    line.line = match.captured(2).toInt();
    line.column = match.captured(3).toInt();
    line.text = match.captured(4);
}

LogLine parseLogLine(const QString &text)
{
    static const struct
    {
        const char *word;
        LogLine::Severity severity;
    } words[] = {
        {"ERROR", LogLine::Error},
        {"WARNING", LogLine::Warning},
        {"INFO", LogLine::Information},
    };

    LogLine line;
    line.text = text;
    for (const auto &entry : words) {
        const QLatin1String word(entry.word);
        if (!text.startsWith(word))
            continue;
        line.severity = entry.severity;
        line.text = text.mid(word.size());
        if (line.text.startsWith(':'))
            line.text.remove(0, 1);
        line.text = line.text.trimmed();
        takePlace(line);
        break;
    }
    return line;
}

} // namespace Workbench
