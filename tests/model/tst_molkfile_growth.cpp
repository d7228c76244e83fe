// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "blockcount.h"
#include "layoutreader.h"
#include "molkfilereader.h"
#include "molkfilewriter.h"
#include "testmain.h"

#include <QBuffer>

using MOLK::MolkCore;
using MOLK::SignalItem;

/// What reading and writing cost grows with the document, counted in basic blocks of our own code.
class TestMolkFileGrowth : public QObject
{
    Q_OBJECT

private slots:
    void costsGrowWithTheDocument_data();
    void costsGrowWithTheDocument();
};

enum class Work { Write, ReadByLayout, ReadAsXml };
Q_DECLARE_METATYPE(Work)

// A document grows by ports, by the signals of one port, by the bits of one bus or by the length of
// one name.
static QList<MolkCore *> coresOfShape(const QString &shape, int size)
{
    auto *const core = new MolkCore(0);
    QList<SignalItem> items;
    for (int i = 0; i < size && shape != "long-name"; ++i) {
        items.append(SignalItem());
        items.last().name = QString("top/u_core/q[%1]").arg(i);
        items.last().kind = 1;
        if (shape == "ports") {
            core->addProbeIn(i + 1);
            core->getProbeIn(i + 1)->setSignalNet({items.last()});
        }
    }
    if (shape == "bits") {
        SignalItem bus;
        bus.kind = 1;
        bus.members = items;
        items = {bus};
    }
    if (shape == "long-name") {
        items.append(SignalItem());
        items.last().name = QString("<\"").repeated(size / 2);
    }
    if (shape != "ports")
        core->getProbeIn(0)->setSignalNet(items);
    return {core};
}

template<typename Reader>
static qint64 readingCost(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const BlockCount counted;
    Reader reader(&buffer);
    if (!reader.read())
        QTest::qFail("a written document isn't read", __FILE__, __LINE__);
    const qint64 blocks = counted.blocks();
    qDeleteAll(reader.takeCores());
    return blocks;
}

static qint64 cost(Work work, const QString &shape, int size)
{
    const QList<MolkCore *> cores = coresOfShape(shape, size);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const BlockCount counted;
    if (!MOLK::MolkFileWriter(&buffer).write(cores))
        QTest::qFail("a model isn't written", __FILE__, __LINE__);
    const qint64 blocks = counted.blocks();
    qDeleteAll(cores);
    switch (work) {
    case Work::Write:
        return blocks;
    case Work::ReadByLayout:
        return readingCost<MOLK::LayoutReader>(bytes);
    case Work::ReadAsXml:
        return readingCost<MOLK::MolkFileReader>(bytes);
    }
    return 0;
}

void TestMolkFileGrowth::costsGrowWithTheDocument_data()
{
    QTest::addColumn<Work>("work");
    QTest::addColumn<QString>("shape");

    for (const char *shape : {"ports", "signals", "bits", "long-name"}) {
        QTest::addRow("write-%s", shape) << Work::Write << QString::fromLatin1(shape);
        QTest::addRow("read-by-layout-%s", shape)
            << Work::ReadByLayout << QString::fromLatin1(shape);
        QTest::addRow("read-as-xml-%s", shape) << Work::ReadAsXml << QString::fromLatin1(shape);
    }
}

void TestMolkFileGrowth::costsGrowWithTheDocument()
{
    QFETCH(Work, work);
    QFETCH(QString, shape);
    const qint64 small = cost(work, shape, 3000);
    const qint64 large = cost(work, shape, 30000);
    QVERIFY(small > 3000);
    QVERIFY2(large > 5 * small, "the cost isn't counted");
    QVERIFY2(large < 12 * small, "ten times the document costs more than 12 times as much");
}

MOLK_TEST_GUILESS_MAIN(TestMolkFileGrowth)
#include "tst_molkfile_growth.moc"
