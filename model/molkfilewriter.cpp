// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkfilewriter.h"

#include "molkcore.h"
#include "molkformat.h"

#include <QIODevice>

namespace MOLK {

static const int bufferedBytes = 128 * 1024;

MolkFileWriter::MolkFileWriter(QIODevice *target)
    : device(target)
{
}

bool MolkFileWriter::write(const QList<MolkCore *> &cores)
{
    xml.startElement(Format::rootElement);
    xml.writeTextElement(Format::versionElement, Format::version);
    for (int i = 0; i < cores.size() && !failed; ++i)
        writeCore(*cores.at(i), i);
    endElement();
    passOn();
    return !failed;
}

void MolkFileWriter::writeCore(const MolkCore &core, int position)
{
    xml.startElement(Format::coreElement);
    if (core.id != position)
        writeText(Format::idAttribute, QString::number(core.id));
    if (!core.getModuleName().isEmpty())
        writeText(Format::moduleAttribute, core.getModuleName());
    if (!core.getUserClockName().isEmpty())
        writeText(Format::userClockAttribute, core.getUserClockName());
    if (core.useUserClock)
        writeText(Format::useUserClockAttribute, Format::trueWord);

    const QList<ProbeIn *> probeIns = core.getAllProbeIns();
    for (int i = 0; i < probeIns.size() && !failed; ++i)
        writePort(*probeIns.at(i), nullptr, i);
    const QList<ProbeOut *> probeOuts = core.getAllProbeOuts();
    for (int i = 0; i < probeOuts.size() && !failed; ++i)
        writePort(*probeOuts.at(i), probeOuts.at(i), i);
    endElement();
}

void MolkFileWriter::writePort(const ProbeIn &port, const ProbeOut *valued, int position)
{
    xml.startElement(valued ? Format::probeOutElement : Format::probeInElement);
    if (port.number != position)
        writeText(Format::numberAttribute, QString::number(port.number));
    if (valued && valued->getValue() != Format::defaultValue)
        writeText(Format::valueAttribute, valued->getValue());
    writeSignals(port.getSignalNet(), 0);
    endElement();
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

// The element tells the kind where it can.
static QLatin1String elementOf(const SignalItem &item)
{
    if (item.kind == Format::netKind)
        return Format::netElement;
    if (item.kind != Format::busKind)
        return Format::signalElement;
    return item.members.isEmpty() ? Format::bitElement : Format::busElement;
}

void MolkFileWriter::writeSignal(const SignalItem &item, int nesting)
{
    const QLatin1String element = elementOf(item);
    xml.startElement(element);
    writeText(Format::nameAttribute, item.name);
    if (!item.alias.isNull())
        writeText(Format::aliasAttribute, item.alias);
    if (!item.selectable)
        writeText(Format::selectableAttribute, Format::falseWord);
    if (!item.found)
        writeText(Format::foundAttribute, Format::falseWord);
    if (element == Format::signalElement && item.kind != Format::unsetKind)
        writeText(Format::kindAttribute, QString::number(item.kind));
    writeSignals(item.members, nesting + 1);
    endElement();
}

void MolkFileWriter::writeText(QLatin1String name, const QString &text)
{
    if (text.size() > Format::maximumTextLength)
        failed = true;
    else
        xml.writeAttribute(name, text);
}

void MolkFileWriter::endElement()
{
    xml.endElement();
    if (xml.bytes().size() > bufferedBytes)
        passOn();
}

void MolkFileWriter::passOn()
{
    const QByteArray &bytes = xml.bytes();
    failed = failed || guard.accept(bytes.constData(), bytes.size()) != bytes.size()
        || device->write(bytes) != bytes.size();
    xml.clear();
}

} // namespace MOLK
