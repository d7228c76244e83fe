// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Reading and writing a full configuration, against what Qt's stream classes take alone for the
// same document: their token loop over the same bytes, and their writer with ready strings.

#include "comparison.h"

#include "molkcore.h"
#include "molkfile.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QVector>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

static const int cores = 16;
static const int portsOfEachDirection = 64;
static const int signalsOfAPort = 256;
static const int signalCount = cores * portsOfEachDirection * 2 * signalsOfAPort;
static const int nameLength = 55;

static QList<MOLK::SignalItem> portSignals(int core, int port)
{
    QList<MOLK::SignalItem> items;
    for (int i = 0; i < signalsOfAPort; ++i) {
        MOLK::SignalItem item;
        item.name = QString("top/u_cluster_%1/u_core_%2/u_fifo/write_pointer_%3")
                        .arg(core)
                        .arg(port)
                        .arg(i)
                        .leftJustified(nameLength, QLatin1Char('q'));
        item.kind = 0;
        items.append(item);
    }
    return items;
}

static QList<MOLK::MolkCore *> fullConfiguration()
{
    QList<MOLK::MolkCore *> all;
    for (int i = 0; i < cores; ++i) {
        auto *const core = new MOLK::MolkCore(i);
        for (int j = 0; j < portsOfEachDirection; ++j) {
            if (j > 0) {
                core->addProbeIn(j);
                core->addProbeOut(j);
            }
            core->getProbeIn(j)->setSignalNet(portSignals(i, j));
            core->getProbeOut(j)->setSignalNet(portSignals(i, j + portsOfEachDirection));
        }
        all.append(core);
    }
    return all;
}

static void writePorts(QXmlStreamWriter *xml, const QString &element,
                       const QVector<QStringList> &ports)
{
    const QString net = "net";
    const QString attribute = "name";
    for (const QStringList &names : ports) {
        xml->writeStartElement(element);
        for (const QString &name : names) {
            xml->writeEmptyElement(net);
            xml->writeAttribute(attribute, name);
        }
        xml->writeEndElement();
    }
}

static void writeBare(const QString &path, const QVector<QVector<QStringList>> &ins,
                      const QVector<QVector<QStringList>> &outs)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("no temporary file");
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement("MOLK_CONFIG");
    xml.writeTextElement("Version", "1.0");
    for (int i = 0; i < ins.size(); ++i) {
        xml.writeStartElement("core");
        writePorts(&xml, "probeIn", ins.at(i));
        writePorts(&xml, "probeOut", outs.at(i));
        xml.writeEndElement();
    }
    xml.writeEndDocument();
}

static void readBare(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no written file");
    QXmlStreamReader xml(&file);
    int elements = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement)
            ++elements;
    }
    if (elements < signalCount)
        qFatal("not all was read");
}

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    Comparison comparison(argc, argv);
    if (!comparison.wantsAny({"file-write", "file-read", "file-size"}))
        return comparison.exitCode();
    const QTemporaryDir directory;
    const QString path = directory.filePath("full.molk");
    const QString barePath = directory.filePath("bare.molk");

    const QList<MOLK::MolkCore *> model = fullConfiguration();
    QVector<QVector<QStringList>> ins(cores);
    QVector<QVector<QStringList>> outs(cores);
    for (int i = 0; i < cores; ++i) {
        for (int j = 0; j < portsOfEachDirection; ++j) {
            ins[i].append(model.at(i)->getProbeIn(j)->singleSignals());
            outs[i].append(model.at(i)->getProbeOut(j)->singleSignals());
        }
    }
    if (!MOLK::writeMOLKConfigToXml(model, path))
        qFatal("the configuration can't be written");

    comparison.time("file-write", 1.1, signalCount, {[&] {
                        MOLK::writeMOLKConfigToXml(model, path);
                    }},
                    {[&] {
                        writeBare(barePath, ins, outs);
                    }},
                    Clock::Wall);

    // What was read is freed outside the measured time, as the rival builds nothing.
    QList<MOLK::MolkCore *> read;
    comparison.time("file-read", 1.3, signalCount,
                    {[&] { read = MOLK::readMOLKConfigFromXml(path, nullptr, nullptr); }, [] {},
                     [&] {
                         qDeleteAll(read);
                         read.clear();
                     }},
                    {[&] {
                        readBare(path);
                    }},
                    Clock::Wall);

    const double bytes = double(QFile(path).size()) / signalCount;
    comparison.print("file-size", bytes, 100, bytes, 1, "bytes", signalCount);
    qDeleteAll(model);
    return comparison.exitCode();
}
