// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/tagreader.h"

#include <QIODevice>

#include <algorithm>
#include <cstring>

namespace Standin {

static constexpr int LongestTag = 64 << 20;

static bool isBlank(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

static bool endsName(char c)
{
    return isBlank(c) || c == '=' || c == '/' || c == '>' || c == '<' || c == '"' || c == '\''
        || c == '&';
}

TagReader::TagReader(QIODevice *source, int chunkSize)
    : device(source)
    , chunk(chunkSize)
{
}

qint64 TagReader::column() const
{
    return position - lineBegin;
}

TagReader::Token TagReader::fail(const char *message)
{
    if (failure.isNull())
        failure = QString::fromLatin1(message);
    return Stop;
}

/// Reads more of the document behind what isn't consumed yet. \return false at its end.
bool TagReader::fill()
{
    if (buffer.size() - position > LongestTag)
        return false;
    const QByteArray more = device->read(chunk);
    if (more.isEmpty())
        return false;
    buffer.remove(0, position);
    lineBegin -= position;
    position = 0;
    buffer += more;
    return true;
}

void TagReader::consume(int end)
{
    const char *const begin = buffer.constData();
    const char *at = begin + position;
    while (const void *found = std::memchr(at, '\n', std::size_t(begin + end - at))) {
        at = static_cast<const char *>(found) + 1;
        ++lines;
        lineBegin = int(at - begin);
    }
    position = end;
}

/// Passes over text up to the next tag. \return false at the end of the document or after an error.
bool TagReader::passText()
{
    for (;;) {
        const char *const begin = buffer.constData();
        const char *const end = begin + buffer.size();
        const char *at = begin + position;
        while (at < end && *at != '<' && *at != '&' && (!openEnds.empty() || isBlank(*at)))
            ++at;
        consume(int(at - begin));
        if (at < end && *at == '<')
            return true;
        if (at < end) {
            fail(*at == '&' ? "Unexpected document type or entity" : "Unexpected text");
            return false;
        }
        if (!fill())
            return false;
    }
}

/// Position of the bracket that ends the tag at the current position; -1 if there is none.
int TagReader::findTagEnd()
{
    int at = position + 1;
    char quote = '\0';
    for (;;) {
        const char *const data = buffer.constData();
        for (; at < buffer.size(); ++at) {
            const char c = data[at];
            if (quote != '\0')
                quote = c == quote ? '\0' : quote;
            else if (c == '"' || c == '\'')
                quote = c;
            else if (c == '>')
                return at;
        }
        const int consumed = position;
        if (!fill())
            return -1;
        at -= consumed;
    }
}

TagReader::Token TagReader::next()
{
    if (hasError())
        return Stop;
    if (endIsPending) {
        endIsPending = false;
        openNames.truncate(openNames.size() - openEnds.back());
        openEnds.pop_back();
        return End;
    }
    for (;;) {
        if (!passText()) {
            if (!hasError() && (!hadRoot || !openEnds.empty()))
                fail("Premature end of document.");
            return Stop;
        }
        while (buffer.size() - position < 4 && fill()) {}
        const Token token = readMarkup();
        if (token != Stop || hasError())
            return token;
    }
}

/// Reads what stands in brackets. \return Stop without an error for what means nothing.
TagReader::Token TagReader::readMarkup()
{
    const bool isComment = qstrncmp(buffer.constData() + position, "<!--", 4) == 0;
    const bool isInstruction = qstrncmp(buffer.constData() + position, "<?", 2) == 0;
    if (isComment || isInstruction) {
        const char *const closing = isComment ? "-->" : "?>";
        int end = buffer.indexOf(closing, position + 2);
        while (end < 0 && fill())
            end = buffer.indexOf(closing, position + 2);
        if (end < 0)
            return fail("Premature end of document.");
        consume(end + int(qstrlen(closing)));
        return Stop;
    }
    if (buffer.size() - position > 1 && buffer.at(position + 1) == '!')
        return fail("Unexpected document type or entity");
    const int end = findTagEnd();
    if (end < 0)
        return fail("Premature end of document.");
    const bool isEnd = buffer.at(position + 1) == '/';
    const Token token = isEnd ? readEnd(end) : readStart(end);
    consume(end + 1);
    return token;
}

TagReader::Token TagReader::readEnd(int end)
{
    int last = end;
    while (isBlank(buffer.at(last - 1)))
        --last;
    const int begin = position + 2;
    const int length = openEnds.empty() ? -1 : openEnds.back();
    if (last - begin != length
        || std::memcmp(buffer.constData() + begin,
                       openNames.constData() + openNames.size() - length, std::size_t(length))
            != 0)
        return fail("Opening and ending tag mismatch.");
    openNames.truncate(openNames.size() - length);
    openEnds.pop_back();
    return End;
}

TagReader::Token TagReader::readStart(int end)
{
    if (openEnds.empty() && hadRoot)
        return fail("Extra content at end of document.");
    const char *const begin = buffer.constData() + position + 1;
    const char *stop = buffer.constData() + end;
    endIsPending = stop[-1] == '/' && stop - 1 >= begin;
    if (endIsPending)
        --stop;
    const char *at = begin;
    while (at < stop && !endsName(*at))
        ++at;
    if (at == begin)
        return fail("Unexpected tag.");
    text.resize(0);
    marks.clear();
    appendValue(begin, at);
    marks.push_back(text.size());
    openNames.append(begin, int(at - begin));
    openEnds.push_back(int(at - begin));
    hadRoot = true;
    while (at < stop) {
        if (isBlank(*at)) {
            ++at;
            continue;
        }
        at = readAttribute(at, stop);
        if (!at)
            return fail("Unexpected attribute or entity");
    }
    // The text doesn't move any more.
    elementName = QStringRef(&text, 0, marks[0]);
    attributes.clear();
    for (std::size_t i = 1; i + 1 < marks.size(); i += 2) {
        attributes.push_back({QStringRef(&text, marks[i - 1], marks[i] - marks[i - 1]),
                              QStringRef(&text, marks[i], marks[i + 1] - marks[i])});
    }
    return Start;
}

/// Reads `name="value"` at \a at. \return what is behind it; null if there is no such thing.
const char *TagReader::readAttribute(const char *at, const char *end)
{
    const char *const name = at;
    while (at < end && !endsName(*at))
        ++at;
    const char *const nameEnd = at;
    while (at < end && isBlank(*at))
        ++at;
    if (nameEnd == name || at == end || *at != '=')
        return nullptr;
    ++at;
    while (at < end && isBlank(*at))
        ++at;
    if (at == end || (*at != '"' && *at != '\''))
        return nullptr;
    const char *const value = at + 1;
    const auto *close =
        static_cast<const char *>(std::memchr(value, *at, std::size_t(end - value)));
    if (!close || !appendValue(name, nameEnd))
        return nullptr;
    marks.push_back(text.size());
    if (!appendValue(value, close))
        return nullptr;
    marks.push_back(text.size());
    return close + 1;
}

/// The character that `&...;` stands for, whose text without its ends is given; 0 if there is none.
static uint entityValue(const QByteArray &name)
{
    static const struct
    {
        const char *name;
        uint value;
    } known[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
    for (const auto &entity : known) {
        if (name == entity.name)
            return entity.value;
    }
    bool isNumber = false;
    uint value = 0;
    if (name.startsWith("#x"))
        value = name.mid(2).toUInt(&isNumber, 16);
    else if (name.startsWith('#'))
        value = name.mid(1).toUInt(&isNumber, 10);
    return isNumber && value <= 0x10ffff ? value : 0;
}

bool TagReader::appendValue(const char *begin, const char *end)
{
    const bool isPlain =
        std::all_of(begin, end, [](char c) { return uchar(c) < 128 && c != '&' && c != '<'; });
    if (isPlain) {
        text.append(QLatin1String(begin, int(end - begin)));
        return true;
    }
    for (const char *at = begin; at < end;) {
        const char *const special =
            std::find_if(at, end, [](char c) { return c == '&' || c == '<'; });
        text.append(QString::fromUtf8(at, int(special - at)));
        if (special == end)
            return true;
        const char *const semicolon = std::find(special, end, ';');
        const uint value = *special == '<' || semicolon == end
            ? 0
            : entityValue(QByteArray(special + 1, int(semicolon - special - 1)));
        if (value == 0)
            return false;
        text.append(QString::fromUcs4(&value, 1));
        at = semicolon + 1;
    }
    return true;
}

void TagReader::skipElement()
{
    const std::size_t depth = openEnds.size();
    while (openEnds.size() >= depth && next() != Stop) {}
}

QStringRef TagReader::attribute(QLatin1String wanted) const
{
    for (const Attribute &each : attributes) {
        if (each.name == wanted)
            return each.value;
    }
    return QStringRef();
}

} // namespace Standin
