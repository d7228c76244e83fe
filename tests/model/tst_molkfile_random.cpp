// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modellines.h"
#include "molkcore.h"
#include "molkfile.h"
#include "testmain.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

using MOLK::MolkCore;
using MOLK::SignalItem;

/// Random models of odd shapes and texts read back equal and write the same bytes again.
class TestMolkFileRandom : public QObject
{
    Q_OBJECT

private slots:
    void randomModelsReadBackEqual_data();
    void randomModelsReadBackEqual();
};

// Below \a limit, and the same in every run.
static int below(int limit)
{
    static QRandomGenerator generator(20);
    return generator.bounded(limit);
}

static QString randomText()
{
    static const QVector<int> codes{0,  9,  10, 13,  32,  34,   38,     39,     48,     60,    62,
                                    65, 92, 92, 117, 127, 0xE4, 0xD800, 0xDC00, 0xFFFD, 0xFFFF};
    QString text("");
    for (int i = below(12); i > 0; --i)
        text += QChar(codes.at(below(codes.size())));
    return text;
}

static QList<SignalItem> randomSignals(int depth)
{
    QList<SignalItem> items;
    for (int i = below(5); i > 0; --i) {
        SignalItem item;
        item.name = randomText();
        item.kind = below(4) - 1;
        if (below(3) == 0)
            item.alias = randomText();
        item.selectable = below(4) != 0;
        item.found = below(4) != 0;
        if (depth > 0 && below(3) == 0)
            item.members = randomSignals(depth - 1);
        items.append(item);
    }
    return items;
}

static void fillRandomly(MolkCore *core)
{
    core->setModuleName(randomText());
    core->setUserClockName(randomText());
    core->useUserClock = below(2) != 0;
    for (int i = below(4); i > 0; --i) {
        core->addProbeIn(below(4));
        core->addProbeOut(below(4));
    }
    const QList<MOLK::ProbeIn *> probeIns = core->getAllProbeIns();
    for (MOLK::ProbeIn *port : probeIns)
        port->setSignalNet(randomSignals(3));
    const QList<MOLK::ProbeOut *> probeOuts = core->getAllProbeOuts();
    for (MOLK::ProbeOut *port : probeOuts) {
        port->setSignalNet(randomSignals(3));
        port->setValue(randomText());
    }
}

static QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestMolkFileRandom::randomModelsReadBackEqual_data()
{
    QTest::addColumn<int>("coreCount");

    for (int i = 0; i < 300; ++i)
        QTest::addRow("model-%d", i) << i % 4;
}

void TestMolkFileRandom::randomModelsReadBackEqual()
{
    QFETCH(int, coreCount);
    QTemporaryDir directory;
    const QString path = directory.filePath("random.molk");
    QList<MolkCore *> cores;
    for (int i = 0; i < coreCount; ++i) {
        cores.append(new MolkCore(below(5)));
        fillRandomly(cores.last());
    }
    const QStringList lines = modelLines(cores);
    QVERIFY(MOLK::writeMOLKConfigToXml(cores, path));
    qDeleteAll(cores);
    const QByteArray bytes = fileBytes(path);

    bool ok = false;
    cores = MOLK::readMOLKConfigFromXml(path, &ok, nullptr);
    QVERIFY(ok);
    QCOMPARE(modelLines(cores), lines);
    QVERIFY(MOLK::writeMOLKConfigToXml(cores, path));
    qDeleteAll(cores);
    QCOMPARE(fileBytes(path), bytes);
}

MOLK_TEST_GUILESS_MAIN(TestMolkFileRandom)
#include "tst_molkfile_random.moc"
