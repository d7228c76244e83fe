// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Opening a file with sixteen full cores, against what any solution pays: making the labels and
// rows of its pages, and reading the file's tokens.

#include "comparison.h"
#include "fullpage.h"

#include "host/host.h"
#include "molkfile.h"
#include "molkview.h"
#include "netlist/netlistbuilder.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>

using namespace MOLK;

static void writeFullFile(const QString &path)
{
    QList<MolkCore *> cores;
    for (int i = 0; i < PageCount; ++i) {
        MolkCore *core = makeFullCore(PortCount).release();
        core->id = i;
        for (int port = 0; port < PortCount; ++port) {
            if (port > 0)
                core->addProbeIn(port);
            core->getProbeIn(port)->setSignalNet(fullPort(port));
        }
        cores.append(core);
    }
    if (!writeMOLKConfigToXml(cores, path))
        qFatal("the configuration can't be written");
    qDeleteAll(cores);
}

static void readTokens(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no written file");
    QXmlStreamReader xml(&file);
    while (!xml.atEnd())
        xml.readNext();
}

static FATHOM::RtlNetlist *smallNetlist()
{
    Standin::NetlistBuilder builder("top");
    builder.addNet(0, "clk");
    return builder.build();
}

int main(int argc, char *argv[])
{
    useNoDisplay();
    const QApplication app(argc, argv);
    Comparison comparison(argc, argv);
    if (!comparison.wants("open-full"))
        return comparison.exitCode();

    Standin::Host host;
    host.setRecording(false);
    host.serveDesign("top", smallNetlist);
    const QTemporaryDir directory;
    const QString path = directory.filePath("full.molk");
    writeFullFile(path);

    // What was opened or made is freed outside of the measured time.
    QVector<Duration> values;
    QVector<Duration> bounds;
    for (int i = 0; i < Comparison::Rounds; ++i) {
        Duration bound = barePages(PageCount);
        const Duration tokens = Comparison::duration([&] { readTokens(path); });
        bound.processor += tokens.processor;
        bound.wall += tokens.wall;
        bounds.append(bound);

        QWidget window;
        auto *view = new MolkView(&window);
        window.resize(1000, 700);
        view->resize(window.size());
        values.append(Comparison::duration([&] {
            QString error;
            if (!view->open(path, QString(), &error))
                qFatal("%s", qPrintable(error));
            window.show();
            settle();
        }));
    }
    comparison.times("open-full", 3.0, 2 * PageCount * LabelCount, values, bounds, Clock::Wall);
    return comparison.exitCode();
}
