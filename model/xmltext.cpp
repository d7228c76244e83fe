// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "xmltext.h"

#include "molkformat.h"
#include "utf8check.h"

#include <algorithm>
#include <cstring>

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

QString escapedText(const QString &text)
{
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

struct Reference
{
    ushort code;
    QLatin1String text;
};

static const Reference references[] = {
    {'<', QLatin1String("&lt;")},   {'>', QLatin1String("&gt;")},  {'&', QLatin1String("&amp;")},
    {'"', QLatin1String("&quot;")}, {'\t', QLatin1String("&#9;")}, {'\n', QLatin1String("&#10;")},
    {'\r', QLatin1String("&#13;")},
};

QString escapedAttribute(const QString &text)
{
    const QString plain = escapedText(text);
    QString escaped;
    escaped.reserve(plain.size() + 4 * escapeLength);
    for (const QChar character : plain) {
        const auto *const reference =
            std::find_if(std::begin(references), std::end(references),
                         [=](const Reference &known) { return known.code == character.unicode(); });
        if (reference == std::end(references))
            escaped += character;
        else
            escaped += reference->text;
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

// Only the references that the writer uses count; false at any other.
static bool replaceReferences(QString *text)
{
    QString replaced;
    replaced.reserve(text->size());
    for (int at = 0; at < text->size();) {
        if (text->at(at) != QLatin1Char('&')) {
            replaced += text->at(at++);
            continue;
        }
        const QStringRef rest = text->midRef(at);
        const auto *const reference =
            std::find_if(std::begin(references), std::end(references),
                         [&](const Reference &known) { return rest.startsWith(known.text); });
        if (reference == std::end(references))
            return false;
        replaced += QChar(reference->code);
        at += reference->text.size();
    }
    *text = replaced;
    return true;
}

static bool isBareInAttribute(QChar character)
{
    const ushort code = character.unicode();
    return code >= 0x20 && code < 0xFFFE && code != '<';
}

static bool readEscaped(const char *begin, const char *end, QString *text)
{
    Utf8Check encoding;
    if (encoding.firstInvalid(begin, end) != end || !encoding.isComplete())
        return false;
    // QString takes a byte order mark at the start for no part of the text.
    static const char mark[] = {'\xEF', '\xBB', '\xBF'};
    QString read = QString::fromUtf8(begin, int(end - begin));
    if (std::size_t(end - begin) >= sizeof mark && std::memcmp(begin, mark, sizeof mark) == 0)
        read.prepend(QChar(QChar::ByteOrderMark));
    if (!std::all_of(read.cbegin(), read.cend(), isBareInAttribute) || !replaceReferences(&read))
        return false;
    *text = unescapedText(QStringRef(&read));
    return text->size() <= Format::maximumTextLength;
}

bool readAttribute(const char *begin, const char *end, QString *text)
{
    const bool isPlain = std::all_of(begin, end, [](char byte) { return plainBytes[uchar(byte)]; });
    if (!isPlain || end - begin > Format::maximumTextLength)
        return readEscaped(begin, end, text);
    *text = QString::fromLatin1(begin, int(end - begin));
    return true;
}

bool parseNumber(const QStringRef &text, int *number)
{
    bool ok = false;
    const int parsed = text.toInt(&ok);
    if (!ok || QString::number(parsed) != text)
        return false;
    *number = parsed;
    return true;
}

} // namespace MOLK
