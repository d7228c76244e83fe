// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/toollog.h"

#include "frontend/directoryfarm.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace Standin {

QString printable(const QString &name)
{
    QString text;
    text.reserve(name.size());
    for (QChar c : name) {
        if (c == '\n')
            text += "\\n";
        else if (c.category() == QChar::Other_Control)
            text += QString("\\x%1").arg(c.unicode(), 2, 16, QChar('0'));
        else
            text += c;
    }
    return text;
}

namespace {

/// Gathers lines without repetitions, up to the longest log.
class LogLines
{
public:
    void add(const QString &line)
    {
        if (seen.contains(line))
            return;
        seen.insert(line);
        // Errors decide, so they are never what is left out for length.
        if (lines.size() < MaximumLogLines || line.startsWith("ERROR"))
            lines.append(line);
        else
            ++leftOut;
    }

    QStringList result() const
    {
        if (leftOut == 0)
            return lines;
        return lines + QStringList(QString("WARNING: %1 more lines are left out").arg(leftOut));
    }

private:
    QSet<QString> seen;
    QStringList lines;
    int leftOut = 0;
};

QString prefix(bool isError)
{
    return QLatin1String(isError ? "ERROR: " : "WARNING: ");
}

/// "file:line:column: text" with the real file, or the text alone if no place is given.
QString placed(const QString &message, const DirectoryFarm &farm)
{
    static const QRegularExpression shape("\\A(.+?):([0-9]+):(?:([0-9]+):)? ?(.*)\\z",
                                          QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = shape.match(message);
    if (!match.hasMatch())
        return message;
    const QString real = farm.realPath(match.captured(1));
    // A place in a file of ours means nothing to the reader.
    if (real.isNull())
        return match.captured(4);
    const QString column = match.captured(3);
    return printable(real) + ':' + match.captured(2) + (column.isEmpty() ? QString() : ':' + column)
        + ": " + match.captured(4);
}

} // namespace

QStringList rewriteVerilatorLog(const QByteArray &text, const DirectoryFarm &farm)
{
    static const QRegularExpression shape("\\A%(Error|Warning)(?:-([A-Z0-9_]+))?: (.*)\\z");
    LogLines lines;
    const auto rawLines = text.split('\n');
    for (const QByteArray &raw : rawLines) {
        const QRegularExpressionMatch match = shape.match(QString::fromUtf8(raw).trimmed());
        if (raw.startsWith(' ') || !match.hasMatch())
            continue;
        const QString message = match.captured(3);
        if (message.startsWith("Exiting due to") || message.startsWith("Command Failed"))
            continue;
        const bool isError = match.captured(1) == "Error";
        lines.add(prefix(isError) + placed(message, farm));
    }
    return lines.result();
}

QStringList rewriteGhdlLog(const QByteArray &text, const DirectoryFarm &farm, bool failed)
{
    static const QRegularExpression shape(
        "\\A(s[0-9]+\\.vhd):([0-9]+):([0-9]+): ?(warning|note|error)?:? ?(.*)\\z");
    static const QRegularExpression general("\\A[^ :]*ghdl[^ :]*:(?:error: )?(.*)\\z");
    LogLines lines;
    const auto rawLines = text.split('\n');
    for (const QByteArray &raw : rawLines) {
        const QString line = QString::fromUtf8(raw);
        const QRegularExpressionMatch match = shape.match(line);
        if (!match.hasMatch()) {
            const QRegularExpressionMatch other = general.match(line);
            const QString message = other.captured(1).trimmed();
            if (other.hasMatch() && message != "compilation error")
                lines.add(prefix(failed) + message);
            continue;
        }
        const QString kind = match.captured(4);
        if (kind == "note")
            continue;
        const bool isError = failed && kind != "warning";
        const QString file = farm.sourceOfCopy(match.captured(1));
        lines.add(prefix(isError) + printable(file) + ':' + match.captured(2) + ':'
                  + match.captured(3) + ": " + match.captured(5));
    }
    return lines.result();
}

bool hasErrors(const QStringList &log)
{
    return std::any_of(log.begin(), log.end(),
                       [](const QString &line) { return line.startsWith("ERROR"); });
}

QStringList asWarnings(const QStringList &log)
{
    QStringList warnings;
    for (const QString &line : log)
        warnings.append(line.startsWith("ERROR") ? "WARNING" + line.mid(5) : line);
    return warnings;
}

} // namespace Standin
