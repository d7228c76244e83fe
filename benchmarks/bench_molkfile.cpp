// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Reading and writing a full configuration, against what Qt's stream classes take alone for the
// same document: their token loop over the same bytes, and their writer with ready strings.

#include "molkcore.h"
#include "molkfile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QVector>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cstdio>
#include <functional>

static const int cores = 16;
static const int portsOfEachDirection = 64;
static const int signalsOfAPort = 256;
static const int signalCount = cores * portsOfEachDirection * 2 * signalsOfAPort;
static const int nameLength = 55;
static const int rounds = 7;

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

static qint64 nanoseconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return timer.nsecsElapsed();
}

static double median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

// Runs both in turn, so that both meet the same machine, and prints the ratio of their medians.
static bool compare(
    const char *name, double target, const std::function<void()> &work,
    const std::function<void()> &bound, const std::function<void()> &cleanUp = [] {})
{
    QVector<double> workTimes;
    QVector<double> boundTimes;
    for (int i = 0; i < rounds; ++i) {
        boundTimes.append(nanoseconds(bound) / 1e6);
        workTimes.append(nanoseconds(work) / 1e6);
        cleanUp();
    }
    const double ratio = median(workTimes) / median(boundTimes);
    std::printf("%-12s ratio %6.2f target %6.2f value %8.1f bound %8.1f ms size %d\n", name, ratio,
                target, median(workTimes), median(boundTimes), signalCount);
    return ratio <= target;
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

static bool compareSize(const QString &path)
{
    const double bytes = double(QFile(path).size()) / signalCount;
    std::printf("%-12s ratio %6.1f target %6.1f bytes a signal with names of %d characters\n",
                "file-size", bytes, 100.0, nameLength);
    return bytes <= 100;
}

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
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

    bool ok = compare(
        "file-write", 1.1, [&] { MOLK::writeMOLKConfigToXml(model, path); },
        [&] { writeBare(barePath, ins, outs); });

    // What was read is freed outside the measured time, as the rival builds nothing.
    QList<MOLK::MolkCore *> read;
    ok = compare(
             "file-read", 1.3, [&] { read += MOLK::readMOLKConfigFromXml(path, nullptr, nullptr); },
             [&] { readBare(path); },
             [&] {
                 qDeleteAll(read);
                 read.clear();
             })
        && ok;
    ok = compareSize(path) && ok;
    qDeleteAll(model);
    return ok ? 0 : 1;
}
