// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "layoutreader.h"

#include "markupwriter.h"
#include "molkformat.h"
#include "xmltext.h"

#include <algorithm>
#include <cstring>

namespace MOLK {

static const int portLevel = 2;
static const int signalLevel = 3;

static QByteArray heading()
{
    MarkupWriter xml;
    xml.startElement(Format::rootElement);
    xml.writeTextElement(Format::versionElement, Format::version);
    return xml.bytes();
}

LayoutReader::LayoutReader(QIODevice *source)
    : lines(source)
{
}

bool LayoutReader::read()
{
    if (!readHeading())
        return false;
    for (;;) {
        const Line line = nextLine(1, Format::rootElement);
        if (line == Line::End)
            return lines.atEnd();
        if (line == Line::Other || !take(Format::coreElement) || !readCore())
            return false;
    }
}

bool LayoutReader::readHeading()
{
    const QList<QByteArray> expected = heading().split('\n');
    for (const QByteArray &line : expected) {
        if (!lines.next() || QByteArray::fromRawData(lines.begin(), lines.size()) != line)
            return false;
    }
    return true;
}

bool LayoutReader::readCore()
{
    auto core = std::make_unique<MolkCore>(cores.size());
    takeNumber(Format::idAttribute, &core->id);
    QString text;
    if (takeText(Format::moduleAttribute, &text))
        core->setModuleName(text);
    if (takeText(Format::userClockAttribute, &text))
        core->setUserClockName(text);
    takeFlag(Format::useUserClockAttribute, Format::trueWord, &core->useUserClock);
    bool isEmpty = false;
    if (!takeTagEnd(&isEmpty))
        return false;

    // A new core already has the first port of each direction, and keeps it if the file has none.
    int probeIns = 0;
    int probeOuts = 0;
    for (Line line = Line::Element; !isEmpty;) {
        line = nextLine(portLevel, Format::coreElement);
        if (line == Line::Other)
            return false;
        if (line == Line::End)
            break;
        if (take(Format::probeInElement)) {
            if (probeIns > 0)
                core->addProbeIn(probeIns);
            if (!readPort(core->getProbeIn(probeIns++), nullptr, Format::probeInElement))
                return false;
        } else if (take(Format::probeOutElement)) {
            if (probeOuts > 0)
                core->addProbeOut(probeOuts);
            ProbeOut *const port = core->getProbeOut(probeOuts++);
            if (!readPort(port, port, Format::probeOutElement))
                return false;
        } else {
            return false;
        }
    }
    cores.append(std::move(core));
    return true;
}

bool LayoutReader::readPort(ProbeIn *port, ProbeOut *valued, QLatin1String element)
{
    takeNumber(Format::numberAttribute, &port->number);
    QString value;
    if (valued && takeText(Format::valueAttribute, &value))
        valued->setValue(value);
    bool isEmpty = false;
    if (!takeTagEnd(&isEmpty))
        return false;
    QList<SignalItem> items;
    if (!isEmpty && !readSignals(&items, 0, element))
        return false;
    port->setSignalNet(items);
    return true;
}

bool LayoutReader::readSignals(QList<SignalItem> *items, int nesting, QLatin1String parent)
{
    static const SignalItem blank;
    for (;;) {
        const Line line = nextLine(signalLevel + nesting, parent);
        if (line != Line::Element)
            return line == Line::End;
        if (nesting > Format::maximumNesting)
            return false;
        // Filled in its place in the list, which spares a large file the copies.
        items->append(blank);
        if (!readSignal(&items->last(), nesting))
            return false;
    }
}

bool LayoutReader::readSignal(SignalItem *item, int nesting)
{
    const Format::SignalElement *const element =
        std::find_if(std::begin(Format::signalElements), std::end(Format::signalElements),
                     [this](const Format::SignalElement &known) { return take(known.element); });
    if (element == std::end(Format::signalElements))
        return false;
    item->kind = element->kind;
    if (!takeText(Format::nameAttribute, &item->name))
        return false;
    takeText(Format::aliasAttribute, &item->alias);
    takeFlag(Format::selectableAttribute, Format::falseWord, &item->selectable);
    takeFlag(Format::foundAttribute, Format::falseWord, &item->found);
    if (element->element == Format::signalElement)
        takeNumber(Format::kindAttribute, &item->kind);
    bool isEmpty = false;
    return takeTagEnd(&isEmpty)
        && (isEmpty || readSignals(&item->members, nesting + 1, element->element));
}

// Goes to the next line and into the element that begins there, which has to lie `level` deep, or
// past the end of its parent.
LayoutReader::Line LayoutReader::nextLine(int level, QLatin1String parent)
{
    if (!lines.next())
        return Line::Other;
    at = lines.begin();
    end = at + lines.size();
    while (at != end && *at == ' ')
        ++at;
    const auto blanks = int(at - lines.begin());
    if (!take(Format::word("<")))
        return Line::Other;
    if (blanks == level * Format::indentation)
        return Line::Element;
    const bool isEnd = blanks == (level - 1) * Format::indentation && take(Format::word("/"))
        && take(parent) && take(Format::word(">")) && at == end;
    return isEnd ? Line::End : Line::Other;
}

bool LayoutReader::take(QLatin1String word)
{
    if (end - at < word.size() || std::memcmp(at, word.data(), std::size_t(word.size())) != 0)
        return false;
    at += word.size();
    return true;
}

// Takes the attribute if it comes next. Its value is empty if it isn't closed.
bool LayoutReader::takeAttribute(QLatin1String name, Bytes *value)
{
    const char *const before = at;
    if (!take(Format::word(" ")) || !take(name) || !take(Format::word("=\""))) {
        at = before;
        return false;
    }
    const void *const quote = std::memchr(at, '"', std::size_t(end - at));
    if (!quote) {
        failed = true;
        return true;
    }
    *value = {at, static_cast<const char *>(quote)};
    at = value->end + 1;
    return true;
}

bool LayoutReader::takeText(QLatin1String name, QString *text)
{
    Bytes value;
    if (!takeAttribute(name, &value))
        return false;
    failed = !readAttribute(value.begin, value.end, text) || failed;
    return true;
}

void LayoutReader::takeNumber(QLatin1String name, int *number)
{
    Bytes value;
    if (!takeAttribute(name, &value))
        return;
    const QString text = QString::fromLatin1(value.begin, int(value.end - value.begin));
    failed = !parseNumber(QStringRef(&text), number) || failed;
}

// A flag is written only if it isn't as in a new object, so there is one word for it.
void LayoutReader::takeFlag(QLatin1String name, QLatin1String word, bool *flag)
{
    Bytes value;
    if (!takeAttribute(name, &value))
        return;
    failed = QLatin1String(value.begin, value.end) != word || failed;
    *flag = !*flag;
}

bool LayoutReader::takeTagEnd(bool *isEmpty)
{
    *isEmpty = take(Format::word("/"));
    return !failed && take(Format::word(">")) && at == end;
}

} // namespace MOLK
