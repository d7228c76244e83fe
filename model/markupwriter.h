// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QLatin1String>
#include <QString>
#include <QVarLengthArray>

namespace MOLK {

/// Writes XML in the layout of configuration files: an element a line, four blanks a level.
///
/// It puts the bytes of the file straight into one buffer. QXmlStreamWriter gives the same bytes,
/// but takes several times as long to make and encode a text for each word.
class MarkupWriter
{
public:
    /// Begins with the XML declaration.
    MarkupWriter();

    /// Opens an element below the ones that are open.
    void startElement(QLatin1String name);

    /// Gives the element that was opened last, and has nothing in it yet, an attribute.
    void writeAttribute(QLatin1String name, const QString &value);

    /// Writes an element that holds \a text, which must be free of markup, and nothing else.
    void writeTextElement(QLatin1String name, QLatin1String text);

    /// Closes the element that was opened last. The outermost one ends the document.
    void endElement();

    /// What was written since clear().
    const QByteArray &bytes() const { return buffer; }

    /// Forgets what was written so far, but not which elements are open.
    void clear() { buffer.resize(0); }

private:
    void startLine();
    void append(QLatin1String word) { buffer.append(word.data(), word.size()); }
    bool appendPlain(const QString &text);

    QByteArray buffer;
    QVarLengthArray<QLatin1String, 32> open;
    bool inTag = false; // The last element opened is still without its bracket.
};

} // namespace MOLK
