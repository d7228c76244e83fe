// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testmain.h"

#include "project/yamldocument.h"

using Standin::expandAliases;
using Standin::readYaml;
using Standin::writeYaml;
using Standin::YamlError;
using Standin::YamlNode;

class TestProjectYaml : public QObject
{
    Q_OBJECT

private slots:
    void canonicalTextIsKept_data();
    void canonicalTextIsKept();
    void otherFormsAreWrittenCanonically_data();
    void otherFormsAreWrittenCanonically();
    void writtenTextReadsBackEqual_data();
    void writtenTextReadsBackEqual();
    void copyIsFaithfulUnlessItsMeaningChanges_data();
    void copyIsFaithfulUnlessItsMeaningChanges();
    void linesCountFromOne();
    void valuesAreFoundByKey();
    void valuesAreSetInPlaceOrAppended();
    void stringsThatLookLikeOtherTypesGetQuotes_data();
    void stringsThatLookLikeOtherTypesGetQuotes();
    void brokenTextNamesItsLine_data();
    void brokenTextNamesItsLine();
    void deepNestingIsRefused_data();
    void deepNestingIsRefused();
    void aliasBombStaysSmallAndIsNotExpanded();
    void aliasesAreExpandedInPlace();
    void anchorThatContainsItselfIsNotExpanded();
    void tagsAreKeptAndNotFollowed();
};

static YamlNode parsed(const QByteArray &text)
{
    YamlNode root;
    YamlError error;
    if (!readYaml(text, &root, &error))
        QTest::qFail(qPrintable(error.text), __FILE__, __LINE__);
    return root;
}

static bool equal(const YamlNode &a, const YamlNode &b)
{
    if (a.kind != b.kind || a.text != b.text || a.quoted != b.quoted || a.tag != b.tag
        || a.anchor != b.anchor || a.items.size() != b.items.size())
        return false;
    for (size_t i = 0; i < a.items.size(); ++i) {
        if (!equal(a.items[i], b.items[i]))
            return false;
    }
    return true;
}

void TestProjectYaml::canonicalTextIsKept_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("order-of-keys") << QByteArray("b: 1\na: 2\nc: 3\n");
    QTest::newRow("repeated-keys") << QByteArray("a: 1\na: 2\n");
    QTest::newRow("quoted-number") << QByteArray("a: \"1.0\"\nb: 1.0\n");
    QTest::newRow("quoted-boolean") << QByteArray("a: \"true\"\nb: true\n");
    QTest::newRow("empty-string") << QByteArray("a: \"\"\n");
    QTest::newRow("colons") << QByteArray("a: ::picosoc:0\n::servant:1.2: x\n");
    QTest::newRow("list-of-maps") << QByteArray("files:\n  - name: a.v\n    file_type: user\n");
    QTest::newRow("flow") << QByteArray("a: {b: [1, 2], c: {}}\nd: [x]\n");
    QTest::newRow("block-text") << QByteArray("a: |\n  one\n    two\n\n  three\nb: 1\n");
    QTest::newRow("anchor") << QByteArray("a: &id1 x\nb: *id1\n");
    QTest::newRow("tag") << QByteArray("a: !<!custom> x\n");
    QTest::newRow("non-ascii") << QByteArray("a: gr\xC3\xBC\xC3\x9F\n");
    QTest::newRow("null") << QByteArray("a: ~\n");
    QTest::newRow("empty-collections") << QByteArray("a: []\nb: {}\n");
    QTest::newRow("scalar-document") << QByteArray("x\n");
}

void TestProjectYaml::canonicalTextIsKept()
{
    QFETCH(QByteArray, text);

    QCOMPARE(QString::fromUtf8(writeYaml(parsed(text))), QString::fromUtf8(text));
}

void TestProjectYaml::otherFormsAreWrittenCanonically_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("written");

    QTest::newRow("crlf") << QByteArray("a: 1\r\nb: 2\r\n") << QByteArray("a: 1\nb: 2\n");
    QTest::newRow("byte-order-mark") << QByteArray("\xEF\xBB\xBF"
                                                   "a: 1\n")
                                     << QByteArray("a: 1\n");
    QTest::newRow("single-quotes") << QByteArray("a: '1'\n") << QByteArray("a: \"1\"\n");
    QTest::newRow("json") << QByteArray("{\"a\": [1, \"2\"]}")
                          << QByteArray("{\"a\": [1, \"2\"]}\n");
    QTest::newRow("marker") << QByteArray("---\na: 1\n...\n") << QByteArray("a: 1\n");
    QTest::newRow("omitted-value") << QByteArray("a:\nb: 1\n") << QByteArray("a: ~\nb: 1\n");
    QTest::newRow("empty") << QByteArray() << QByteArray("~\n");
    QTest::newRow("comments") << QByteArray("a: 1 # one\n# two\nb: 2\n")
                              << QByteArray("a: 1\nb: 2\n");
}

void TestProjectYaml::otherFormsAreWrittenCanonically()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, written);

    QCOMPARE(QString::fromUtf8(writeYaml(parsed(text))), QString::fromUtf8(written));
}

void TestProjectYaml::writtenTextReadsBackEqual_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("control-characters") << QByteArray("a: \"x\\ny\\t\\u0001\\r\"\n");
    QTest::newRow("no-newline-at-end") << QByteArray("a: |-\n  one\n  two\n");
    QTest::newRow("newlines-at-end") << QByteArray("a: |+\n  one\n\n\nb: 1\n");
    QTest::newRow("leading-blanks") << QByteArray("a: |2\n    one\n  two\n");
    QTest::newRow("leading-newline") << QByteArray("a: |\n\n  one\n");
    QTest::newRow("block-text-in-list") << QByteArray("- |\n  one\n- x\n");
    QTest::newRow("block-text-in-flow") << QByteArray("[\"one\\n\", {a: \"two\\n\"}]\n");
    QTest::newRow("block-text-as-key") << QByteArray("? |\n  one\n: x\n");
    QTest::newRow("list-as-key") << QByteArray("? [a, b]\n: x\n");
    QTest::newRow("block-list-as-key") << QByteArray("? - a\n  - {b: c}\n: x\n");
    QTest::newRow("map-as-key") << QByteArray("? {a: b}\n: x\n");
    QTest::newRow("null-as-key") << QByteArray("~: x\n");
    QTest::newRow("alias-as-key") << QByteArray("&k a: 1\n*k : 2\n");
    QTest::newRow("anchored-list") << QByteArray("a: &x\n  - 1\nb: *x\nc: [*x, *x]\n");
    QTest::newRow("anchored-null") << QByteArray("a: &x\nb: *x\n");
    QTest::newRow("lists-in-lists") << QByteArray("- - 1\n  - - 2\n- - 3\n");
    QTest::newRow("tagged-collections") << QByteArray("a: !!set {x: ~}\nb: !t\n  - 1\n");
    QTest::newRow("tagged-string") << QByteArray("a: !!str 12\n");
    QTest::newRow("plain-of-two-lines") << QByteArray("a: one\n  two\nb: 1\n");
    QTest::newRow("dashes") << QByteArray("a: \"- x\"\nb: \"---\"\nc: -x\n");
    QTest::newRow("hash") << QByteArray("a: \"x # y\"\nb: x#y\n");
    QTest::newRow("special-characters") << QByteArray("a: \"`$(x)` %y @z !w &v *u |t >s\"\n");
}

void TestProjectYaml::writtenTextReadsBackEqual()
{
    QFETCH(QByteArray, text);

    const YamlNode root = parsed(text);
    const QByteArray written = writeYaml(root);
    QVERIFY2(equal(parsed(written), root), written.constData());
    QCOMPARE(writeYaml(parsed(written)), written);
}

void TestProjectYaml::copyIsFaithfulUnlessItsMeaningChanges_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("copy");
    QTest::addColumn<bool>("faithful");

    QTest::newRow("same") << QByteArray("a: 1") << QByteArray("{a: 1}") << true;
    QTest::newRow("quoted-number") << QByteArray("1.0") << QByteArray("\"1.0\"") << false;
    QTest::newRow("quoted-word") << QByteArray("true") << QByteArray("\"true\"") << false;
    QTest::newRow("quoted-text") << QByteArray("a (b)") << QByteArray("\"a (b)\"") << true;
    QTest::newRow("lost-quotes") << QByteArray("\"a (b)\"") << QByteArray("a (b)") << false;
    QTest::newRow("other-text") << QByteArray("a") << QByteArray("b") << false;
    QTest::newRow("other-order") << QByteArray("[a, b]") << QByteArray("[b, a]") << false;
    QTest::newRow("other-kind") << QByteArray("[a, b]") << QByteArray("{a: b}") << false;
    QTest::newRow("missing") << QByteArray("[a, b]") << QByteArray("[a]") << false;
    QTest::newRow("tag") << QByteArray("!t a") << QByteArray("a") << false;
}

void TestProjectYaml::copyIsFaithfulUnlessItsMeaningChanges()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, copy);
    QTEST(Standin::isFaithful(parsed(text), parsed(copy)), "faithful");
}

void TestProjectYaml::linesCountFromOne()
{
    const YamlNode root = parsed("# comment\na: 1\nb:\n\n  - x\n  - y: 2\nc:\nd: 1\n");

    QCOMPARE(root.line, 2);
    QCOMPARE(root.value("a")->line, 2);
    QCOMPARE(root.value("b")->line, 5);
    QCOMPARE(root.value("b")->items[1].line, 6);
    QCOMPARE(root.value("c")->line, 7);
    QCOMPARE(root.value("d")->line, 8);
}

void TestProjectYaml::valuesAreFoundByKey()
{
    const YamlNode root = parsed("a: 1\nb: [x]\na: 2\n[q]: 3\n");

    QCOMPARE(root.value("a")->text, QString("1"));
    QCOMPARE(root.value("b")->items.size(), size_t(1));
    QVERIFY(!root.value("c"));
    QVERIFY(!root.value("q"));
    QVERIFY(!root.value("a")->value("a"));
    QVERIFY(!root.value("b")->value("x"));
}

void TestProjectYaml::valuesAreSetInPlaceOrAppended()
{
    YamlNode root = parsed("a: 1\nb: 2\nc: 3\n");

    root.setValue("b", YamlNode::string("two"));
    root.setValue("d", YamlNode::plain("4"));
    root.removeKey("a");
    root.removeKey("none");

    QCOMPARE(QString::fromUtf8(writeYaml(root)), QString("b: two\nc: 3\nd: 4\n"));
}

void TestProjectYaml::stringsThatLookLikeOtherTypesGetQuotes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");

    QTest::newRow("word") << "top"
                          << "top\n";
    QTest::newRow("path") << "rtl/a b.v"
                          << "rtl/a b.v\n";
    QTest::newRow("up") << "../a.v"
                        << "\"../a.v\"\n";
    QTest::newRow("number") << "12"
                            << "\"12\"\n";
    QTest::newRow("year") << "2001"
                          << "\"2001\"\n";
    QTest::newRow("negative") << "-1"
                              << "\"-1\"\n";
    QTest::newRow("date") << "2020-01-01"
                          << "\"2020-01-01\"\n";
    QTest::newRow("true") << "True"
                          << "\"True\"\n";
    QTest::newRow("no") << "no"
                        << "\"no\"\n";
    QTest::newRow("y") << "y"
                       << "\"y\"\n";
    QTest::newRow("null") << "null"
                          << "\"null\"\n";
    QTest::newRow("empty") << ""
                           << "\"\"\n";
    QTest::newRow("colon-blank") << "a: b"
                                 << "\"a: b\"\n";
    QTest::newRow("hash") << "a #b"
                          << "\"a #b\"\n";
    QTest::newRow("star") << "*a"
                          << "\"*a\"\n";
    QTest::newRow("newline") << "a\nb"
                             << "\"a\\nb\"\n";
    QTest::newRow("quote") << "a\"b"
                           << "a\"b\n";
    QTest::newRow("leading-quote") << "\"a"
                                   << "\"\\\"a\"\n";
}

void TestProjectYaml::stringsThatLookLikeOtherTypesGetQuotes()
{
    QFETCH(QString, text);
    QFETCH(QString, written);

    QCOMPARE(QString::fromUtf8(writeYaml(YamlNode::string(text))), written);
    QCOMPARE(parsed(written.toUtf8()).text, text);
}

void TestProjectYaml::brokenTextNamesItsLine_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("message");

    QTest::newRow("bracket") << QByteArray("a: 1\nb: [1,\n") << 3
                             << "end of sequence flow not found";
    QTest::newRow("indent") << QByteArray("a: 1\n  b: 2\n") << 2 << "illegal map value";
    QTest::newRow("unknown-alias")
        << QByteArray("a: 1\nb: *x\n") << 2 << "the referenced anchor is not defined";
    QTest::newRow("second-document")
        << QByteArray("a: 1\n---\nb: 2\n") << 2 << "a second document begins";
    QTest::newRow("escape") << QByteArray("a: \"\\q\"\n") << 1 << "unknown escape character: q";
    QTest::newRow("not-utf8") << QByteArray("a: \xFF\n") << 0 << "the file is not in UTF-8";
    QTest::newRow("utf8-cut-off") << QByteArray("a: \xC3") << 0 << "the file is not in UTF-8";
    QTest::newRow("utf16") << QByteArray("\xFF\xFE"
                                         "a\0",
                                         4)
                           << 0 << "the file is not a text";
    QTest::newRow("nul") << QByteArray("a: x\0y\n", 7) << 0 << "the file is not a text";
}

void TestProjectYaml::brokenTextNamesItsLine()
{
    QFETCH(QByteArray, text);

    YamlNode root = YamlNode::string("untouched");
    YamlError error;
    QVERIFY(!readYaml(text, &root, &error));
    QTEST(error.line, "line");
    QTEST(error.text, "message");
    QCOMPARE(root.text, QString("untouched"));
}

void TestProjectYaml::deepNestingIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("brackets") << QByteArray(200000, '[');
    QTest::newRow("braces") << QByteArray("{a: ").repeated(100000);
    QTest::newRow("dashes") << QByteArray("- ").repeated(100000);
    QTest::newRow("questions") << QByteArray("? ").repeated(100000);
}

void TestProjectYaml::deepNestingIsRefused()
{
    QFETCH(QByteArray, text);

    YamlNode root;
    YamlError error;
    QVERIFY(!readYaml(text, &root, &error));
    QVERIFY(!error.text.isEmpty());
}

void TestProjectYaml::aliasBombStaysSmallAndIsNotExpanded()
{
    QByteArray text = "a0: &a0 [x, x, x, x, x, x, x, x, x, x]\n";
    for (int i = 1; i < 12; ++i) {
        const QByteArray last = "*a" + QByteArray::number(i - 1);
        const QByteArray name = "a" + QByteArray::number(i);
        text += name + ": &" + name + " [" + (last + ", ").repeated(9) + last + "]\n";
    }
    YamlNode root = parsed(text);

    const QByteArray written = writeYaml(root);
    QVERIFY(written.size() < 2 * text.size());
    QVERIFY(!expandAliases(&root));
    QCOMPARE(writeYaml(root), written);
}

void TestProjectYaml::aliasesAreExpandedInPlace()
{
    YamlNode root = parsed("a: &x\n  - 1\n  - &y {k: v}\nb: *x\nc: *y\n");

    QVERIFY(expandAliases(&root));

    QCOMPARE(QString::fromUtf8(writeYaml(root)),
             QString("a:\n  - 1\n  - {k: v}\nb:\n  - 1\n  - {k: v}\nc: {k: v}\n"));
}

void TestProjectYaml::anchorThatContainsItselfIsNotExpanded()
{
    YamlNode root = parsed("a: &x [1, *x]\n");
    QVERIFY(!expandAliases(&root));
}

void TestProjectYaml::tagsAreKeptAndNotFollowed()
{
    const YamlNode root = parsed("a: !!python/object/apply:os.system ['true']\n");

    QCOMPARE(root.value("a")->tag, QString("tag:yaml.org,2002:python/object/apply:os.system"));
    QCOMPARE(int(root.value("a")->kind), int(YamlNode::Sequence));
}

MOLK_TEST_GUILESS_MAIN(TestProjectYaml)
#include "tst_projectyaml.moc"
