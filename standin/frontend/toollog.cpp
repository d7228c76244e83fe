// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/toollog.h"

#include "frontend/directoryfarm.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace Standin {

/// Characters that draw nothing but end a line, or turn the order of what stands around them.
static bool isUnseen(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return (c >= QChar(0x202a) && c <= QChar(0x202e))
            || (c >= QChar(0x2066) && c <= QChar(0x2069));
    }
}

QString printable(const QString &name)
{
    QString text;
    text.reserve(name.size());
    for (QChar c : name) {
        if (c == '\n')
            text += "\\n";
        else if (isUnseen(c))
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

} // namespace

static ToolMessage readMessage(QString text)
{
    // Verilator gives up with such a message, and names the place in its own text besides ours.
    static const QLatin1String internalError("Internal Error: ");
    static const QRegularExpression ownPlace("\\A\\.\\./[A-Za-z0-9_]+\\.(?:cpp|h|y|l):[0-9]+: ");
    static const QRegularExpression shape("\\A(.+?):([0-9]+):(?:([0-9]+):)? ?(.*)\\z",
                                          QRegularExpression::DotMatchesEverythingOption);
    ToolMessage message;
    message.isInternal = text.startsWith(internalError);
    if (message.isInternal)
        text.remove(0, internalError.size());
    const bool hasPlace = !message.isInternal || !text.contains(ownPlace);
    const QRegularExpressionMatch match = shape.match(text);
    if (hasPlace && match.hasMatch()) {
        message.file = match.captured(1);
        message.line = match.captured(2).toInt();
        message.column = match.captured(3).toInt();
        text = match.captured(4);
    }
    message.text = message.isInternal ? "internal error: " + text.remove(ownPlace) : text;
    return message;
}

QVector<ToolMessage> readVerilatorLog(const QByteArray &text)
{
    static const QRegularExpression shape("\\A%(Error|Warning)(?:-([A-Z0-9_]+))?: (.*)\\z");
    static const char *const hints[] = {"Exiting due to", "Command Failed", "Cannot continue",
                                        "See the manual at"};
    QVector<ToolMessage> messages;
    const auto rawLines = text.split('\n');
    for (const QByteArray &raw : rawLines) {
        const QRegularExpressionMatch match = shape.match(QString::fromUtf8(raw).trimmed());
        if (raw.startsWith(' ') || !match.hasMatch())
            continue;
        ToolMessage message = readMessage(match.captured(3));
        const bool isHint = std::any_of(std::begin(hints), std::end(hints), [&](const char *hint) {
            return message.text.startsWith(QLatin1String(hint));
        });
        if (isHint || message.text.startsWith("This may be because there's no search path"))
            continue;
        message.isError = match.captured(1) == "Error";
        message.code = match.captured(2).toLatin1();
        messages.append(message);
    }
    return messages;
}

QString logLine(const ToolMessage &message, const DirectoryFarm &farm)
{
    const QString real = farm.realPath(message.file);
    // A place in a file of ours means nothing to the reader.
    if (message.file.isEmpty() || real.isNull())
        return prefix(message.isError) + printable(message.text);
    const QString column = message.column > 0 ? ':' + QString::number(message.column) : QString();
    return prefix(message.isError) + printable(real) + ':' + QString::number(message.line) + column
        + ": " + printable(message.text);
}

QStringList logLines(const QVector<ToolMessage> &messages, const DirectoryFarm &farm)
{
    LogLines lines;
    for (const ToolMessage &message : messages)
        lines.add(logLine(message, farm));
    return lines.result();
}

QStringList rewriteVerilatorLog(const QByteArray &text, const DirectoryFarm &farm)
{
    return logLines(readVerilatorLog(text), farm);
}

QVector<ToolMessage> readGhdlLog(const QByteArray &text)
{
    static const QRegularExpression shape(
        "\\A(s[0-9]+\\.vhd):([0-9]+):([0-9]+): ?"
        "(?:\\((?:report|assertion) )?(warning|note|error|failure)?\\)?:? ?(.*)\\z");
    static const QRegularExpression general("\\A[^ :]*ghdl[^ :]*:(?:error: )?(.*)\\z");
    QVector<ToolMessage> messages;
    const auto rawLines = text.split('\n');
    for (const QByteArray &raw : rawLines) {
        const QString line = QString::fromUtf8(raw);
        const QRegularExpressionMatch match = shape.match(line);
        ToolMessage message;
        message.isError = true;
        if (!match.hasMatch()) {
            message.text = general.match(line).captured(1).trimmed();
            if (!message.text.isEmpty() && message.text != "compilation error")
                messages.append(message);
            continue;
        }
        const QString kind = match.captured(4);
        if (kind == "note")
            continue;
        message.isError = kind != "warning";
        message.file = match.captured(1);
        message.line = match.captured(2).toInt();
        message.column = match.captured(3).toInt();
        message.text = match.captured(5);
        messages.append(message);
    }
    return messages;
}

QStringList rewriteGhdlLog(const QByteArray &text, const DirectoryFarm &farm, bool failed)
{
    QVector<ToolMessage> messages = readGhdlLog(text);
    for (ToolMessage &message : messages)
        message.isError = message.isError && failed;
    return logLines(messages, farm);
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
