// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkfilereader.h"

#include "layoutreader.h"
#include "messagetext.h"
#include "molkformat.h"
#include "xmltext.h"

#include <limits>

namespace MOLK {

static const int causeLength = 400;
static const int versionLength = 100;
static const QLatin1String documentWord("the document");

static QString quoted(QLatin1String word)
{
    return '"' + word + '"';
}

static const Format::SignalElement *signalElement(const QStringRef &name)
{
    for (const Format::SignalElement &known : Format::signalElements) {
        if (name.size() == known.element.size() && name == known.element)
            return &known;
    }
    return nullptr;
}

QString readDocument(QIODevice *source, QList<MolkCore *> *cores)
{
    LayoutReader fast(source);
    if (fast.read()) {
        *cores = fast.takeCores();
        return QString();
    }
    if (!source->seek(0))
        return source->errorString();
    MolkFileReader reader(source);
    if (!reader.read())
        return reader.error();
    *cores = reader.takeCores();
    return QString();
}

MolkFileReader::MolkFileReader(QIODevice *source)
    : guarded(source)
    , xml(&guarded)
{
    // The format has no namespaces, and a prefix must not hide in a name.
    xml.setNamespaceProcessing(false);
}

bool MolkFileReader::read()
{
    readDocument();
    return error().isEmpty();
}

QString MolkFileReader::error() const
{
    QString cause;
    if (!guarded.fault().isEmpty())
        cause = guarded.fault();
    else if (xml.hasError())
        cause = xml.errorString();
    if (cause.isEmpty())
        return QString();
    if (cause.endsWith(QLatin1Char('.')))
        cause.chop(1);
    const QString place = QString("line %1, column %2: ")
                              .arg(xml.lineNumber())
                              .arg(qMax<qint64>(1, xml.columnNumber()));
    return place + messageText(QStringRef(&cause), causeLength);
}

void MolkFileReader::readDocument()
{
    if (xml.readNext() == QXmlStreamReader::StartDocument && !xml.documentEncoding().isEmpty()
        && xml.documentEncoding().compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) != 0) {
        fail("the encoding " + quotedWord(xml.documentEncoding()) + " isn't UTF-8");
        return;
    }
    if (!nextChild(documentWord))
        return;
    if (xml.qualifiedName() != Format::rootElement) {
        fail("the outermost element is " + quotedWord(xml.qualifiedName()) + " and not "
             + quoted(Format::rootElement));
        return;
    }
    refuseAttributes(Format::rootElement);

    if (!nextChild(Format::rootElement) || xml.qualifiedName() != Format::versionElement) {
        fail(quoted(Format::rootElement) + " doesn't begin with the element "
             + quoted(Format::versionElement));
        return;
    }
    readVersion();
    while (nextChild(Format::rootElement)) {
        if (xml.qualifiedName() == Format::coreElement)
            readCore();
        else
            failAtElement(Format::rootElement);
    }
    // What stands behind the outermost element is the parser's to judge.
    while (!xml.atEnd())
        xml.readNext();
}

void MolkFileReader::readVersion()
{
    refuseAttributes(Format::versionElement);
    QString found;
    while (xml.readNext() == QXmlStreamReader::Characters || xml.isComment()
           || xml.isProcessingInstruction()) {
        // More than a message can show says no more.
        if (xml.isCharacters() && found.size() <= versionLength)
            found += xml.text();
    }
    if (xml.tokenType() != QXmlStreamReader::EndElement)
        fail(quoted(Format::versionElement) + " holds more than text");
    found = found.trimmed();
    if (found != Format::version) {
        fail("the file has version " + quotedWord(QStringRef(&found))
             + ", this editor reads version " + quoted(Format::version));
    }
}

void MolkFileReader::readCore()
{
    auto core = std::make_unique<MolkCore>(cores.size());
    const QXmlStreamAttributes attributes = xml.attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (attribute.qualifiedName() == Format::idAttribute)
            readNumber(attribute, &core->id);
        else if (attribute.qualifiedName() == Format::moduleAttribute)
            core->setModuleName(readText(attribute));
        else if (attribute.qualifiedName() == Format::userClockAttribute)
            core->setUserClockName(readText(attribute));
        else if (attribute.qualifiedName() == Format::useUserClockAttribute)
            readFlag(attribute, &core->useUserClock);
        else
            failAtAttribute(attribute, Format::coreElement);
    }

    // A new core already has the first port of each direction, and keeps it if the file has none.
    int probeIns = 0;
    int probeOuts = 0;
    while (nextChild(Format::coreElement)) {
        if (xml.qualifiedName() == Format::probeInElement) {
            if (probeIns > 0)
                core->addProbeIn(probeIns);
            readPort(core->getProbeIn(probeIns++), nullptr, Format::probeInElement);
        } else if (xml.qualifiedName() == Format::probeOutElement) {
            if (probeOuts > 0)
                core->addProbeOut(probeOuts);
            ProbeOut *const port = core->getProbeOut(probeOuts++);
            readPort(port, port, Format::probeOutElement);
        } else {
            failAtElement(Format::coreElement);
        }
    }
    cores.append(std::move(core));
}

void MolkFileReader::readPort(ProbeIn *port, ProbeOut *valued, QLatin1String element)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (attribute.qualifiedName() == Format::numberAttribute)
            readNumber(attribute, &port->number);
        else if (valued && attribute.qualifiedName() == Format::valueAttribute)
            valued->setValue(readText(attribute));
        else
            failAtAttribute(attribute, element);
    }
    QList<SignalItem> items;
    readSignals(&items, 0, element);
    port->setSignalNet(items);
}

void MolkFileReader::readSignals(QList<SignalItem> *items, int nesting, QLatin1String parent)
{
    static const SignalItem blank;
    while (nextChild(parent)) {
        const Format::SignalElement *const element = signalElement(xml.qualifiedName());
        if (!element) {
            failAtElement(parent);
            return;
        }
        if (nesting > Format::maximumNesting) {
            fail(QString("members are nested more than %1 deep").arg(Format::maximumNesting));
            return;
        }
        // Filled in its place in the list, which spares a large file the copies.
        items->append(blank);
        SignalItem &item = items->last();
        item.kind = element->kind;
        readSignalAttributes(&item, element->element);
        readSignals(&item.members, nesting + 1, element->element);
    }
}

void MolkFileReader::readSignalAttributes(SignalItem *item, QLatin1String element)
{
    bool named = false;
    const QXmlStreamAttributes attributes = xml.attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        const QStringRef name = attribute.qualifiedName();
        if (name == Format::nameAttribute) {
            item->name = readText(attribute);
            named = true;
        } else if (name == Format::aliasAttribute) {
            item->alias = readText(attribute);
        } else if (name == Format::selectableAttribute) {
            readFlag(attribute, &item->selectable);
        } else if (name == Format::foundAttribute) {
            readFlag(attribute, &item->found);
        } else if (name == Format::kindAttribute && element == Format::signalElement) {
            readNumber(attribute, &item->kind);
        } else {
            failAtAttribute(attribute, element);
        }
    }
    if (!named)
        fail(quoted(element) + " has no attribute " + quoted(Format::nameAttribute));
}

QString MolkFileReader::readText(const QXmlStreamAttribute &attribute)
{
    const QString text = unescapedText(attribute.value());
    if (text.size() > Format::maximumTextLength) {
        fail(quotedWord(attribute.qualifiedName())
             + QString(" has more than %1 characters").arg(Format::maximumTextLength));
    }
    return text;
}

void MolkFileReader::readNumber(const QXmlStreamAttribute &attribute, int *number)
{
    if (!parseNumber(attribute.value(), number)) {
        fail(quotedWord(attribute.value()) + " in " + quotedWord(attribute.qualifiedName())
             + QString(" is no whole number from %1 to %2")
                   .arg(std::numeric_limits<int>::min())
                   .arg(std::numeric_limits<int>::max()));
    }
}

void MolkFileReader::readFlag(const QXmlStreamAttribute &attribute, bool *flag)
{
    *flag = attribute.value() == Format::trueWord;
    if (!*flag && attribute.value() != Format::falseWord) {
        fail(quotedWord(attribute.value()) + " in " + quotedWord(attribute.qualifiedName())
             + " is neither " + quoted(Format::trueWord) + " nor " + quoted(Format::falseWord));
    }
}

// Goes to the next element in the one that was entered last, or to its end. False at the end and
// at an error.
bool MolkFileReader::nextChild(QLatin1String parent)
{
    for (;;) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::Comment:
        case QXmlStreamReader::ProcessingInstruction:
            break;
        case QXmlStreamReader::Characters:
            if (xml.isWhitespace())
                break;
            fail("unexpected text " + quotedWord(xml.text()) + " in " + quoted(parent));
            return false;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            fail("unexpected " + xml.tokenString() + " in " + quoted(parent));
            return false;
        default:
            return false;
        }
    }
}

void MolkFileReader::refuseAttributes(QLatin1String element)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    for (const QXmlStreamAttribute &attribute : attributes)
        failAtAttribute(attribute, element);
}

void MolkFileReader::failAtElement(QLatin1String parent)
{
    fail("unknown element " + quotedWord(xml.qualifiedName()) + " in " + quoted(parent));
}

void MolkFileReader::failAtAttribute(const QXmlStreamAttribute &attribute, QLatin1String element)
{
    fail("unknown attribute " + quotedWord(attribute.qualifiedName()) + " in " + quoted(element));
}

// The first cause is the one to tell; what fails after it follows from it.
void MolkFileReader::fail(const QString &cause)
{
    if (!xml.hasError())
        xml.raiseError(cause);
}

} // namespace MOLK
