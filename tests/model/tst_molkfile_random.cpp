// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "layoutreader.h"
#include "modellines.h"
#include "molkfile.h"
#include "molkfilereader.h"
#include "molkfilewriter.h"
#include "streamwriter.h"
#include "testmain.h"

#include <QBuffer>
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
    void randomModelsGiveTheBytesOfTheStreamWriter();
    void bothReadersReadWhatIsWritten();
    void changedFileIsReadAlikeOrLeftToTheOtherReader();
};

// Below \a limit, and the same in every run.
static int below(int limit)
{
    static QRandomGenerator generator(20);
    return generator.bounded(limit);
}

static QString randomText()
{
    static const QVector<int> codes{0,    9,      10,     13,     32,     34,    38,  39,
                                    48,   60,     62,     65,     92,     92,    117, 127,
                                    0xE4, 0xD800, 0xDC00, 0xFEFF, 0xFFFD, 0xFFFF};
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

static QList<MolkCore *> randomCores(int count)
{
    QList<MolkCore *> cores;
    for (int i = 0; i < count; ++i) {
        cores.append(new MolkCore(below(5)));
        fillRandomly(cores.last());
    }
    return cores;
}

// A document that is made up anew each time, with the bytes that were written for it.
static QByteArray randomBytes(QStringList *lines)
{
    const QList<MolkCore *> cores = randomCores(below(3));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !MOLK::MolkFileWriter(&buffer).write(cores))
        QTest::qFail("a random model wasn't written", __FILE__, __LINE__);
    *lines = modelLines(cores);
    qDeleteAll(cores);
    return bytes;
}

// The model that a reader makes of the bytes; a line of its own if it makes none.
template<typename Reader>
static QStringList linesRead(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    Reader reader(&buffer);
    if (!reader.read())
        return {"nothing"};
    const QList<MolkCore *> cores = reader.takeCores();
    const QStringList lines = modelLines(cores);
    qDeleteAll(cores);
    return lines;
}

// Puts in, takes out or overwrites something that matters somewhere.
static void change(QByteArray *bytes)
{
    static const QByteArrayList pieces{" ",
                                       "\n",
                                       "\"",
                                       "<",
                                       ">",
                                       "/",
                                       "=",
                                       "&",
                                       "\\",
                                       "0",
                                       "\t",
                                       "x",
                                       "</",
                                       "/>",
                                       "&lt;",
                                       "&#10;",
                                       "\r",
                                       "\0",
                                       "\xEF\xBB\xBF",
                                       "\xED\xA0\x80",
                                       "\xC0\x80",
                                       "<net name=\"n\"/>",
                                       "    ",
                                       "</core>",
                                       " found=\"false\""};
    const int at = below(bytes->size());
    switch (below(3)) {
    case 0:
        bytes->insert(at, pieces.at(below(pieces.size())));
        break;
    case 1:
        bytes->remove(at, 1 + below(8));
        break;
    default:
        bytes->replace(at, 1, pieces.at(below(pieces.size())));
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
    QList<MolkCore *> cores = randomCores(coreCount);
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

void TestMolkFileRandom::randomModelsGiveTheBytesOfTheStreamWriter()
{
    for (int i = 0; i < 300; ++i) {
        const QList<MolkCore *> cores = randomCores(below(4));
        QByteArray bytes;
        QBuffer buffer(&bytes);
        QVERIFY(buffer.open(QIODevice::WriteOnly));
        QVERIFY(MOLK::MolkFileWriter(&buffer).write(cores));
        const QByteArray expected = streamWrittenBytes(cores);
        qDeleteAll(cores);
        QCOMPARE(bytes, expected);
    }
}

void TestMolkFileRandom::bothReadersReadWhatIsWritten()
{
    for (int i = 0; i < 300; ++i) {
        QStringList lines;
        const QByteArray bytes = randomBytes(&lines);
        QCOMPARE(linesRead<MOLK::LayoutReader>(bytes), lines);
        QCOMPARE(linesRead<MOLK::MolkFileReader>(bytes), lines);
    }
}

void TestMolkFileRandom::changedFileIsReadAlikeOrLeftToTheOtherReader()
{
    int readByBoth = 0;
    int readByOne = 0;
    int readByNone = 0;
    for (int i = 0; i < 6000; ++i) {
        QStringList lines;
        QByteArray bytes = randomBytes(&lines);
        for (int changes = 1 + below(3); changes > 0 && !bytes.isEmpty(); --changes)
            change(&bytes);
        const QStringList fast = linesRead<MOLK::LayoutReader>(bytes);
        const QStringList thorough = linesRead<MOLK::MolkFileReader>(bytes);
        const bool isLeft = fast == QStringList("nothing");
        if (!isLeft)
            QCOMPARE(fast, thorough);
        ++(!isLeft ? readByBoth : thorough != fast ? readByOne : readByNone);
    }
    // All three happen, or the changes prove nothing.
    QVERIFY(readByBoth > 100);
    QVERIFY(readByOne > 100);
    QVERIFY(readByNone > 100);
}

MOLK_TEST_GUILESS_MAIN(TestMolkFileRandom)
#include "tst_molkfile_random.moc"
