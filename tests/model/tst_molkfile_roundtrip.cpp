// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modellines.h"
#include "molkcore.h"
#include "molkfile.h"
#include "testmain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamWriter>

using MOLK::MolkCore;
using MOLK::SignalItem;

/// What is written reads back to the same model, and what is read writes the same bytes.
class TestMolkFileRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void everyFieldReadsAndWritesTheSameBytes();
    void everyFieldIsRead();
    void newCoreIsWrittenInFull();
    void skeletonIsAnEmptyList();
    void noCoresAreWrittenAsTheSkeleton();
    void textsReadBackEqual_data();
    void textsReadBackEqual();
    void kindsReadBackEqual_data();
    void kindsReadBackEqual();
    void oddMembersReadBackEqual();
    void sixteenLevelsOfMembersReadBackEqual();
    void aliasIsNullOrEmptyAsItWas();
    void nullNameReadsBackEmpty();
    void idsAndNumbersAreKeptAsStored();
    void numbersAtTheEndsOfTheirRangeReadBack();
    void missingFirstPortsAreAdded();
    void moreThanTheEditorAllowsIsReadAsItStands();
    void oneSignalTakesAtMostAHundredBytes();
    void handMadeLayoutIsReadAndTidied();
    void lineEndsInNamesAreNoLayout();

private:
    QByteArray written(const QList<MolkCore *> &cores);
    QList<MolkCore *> read();
    void writeBytes(const QByteArray &bytes);
    QStringList linesAfterRoundTrip(const QList<MolkCore *> &cores);

    QTemporaryDir directory;
    QString path;
    QList<MolkCore *> owned;
};

static QByteArray fileBytes(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        QTest::qFail(qPrintable(fileName + ": " + file.errorString()), __FILE__, __LINE__);
    return file.readAll();
}

static SignalItem signal(const QString &name, int kind = 0)
{
    SignalItem item;
    item.name = name;
    item.kind = kind;
    return item;
}

static SignalItem nested(int levels)
{
    SignalItem item = signal(QString("level %1").arg(levels), 1);
    if (levels > 0)
        item.members.append(nested(levels - 1));
    return item;
}

void TestMolkFileRoundTrip::initTestCase()
{
    path = directory.filePath("probes.molk");
}

void TestMolkFileRoundTrip::cleanup()
{
    qDeleteAll(owned);
    owned.clear();
}

QByteArray TestMolkFileRoundTrip::written(const QList<MolkCore *> &cores)
{
    if (!MOLK::writeMOLKConfigToXml(cores, path))
        QTest::qFail("the file wasn't written", __FILE__, __LINE__);
    return fileBytes(path);
}

QList<MolkCore *> TestMolkFileRoundTrip::read()
{
    bool ok = false;
    QString message;
    const QList<MolkCore *> cores = MOLK::readMOLKConfigFromXml(path, &ok, &message);
    owned += cores;
    if (!ok || !MOLK::checkMOLKFile(path))
        QTest::qFail(qPrintable("the file wasn't read: " + message), __FILE__, __LINE__);
    if (!message.isNull())
        QTest::qFail("a message came with success", __FILE__, __LINE__);
    return cores;
}

void TestMolkFileRoundTrip::writeBytes(const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QStringList TestMolkFileRoundTrip::linesAfterRoundTrip(const QList<MolkCore *> &cores)
{
    const QByteArray first = written(cores);
    const QList<MolkCore *> back = read();
    if (written(back) != first)
        QTest::qFail("the second writing gave other bytes", __FILE__, __LINE__);
    return modelLines(back);
}

void TestMolkFileRoundTrip::everyFieldReadsAndWritesTheSameBytes()
{
    const QByteArray golden = fileBytes(MOLK_TESTS_DIR "/data/every-field.molk");
    writeBytes(golden);
    QCOMPARE(QString::fromUtf8(written(read())), QString::fromUtf8(golden));
}

void TestMolkFileRoundTrip::everyFieldIsRead()
{
    writeBytes(fileBytes(MOLK_TESTS_DIR "/data/every-field.molk"));
    const QString plain = " alias=null selectable=1 found=1 kind=";
    const QStringList expected{
        "core 0 module=\"top\" clock=\"top/u_clk/clk\" useUserClock=1",
        "  in 0",
        "    \"top/u_core/valid\"" + plain + "0",
        "    \"top/u_core/q[2:0]\"" + plain + "1",
        "      \"top/u_core/q[2]\"" + plain + "1",
        "      \"top/u_core/q[1]\" alias=null selectable=0 found=1 kind=1",
        "      \"top/u_core/q[0]\"" + plain + "1",
        "    \"top/u_core/d[3]\" alias=null selectable=1 found=0 kind=1",
        "    \"not/set\"" + plain + "-1",
        "    \"of another kind\"" + plain + "7",
        "    \"renamed\" alias=\"Ready\" selectable=1 found=1 kind=0",
        "    \"alias is empty\" alias=\"\" selectable=1 found=1 kind=0",
        "    \"all at once\" alias=\"a\" selectable=0 found=0 kind=0",
        "  in 1",
        "  out 0 value=\"0x1F\"",
        "    \"top/en[0:1]\"" + plain + "1",
        "      \"top/en[0]\"" + plain + "1",
        "      \"top/en[1]\"" + plain + "1",
        "  out 1 value=\"0x0\"",
        "core 7 module=\"\" clock=\"kept while off\" useUserClock=0",
        "  in 3",
        "    \"\\a<b> & \"c\" 'd' $%^*()\"" + plain + "0",
        "    \"tab\tline\nreturn\r  blanks  \"" + plain + "0",
        QString("    \"nul ") + QChar(0) + " bell \a half " + QChar(0xD800) + " none "
            + QChar(0xFFFE) + "\"" + plain + "0",
        "    \"an escape spelt out: \\u0041, none: \\u12 \\x\"" + plain + "0",
        QString::fromUtf8("    \"Z\xC3\xA4hler/\xE4\xBF\xA1\xE5\x8F\xB7/\xF0\x9D\x84\x9E\"") + plain
            + "0",
        "  out 0 value=\"\"",
        "  out 0 value=\"anything\"",
    };
    QCOMPARE(modelLines(read()), expected);
}

void TestMolkFileRoundTrip::newCoreIsWrittenInFull()
{
    MolkCore core(0);
    QCOMPARE(written({&core}),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<MOLK_CONFIG>\n"
                        "    <Version>1.0</Version>\n"
                        "    <core>\n"
                        "        <probeIn/>\n"
                        "        <probeOut/>\n"
                        "    </core>\n"
                        "</MOLK_CONFIG>\n"));
    QCOMPARE(modelLines(read()), modelLines({&core}));
}

void TestMolkFileRoundTrip::skeletonIsAnEmptyList()
{
    QByteArray skeleton;
    QXmlStreamWriter xml(&skeleton);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement("MOLK_CONFIG");
    xml.writeTextElement("Version", "1.0");
    xml.writeEndElement();
    xml.writeEndDocument();
    writeBytes(skeleton);
    QVERIFY(read().isEmpty());
    QCOMPARE(written({}), skeleton);
}

void TestMolkFileRoundTrip::noCoresAreWrittenAsTheSkeleton()
{
    QCOMPARE(written({}).size(), 95);
    QVERIFY(read().isEmpty());
}

void TestMolkFileRoundTrip::textsReadBackEqual_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QString("");
    QTest::newRow("one-blank") << QString(" ");
    QTest::newRow("blanks-around") << QString("  a  b  ");
    QTest::newRow("only-line-ends") << QString("\r\n\n\r\t");
    QTest::newRow("markup") << QString("<net name=\"x\"/> & &amp; ]]> <!-- -->");
    QTest::newRow("both-quotes") << QString("\"'\"'");
    QTest::newRow("escaped-name") << QString("top/\\bus[3]$%&*  /clk");
    QTest::newRow("windows-path") << QString("C:\\users\\u0041dam\\uABCD");
    QTest::newRow("backslashes") << QString("\\\\\\u");
    QTest::newRow("lower-case-escape") << QString("\\u00ab");
    QTest::newRow("nul") << QString("a") + QChar(0) + "b";
    QTest::newRow("escape-character") << QString("\x1B[31m");
    QTest::newRow("delete-and-upper-controls") << QString("\x7F") + QChar(0x85) + QChar(0x2028);
    QTest::newRow("latin-1") << QString::fromUtf8("\xC3\xA9\xC3\xBF");
    QTest::newRow("beyond-the-basic-plane") << QString::fromUtf8("\xF0\x9F\x98\x80");
    QTest::newRow("half-a-pair-first") << QString(QChar(0xDC00)) + "x";
    QTest::newRow("half-a-pair-last") << QString("x") + QChar(0xD83D);
    QTest::newRow("pair-swapped") << QString(QChar(0xDC00)) + QChar(0xD800);
    QTest::newRow("three-halves") << QString(QChar(0xD800)) + QChar(0xD800) + QChar(0xDC00);
    QTest::newRow("noncharacters") << QString(QChar(0xFFFE)) + QChar(0xFFFF);
    QTest::newRow("byte-order-mark") << QString(QChar(0xFEFF)) + "x";
    QTest::newRow("longest") << QString(65536, QLatin1Char('n'));
    QTest::newRow("longest-of-longest-escapes") << QString(65536, QLatin1Char('"'));
    QTest::newRow("longest-of-unholdable") << QString(65536, QChar(0));
    QTest::newRow("longest-of-long-letters") << QString(65536, QChar(0x4FE1));

    QString all;
    for (int code = 0; code < 0x300; ++code)
        all += QChar(code);
    QTest::newRow("every-character-up-to-300") << all;
}

void TestMolkFileRoundTrip::textsReadBackEqual()
{
    QFETCH(QString, text);
    MolkCore core(0);
    core.setModuleName(text);
    core.setUserClockName(text);
    core.getProbeOut(0)->setValue(text);
    SignalItem item = signal(text, 1);
    item.alias = text;
    item.members = {signal(text)};
    core.getProbeIn(0)->setSignalNet({item});
    QCOMPARE(linesAfterRoundTrip({&core}), modelLines({&core}));
}

void TestMolkFileRoundTrip::kindsReadBackEqual_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("hasMembers");

    const QList<int> kinds{-1, 0, 1, 2, -2, 2147483647, -2147483647 - 1};
    for (int kind : kinds) {
        QTest::addRow("%d-alone", kind) << kind << false;
        QTest::addRow("%d-with-members", kind) << kind << true;
    }
}

void TestMolkFileRoundTrip::kindsReadBackEqual()
{
    QFETCH(int, kind);
    QFETCH(bool, hasMembers);
    SignalItem item = signal("a", kind);
    if (hasMembers)
        item.members = {signal("b", kind), signal("c", 0)};
    MolkCore core(0);
    core.getProbeOut(0)->setSignalNet({item});
    QCOMPARE(linesAfterRoundTrip({&core}), modelLines({&core}));
}

void TestMolkFileRoundTrip::oddMembersReadBackEqual()
{
    SignalItem net = signal("a net with members", 0);
    net.members = {signal("bus among bits", 1), signal("", -1)};
    net.members[0].members = {signal("deeper", 1), signal("deeper", 1)};
    net.members[0].found = false;
    net.members[1].selectable = false;
    MolkCore core(0);
    core.getProbeIn(0)->setSignalNet({net, net});
    QCOMPARE(linesAfterRoundTrip({&core}), modelLines({&core}));
}

void TestMolkFileRoundTrip::sixteenLevelsOfMembersReadBackEqual()
{
    MolkCore core(0);
    core.getProbeIn(0)->setSignalNet({nested(16), signal("after")});
    QCOMPARE(linesAfterRoundTrip({&core}), modelLines({&core}));
}

void TestMolkFileRoundTrip::aliasIsNullOrEmptyAsItWas()
{
    SignalItem empty = signal("empty");
    empty.alias = "";
    MolkCore core(0);
    core.getProbeIn(0)->setSignalNet({signal("null"), empty});
    written({&core});
    const QList<SignalItem> items = read().first()->getProbeIn(0)->getSignalNet();
    QVERIFY(items.at(0).alias.isNull());
    QVERIFY(items.at(1).alias.isEmpty());
    QVERIFY(!items.at(1).alias.isNull());
}

void TestMolkFileRoundTrip::nullNameReadsBackEmpty()
{
    MolkCore core(0);
    core.getProbeIn(0)->setSignalNet({signal(QString())});
    written({&core});
    const QString name = read().first()->getProbeIn(0)->getSignalNet().first().name;
    QVERIFY(name.isEmpty());
    QVERIFY(!name.isNull());
}

void TestMolkFileRoundTrip::idsAndNumbersAreKeptAsStored()
{
    MolkCore first(4);
    MolkCore second(4);
    first.getProbeIn(0)->number = 9;
    first.addProbeIn(0);
    first.addProbeOut(0);
    QCOMPARE(linesAfterRoundTrip({&first, &second}), modelLines({&first, &second}));
}

void TestMolkFileRoundTrip::numbersAtTheEndsOfTheirRangeReadBack()
{
    MolkCore core(-2147483647 - 1);
    core.getProbeIn(0)->number = 2147483647;
    core.getProbeOut(0)->number = -1;
    QCOMPARE(linesAfterRoundTrip({&core}), modelLines({&core}));
}

void TestMolkFileRoundTrip::missingFirstPortsAreAdded()
{
    writeBytes("<MOLK_CONFIG><Version>1.0</Version>"
               "<core/><core><probeOut number=\"5\"/></core></MOLK_CONFIG>");
    const QStringList expected{
        "core 0 module=\"\" clock=\"\" useUserClock=0", "  in 0", "  out 0 value=\"0x0\"",
        "core 1 module=\"\" clock=\"\" useUserClock=0", "  in 0", "  out 5 value=\"0x0\"",
    };
    QCOMPARE(modelLines(read()), expected);
}

void TestMolkFileRoundTrip::moreThanTheEditorAllowsIsReadAsItStands()
{
    QList<MolkCore *> cores;
    for (int i = 0; i < 20; ++i)
        cores.append(new MolkCore(i));
    owned = cores;
    for (int i = 1; i < 100; ++i) {
        cores.at(0)->addProbeIn(i);
        cores.at(0)->addProbeOut(i);
    }
    QList<SignalItem> items;
    for (int i = 0; i < 1000; ++i)
        items.append(signal(QString("top/n%1").arg(i)));
    cores.at(19)->getProbeIn(0)->setSignalNet(items);
    QCOMPARE(linesAfterRoundTrip(cores), modelLines(cores));
}

void TestMolkFileRoundTrip::oneSignalTakesAtMostAHundredBytes()
{
    const QString name(55, QLatin1Char('n'));
    MolkCore core(0);
    core.getProbeOut(0)->setSignalNet({signal(name)});
    const int one = written({&core}).size();
    core.getProbeOut(0)->setSignalNet({signal(name), signal(name)});
    QVERIFY(written({&core}).size() - one <= 100);

    SignalItem bus = signal(name, 1);
    bus.members = {signal(name, 1)};
    core.getProbeOut(0)->setSignalNet({bus});
    const int oneBit = written({&core}).size();
    bus.members.append(signal(name, 1));
    core.getProbeOut(0)->setSignalNet({bus});
    QVERIFY(written({&core}).size() - oneBit <= 100);
}

void TestMolkFileRoundTrip::handMadeLayoutIsReadAndTidied()
{
    writeBytes("<?xml version='1.0'?><!-- by hand --><?note kept not?>\r\n"
               "<MOLK_CONFIG ><Version><!-- --> 1.0\n</Version><core id='0'  module = 'm' >\r\n"
               "\n  \n <!-- \n -->\n<?x?>\n <probeOut value='0x0'/><probeIn number=\"0\"><bus "
               "name='lone'/>"
               "<signal kind='0' name='&#x41;' found='true' selectable='true'></signal>"
               "</probeIn></core></MOLK_CONFIG ><!-- end -->\n\n");
    QCOMPARE(written(read()),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<MOLK_CONFIG>\n"
                        "    <Version>1.0</Version>\n"
                        "    <core module=\"m\">\n"
                        "        <probeIn>\n"
                        "            <bit name=\"lone\"/>\n"
                        "            <net name=\"A\"/>\n"
                        "        </probeIn>\n"
                        "        <probeOut/>\n"
                        "    </core>\n"
                        "</MOLK_CONFIG>\n"));
}

void TestMolkFileRoundTrip::lineEndsInNamesAreNoLayout()
{
    // A name may hold everything that looks like indentation between two tags.
    MolkCore core(0);
    core.getProbeIn(0)->setSignalNet({signal("a>\n    <b"), signal("\n<"), signal(">\n")});
    QCOMPARE(linesAfterRoundTrip({&core}), modelLines({&core}));
    writeBytes("<MOLK_CONFIG>\n<Version>\n1.0\n</Version>\n<core><probeOut value='>\n &lt;'/>\n"
               "</core></MOLK_CONFIG>");
    QCOMPARE(read().first()->getProbeOut(0)->getValue(), QString(">  <"));
}

MOLK_TEST_GUILESS_MAIN(TestMolkFileRoundTrip)
#include "tst_molkfile_roundtrip.moc"
