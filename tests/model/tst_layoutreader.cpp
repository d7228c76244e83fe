// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "layoutreader.h"
#include "modellines.h"
#include "molkfilereader.h"
#include "molkformat.h"
#include "testmain.h"

#include <QBuffer>
#include <QFile>

using MOLK::LayoutReader;
using MOLK::MolkCore;

/// Documents in the writer's layout are read; the smallest difference leaves them to the reader
/// that takes any XML, which alone says whether they are configurations.
class TestLayoutReader : public QObject
{
    Q_OBJECT

private slots:
    void layoutIsRead_data();
    void layoutIsRead();
    void everyFieldIsRead();
    void longLinesAreRead();
    void deviceThatYieldsLittleAtATimeIsRead();
    void otherLayoutIsLeftToTheOtherReader_data();
    void otherLayoutIsLeftToTheOtherReader();
    void wrongDocumentIsNotRead_data();
    void wrongDocumentIsNotRead();
};

static const char head[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<MOLK_CONFIG>\n    <Version>1.0</Version>\n";
static const char tail[] = "</MOLK_CONFIG>\n";

// The lines of a Probe In with these signals, in a whole document.
static QByteArray document(const QByteArray &signalLines)
{
    return head + QByteArray("    <core>\n        <probeIn>\n") + signalLines
        + "        </probeIn>\n        <probeOut/>\n    </core>\n" + tail;
}

static QByteArray net(const QByteArray &attributes)
{
    return document("            <net " + attributes + "/>\n");
}

// The model that was read, or nothing.
static QStringList linesByLayout(QIODevice *device)
{
    LayoutReader reader(device);
    if (!reader.read())
        return QStringList();
    const QList<MolkCore *> cores = reader.takeCores();
    const QStringList lines = modelLines(cores);
    qDeleteAll(cores);
    return lines.isEmpty() ? QStringList("no cores") : lines;
}

static QStringList linesByLayout(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return linesByLayout(&buffer);
}

static QString causeAsXml(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QList<MolkCore *> cores;
    const QString cause = MOLK::readDocument(&buffer, &cores);
    qDeleteAll(cores);
    return cause;
}

void TestLayoutReader::layoutIsRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("line");

    const auto plain = [](const QString &name) {
        return "    \"" + name + "\" alias=null selectable=1 found=1 kind=0";
    };
    QTest::newRow("no-cores") << QByteArray(head) + tail << "no cores";
    QTest::newRow("core-without-ports")
        << head + QByteArray("    <core/>\n") + tail << "  out 0 value=\"0x0\"";
    QTest::newRow("core-of-its-own-number")
        << head + QByteArray("    <core id=\"-7\" useUserClock=\"true\"/>\n") + tail
        << "core -7 module=\"\" clock=\"\" useUserClock=1";
    QTest::newRow("net") << net("name=\"top/q\"") << plain("top/q");
    QTest::newRow("empty-name") << net("name=\"\"") << plain("");
    QTest::newRow("references") << net("name=\"&lt;&gt;&amp;&quot;&#9;&#10;&#13;\"")
                                << plain("<>&\"\t\n\r");
    QTest::newRow("escape") << net("name=\"a\\u0001\"") << plain(QString("a") + QChar(1));
    QTest::newRow("backslash") << net("name=\"\\a[3] \"") << plain("\\a[3] ");
    QTest::newRow("other-letters") << net("name=\"Z\xC3\xA4hler\xF0\x9F\x98\x80\"")
                                   << plain(QString::fromUtf8("Z\xC3\xA4hler\xF0\x9F\x98\x80"));
    QTest::newRow("byte-order-mark-in-a-name")
        << net("name=\"\xEF\xBB\xBFq\"") << plain(QChar(0xFEFF) + QString("q"));
    QTest::newRow("empty-alias") << net("name=\"q\" alias=\"\"")
                                 << "    \"q\" alias=\"\" selectable=1 found=1 kind=0";
    QTest::newRow("flags") << net("name=\"q\" selectable=\"false\" found=\"false\"")
                           << "    \"q\" alias=null selectable=0 found=0 kind=0";
    QTest::newRow("kind") << document("            <signal name=\"q\" kind=\"-2147483648\"/>\n")
                          << "    \"q\" alias=null selectable=1 found=1 kind=-2147483648";
}

void TestLayoutReader::layoutIsRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, line);
    QVERIFY(linesByLayout(bytes).contains(line));
    QCOMPARE(causeAsXml(bytes), QString());
}

void TestLayoutReader::everyFieldIsRead()
{
    QFile file(QString(MOLK_TESTS_DIR) + "/data/every-field.molk");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList lines = linesByLayout(&file);
    QVERIFY(file.seek(0));
    MOLK::MolkFileReader reader(&file);
    QVERIFY(reader.read());
    const QList<MolkCore *> cores = reader.takeCores();
    const QStringList expected = modelLines(cores);
    qDeleteAll(cores);
    QCOMPARE(lines, expected);
}

void TestLayoutReader::longLinesAreRead()
{
    const QByteArray longest(MOLK::Format::maximumTextLength, 'n');
    const QByteArray escaped = QByteArray("&quot;").repeated(MOLK::Format::maximumTextLength);
    QVERIFY(!linesByLayout(net("name=\"" + longest + '"')).isEmpty());
    QVERIFY(!linesByLayout(net("name=\"" + escaped + "\" alias=\"" + escaped + '"')).isEmpty());
    QVERIFY(linesByLayout(net("name=\"" + longest + "n\"")).isEmpty());
    QVERIFY(linesByLayout(net("name=\"" + escaped + "n\"")).isEmpty());
    QVERIFY(linesByLayout(net("name=\"" + QByteArray(3 * 1024 * 1024, 'n') + '"')).isEmpty());
}

/// Yields three bytes at a time.
class Trickle : public QIODevice
{
public:
    explicit Trickle(const QByteArray &content)
        : bytes(content)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maximum) override
    {
        const QByteArray next = bytes.mid(at, int(qMin<qint64>(3, maximum)));
        std::copy(next.cbegin(), next.cend(), data);
        at += next.size();
        return next.isEmpty() ? -1 : next.size();
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray bytes;
    int at = 0;
};

void TestLayoutReader::deviceThatYieldsLittleAtATimeIsRead()
{
    const QByteArray bytes = net("name=\"top/u_core/q\"");
    Trickle trickle(bytes);
    QCOMPARE(linesByLayout(&trickle), linesByLayout(bytes));
    Trickle unfinished(bytes.chopped(1));
    QVERIFY(linesByLayout(&unfinished).isEmpty());
    Trickle more(bytes + '\n');
    QVERIFY(linesByLayout(&more).isEmpty());
}

void TestLayoutReader::otherLayoutIsLeftToTheOtherReader_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const QByteArray usual = net("name=\"q\"");
    QTest::newRow("no-declaration") << usual.mid(usual.indexOf('\n') + 1);
    QTest::newRow("byte-order-mark") << "\xEF\xBB\xBF" + usual;
    QTest::newRow("carriage-returns") << QByteArray(usual).replace('\n', "\r\n");
    QTest::newRow("tabs") << QByteArray(usual).replace("    ", "\t");
    QTest::newRow("one-line") << QByteArray(usual).replace('\n', "");
    QTest::newRow("no-line-end-at-the-end") << usual.chopped(1);
    QTest::newRow("blank-line-at-the-end") << usual + '\n';
    QTest::newRow("comment-at-the-end") << usual + "<!-- done -->\n";
    QTest::newRow("comment") << document("            <!-- none -->\n");
    QTest::newRow("blank-before-the-bracket") << net("name=\"q\" ");
    QTest::newRow("two-blanks-before-an-attribute") << net(" name=\"q\"");
    QTest::newRow("single-quotes") << net("name='q'");
    QTest::newRow("blanks-around-the-sign") << net("name = \"q\"");
    QTest::newRow("other-order") << net("alias=\"a\" name=\"q\"");
    QTest::newRow("default-that-is-written") << net("name=\"q\" found=\"true\"");
    QTest::newRow("apostrophe-by-name") << net("name=\"&apos;\"");
    QTest::newRow("reference-in-hexadecimal") << net("name=\"&#xA;\"");
    QTest::newRow("raw-tab") << net("name=\"a\tb\"");
    QTest::newRow("raw-line-end") << net("name=\"a\nb\"");
    QTest::newRow("end-tag-of-its-own") << document("            <net name=\"q\"></net>\n");
    QTest::newRow("start-and-end-on-two-lines")
        << document("            <net name=\"q\"\n            />\n");
    QTest::newRow("too-little-indentation") << document("           <net name=\"q\"/>\n");
    QTest::newRow("too-much-indentation") << document("             <net name=\"q\"/>\n");
    QTest::newRow("indentation-of-another-level")
        << document("                <net name=\"q\"/>\n");
}

void TestLayoutReader::otherLayoutIsLeftToTheOtherReader()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(linesByLayout(bytes), QStringList());
    QCOMPARE(causeAsXml(bytes), QString());
}

void TestLayoutReader::wrongDocumentIsNotRead_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const QByteArray usual = net("name=\"q\"");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("line-end") << QByteArray("\n");
    QTest::newRow("other-version") << QByteArray(usual).replace("<Version>1.0", "<Version>1.1");
    QTest::newRow("other-encoding") << QByteArray(usual).replace("UTF-8", "UTF-16");
    QTest::newRow("no-version") << QByteArray(usual).replace("    <Version>1.0</Version>\n", "");
    QTest::newRow("document-type")
        << QByteArray(usual).replace("<MOLK_CONFIG>", "<!DOCTYPE x>\n<MOLK_CONFIG>");
    QTest::newRow("cut-off-behind-a-line") << usual.left(usual.indexOf("        <probeOut/>"));
    QTest::newRow("cut-off-in-a-line") << usual.left(usual.indexOf("probeOut"));
    QTest::newRow("second-root") << usual + "<MOLK_CONFIG/>\n";
    QTest::newRow("text-at-the-end") << usual + "x\n";
    QTest::newRow("nul-at-the-end") << usual + QByteArray("\0", 1);
    QTest::newRow("no-name") << net("alias=\"q\"");
    QTest::newRow("name-twice") << net("name=\"q\" name=\"q\"");
    QTest::newRow("alias-twice") << net("name=\"q\" alias=\"q\" alias=\"q\"");
    QTest::newRow("flag-twice") << net("name=\"q\" found=\"false\" found=\"false\"");
    QTest::newRow("unknown-attribute") << net("name=\"q\" colour=\"red\"");
    QTest::newRow("kind-of-a-net") << net("name=\"q\" kind=\"1\"");
    QTest::newRow("name-of-a-port") << document("").replace("<probeIn>", "<probeIn name=\"q\">");
    QTest::newRow("value-of-a-probe-in")
        << document("").replace("<probeIn>", "<probeIn value=\"0x1\">");
    QTest::newRow("longer-element") << document("            <nets name=\"q\"/>\n");
    QTest::newRow("longer-end") << QByteArray(usual).replace("</probeIn>", "</probeInX>");
    QTest::newRow("crossed-ends") << document("            <bus name=\"q\">\n            </bit>\n");
    QTest::newRow("end-missing") << document("            <bus name=\"q\">\n");
    QTest::newRow("end-too-much") << document("        </probeIn>\n");
    QTest::newRow("flag-of-another-word") << net("name=\"q\" found=\"no\"");
    QTest::newRow("plus-sign") << document("            <signal name=\"q\" kind=\"+1\"/>\n");
    QTest::newRow("leading-zero") << document("            <signal name=\"q\" kind=\"01\"/>\n");
    QTest::newRow("escaped-digit")
        << document("            <signal name=\"q\" kind=\"\\u0031\"/>\n");
    QTest::newRow("number-out-of-range")
        << document("            <signal name=\"q\" kind=\"2147483648\"/>\n");
    QTest::newRow("bracket-in-a-name") << net("name=\"a<b\"");
    QTest::newRow("bare-ampersand") << net("name=\"a&b\"");
    QTest::newRow("unknown-entity") << net("name=\"&nbsp;\"");
    QTest::newRow("quote-missing") << net("name=\"q");
    QTest::newRow("control-character") << net("name=\"a\x01\"");
    QTest::newRow("nul-in-a-name") << net(QByteArray("name=\"a\0\"", 9));
    QTest::newRow("overlong-form") << net("name=\"\xC0\xAF\"");
    QTest::newRow("half-a-surrogate-pair") << net("name=\"\xED\xA0\x80\"");
    QTest::newRow("character-cut-off-by-the-quote") << net("name=\"\xC3\"");
    QTest::newRow("no-character") << net("name=\"\xEF\xBF\xBE\"");
    QByteArray deep;
    for (int i = 0; i <= MOLK::Format::maximumNesting; ++i)
        deep += QByteArray(12 + 4 * i, ' ') + "<bus name=\"q\">\n";
    deep += QByteArray(12 + 4 * (MOLK::Format::maximumNesting + 1), ' ') + "<bit name=\"q\"/>\n";
    for (int i = MOLK::Format::maximumNesting; i >= 0; --i)
        deep += QByteArray(12 + 4 * i, ' ') + "</bus>\n";
    QTest::newRow("members-too-deep") << document(deep);
}

void TestLayoutReader::wrongDocumentIsNotRead()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(linesByLayout(bytes), QStringList());
    QVERIFY(!causeAsXml(bytes).isEmpty());
}

MOLK_TEST_GUILESS_MAIN(TestLayoutReader)
#include "tst_layoutreader.moc"
