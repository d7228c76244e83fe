// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Bytes in: in whatever chunks they are read, the reader of tags says the same of them, and what it
// says of an XML document is what Qt's reader says.

#include "netlist/tagreader.h"

#include <QBuffer>
#include <QStringList>
#include <QXmlStreamReader>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>

using Standin::TagReader;

namespace {

/// A reader with what it reads.
struct ReaderOf
{
    ReaderOf(const QByteArray &bytes, int chunkSize)
        : reader(&buffer, chunkSize)
    {
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
    }

    QBuffer buffer;
    TagReader reader;
};

/// What a reader says at one place.
struct Said
{
    TagReader::Token token;
    QString name;
    QStringList values;
    qint64 line;
    qint64 column;

    bool operator==(const Said &other) const
    {
        return token == other.token && name == other.name && values == other.values
            && line == other.line && column == other.column;
    }
};

} // namespace

static void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// The words ahead of the first equals signs, for one of which a reader can be asked.
static QList<QByteArray> attributeNames(const QByteArray &bytes)
{
    QList<QByteArray> names;
    for (int at = bytes.indexOf('='); at > 0 && names.size() < 12;
         at = bytes.indexOf('=', at + 1)) {
        int begin = at;
        while (begin > 0 && std::isalnum(uchar(bytes.at(begin - 1))))
            --begin;
        const QByteArray name = bytes.mid(begin, at - begin);
        if (!name.isEmpty() && !names.contains(name))
            names.append(name);
    }
    return names;
}

static Said whatItSays(TagReader *reader, const QList<QByteArray> &names)
{
    Said said;
    said.token = reader->next();
    if (said.token == TagReader::Start) {
        said.name = reader->name().toString();
        for (const QByteArray &name : names) {
            const QStringRef value = reader->attribute(QLatin1String(name));
            said.values.append(value.isNull() ? QString("none") : '=' + value);
        }
    }
    said.line = reader->line();
    said.column = reader->column();
    return said;
}

/// All that is said of the document, Stop at last.
static QVector<Said> readAll(const QByteArray &bytes, int chunkSize, QString *error)
{
    ReaderOf source(bytes, chunkSize);
    TagReader &reader = source.reader;
    const QList<QByteArray> names = attributeNames(bytes);
    QVector<Said> all;
    do {
        all.append(whatItSays(&reader, names));
    } while (all.last().token != TagReader::Stop);
    *error = reader.errorText();
    require(reader.hasError() == !error->isEmpty());
    // It doesn't go on behind the end.
    require(reader.next() == TagReader::Stop);
    return all;
}

/// Leaves one element out: what follows it stays what it was.
static void checkSkipping(const QByteArray &bytes, const QVector<Said> &all)
{
    QVector<int> starts;
    for (int i = 0; i < all.size(); ++i) {
        if (all.at(i).token == TagReader::Start)
            starts.append(i);
    }
    if (starts.isEmpty())
        return;
    const int skipped = starts.at(bytes.size() % starts.size());
    int behind = skipped;
    int depth = 0;
    do {
        depth += all.at(behind).token == TagReader::Start ? 1 : -1;
        ++behind;
    } while (depth > 0 && all.at(behind).token != TagReader::Stop);

    ReaderOf source(bytes, 7);
    TagReader &reader = source.reader;
    const QList<QByteArray> names = attributeNames(bytes);
    for (int i = 0; i <= skipped; ++i)
        require(whatItSays(&reader, names) == all.at(i));
    reader.skipElement();
    for (int i = behind; i < all.size(); ++i)
        require(whatItSays(&reader, names) == all.at(i));
}

// How line ends and tabs within values are read differs; tools write them as references.
static QString withoutBlanks(QString text)
{
    for (const QChar blank : {' ', '\t', '\r', '\n'})
        text.remove(blank);
    return text;
}

/// What Qt's reader says next of elements. Sets \a isForeign at what no tool writes and the reader
/// of tags refuses.
static QXmlStreamReader::TokenType nextTag(QXmlStreamReader *xml, bool *isForeign)
{
    for (;;) {
        const QXmlStreamReader::TokenType token = xml->readNext();
        if (token == QXmlStreamReader::DTD || token == QXmlStreamReader::EntityReference
            || xml->isCDATA())
            *isForeign = true;
        if (token == QXmlStreamReader::StartElement || token == QXmlStreamReader::EndElement
            || token == QXmlStreamReader::EndDocument || token == QXmlStreamReader::Invalid)
            return token;
    }
}

static void checkSameElement(const TagReader &reader, const QXmlStreamReader &xml)
{
    require(reader.name() == xml.qualifiedName());
    const QXmlStreamAttributes attributes = xml.attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        const QByteArray name = attribute.qualifiedName().toLatin1();
        if (QString::fromLatin1(name) != attribute.qualifiedName())
            continue;
        require(withoutBlanks(reader.attribute(QLatin1String(name)).toString())
                == withoutBlanks(attribute.value().toString()));
    }
}

/// The reader of tags may accept more than XML, but not say anything else of what is XML.
static void checkAgainstXml(const QByteArray &bytes)
{
    // It takes UTF-8 without a mark alone.
    if (bytes.contains("encoding") || bytes.contains('\0') || uchar(bytes.at(0)) >= 128)
        return;
    ReaderOf source(bytes, 5);
    TagReader &reader = source.reader;
    QXmlStreamReader xml(bytes);
    xml.setNamespaceProcessing(false);
    bool isForeign = false;
    for (;;) {
        const QXmlStreamReader::TokenType wanted = nextTag(&xml, &isForeign);
        if (wanted == QXmlStreamReader::Invalid)
            return;
        const TagReader::Token token = reader.next();
        if (isForeign)
            return require(reader.hasError());
        // Nor does it take references between elements.
        if (reader.hasError())
            return require(bytes.contains('&'));
        switch (wanted) {
        case QXmlStreamReader::StartElement:
            require(token == TagReader::Start);
            checkSameElement(reader, xml);
            break;
        case QXmlStreamReader::EndElement:
            require(token == TagReader::End);
            break;
        default:
            return require(token == TagReader::Stop);
        }
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    QString error;
    const QVector<Said> whole = readAll(bytes, std::max(1, bytes.size()), &error);
    for (const int chunkSize : {1, 3, 64}) {
        QString same;
        require(readAll(bytes, chunkSize, &same) == whole && same == error);
    }
    checkSkipping(bytes, whole);
    if (!bytes.isEmpty())
        checkAgainstXml(bytes);
    return 0;
}
