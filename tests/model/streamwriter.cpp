// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "streamwriter.h"

#include "molkcore.h"
#include "xmltext.h"

#include <QXmlStreamWriter>

using MOLK::SignalItem;

static void writeSignals(QXmlStreamWriter *xml, const QList<SignalItem> &items)
{
    for (const SignalItem &item : items) {
        const bool isOther = item.kind != 0 && item.kind != 1;
        const QString bus = item.members.isEmpty() ? "bit" : "bus";
        xml->writeStartElement(isOther ? "signal" : item.kind == 0 ? "net" : bus);
        xml->writeAttribute("name", MOLK::escapedText(item.name));
        if (!item.alias.isNull())
            xml->writeAttribute("alias", MOLK::escapedText(item.alias));
        if (!item.selectable)
            xml->writeAttribute("selectable", "false");
        if (!item.found)
            xml->writeAttribute("found", "false");
        if (isOther && item.kind != -1)
            xml->writeAttribute("kind", QString::number(item.kind));
        writeSignals(xml, item.members);
        xml->writeEndElement();
    }
}

static void writePort(QXmlStreamWriter *xml, const MOLK::ProbeIn &port, const QString &value,
                      int position)
{
    if (port.number != position)
        xml->writeAttribute("number", QString::number(port.number));
    if (value != "0x0")
        xml->writeAttribute("value", MOLK::escapedText(value));
    writeSignals(xml, port.getSignalNet());
    xml->writeEndElement();
}

static void writeCore(QXmlStreamWriter *xml, const MOLK::MolkCore &core, int position)
{
    xml->writeStartElement("core");
    if (core.id != position)
        xml->writeAttribute("id", QString::number(core.id));
    if (!core.getModuleName().isEmpty())
        xml->writeAttribute("module", MOLK::escapedText(core.getModuleName()));
    if (!core.getUserClockName().isEmpty())
        xml->writeAttribute("userClock", MOLK::escapedText(core.getUserClockName()));
    if (core.useUserClock)
        xml->writeAttribute("useUserClock", "true");
    for (int i = 0; i < core.getAllProbeIns().size(); ++i) {
        xml->writeStartElement("probeIn");
        writePort(xml, *core.getProbeIn(i), "0x0", i);
    }
    for (int i = 0; i < core.getAllProbeOuts().size(); ++i) {
        xml->writeStartElement("probeOut");
        writePort(xml, *core.getProbeOut(i), core.getProbeOut(i)->getValue(), i);
    }
    xml->writeEndElement();
}

QByteArray streamWrittenBytes(const QList<MOLK::MolkCore *> &cores)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement("MOLK_CONFIG");
    xml.writeTextElement("Version", "1.0");
    for (int i = 0; i < cores.size(); ++i)
        writeCore(&xml, *cores.at(i), i);
    xml.writeEndDocument();
    return bytes;
}
