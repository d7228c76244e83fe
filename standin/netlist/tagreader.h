// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringRef>

#include <vector>

class QIODevice;

namespace Standin {

/// Reads the elements and attributes of an XML text, and nothing else of it: for texts that a tool
/// wrote, which have hundreds of megabytes of both. Text between elements, comments and
/// instructions are passed over; document types, entities but for the five of XML, and whatever
/// else no tool writes are errors. Memory is bounded by the longest tag, 64 MB at most, and the
/// depth.
class TagReader
{
public:
    enum Token { Start, End, Stop };

    /// \param source is open and outlives the reader.
    /// \param chunkSize as many bytes are asked of it at a time.
    explicit TagReader(QIODevice *source, int chunkSize = 1 << 20);

    /// Reads on. An element without content gives Start, then End.
    ///
    /// \return Stop at the end of the document, and after an error.
    Token next();

    /// Reads on to the end of the element that was started last, so that the next End is that of
    /// its parent.
    void skipElement();

    /// Of the element that was started last; valid until the next call of next().
    const QStringRef &name() const { return elementName; }

    /// The value of an attribute of it; null if it has none of that name.
    QStringRef attribute(QLatin1String wanted) const;

    bool hasError() const { return !failure.isNull(); }
    QString errorText() const { return failure; }

    /// Where the reader is: line from 1, column from 0.
    qint64 line() const { return lines; }
    qint64 column() const;

private:
    struct Attribute
    {
        QStringRef name;
        QStringRef value;
    };

    Token fail(const char *text);
    bool fill();
    bool passText();
    int findTagEnd();
    Token readMarkup();
    Token readEnd(int end);
    Token readStart(int end);
    const char *readAttribute(const char *at, const char *end);
    bool appendValue(const char *begin, const char *end);
    void consume(int end);

    QIODevice *device;
    int chunk;
    QByteArray buffer;
    int position = 0; ///< In the buffer.
    qint64 lines = 1;
    int lineBegin = 0;      ///< In the buffer; negative if it has gone from it.
    QString text;           ///< Of the element: names and values one behind the other.
    std::vector<int> marks; ///< Where each name and value ends in it.
    std::vector<Attribute> attributes;
    QStringRef elementName;
    QByteArray openNames; ///< Of all open elements, one behind the other.
    std::vector<int> openEnds;
    bool endIsPending = false;
    bool hadRoot = false;
    QString failure;
};

} // namespace Standin
