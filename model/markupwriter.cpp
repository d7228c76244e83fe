// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "markupwriter.h"

#include "molkformat.h"
#include "xmltext.h"

namespace MOLK {

static const int reservedBytes = 256 * 1024;

MarkupWriter::MarkupWriter()
{
    // Without a reservation clear() would give the memory back.
    buffer.reserve(reservedBytes);
    append(Format::declaration);
}

void MarkupWriter::startElement(QLatin1String name)
{
    startLine();
    buffer.append('<');
    append(name);
    open.append(name);
    inTag = true;
}

void MarkupWriter::writeAttribute(QLatin1String name, const QString &value)
{
    buffer.append(' ');
    append(name);
    buffer.append("=\"", 2);
    if (!appendPlain(value))
        buffer.append(escapedAttribute(value).toUtf8());
    buffer.append('"');
}

void MarkupWriter::writeTextElement(QLatin1String name, QLatin1String text)
{
    startElement(name);
    buffer.append('>');
    append(text);
    buffer.append("</", 2);
    append(name);
    buffer.append('>');
    inTag = false;
    open.removeLast();
}

void MarkupWriter::endElement()
{
    const QLatin1String name = open.last();
    open.removeLast();
    if (inTag) {
        buffer.append("/>", 2);
        inTag = false;
    } else {
        startLine();
        buffer.append("</", 2);
        append(name);
        buffer.append('>');
    }
    if (open.isEmpty())
        buffer.append('\n');
}

void MarkupWriter::startLine()
{
    if (inTag)
        buffer.append('>');
    inTag = false;
    buffer.append('\n');
    buffer.append(open.size() * Format::indentation, ' ');
}

// False, with nothing appended, if the text isn't written as it is.
bool MarkupWriter::appendPlain(const QString &text)
{
    const int start = buffer.size();
    buffer.resize(start + text.size());
    char *to = buffer.data() + start;
    for (const QChar character : text) {
        const ushort code = character.unicode();
        if (code > 0xFF || !plainBytes[code]) {
            buffer.truncate(start);
            return false;
        }
        *to++ = char(code);
    }
    return true;
}

} // namespace MOLK
