// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkfilewriter.h"

#include "molkcore.h"
#include "molkformat.h"
#include "xmltext.h"

#include <QIODevice>

namespace MOLK {

static const int bufferedCharacters = 64 * 1024;

MolkFileWriter::MolkFileWriter(QIODevice *target)
    : device(target)
    , xml(&text)
    , netElement(Format::netElement)
    , busElement(Format::busElement)
    , bitElement(Format::bitElement)
    , signalElement(Format::signalElement)
    , nameAttribute(Format::nameAttribute)
{
    text.reserve(bufferedCharacters * 2);
    xml.setAutoFormatting(true);
}

bool MolkFileWriter::write(const QList<MolkCore *> &cores)
{
    // The stream writer names the encoding only when it writes to a device itself.
    text += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    xml.writeStartElement(Format::rootElement);
    xml.writeTextElement(Format::versionElement, Format::version);
    for (int i = 0; i < cores.size() && !failed; ++i)
        writeCore(*cores.at(i), i);
    xml.writeEndElement();
    text += '\n';
    failed = failed || xml.hasError();
    passOn();
    return !failed;
}

void MolkFileWriter::writeCore(const MolkCore &core, int position)
{
    xml.writeStartElement(Format::coreElement);
    if (core.id != position)
        xml.writeAttribute(Format::idAttribute, QString::number(core.id));
    if (!core.getModuleName().isEmpty())
        writeAttribute(Format::moduleAttribute, core.getModuleName());
    if (!core.getUserClockName().isEmpty())
        writeAttribute(Format::userClockAttribute, core.getUserClockName());
    if (core.useUserClock)
        writeAttribute(Format::useUserClockAttribute, Format::trueWord);

    const QList<ProbeIn *> probeIns = core.getAllProbeIns();
    for (int i = 0; i < probeIns.size() && !failed; ++i)
        writePort(*probeIns.at(i), nullptr, i);
    const QList<ProbeOut *> probeOuts = core.getAllProbeOuts();
    for (int i = 0; i < probeOuts.size() && !failed; ++i)
        writePort(*probeOuts.at(i), probeOuts.at(i), i);
    xml.writeEndElement();
}

void MolkFileWriter::writePort(const ProbeIn &port, const ProbeOut *valued, int position)
{
    xml.writeStartElement(valued ? Format::probeOutElement : Format::probeInElement);
    if (port.number != position)
        xml.writeAttribute(Format::numberAttribute, QString::number(port.number));
    if (valued && valued->getValue() != Format::defaultValue)
        writeAttribute(Format::valueAttribute, valued->getValue());
    writeSignals(port.getSignalNet(), 0);
    xml.writeEndElement();
    if (text.size() > bufferedCharacters)
        passOn();
}

void MolkFileWriter::writeSignals(const QList<SignalItem> &items, int nesting)
{
    if (nesting > Format::maximumNesting && !items.isEmpty())
        failed = true;
    for (const SignalItem &item : items) {
        if (failed)
            return;
        writeSignal(item, nesting);
    }
}

void MolkFileWriter::writeSignal(const SignalItem &item, int nesting)
{
    const bool isBus = item.kind == Format::busKind && !item.members.isEmpty();
    const QString &element = item.kind == Format::netKind ? netElement
        : isBus                                           ? busElement
        : item.kind == Format::busKind                    ? bitElement
                                                          : signalElement;
    // An element that is closed as it is opened takes the stream writer less.
    if (item.members.isEmpty())
        xml.writeEmptyElement(element);
    else
        xml.writeStartElement(element);
    writeAttribute(nameAttribute, item.name);
    if (!item.alias.isNull())
        writeAttribute(Format::aliasAttribute, item.alias);
    if (!item.selectable)
        writeAttribute(Format::selectableAttribute, Format::falseWord);
    if (!item.found)
        writeAttribute(Format::foundAttribute, Format::falseWord);
    if (&element == &signalElement && item.kind != Format::unsetKind)
        xml.writeAttribute(Format::kindAttribute, QString::number(item.kind));
    if (item.members.isEmpty())
        return;
    writeSignals(item.members, nesting + 1);
    xml.writeEndElement();
}

void MolkFileWriter::writeAttribute(const QString &name, const QString &value)
{
    failed = failed || value.size() > Format::maximumTextLength;
    xml.writeAttribute(name, escapedText(value));
}

void MolkFileWriter::passOn()
{
    const QByteArray bytes = text.toUtf8();
    text.resize(0);
    failed = failed || guard.accept(bytes.constData(), bytes.size()) != bytes.size()
        || device->write(bytes) != bytes.size();
}

} // namespace MOLK
