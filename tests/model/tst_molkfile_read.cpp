// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkcore.h"
#include "molkfile.h"
#include "testmain.h"

#include <QFile>
#include <QTemporaryDir>

/// What isn't a configuration is refused with its place and cause, and with nothing returned.
class TestMolkFileRead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void damagedDocumentIsRefused_data();
    void damagedDocumentIsRefused();
    void everyTruncationIsRefused();
    void nullPointersAreNotTouched();
    void flagAndMessageAreLeftAloneWhereTheyMustBe();
    void fileNameInMessageCantBeTakenForMarkup();

private:
    void writeBytes(const QByteArray &bytes);

    QTemporaryDir directory;
    QString path;
};

static const char head[] = "<MOLK_CONFIG><Version>1.0</Version>";
static const char foot[] = "</MOLK_CONFIG>";

static QByteArray document(const QByteArray &body)
{
    return head + body + foot;
}

static QByteArray inAPort(const QByteArray &signalElements)
{
    return document("<core><probeIn>" + signalElements + "</probeIn></core>");
}

void TestMolkFileRead::initTestCase()
{
    path = directory.filePath("probes.molk");
}

void TestMolkFileRead::writeBytes(const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

void TestMolkFileRead::damagedDocumentIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("message");

    // Row by row the message as the user sees it, behind the name of the file.
    const auto row = [](const char *name, const QByteArray &bytes, const char *message) {
        QTest::newRow(name) << bytes << QString::fromUtf8(message);
    };
    row("no-markup", "hello", "line 1, column 1: Start tag expected.");
    row("blanks-only", " \n ", "line 1, column 1: Premature end of document.");
    row("root-of-another-format", "<svg/>",
        "line 1, column 6: the outermost element is \"svg\" and not \"MOLK_CONFIG\".");
    row("root-in-other-case", "<molk_config/>",
        "line 1, column 14: the outermost element is \"molk_config\" and not \"MOLK_CONFIG\".");
    row("root-with-attribute", "<MOLK_CONFIG a='1'/>",
        "line 1, column 20: unknown attribute \"a\" in \"MOLK_CONFIG\".");
    row("root-with-namespace", "<MOLK_CONFIG xmlns='urn:x'/>",
        "line 1, column 28: unknown attribute \"xmlns\" in \"MOLK_CONFIG\".");
    row("root-with-prefix", "<m:MOLK_CONFIG xmlns:m='urn:x'/>",
        "line 1, column 32: the outermost element is \"m:MOLK_CONFIG\" and not \"MOLK_CONFIG\".");
    row("no-version", "<MOLK_CONFIG/>",
        "line 1, column 14: \"MOLK_CONFIG\" doesn't begin with the element \"Version\".");
    row("core-before-version", "<MOLK_CONFIG><core/><Version>1.0</Version></MOLK_CONFIG>",
        "line 1, column 20: \"MOLK_CONFIG\" doesn't begin with the element \"Version\".");
    row("other-version", "<MOLK_CONFIG>\n  <Version>2.0</Version>\n  <new/>\n</MOLK_CONFIG>",
        "line 2, column 24: the file has version \"2.0\", this editor reads version \"1.0\".");
    row("longer-version", "<MOLK_CONFIG><Version>1.0.1</Version></MOLK_CONFIG>",
        "line 1, column 37: the file has version \"1.0.1\", this editor reads version \"1.0\".");
    row("version-around-a-comment",
        "<MOLK_CONFIG><Version>1.<!-- -->\n<!-- -->0</Version></MOLK_CONFIG>",
        "line 2, column 19: the file has version \"1.?0\", this editor reads version \"1.0\".");
    row("empty-version", "<MOLK_CONFIG><Version/></MOLK_CONFIG>",
        "line 1, column 23: the file has version \"\", this editor reads version \"1.0\".");
    row("endless-version",
        "<MOLK_CONFIG><Version>" + QByteArray(5000, '1') + "</Version></MOLK_CONFIG>",
        "line 1, column 5032: the file has version "
        "\"111111111111111111111111111111111111111111111111111111111111...\", this editor reads "
        "version \"1.0\".");
    row("version-with-attribute", "<MOLK_CONFIG><Version minor='1'>1.0</Version></MOLK_CONFIG>",
        "line 1, column 32: unknown attribute \"minor\" in \"Version\".");
    row("version-with-element", "<MOLK_CONFIG><Version><b/>1.0</Version></MOLK_CONFIG>",
        "line 1, column 26: \"Version\" holds more than text.");
    row("second-version", document("<Version>1.0</Version>"),
        "line 1, column 44: unknown element \"Version\" in \"MOLK_CONFIG\".");
    row("text-in-root", document("words"),
        "line 1, column 41: unexpected text \"words\" in \"MOLK_CONFIG\".");
    row("unknown-element-in-root", document("<cores/>"),
        "line 1, column 43: unknown element \"cores\" in \"MOLK_CONFIG\".");
    row("unknown-element-in-core", document("<core>\n<probe/></core>"),
        "line 2, column 8: unknown element \"probe\" in \"core\".");
    row("unknown-element-in-port", inAPort("<core/>"),
        "line 1, column 57: unknown element \"core\" in \"probeIn\".");
    row("unknown-element-in-signal", inAPort("<bus name='b'><wire/></bus>"),
        "line 1, column 71: unknown element \"wire\" in \"bus\".");
    row("unknown-attribute-of-core", document("<core ID='1'/>"),
        "line 1, column 49: unknown attribute \"ID\" in \"core\".");
    row("unknown-attribute-of-port", document("<core><probeOut init='1'/></core>"),
        "line 1, column 61: unknown attribute \"init\" in \"probeOut\".");
    row("value-of-probe-in", document("<core><probeIn value='0x1'/></core>"),
        "line 1, column 63: unknown attribute \"value\" in \"probeIn\".");
    row("unknown-attribute-of-signal", inAPort("<net name='a' width='1'/>"),
        "line 1, column 75: unknown attribute \"width\" in \"net\".");
    row("kind-of-net", inAPort("<net name='a' kind='0'/>"),
        "line 1, column 74: unknown attribute \"kind\" in \"net\".");
    row("attribute-with-prefix", inAPort("<net m:name='a'/>"),
        "line 1, column 67: unknown attribute \"m:name\" in \"net\".");
    row("attribute-twice", inAPort("<net name='a' name='b'/>"),
        "line 1, column 74: Attribute 'name' redefined.");
    row("no-name", inAPort("<bit/>"), "line 1, column 56: \"bit\" has no attribute \"name\".");
    row("name-too-long", inAPort("<net name='" + QByteArray(65537, 'n') + "'/>"),
        "line 1, column 65601: \"name\" has more than 65536 characters.");
    row("text-in-signal", inAPort("<net name='a'>b</net>"),
        "line 1, column 66: unexpected text \"b\" in \"net\".");
    row("id-empty", document("<core id=''/>"),
        "line 1, column 48: \"\" in \"id\" is no whole number from -2147483648 to 2147483647.");
    row("id-no-number", document("<core id='one'/>"),
        "line 1, column 51: \"one\" in \"id\" is no whole number from -2147483648 to 2147483647.");
    row("id-with-plus", document("<core id='+1'/>"),
        "line 1, column 50: \"+1\" in \"id\" is no whole number from -2147483648 to 2147483647.");
    row("id-with-blank", document("<core id=' 1'/>"),
        "line 1, column 50: \" 1\" in \"id\" is no whole number from -2147483648 to 2147483647.");
    row("id-with-leading-zero", document("<core id='01'/>"),
        "line 1, column 50: \"01\" in \"id\" is no whole number from -2147483648 to 2147483647.");
    row("id-minus-zero", document("<core id='-0'/>"),
        "line 1, column 50: \"-0\" in \"id\" is no whole number from -2147483648 to 2147483647.");
    row("id-hexadecimal", document("<core id='0x1'/>"),
        "line 1, column 51: \"0x1\" in \"id\" is no whole number from -2147483648 to 2147483647.");
    row("id-with-fraction", document("<core id='1.0'/>"),
        "line 1, column 51: \"1.0\" in \"id\" is no whole number from -2147483648 to 2147483647.");
    row("id-above-range", document("<core id='2147483648'/>"),
        "line 1, column 58: \"2147483648\" in \"id\" is no whole number from -2147483648 to "
        "2147483647.");
    row("id-below-range", document("<core id='-2147483649'/>"),
        "line 1, column 59: \"-2147483649\" in \"id\" is no whole number from -2147483648 to "
        "2147483647.");
    row("id-far-above-range", document("<core id='" + QByteArray(300, '9') + "'/>"),
        "line 1, column 348: \"999999999999999999999999999999999999999999999999999999999999...\" "
        "in \"id\" is no whole number from -2147483648 to 2147483647.");
    row("number-no-number", document("<core><probeIn number='x'/></core>"),
        "line 1, column 62: \"x\" in \"number\" is no whole number from -2147483648 to "
        "2147483647.");
    row("kind-no-number", inAPort("<signal name='a' kind='bus'/>"),
        "line 1, column 79: \"bus\" in \"kind\" is no whole number from -2147483648 to "
        "2147483647.");
    row("flag-as-number", inAPort("<net name='a' found='0'/>"),
        "line 1, column 75: \"0\" in \"found\" is neither \"true\" nor \"false\".");
    row("flag-in-upper-case", document("<core useUserClock='TRUE'/>"),
        "line 1, column 62: \"TRUE\" in \"useUserClock\" is neither \"true\" nor \"false\".");
    row("flag-empty", inAPort("<net name='a' selectable=''/>"),
        "line 1, column 79: \"\" in \"selectable\" is neither \"true\" nor \"false\".");
    row("seventeen-levels-of-members",
        inAPort(QByteArray("<bus name='b'>").repeated(18) + QByteArray("</bus>").repeated(18)),
        "line 1, column 302: members are nested more than 16 deep.");
    row("end-tag-of-another", document("<core></cores>"),
        "line 1, column 49: Opening and ending tag mismatch.");
    row("not-closed", head, "line 1, column 35: Premature end of document.");
    row("second-root", document("") + "<MOLK_CONFIG/>",
        "line 1, column 63: Extra content at end of document.");
    row("text-behind-the-root", document("") + "x",
        "line 1, column 50: Extra content at end of document.");
    row("bare-ampersand", inAPort("<net name='a & b'/>"),
        "line 1, column 65: Expected '#' or '[a-zA-Z]', but got ' '.");
    row("bare-bracket", inAPort("<net name='a < b'/>"),
        "line 1, column 64: Unexpected '\xE2\x80\xB9'.");
    row("unknown-entity", inAPort("<net name='&nbsp;'/>"),
        "line 1, column 67: Entity 'nbsp' not declared.");
    row("unknown-entity-in-text", inAPort("&secret;"),
        "line 1, column 58: Entity 'secret' not declared.");
    row("document-type", "<!DOCTYPE MOLK_CONFIG>" + document(""),
        "line 1, column 1: document types aren't accepted.");
    row("entity-bomb",
        "<?xml version='1.0'?>\n<!DOCTYPE l [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;'>]>\n"
            + inAPort("<net name='&b;'/>"),
        "line 2, column 2: document types aren't accepted.");
    row("external-entity",
        "<!DOCTYPE m [<!ENTITY x SYSTEM 'file:///etc/passwd'>]>" + inAPort("&x;"),
        "line 1, column 1: document types aren't accepted.");
    row("character-data", inAPort("<![CDATA[x]]>"),
        "line 1, column 63: unexpected text \"x\" in \"probeIn\".");
    row("control-character", inAPort("<net name='\x01'/>"), "line 1, column 62: Unexpected ''.");
    row("control-character-by-number", inAPort("<net name='&#1;'/>"),
        "line 1, column 65: Invalid character reference.");
    row("nul", inAPort(QByteArray("<net name='a\0b'/>", 18)),
        "line 1, column 62: a NUL byte, which isn't text.");
    row("nul-by-number", inAPort("<net name='&#0;'/>"),
        "line 1, column 65: Invalid character reference.");
    row("half-a-pair-by-number", inAPort("<net name='&#xD800;'/>"),
        "line 1, column 69: Invalid character reference.");
    row("utf-8-overlong", inAPort("<net name='\xC0\xAF'/>"),
        "line 1, column 61: bytes that aren't text in UTF-8.");
    row("utf-8-cut", inAPort("<net name='\xE4\xBF'/>"),
        "line 1, column 61: bytes that aren't text in UTF-8.");
    row("utf-8-half-a-pair", inAPort("<net name='\xED\xA0\x80'/>"),
        "line 1, column 61: bytes that aren't text in UTF-8.");
    row("latin-1-bytes", inAPort("<net name='\xE9t\xE9'/>"),
        "line 1, column 61: bytes that aren't text in UTF-8.");
    row("other-encoding", "<?xml version='1.0' encoding='ISO-8859-1'?>" + document(""),
        "line 1, column 43: the encoding \"ISO-8859-1\" isn't UTF-8.");
    row("unknown-encoding", "<?xml version='1.0' encoding='x-none'?>" + document(""),
        "line 1, column 39: Encoding x-none is unsupported.");
    row("utf-16", QByteArray("\xFF\xFE<\0M\0", 6),
        "line 1, column 1: bytes that aren't text in UTF-8.");
    row("utf-16-without-mark", QByteArray("<\0M\0", 4),
        "line 1, column 1: a NUL byte, which isn't text.");
    row("utf-16-other-order", QByteArray("\xFE\xFF\0<\0M", 6),
        "line 1, column 1: bytes that aren't text in UTF-8.");
    row("xml-1.1", "<?xml version='1.1'?>" + document(""),
        "line 1, column 21: Unsupported XML version.");
    row("markup-in-a-wrong-word", document("<core id='&lt;b>&#10;'/>"),
        "line 1, column 59: \"\xE2\x80\xB9"
        "b>?\" in \"id\" is no whole number from -2147483648 to 2147483647.");
}

void TestMolkFileRead::damagedDocumentIsRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, message);
    writeBytes(bytes);

    bool ok = false;
    QString found;
    const QList<MOLK::MolkCore *> cores = MOLK::readMOLKConfigFromXml(path, &ok, &found);
    QVERIFY(!ok);
    QVERIFY(cores.isEmpty());
    QCOMPARE(found, "\"probes.molk\": " + message);
    QVERIFY(!MOLK::checkMOLKFile(path));
}

void TestMolkFileRead::everyTruncationIsRefused()
{
    QFile golden(MOLK_TESTS_DIR "/data/every-field.molk");
    QVERIFY(golden.open(QIODevice::ReadOnly));
    const QByteArray bytes = golden.readAll().trimmed();
    for (int size = 0; size < bytes.size(); ++size) {
        writeBytes(bytes.left(size));
        if (MOLK::checkMOLKFile(path))
            QFAIL(qPrintable(QString("the first %1 bytes were taken for a whole file").arg(size)));
    }
    writeBytes(bytes);
    QVERIFY(MOLK::checkMOLKFile(path));
}

void TestMolkFileRead::nullPointersAreNotTouched()
{
    writeBytes(document("<core/>"));
    const QList<MOLK::MolkCore *> cores = MOLK::readMOLKConfigFromXml(path, nullptr, nullptr);
    QCOMPARE(cores.size(), 1);
    qDeleteAll(cores);

    writeBytes(document("<core>"));
    QVERIFY(MOLK::readMOLKConfigFromXml(path, nullptr, nullptr).isEmpty());
}

void TestMolkFileRead::flagAndMessageAreLeftAloneWhereTheyMustBe()
{
    bool ok = false;
    QString message = "as before";
    writeBytes(document(""));
    MOLK::readMOLKConfigFromXml(path, &ok, &message);
    QCOMPARE(ok, true);
    QCOMPARE(message, QString("as before"));

    ok = false;
    writeBytes("broken");
    MOLK::readMOLKConfigFromXml(path, &ok, &message);
    QCOMPARE(ok, false);
    QVERIFY(message != "as before");
}

void TestMolkFileRead::fileNameInMessageCantBeTakenForMarkup()
{
    QString message;
    MOLK::readMOLKConfigFromXml(directory.filePath("a<b>\n.molk"), nullptr, &message);
    QCOMPARE(message,
             QString::fromUtf8("\"a\xE2\x80\xB9"
                               "b>?.molk\": there is no such file."));
}

MOLK_TEST_GUILESS_MAIN(TestMolkFileRead)
#include "tst_molkfile_read.moc"
