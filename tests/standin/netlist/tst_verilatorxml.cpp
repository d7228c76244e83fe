// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/verilatorxml.h"
#include "netlistlines.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"
#include "golden.h"
#include "testmain.h"

#include <QTemporaryFile>

#include <memory>

using namespace Standin;

class TestVerilatorXml : public QObject
{
    Q_OBJECT

private slots:
    void languageFeaturesAreKept_data();
    void languageFeaturesAreKept();
    void blackBoxesHaveNoLevel();
    void portsOfIntegerTypesAreNets();
    void jtagIsFoundInWhatIsElaborated_data();
    void jtagIsFoundInWhatIsElaborated();
    void jtagInVhdlMayBeWrittenInAnyCase_data();
    void jtagInVhdlMayBeWrittenInAnyCase();
    void namesOfTheTranslationFromVhdlStayOut();
    void sourceNamesReplaceThoseOfTheTranslation();
    void namesThatTheToolCodedAreTakenBack();
    void textThatIsNoDesignIsRefused_data();
    void textThatIsNoDesignIsRefused();
    void everyCutOffTextIsRefused();
    void strangeTextsDoNoHarm_data();
    void strangeTextsDoNoHarm();
    void missingFileIsReported();
    void failureLeavesTheTableAlone();
};

void TestVerilatorXml::languageFeaturesAreKept_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("verilog2001") << "verilog2001.v";
    QTest::newRow("systemverilog") << "systemverilog.sv";
}

void TestVerilatorXml::languageFeaturesAreKept()
{
    QFETCH(QString, file);
    const auto netlist = elaboratedFile(file);
    QVERIFY(netlist);
    compareWithReference(netlistLines(*netlist).join('\n').toUtf8() + '\n',
                         "netlist-" + file + ".txt");
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestVerilatorXml::blackBoxesHaveNoLevel()
{
    const auto netlist =
        elaborated("module top (input a, output b); wire c; BUFFER u (.O(c), .I(a)); "
                   "assign b = c; endmodule",
                   "module BUFFER (input wire O, input wire I); endmodule");
    QVERIFY(netlist);
    QCOMPARE(netlistLines(*netlist),
             QStringList({"top (top)", "  . a -in -out", "  . b", "  . c"}));
}

/// Unlike variables of these types, which may be what is left of a loop or a genvar.
void TestVerilatorXml::portsOfIntegerTypesAreNets()
{
    const auto netlist = elaborated("module top (input int a, output integer b); genvar g; int i; "
                                    "for (g = 0; g < 2; g++) wire w; endmodule");
    QVERIFY(netlist);
    QCOMPARE(netlistLines(*netlist).mid(0, 3),
             QStringList({"top (top)", "  = a[31:0] -out", "  = b[31:0] -in"}));
}

void TestVerilatorXml::jtagIsFoundInWhatIsElaborated_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("uses");
    QTest::newRow("not-there") << QByteArray() << false;
    QTest::newRow("direct") << QByteArray("OD_JTAG u ();") << true;
    QTest::newRow("below") << QByteArray("below u ();") << true;
    QTest::newRow("in-an-array") << QByteArray("OD_JTAG u [1:0] ();") << true;
    QTest::newRow("not-elaborated") << QByteArray("if (0) OD_JTAG u ();") << false;
    QTest::newRow("as-instance-name") << QByteArray("other OD_JTAG ();") << false;
    QTest::newRow("other-case") << QByteArray("od_jtag u ();") << false;
    QTest::newRow("as-part") << QByteArray("OD_JTAG2 u ();") << false;
}

void TestVerilatorXml::jtagIsFoundInWhatIsElaborated()
{
    QFETCH(QByteArray, body);
    QFETCH(bool, uses);
    const auto netlist = elaborated("module top (input a); " + body
                                        + " endmodule module below (); OD_JTAG u (); endmodule "
                                          "module other (); endmodule module od_jtag (); endmodule "
                                          "module OD_JTAG2 (); endmodule",
                                    "module OD_JTAG (); endmodule");
    QVERIFY(netlist);
    QCOMPARE(netlist->usesJtag, uses);
}

static QByteArray designText(const QByteArray &netlist)
{
    return "<?xml version=\"1.0\" ?>\n<verilator_xml><files><file id=\"a\" filename=\"a.v\"/>"
           "<file id=\"b\" filename=\"b.v\"/></files><netlist>"
        + netlist
        + "<typetable><basicdtype id=\"1\" name=\"logic\"/><basicdtype id=\"2\" name=\"logic\" "
          "left=\"7\" right=\"0\"/></typetable></netlist></verilator_xml>";
}

static std::unique_ptr<FATHOM::RtlNetlist>
readText(const QByteArray &text, QString *error, const XmlReadOptions &options = XmlReadOptions())
{
    QTemporaryFile file;
    if (!file.open() || file.write(text) != text.size() || !file.flush())
        return nullptr;
    ModuleTable table;
    if (!readVerilatorXml(file.fileName(), options, &table, error)) {
        error->remove(file.fileName());
        return nullptr;
    }
    return std::unique_ptr<FATHOM::RtlNetlist>(elaborate(std::move(table), error));
}

void TestVerilatorXml::jtagInVhdlMayBeWrittenInAnyCase_data()
{
    QTest::addColumn<QStringList>("vhdlFiles");
    QTest::addColumn<bool>("uses");
    QTest::newRow("verilog") << QStringList() << false;
    QTest::newRow("vhdl-instantiates") << QStringList("a.v") << true;
    QTest::newRow("vhdl-declares") << QStringList("b.v") << true;
}

void TestVerilatorXml::jtagInVhdlMayBeWrittenInAnyCase()
{
    QFETCH(QStringList, vhdlFiles);
    QFETCH(bool, uses);
    XmlReadOptions options;
    options.vhdlFiles = vhdlFiles;
    QString error;
    const auto netlist =
        readText(designText("<module loc=\"a,1\" name=\"top\" topModule=\"1\"><instance name=\"u\" "
                            "defName=\"od_Jtag\"/></module><module loc=\"b,1\" name=\"od_Jtag\"/>"),
                 &error, options);
    QVERIFY2(netlist, qPrintable(error));
    QCOMPARE(netlist->usesJtag, uses);
}

void TestVerilatorXml::namesOfTheTranslationFromVhdlStayOut()
{
    QByteArray module = "<module loc=\"a,1\" name=\"top\" topModule=\"1\"><instance name=\"u\" "
                        "defName=\"m\"/>";
    for (const char *name :
         {"n12", "n12_o", "u_n7_oport", "x.n3_q", "n", "n12x", "on12", "n_12", "count", "n1_2"})
        module += QByteArray("<var name=\"") + name + "\" dtype_id=\"1\"/>";
    module +=
        "</module><module loc=\"b,1\" name=\"m\"><instance name=\"v\" defName=\"x\"/></module>";
    QString error;
    XmlReadOptions options;
    options.vhdlFiles = QStringList("a.v");
    const auto translated = readText(designText(module), &error, options);
    QVERIFY2(translated, qPrintable(error));
    QCOMPARE(allFullNames(*translated),
             QStringList({"top/n", "top/n12x", "top/on12", "top/n_12", "top/count", "top/n1_2"}));
    const auto original = readText(designText(module), &error);
    QVERIFY2(original, qPrintable(error));
    QCOMPARE(allFullNames(*original).size(), 10);
}

void TestVerilatorXml::sourceNamesReplaceThoseOfTheTranslation()
{
    XmlReadOptions options;
    options.sourceNames.insert("fifo_8_16", "fifo");
    QString error;
    const auto netlist = readText(
        designText("<module loc=\"a,1\" name=\"top\" topModule=\"1\"><instance name=\"u\" "
                   "defName=\"fifo_8_16\"/></module><module loc=\"b,1\" name=\"fifo_8_16\"/>"),
        &error, options);
    QVERIFY2(netlist, qPrintable(error));
    QCOMPARE(netlistLines(*netlist), QStringList({"top (top)", "  u (fifo)"}));
}

void TestVerilatorXml::namesThatTheToolCodedAreTakenBack()
{
    const auto netlist = elaborated("module top; \\m.x #(.W(3)) \\u-1 (); endmodule "
                                    "module \\m.x #(parameter W = 1) (); wire \\1+1 ; wire a__b; "
                                    "wire c__DOT__d; endmodule");
    QVERIFY(netlist);
    QCOMPARE(netlistLines(*netlist),
             QStringList({"top (top)", "  u-1 (m.x)", "    . 1+1 -in", "    . a__b -in",
                          "    . c__DOT__d -in"}));
}

void TestVerilatorXml::textThatIsNoDesignIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    QTest::newRow("empty") << QByteArray() << ":1:0: Premature end of document.";
    QTest::newRow("no-xml") << QByteArray("{}") << ":1:0: Unexpected text";
    QTest::newRow("other-root") << QByteArray("<html/>")
                                << ":1:7: This is not an elaborated design of Verilator";
    QTest::newRow("root-twice-nested")
        << QByteArray("<verilator_xml><verilator_xml/></verilator_xml>")
        << ":1:31: This is not an elaborated design of Verilator";
    QTest::newRow("no-top") << designText("<module name=\"top\"/>")
                            << ":2:251: The design has no top module";
    QTest::newRow("document-type")
        << QByteArray("<!DOCTYPE a [<!ENTITY e SYSTEM \"/etc/passwd\">]><verilator_xml>&e;")
        << ":1:0: Unexpected document type or entity";
    QTest::newRow("entity") << designText("<module name=\"&e;\"/>")
                            << ":2:117: Unexpected attribute or entity";
    QTest::newRow("mismatch") << QByteArray("<verilator_xml><a></b></verilator_xml>")
                              << ":1:22: Opening and ending tag mismatch.";
    QTest::newRow("root-twice") << QByteArray("<verilator_xml/><verilator_xml/>")
                                << ":1:32: Extra content at end of document.";
    QTest::newRow("half-attribute")
        << QByteArray("<verilator_xml a>") << ":1:17: Unexpected attribute or entity";
    QTest::newRow("contains-itself")
        << designText("<module name=\"top\" topModule=\"1\"><instance name=\"u\" "
                      "defName=\"top\"/></module>")
        << ": Module \"top\" contains itself";
}

void TestVerilatorXml::textThatIsNoDesignIsRefused()
{
    QFETCH(QByteArray, text);
    QString error;
    QVERIFY(!readText(text, &error));
    QTEST(error, "error");
}

void TestVerilatorXml::everyCutOffTextIsRefused()
{
    const QByteArray whole =
        designText("<module loc=\"a,1\" name=\"top\" topModule=\"1\"><var name=\"a\" "
                   "dtype_id=\"2\" dir=\"input\" pinIndex=\"1\"/><instance name=\"u\" "
                   "defName=\"m\"><port name=\"p\" direction=\"in\"><sel><varref name=\"a\"/>"
                   "<const name=\"1'h0\"/><const name=\"1'h1\"/></sel></port><range><const "
                   "name=\"32'h1\"/><const name=\"32'h0\"/></range></instance><always><sentree>"
                   "<senitem edgeType=\"POS\"><varref name=\"a\"/></senitem></sentree></always>"
                   "</module><module name=\"m\"/>");
    QString error;
    QVERIFY2(readText(whole, &error), qPrintable(error));
    for (int size = 0; size < whole.size(); ++size) {
        error.clear();
        QVERIFY(!readText(whole.left(size), &error));
        QVERIFY(!error.isEmpty());
    }
}

void TestVerilatorXml::strangeTextsDoNoHarm_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("deep-operators")
        << QByteArray("<add>").repeated(100000) + QByteArray("</add>").repeated(100000);
    QTest::newRow("deep-begins") << QByteArray("<begin>").repeated(100000)
            + QByteArray("</begin>").repeated(100000);
    QTest::newRow("empty-selection") << QByteArray("<sel/><arraysel/><structsel/><concat/>");
    QTest::newRow("half-assignment")
        << QByteArray("<contassign><const name=\"1'h0\"/></contassign>");
    QTest::newRow("assignment-of-nothing") << QByteArray("<contassign/>");
    QTest::newRow("type-of-nothing") << QByteArray("<var name=\"v\" dtype_id=\"99\"/>");
    QTest::newRow("no-attributes") << QByteArray("<var/><varref/><instance/><varxref/><const/>");
    QTest::newRow("ports-without-instance")
        << QByteArray("<port/><port><varref name=\"v\"/></port>");
    QTest::newRow("instance-in-instance")
        << QByteArray("<instance name=\"a\" defName=\"x\"><instance name=\"b\"/></instance>");
    QTest::newRow("module-in-module") << QByteArray("<module name=\"m\"/>");
    QTest::newRow("always-in-always")
        << QByteArray("<always><always><contassign/></always></always>");
    QTest::newRow("huge-selection") << QByteArray(
        "<var name=\"v\" dtype_id=\"2\"/><contassign><varref name=\"v\"/><sel><varref "
        "name=\"v\"/><const name=\"64'hffffffffffffffff\"/><const "
        "name=\"64'hffffffffffffffff\"/></sel></contassign>");
    QTest::newRow("selection-out-of-range") << QByteArray(
        "<var name=\"v\" dtype_id=\"2\"/><contassign><varref name=\"v\"/><sel><varref "
        "name=\"v\"/><const name=\"32'h7\"/><const name=\"32'hff\"/></sel></contassign>"
        "<contassign><varref name=\"v\"/><arraysel><varref name=\"v\"/><const "
        "name=\"32'h7\"/></arraysel></contassign>");
    QTest::newRow("declared-twice")
        << QByteArray("<var name=\"v\" dtype_id=\"1\"/><var name=\"v\" dtype_id=\"2\"/>");
    QTest::newRow("endless-array")
        << QByteArray("<instance name=\"a\" defName=\"top2\"><range><const name=\"32'h7fffffff\"/>"
                      "<const name=\"32'h80000000\"/></range></instance>");
    QTest::newRow("types-in-a-ring")
        << QByteArray("<var name=\"v\" dtype_id=\"7\"/></module><typetable><refdtype id=\"7\" "
                      "sub_dtype_id=\"8\"/><unpackarraydtype id=\"8\" sub_dtype_id=\"7\"/>"
                      "<structdtype id=\"9\"><memberdtype sub_dtype_id=\"9\"/></structdtype>"
                      "</typetable><module name=\"z\">");
    QTest::newRow("type-of-all-widths")
        << QByteArray("<var name=\"v\" dtype_id=\"7\"/><var name=\"w\" dtype_id=\"8\"/></module>"
                      "<typetable><basicdtype id=\"7\" name=\"logic\" left=\"2147483647\" "
                      "right=\"-2147483648\"/><packarraydtype id=\"8\" sub_dtype_id=\"7\"><range>"
                      "<const name=\"32'h7fffffff\"/><const name=\"32'h80000000\"/></range>"
                      "</packarraydtype></typetable><module name=\"z\">");
}

void TestVerilatorXml::strangeTextsDoNoHarm()
{
    QFETCH(QByteArray, body);
    QString error;
    const auto netlist = readText(
        designText("<module loc=\"a,1\" name=\"top\" topModule=\"1\">" + body + "</module>"),
        &error);
    QVERIFY2(netlist, qPrintable(error));
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestVerilatorXml::missingFileIsReported()
{
    ModuleTable table;
    QString error;
    QVERIFY(!readVerilatorXml("/nowhere/x.xml", XmlReadOptions(), &table, &error));
    QCOMPARE(error, QString("/nowhere/x.xml: No such file"));
    QVERIFY(!readVerilatorXml("/", XmlReadOptions(), &table, &error));
    QCOMPARE(error, QString("/: No such file"));
}

void TestVerilatorXml::failureLeavesTheTableAlone()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    ModuleTable table;
    table.top = 5;
    table.usesJtag = true;
    QString error;
    QVERIFY(!readVerilatorXml(file.fileName(), XmlReadOptions(), &table, &error));
    QCOMPARE(table.top, 5);
    QVERIFY(table.usesJtag);
}

MOLK_TEST_GUILESS_MAIN(TestVerilatorXml)

#include "tst_verilatorxml.moc"
