// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/pathname.h"

#include <cstring>

namespace Standin {

QString textOfName(const char *name, int length)
{
    QString text = QString::fromUtf8(name, length);
    if (length >= 3 && std::memcmp(name, "\xef\xbb\xbf", 3) == 0)
        text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}

bool needsEscape(const QByteArray &name)
{
    return name.startsWith('\\') || name.contains('/') || name.contains(' ');
}

QByteArray escapedName(const QByteArray &name)
{
    QByteArray escaped = name;
    escaped.replace(' ', "  ");
    return '\\' + escaped + ' ';
}

bool splitIndex(const QByteArray &name, QByteArray *base, qint32 *index)
{
    if (!name.endsWith(']'))
        return false;
    const int open = name.lastIndexOf('[');
    if (open < 0)
        return false;
    const QByteArray digits = name.mid(open + 1, name.size() - open - 2);
    bool ok = false;
    const qint32 value = digits.toInt(&ok);
    if (!ok || QByteArray::number(value) != digits)
        return false;
    *base = name.left(open);
    *index = value;
    return true;
}

int stepEnd(const QByteArray &path, int begin)
{
    int at = begin;
    if (at < path.size() && path.at(at) == '\\') {
        // A lone blank ends an escaped identifier, a double one belongs to it.
        for (++at; at < path.size(); ++at) {
            if (path.at(at) != ' ')
                continue;
            if (at + 1 == path.size() || path.at(at + 1) != ' ')
                break;
            ++at;
        }
    }
    const int slash = path.indexOf('/', qMin(at, path.size()));
    return slash < 0 ? path.size() : slash;
}

} // namespace Standin
