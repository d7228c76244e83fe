// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/yosysjson.h"
#include "netlistlines.h"

#include "fathom/rtlnetlist.h"
#include "golden.h"
#include "testmain.h"

#include <QTemporaryFile>

#include <memory>

using namespace Standin;

class TestYosysJson : public QObject
{
    Q_OBJECT

private slots:
    void recordedNetlistsAreRead_data();
    void recordedNetlistsAreRead();
    void sourceNamesAreFoundInVariants_data();
    void sourceNamesAreFoundInVariants();
    void topsAndModulesAreListed_data();
    void topsAndModulesAreListed();
    void topIsChosen_data();
    void topIsChosen();
    void flagsFollowTheRules_data();
    void flagsFollowTheRules();
    void namesTellTheLevels();
    void memoriesTurnedIntoRegistersStayOut();
    void jtagInVhdlMayBeWrittenInAnyCase();
    void textThatIsNoNetlistIsRefused_data();
    void textThatIsNoNetlistIsRefused();
    void everyCutOffTextIsRefused();
    void textIsToBeWhole_data();
    void textIsToBeWhole();
    void missingFileIsReported();
};

static QString readJson(const QByteArray &text, const QString &top,
                        std::unique_ptr<FATHOM::RtlNetlist> *netlist)
{
    QTemporaryFile file;
    if (!file.open() || file.write(text) != text.size() || !file.flush())
        return QString("the test's file can't be written");
    ModuleTable table;
    QString error;
    JsonReadOptions options;
    options.top = top;
    if (readYosysJson(file.fileName(), options, &table, &error))
        netlist->reset(elaborate(std::move(table), &error));
    return error.remove(file.fileName());
}

void TestYosysJson::recordedNetlistsAreRead_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("levels") << "yosys-levels.json";
    QTest::newRow("flattened") << "yosys-flattened.json";
}

void TestYosysJson::recordedNetlistsAreRead()
{
    QFETCH(QString, file);
    QFile json(QString(MOLK_TESTS_DIR) + "/data/rtl/" + file);
    QVERIFY(json.open(QIODevice::ReadOnly));
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    QCOMPARE(readJson(json.readAll(), QString(), &netlist), QString());
    QVERIFY(netlist);
    compareWithReference(netlistLines(*netlist).join('\n').toUtf8() + '\n',
                         "netlist-" + file + ".txt");
    QCOMPARE(namesNotFound(*netlist), QStringList());
    QVERIFY(netlist->usesJtag);
}

static QByteArray moduleText(const QByteArray &name, const QByteArray &attributes,
                             const QByteArray &ports, const QByteArray &cells,
                             const QByteArray &nets)
{
    return "\"" + name + "\": {\"attributes\": {" + attributes + "}, \"ports\": {" + ports
        + "}, \"cells\": {" + cells + "}, \"netnames\": {" + nets + "}}";
}

static QByteArray cellText(const QByteArray &name, const QByteArray &type,
                           const QByteArray &directions = QByteArray(),
                           const QByteArray &connections = QByteArray())
{
    return "\"" + name + "\": {\"hide_name\": 0, \"type\": \"" + type
        + "\", \"parameters\": {}, \"attributes\": {}, \"port_directions\": {" + directions
        + "}, \"connections\": {" + connections + "}}";
}

static QByteArray netText(const QByteArray &name, const QByteArray &bits)
{
    return "\"" + name + "\": {\"hide_name\": 0, \"bits\": [" + bits + "], \"attributes\": {}}";
}

static QByteArray designText(const QByteArray &modules)
{
    return "{\"creator\": \"test\", \"modules\": {" + modules + "}}";
}

void TestYosysJson::sourceNamesAreFoundInVariants_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QByteArray("leaf") << QByteArray() << "leaf";
    QTest::newRow("parameters") << QByteArray("$paramod\\\\leaf\\\\W=4") << QByteArray() << "leaf";
    QTest::newRow("hash") << QByteArray("$paramod$0123456789abcdef\\\\leaf") << QByteArray()
                          << "leaf";
    QTest::newRow("interfaces") << QByteArray("leaf$interfaces$$paramod\\\\i") << QByteArray()
                                << "leaf";
    QTest::newRow("attribute") << QByteArray("leaf_1") << QByteArray("\"hdlname\": \"\\\\leaf\"")
                               << "leaf";
}

void TestYosysJson::sourceNamesAreFoundInVariants()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, attributes);
    QFETCH(QString, name);
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    QCOMPARE(readJson(designText(moduleText("top", "", "", cellText("u", type), "") + ","
                                 + moduleText(type, attributes, "", "", "")),
                      QString(), &netlist),
             QString());
    QVERIFY(netlist);
    QCOMPARE(netlistLines(*netlist), QStringList({"top (top)", "  u (" + name + ")"}));
}

static QByteArray severalTops(const QByteArray &attributes)
{
    return designText(moduleText("a", "", "", cellText("u", "c"), "") + ","
                      + moduleText("b", attributes, "", cellText("u", "c"), "") + ","
                      + moduleText("c", "", "", cellText("u", "box"), "") + ","
                      + moduleText("box", "\"blackbox\": \"1\"", "", "", ""));
}

void TestYosysJson::topsAndModulesAreListed_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QStringList>("tops");
    QTest::addColumn<QStringList>("modules");
    const QStringList all{"a", "b", "c"};
    QTest::newRow("open") << QByteArray() << "" << QStringList{"a", "b"} << all;
    QTest::newRow("marked") << QByteArray("\"top\": \"00000001\"") << "" << QStringList{"b"} << all;
    QTest::newRow("not-marked") << QByteArray("\"top\": \"00000000\"") << ""
                                << QStringList{"a", "b"} << all;
    QTest::newRow("chosen") << QByteArray() << "a" << QStringList{"a"} << QStringList{"a", "c"};
    QTest::newRow("chosen-below") << QByteArray() << "c" << QStringList{"c"} << QStringList{"c"};
    QTest::newRow("chosen-beside-the-mark")
        << QByteArray("\"top\": 1") << "a" << QStringList{"a"} << QStringList{"a", "c"};
    QTest::newRow("unknown") << QByteArray() << "x" << QStringList() << QStringList();
    QTest::newRow("black-box") << QByteArray() << "box" << QStringList() << QStringList();
}

void TestYosysJson::topsAndModulesAreListed()
{
    QFETCH(QByteArray, attributes);
    QFETCH(QString, top);
    QTemporaryFile file;
    QVERIFY(file.open());
    const QByteArray text = severalTops(attributes);
    QCOMPARE(file.write(text), text.size());
    QVERIFY(file.flush());
    JsonModules modules;
    QString error;
    QVERIFY2(listYosysModules(file.fileName(), top, &modules, &error), qPrintable(error));
    QTEST(modules.topModules, "tops");
    QTEST(modules.modules, "modules");
}

void TestYosysJson::topIsChosen_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("error");
    QTest::newRow("several") << QByteArray() << ""
                             << ": There are several top modules";
    QTest::newRow("marked") << QByteArray("\"top\": \"1\"") << ""
                            << "";
    QTest::newRow("chosen") << QByteArray() << "b"
                            << "";
    QTest::newRow("unknown") << QByteArray() << "x"
                             << ": There is no such top module";
}

void TestYosysJson::topIsChosen()
{
    QFETCH(QByteArray, attributes);
    QFETCH(QString, top);
    QFETCH(QString, error);
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    QCOMPARE(readJson(severalTops(attributes), top, &netlist), error);
    if (error.isEmpty())
        QCOMPARE(netlistLines(*netlist), QStringList({"b (b)", "  u (c)"}));
}

void TestYosysJson::flagsFollowTheRules_data()
{
    QTest::addColumn<QByteArray>("ports");
    QTest::addColumn<QByteArray>("cells");
    QTest::addColumn<QByteArray>("bits");
    QTest::addColumn<QString>("line");
    const QByteArray notGate =
        cellText("n", "$not", "\"A\": \"input\", \"Y\": \"output\"", "\"A\": [9], \"Y\": [2]");
    const auto port = [](const char *direction) {
        return QByteArray("\"p\": {\"direction\": \"") + direction + "\", \"bits\": [2]}";
    };
    const auto row = [](const char *name, const QByteArray &ports, const QByteArray &cells,
                        const QByteArray &bits, const QString &line) {
        QTest::newRow(name) << ports << cells << bits << line;
    };
    row("undriven", "", "", "2", ". x -in");
    row("driven", "", notGate, "2", ". x");
    row("partly", "", notGate, "2, 3", "= x[1:0] 10");
    row("constant", "", "", "\"1\", \"0\"", "= x[1:0] -in -out");
    row("constant-in-part", "", notGate, "2, \"0\"", "= x[1:0] -out 30");
    row("undefined", "", "", "\"x\"", ". x -in");
    row("let-go", "", "", "\"z\"", ". x -in");
    row("top-input", port("input"), "", "2", ". x -out");
    row("top-output", port("output"), notGate, "2", ". x");
    row("top-inout", port("inout"), "", "2", ". x -out");
    row("driven-twice", "",
        notGate + "," + cellText("m", "$not", "\"Y\": \"output\"", "\"Y\": [2]"), "2", ". x -out");
    row("clock", "", notGate + "," + cellText("d", "$dff", "\"CLK\": \"input\"", "\"CLK\": [2]"),
        "2", ". x -out");
    row("clock-of-a-gate", "",
        notGate + "," + cellText("d", "$_DFF_P_", "\"C\": \"input\"", "\"C\": [2]"), "2",
        ". x -out");
    row("carry-is-no-clock", "",
        notGate + "," + cellText("d", "$fa", "\"C\": \"input\"", "\"C\": [2]"), "2", ". x");
    row("latch-has-no-clock", "",
        notGate + "," + cellText("d", "$dlatch", "\"EN\": \"input\"", "\"EN\": [2]"), "2", ". x");
    row("tri-state", "", cellText("t", "$tribuf", "\"Y\": \"output\"", "\"Y\": [2]"), "2",
        ". x -out");
    row("choice-of-z", "",
        cellText("t", "$mux", "\"A\": \"input\", \"Y\": \"output\"", "\"A\": [\"z\"], \"Y\": [2]"),
        "2", ". x -out");
    row("choice", "",
        cellText("t", "$mux", "\"A\": \"input\", \"Y\": \"output\"", "\"A\": [\"0\"], \"Y\": [2]"),
        "2", ". x");
    row("pad", port("inout"), cellText("t", "BOX", "", "\"P\": [2]"), "2", ". x -in -out");
    row("pad-that-is-read", port("inout"),
        cellText("t", "BOX", "", "\"P\": [2]") + ","
            + cellText("m", "$not", "\"A\": \"input\"", "\"A\": [2]"),
        "2", ". x -out");
    row("on-a-black-box", "", cellText("t", "BOX", "", "\"P\": [2]"), "2", ". x");
    row("child-that-drives", "", cellText("t", "m", "", "\"o\": [2]"), "2", ". x");
    row("child-of-a-constant", "", cellText("t", "m", "", "\"c\": [2]"), "2", ". x -in -out");
    row("child-that-is-clocked", "", notGate + "," + cellText("t", "m", "", "\"k\": [2]"), "2",
        ". x -out");
    row("child-that-doesn't-drive", "", cellText("t", "m", "", "\"u\": [2]"), "2", ". x -in");
    row("child-that-lets-go", "", cellText("t", "m", "", "\"b\": [2]"), "2", ". x -out");
}

void TestYosysJson::flagsFollowTheRules()
{
    QFETCH(QByteArray, ports);
    QFETCH(QByteArray, cells);
    QFETCH(QByteArray, bits);
    QFETCH(QString, line);
    const auto port = [](const char *name, const char *direction, const char *bit) {
        return QByteArray("\"") + name + "\": {\"direction\": \"" + direction + "\", \"bits\": ["
            + bit + "]}";
    };
    const QByteArray child = moduleText(
        "m", "",
        port("k", "input", "2") + "," + port("o", "output", "3") + ","
            + port("c", "output", "\"1\"") + "," + port("u", "output", "4") + ","
            + port("b", "inout", "5"),
        cellText("d", "$dff", "\"CLK\": \"input\", \"Q\": \"output\"", "\"CLK\": [2], \"Q\": [3]"),
        "");
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    QCOMPARE(readJson(designText(moduleText("top", "\"top\": 1", ports, cells, netText("x", bits))
                                 + "," + child),
                      QString(), &netlist),
             QString());
    QVERIFY(netlist);
    QCOMPARE(netlistLines(*netlist).value(1), "  " + line);
}

void TestYosysJson::namesTellTheLevels()
{
    QByteArray cells = cellText("bus", "$paramod\\\\bus_if\\\\W=8");
    cells.replace("\"attributes\": {}", "\"attributes\": {\"is_interface\": \"1\"}");
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    QCOMPARE(readJson(designText(moduleText(
                          "top", "", "", cells,
                          netText("g[10].x", "2") + "," + netText("g[2].h.x", "3") + ","
                              + netText("g[2].x", "4") + "," + netText("odd.net[3]$x", "5") + ","
                              + netText("bus.data", "6, 7") + "," + netText("a.b c", "8") + ","
                              + netText("f$func$a.v:1$2.x", "9") + "," + netText("$1", "10"))),
                      QString(), &netlist),
             QString());
    QVERIFY(netlist);
    QCOMPARE(
        netlistLines(*netlist),
        QStringList({"top (top)", "  . \\a.b  c  -in", "  . odd.net[3]$x -in", "  bus (bus_if)",
                     "    = data[1:0] -in", "  g[2] (generate)", "    . x -in", "    h (generate)",
                     "      . x -in", "  g[10] (generate)", "    . x -in"}));
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestYosysJson::memoriesTurnedIntoRegistersStayOut()
{
    QByteArrayList nets;
    for (int i = 0; i < 65; ++i)
        nets += netText("memory[" + QByteArray::number(i) + "]", "2, 3");
    for (int i = 0; i < 64; ++i)
        nets += netText("array[" + QByteArray::number(i) + "]", "2, 3");
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    QCOMPARE(
        readJson(designText(moduleText("top", "", "", "", nets.join(','))), QString(), &netlist),
        QString());
    QVERIFY(netlist);
    const QStringList lines = netlistLines(*netlist);
    QCOMPARE(lines.size(), 65);
    QCOMPARE(lines.value(3), QString("  = array[2][1:0] -in"));
    QCOMPARE(lines.value(11), QString("  = array[10][1:0] -in"));
}

void TestYosysJson::jtagInVhdlMayBeWrittenInAnyCase()
{
    for (const bool isVhdl : {false, true}) {
        QByteArray cell = cellText("u", "od_jtag");
        cell.replace("\"attributes\": {}",
                     isVhdl ? "\"attributes\": {\"src\": \"a.vhd:3.1-4.5\"}"
                            : "\"attributes\": {\"src\": \"a.v:3.1-4.5\"}");
        std::unique_ptr<FATHOM::RtlNetlist> netlist;
        QCOMPARE(readJson(designText(moduleText("top", "", "", cell, "")), QString(), &netlist),
                 QString());
        QVERIFY(netlist);
        QCOMPARE(netlist->usesJtag, isVhdl);
    }
}

void TestYosysJson::textThatIsNoNetlistIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("list") << QByteArray("[]");
    QTest::newRow("number") << QByteArray("1");
    QTest::newRow("no-modules") << QByteArray("{}");
    QTest::newRow("modules-are-a-list") << QByteArray("{\"modules\": []}");
    QTest::newRow("no-module") << QByteArray("{\"modules\": {}}");
    QTest::newRow("module-is-a-text") << QByteArray("{\"modules\": {\"top\": \"\"}}");
    QTest::newRow("bits-are-a-text")
        << QByteArray("{\"modules\": {\"top\": {\"netnames\": {\"x\": {\"bits\": \"01\"}}}}}");
    QTest::newRow("bit-is-a-list")
        << QByteArray("{\"modules\": {\"top\": {\"netnames\": {\"x\": {\"bits\": [[1]]}}}}}");
    QTest::newRow("bit-is-negative")
        << QByteArray("{\"modules\": {\"top\": {\"netnames\": {\"x\": {\"bits\": [-1]}}}}}");
    QTest::newRow("bit-is-too-high") << QByteArray(
        "{\"modules\": {\"top\": {\"netnames\": {\"x\": {\"bits\": [2147483647]}}}}}");
    QTest::newRow("contains-itself")
        << designText(moduleText("top", "\"top\": 1", "", cellText("u", "top"), ""));
    QTest::newRow("nested-too-deeply")
        << QByteArray("{\"modules\": ") + QByteArray("{\"a\": ").repeated(5000);
    QTest::newRow("not-utf8") << QByteArray("{\"modules\": {\"\xff\": {}}}");
}

void TestYosysJson::textThatIsNoNetlistIsRefused()
{
    QFETCH(QByteArray, text);
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    const QString error = readJson(text, QString(), &netlist);
    QVERIFY(!netlist);
    QVERIFY2(error.startsWith(':') && error.size() > 2, qPrintable(error));
}

void TestYosysJson::everyCutOffTextIsRefused()
{
    const QByteArray whole = designText(
        moduleText("top", "\"top\": \"1\"", "\"p\": {\"direction\": \"input\", \"bits\": [2]}",
                   cellText("u", "m", "\"A\": \"input\"", "\"A\": [2]"), netText("x", "2")));
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    QCOMPARE(readJson(whole, QString(), &netlist), QString());
    for (int size = 0; size < whole.size(); ++size) {
        netlist.reset();
        QVERIFY(!readJson(whole.left(size), QString(), &netlist).isEmpty());
        QVERIFY(!netlist);
    }
}

void TestYosysJson::textIsToBeWhole_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const QByteArray start = "{\n\"modules\": {\n";
    QTest::newRow("lacks-last-bracket")
        << start + "\"top\": {}\n}\n"
        << ":5:1: The file ends within the object that begins in line 1";
    QTest::newRow("lacks-two-brackets")
        << start + "\"top\": {}"
        << ":3:10: The file ends within the object that begins in line 2";
    QTest::newRow("ends-in-a-list") << start + "\"top\": {\"x\": [1,\n2"
                                    << ":4:2: The file ends within the list that begins in line 3";
    QTest::newRow("ends-in-a-text") << start + "\"top\\\": {}}}"
                                    << ":3:13: The file ends within the text that begins in line 3";
    QTest::newRow("ends-behind-a-backslash")
        << start + "\"top\\"
        << ":3:6: The file ends within the text that begins in line 3";
    QTest::newRow("wrong-bracket") << start + "\"top\": {]}}}"
                                   << ":3:9: There is no bracket that \"]\" could close";
    QTest::newRow("wrong-bracket-in-what-is-not-read")
        << QByteArray("{\"other\": [}, \"modules\": {\"top\": {}}}")
        << ":1:12: There is no bracket that \"}\" could close";
    QTest::newRow("bracket-behind-the-end") << start + "\"top\": {}}}\n}"
                                            << ":4:1: There is something behind the netlist's end";
    QTest::newRow("second-netlist") << start + "\"top\": {}}} {}"
                                    << ":3:13: There is something behind the netlist's end";
    QTest::newRow("null-behind-the-end") << QByteArray("{\"modules\": {\"top\": {}}}\0", 26)
                                         << ":1:25: There is something behind the netlist's end";
    QTest::newRow("blanks-behind-the-end") << start + "\"top\": {}}}\r\n \t\n" << QString();
    QTest::newRow("brackets-in-texts")
        << QByteArray("{\"creator\": \"]}\\\"[\", \"modules\": {\"top\": {}}}") << QString();
    QTest::newRow("ports-are-a-number") << start + "\"top\": {\"ports\": 3}}}"
                                        << ":3:18: The JSON element does not have the "
                                           "requested type.";
}

/// Refused with line, column and cause.
void TestYosysJson::textIsToBeWhole()
{
    QFETCH(QByteArray, text);
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    QTEST(readJson(text, QString(), &netlist), "error");
}

void TestYosysJson::missingFileIsReported()
{
    ModuleTable table;
    QString error;
    QVERIFY(!readYosysJson("/nowhere/x.json", JsonReadOptions(), &table, &error));
    QCOMPARE(error, QString("/nowhere/x.json: No such file"));
}

MOLK_TEST_GUILESS_MAIN(TestYosysJson)

#include "tst_yosysjson.moc"
