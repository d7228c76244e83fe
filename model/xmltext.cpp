// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "xmltext.h"

namespace MOLK {

static const int escapeLength = 6;

static int upperHexValue(QChar digit)
{
    const ushort code = digit.unicode();
    if (code >= '0' && code <= '9')
        return code - '0';
    if (code >= 'A' && code <= 'F')
        return code - 'A' + 10;
    return -1;
}

// The code unit that the escape at the start of these characters stands for, -1 if none stands
// there.
static int escapeAt(const QChar *at, const QChar *end)
{
    if (end - at < escapeLength || at[0] != QLatin1Char('\\') || at[1] != QLatin1Char('u'))
        return -1;
    int unit = 0;
    for (int i = 2; i < escapeLength; ++i) {
        const int digit = upperHexValue(at[i]);
        if (digit < 0)
            return -1;
        unit = unit * 16 + digit;
    }
    return unit;
}

static bool isPlain(const QChar *at, const QChar *begin, const QChar *end)
{
    const ushort code = at->unicode();
    if (code < 0x20)
        return code == '\t' || code == '\n' || code == '\r';
    if (code == '\\')
        return escapeAt(at, end) < 0;
    if (code < 0xD800)
        return true;
    if (at->isHighSurrogate())
        return at + 1 < end && at[1].isLowSurrogate();
    if (at->isLowSurrogate())
        return at > begin && at[-1].isHighSurrogate();
    return code < 0xFFFE;
}

// Most names hold printable ASCII only, and the writer asks this once a signal.
static bool isPlain(const QString &text)
{
    const QChar *const begin = text.constData();
    const QChar *const end = begin + text.size();
    for (const QChar *at = begin; at != end; ++at) {
        const ushort code = at->unicode();
        const bool printable = code >= 0x20 && code < 0xD800 && code != '\\';
        if (!printable && !isPlain(at, begin, end))
            return false;
    }
    return true;
}

QString escapedText(const QString &text)
{
    if (isPlain(text))
        return text;
    QString escaped;
    escaped.reserve(text.size() + 4 * escapeLength);
    const QChar *const begin = text.constData();
    const QChar *const end = begin + text.size();
    for (const QChar *at = begin; at != end; ++at) {
        if (isPlain(at, begin, end))
            escaped += *at;
        else
            escaped += QString::asprintf("\\u%04X", unsigned(at->unicode()));
    }
    return escaped;
}

QString unescapedText(const QStringRef &text)
{
    if (text.indexOf(QLatin1Char('\\')) < 0)
        return text.toString();
    QString plain;
    plain.reserve(text.size());
    const QChar *at = text.constData();
    const QChar *const end = at + text.size();
    while (at != end) {
        const int unit = escapeAt(at, end);
        plain += unit < 0 ? *at : QChar(unit);
        at += unit < 0 ? 1 : escapeLength;
    }
    return plain;
}

} // namespace MOLK
