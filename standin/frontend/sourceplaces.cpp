// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/sourceplaces.h"

#include <algorithm>

namespace Standin {

/// Reads `line NUMBER "FILE" LEVEL at \a begin.
static bool readDirective(const QByteArray &text, int begin, int end, int *line, QString *file)
{
    const int open = text.indexOf('"', begin);
    const int close = text.lastIndexOf('"', end - 1);
    if (open < 0 || close <= open || open >= end)
        return false;
    bool isNumber = false;
    *line = text.mid(begin + 6, open - begin - 6).trimmed().toInt(&isNumber);
    *file = QString::fromUtf8(text.mid(open + 1, close - open - 1));
    return isNumber;
}

SourcePlaces::SourcePlaces(const QByteArray &preprocessed)
    : text(preprocessed)
{
    for (int at = text.startsWith("`line ") ? 0 : text.indexOf("\n`line "); at >= 0;) {
        const int begin = text.at(at) == '\n' ? at + 1 : at;
        const int newline = text.indexOf('\n', begin);
        const int end = newline < 0 ? text.size() : newline;
        int line = 0;
        QString file;
        if (readDirective(text, begin, end, &line, &file)) {
            if (!all.empty())
                all.back().end = quint32(begin);
            byFile[file].append(int(all.size()));
            all.push_back(
                {quint32(std::min(end + 1, text.size())), quint32(text.size()), line, file});
        }
        at = newline < 0 ? -1 : text.indexOf("\n`line ", newline);
    }
}

QVector<quint32> SourcePlaces::offsets(const QString &file, int line) const
{
    QVector<quint32> found;
    const QVector<int> indices = byFile.value(file);
    for (int index : indices) {
        const Stretch &stretch = all[std::size_t(index)];
        int at = int(stretch.begin);
        int left = line - stretch.line;
        while (left > 0 && at >= 0 && at < int(stretch.end)) {
            at = text.indexOf('\n', at) + 1;
            --left;
            if (at == 0)
                at = -1;
        }
        if (left == 0 && at >= 0 && at < int(stretch.end))
            found.append(quint32(at));
    }
    return found;
}

const SourcePlaces::Stretch *SourcePlaces::stretchAt(quint32 offset) const
{
    const auto behind = std::upper_bound(
        all.begin(), all.end(), offset,
        [](quint32 wanted, const Stretch &stretch) { return wanted < stretch.begin; });
    return behind == all.begin() ? nullptr : &*(behind - 1);
}

int SourcePlaces::lineAt(quint32 offset) const
{
    const Stretch *stretch = stretchAt(offset);
    if (!stretch)
        return 0;
    const auto newlines =
        std::count(text.constBegin() + stretch->begin,
                   text.constBegin() + std::min(offset, quint32(text.size())), '\n');
    return stretch->line + int(newlines);
}

} // namespace Standin
