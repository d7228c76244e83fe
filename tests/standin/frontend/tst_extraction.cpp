// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testwidgetsmain.h"

namespace DesignInfo = Standin::DesignInfo;

/// Designs of all kinds are read, and what they hold is there.
class tst_Extraction : public QObject
{
    Q_OBJECT

private slots:
    void realisticDesignOpens_data();
    void realisticDesignOpens();
    void netsOfTheFabricAreThere();
    void vhdlTopHasVerilogLeaves();
    void verilogTopHasVhdlLeaf();
    void vhdlFilesNeedNoOrder();
    void yosysNetlistOpens();
    void brokenYosysNetlistIsAnError();
    void yosysNetlistStandsAlone();
    void listsFollowTheTop_data();
    void listsFollowTheTop();
    void survivableConstructsAreNoErrors_data();
    void survivableConstructsAreNoErrors();
    void definesAndParametersCount();
    void fileDefinesHoldForOneFile();
    void namesOfOtherStandardsAreTaken();
    void escapedTopNameIsTaken();
    void jtagIsNoticed();
    void excludedRegionsOfIncludesStayOut();
};

void tst_Extraction::realisticDesignOpens_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("include");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QStringList>("someLevels");

    QTest::newRow("risc-v-core") << QStringList{"core/rtl/core_pkg.sv", "core/rtl/core_mem_if.sv",
                                                "core/rtl/core_alu.sv", "core/rtl/core_regfile.sv",
                                                "core/rtl/core_top.sv", "core/rtl/core_sram.sv"}
                                 << "core/include"
                                 << ""
                                 << QStringList{"core_top core_top", "core_top/mem[0] core_mem_if",
                                                "core_top/gen_hart[1]/u_regs core_regfile",
                                                "core_top/gen_hart[0]/u_sram core_sram"};
    QTest::newRow("bus-fabric") << QStringList{"fabric/fabric_defs.v", "fabric/arbiter.v",
                                               "fabric/crossbar.v"}
                                << ""
                                << ""
                                << QStringList{"fabric_top/xbar/master[3]/arb arbiter",
                                               "fabric_top/xbar/master[2]/even/buffer fifo"};
    QTest::newRow("network-core") << QStringList{"net/mac_rx.v", "net/mac_tx.sv", "net/eth_top.v"}
                                  << ""
                                  << "eth_top"
                                  << QStringList{"eth_top/rx_core mac_rx",
                                                 "eth_top/tx_core mac_tx"};
    QTest::newRow("risc-v-core-with-checks")
        << QStringList{"soc/rv_core.sv"} << ""
        << "soc_top"
        << QStringList{"soc_top/core/u_mon rv_monitor", "soc_top/core/u_rf/g_reg[31]/g_ff generate",
                       "soc_top/banks[1] mem_if", "soc_top/u_ram[0] ram"};
    QTest::newRow("serial-ports-in-vhdl")
        << QStringList{"soc/uart_soc.vhd"} << ""
        << "soc" << QStringList{"soc/gen_n3_u uart", "soc/gen_n1_first_f fifo"};
}

void tst_Extraction::realisticDesignOpens()
{
    QFETCH(QStringList, files);
    QFETCH(QString, include);
    QFETCH(QString, top);
    QFETCH(QStringList, someLevels);
    ExtractionTest test;
    test.addData(files);
    test.info.insert(DesignInfo::IncludePath,
                     include.isEmpty() ? QStringList()
                                       : QStringList(ExtractionTest::data(include)));
    const ModulesAnswer answer = test.modules(top);
    QCOMPARE(answer.errors(), QStringList());
    QCOMPARE(answer.topModules.size(), 1);
    const auto netlist = test.netlist();
    const QStringList levels = levelLines(*netlist);
    for (const QString &level : someLevels)
        QVERIFY2(levels.contains(level), qPrintable(level + " is not in\n" + levels.join('\n')));
    QVERIFY(!levels.join(' ').contains("only_for_verilator"));
}

void tst_Extraction::netsOfTheFabricAreThere()
{
    ExtractionTest test;
    test.addData({"fabric/fabric_defs.v", "fabric/arbiter.v", "fabric/crossbar.v"});
    QCOMPARE(test.modules().errors(), QStringList());
    const auto netlist = test.netlist();
    const QStringList nets = netLines(*netlist);
    for (const char *net : {"fabric_top/clk_buf", "fabric_top/gpio[3:0]", "fabric_top/in[127:0]",
                            "fabric_top/xbar/m_valid[0:3]", "fabric_top/xbar/master[1]/grant[3:0]",
                            "fabric_top/xbar/master[0]/even/buffer/head[3:0]"})
        QVERIFY2(nets.contains(QLatin1String(net)), net);
    QVERIFY(netlist->findNet("fabric_top/xbar/master[0]/even/buffer/d[31]"));
}

void tst_Extraction::vhdlTopHasVerilogLeaves()
{
    ExtractionTest test;
    test.addData({"mixed/pulse.vhd", "mixed/blink.vhd"});
    test.add(ExtractionTest::data("mixed/helper_pkg.vhd"), {{DesignInfo::Library, "helpers"}});
    test.addData({"mixed/toggler.v"});
    const ModulesAnswer answer = test.modules("BLINK");
    QCOMPARE(answer.errors(), QStringList());
    QCOMPARE(answer.topModules, QStringList{"BLINK"});
    QCOMPARE(answer.modules, (QStringList{"toggler", "Pulse", "Blink"}));
    const auto netlist = test.netlist();
    QCOMPARE(netlist->top->name(), QString("BLINK"));
    const QStringList levels = levelLines(*netlist);
    QCOMPARE(levels,
             (QStringList{"BLINK BLINK", "BLINK/leds_n1_t toggler", "BLINK/leds_n2_t toggler",
                          "BLINK/p Pulse"}));
    QVERIFY(netLines(*netlist).contains("BLINK/p/value[5:0]"));
    QVERIFY(netLines(*netlist).contains("BLINK/leds_n2_t/prescale[4:0]"));
}

void tst_Extraction::verilogTopHasVhdlLeaf()
{
    ExtractionTest test;
    test.addData({"mixed/pulse.vhd", "mixed/toggler.v", "mixed/board.v"});
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.errors(), QStringList());
    QCOMPARE(answer.topModules, QStringList{"board"});
    const auto netlist = test.netlist();
    QVERIFY(netLines(*netlist).contains("board/counter/value[7:0]"));
}

void tst_Extraction::vhdlFilesNeedNoOrder()
{
    ExtractionTest test;
    test.add(test.write("c.vhd",
                        "use work.p.all; entity c is port (a : in bit; b : out bit); end;\n"
                        "architecture r of c is begin b <= a when N = 1 else '0'; end;"));
    test.add(test.write("b.vhd", "package p is constant N : natural := work.q.M; end;"));
    test.add(test.write("a.vhd", "package q is constant M : natural := 1; end;"));
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(test.netlist()->top->name(), QString("c"));
}

void tst_Extraction::yosysNetlistOpens()
{
    ExtractionTest test;
    test.addData({"yosys/small.json"});
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.messages, QStringList());
    QCOMPARE(answer.topModules, QStringList{"top"});
    const auto netlist = test.netlist();
    QCOMPARE(levelLines(*netlist), (QStringList{"top top", "top/u leaf"}));
    QCOMPARE(netLines(*netlist), (QStringList{"top/clk", "top/u/a", "top/q[1:0]"}));
    QCOMPARE(test.modules("leaf").topModules, QStringList{"leaf"});
    QCOMPARE(test.netlist()->top->name(), QString("leaf"));
    QCOMPARE(test.modules("nosuch").modules, QStringList());
    QCOMPARE(test.extraction->toolRuns(), 0);
}

void tst_Extraction::brokenYosysNetlistIsAnError()
{
    ExtractionTest test;
    const QString file = test.write("a.json", "{\"modules\": {");
    test.add(file);
    const QStringList errors = test.modules().errors();
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors.first(),
             "ERROR: " + file + ":1:14: The file ends within the object that begins in line 1");
    QCOMPARE(test.netlist()->top->name(), QString());
}

void tst_Extraction::yosysNetlistStandsAlone()
{
    ExtractionTest test;
    test.addData({"yosys/small.json", "net/mac_rx.v"});
    QCOMPARE(
        test.modules().messages,
        QStringList("ERROR: a netlist in a \".json\" file can't be combined with other files"));
}

void tst_Extraction::listsFollowTheTop_data()
{
    QTest::addColumn<QString>("top");
    QTest::addColumn<QStringList>("topModules");
    QTest::addColumn<QStringList>("modules");
    QTest::addColumn<QString>("delivered");

    QTest::newRow("open") << "" << QStringList{"top"} << QStringList{"leaf", "top"} << "top";
    QTest::newRow("set") << "leaf" << QStringList{"leaf"} << QStringList{"leaf"} << "leaf";
    QTest::newRow("unknown") << "nosuch" << QStringList() << QStringList() << "nosuch";
}

void tst_Extraction::listsFollowTheTop()
{
    QFETCH(QString, top);
    ExtractionTest test;
    test.add(test.write("a.v", oneTop));
    const ModulesAnswer answer = test.modules(top);
    QCOMPARE(answer.messages, QStringList());
    QTEST(answer.topModules, "topModules");
    QTEST(answer.modules, "modules");
    QTEST(test.netlist()->top->name(), "delivered");
}

void tst_Extraction::survivableConstructsAreNoErrors_data()
{
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("assertion") << QByteArray("assert property (@(posedge x) x |=> x [*2]);");
    QTest::newRow("property") << QByteArray("property p; @(posedge x) x ##[1:$] x; endproperty");
    QTest::newRow("covergroup") << QByteArray("covergroup g @(posedge x); endgroup");
    QTest::newRow("wait") << QByteArray("initial begin wait (x); @(posedge x); #5; end");
    QTest::newRow("readmem") << QByteArray("reg [7:0] m [0:3]; initial $readmemh(\"nosuch\", m);");
    QTest::newRow("file-task") << QByteArray("integer f; initial f = $fopen(\"nosuch\", \"w\");");
    QTest::newRow("specify") << QByteArray("specify (x => y[0]) = (1, 2); endspecify");
    QTest::newRow("gates") << QByteArray("and #3 (w, x, x); pullup (v); tran (v, w);");
    QTest::newRow("width") << QByteArray("assign y = 12'hfff;");
    QTest::newRow("primitive") << QByteArray("NOSUCH #(.A(\"x\"), .B(1.5)) n(.P(x), .Q(y));");
    QTest::newRow("primitive-array") << QByteArray("NOSUCH n[3:0] (.P(y), .Q(x));");
    QTest::newRow("type-parameter") << QByteArray("NOSUCH #(.T(logic [3:0])) n(.P(x));");
    QTest::newRow("hot-comment") << QByteArray("/* synopsys full_case */ // verilator lint_off X");
    QTest::newRow("undeclared-net") << QByteArray("assign implicit = x;");
    QTest::newRow("other-task") << QByteArray("initial $vendor_task(x);");
    QTest::newRow("defparam") << QByteArray("NOSUCH n(.P(x)); defparam n.INIT = 3;");
}

void tst_Extraction::survivableConstructsAreNoErrors()
{
    QFETCH(QByteArray, body);
    ExtractionTest test;
    test.add(test.write("a.v", "`default_nettype none\n"));
    test.add(test.write("b.v", "module top(input x, output [3:0] y);\n" + body + "\nendmodule\n"));
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.errors(), QStringList());
    QVERIFY(netLines(*test.netlist()).contains("top/y[3:0]"));
}

void tst_Extraction::definesAndParametersCount()
{
    ExtractionTest test;
    test.add(test.write("a.v",
                        "module top #(parameter W = 1, N = \"\") (input [W-1:0] x);\n"
                        "`ifdef ON\nwire [`WIDE-1:0] on;\n`endif\nendmodule\n"));
    test.info.insert(DesignInfo::Defines, QVariantMap{{"ON", ""}, {"WIDE", "5"}});
    test.info.insert(DesignInfo::Parameters, QVariantMap{{"W", 7}, {"N", "a b"}, {"NOT_THERE", 1}});
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()), (QStringList{"top/x[6:0]", "top/on[4:0]"}));
}

void tst_Extraction::fileDefinesHoldForOneFile()
{
    ExtractionTest test;
    test.info.insert(DesignInfo::Defines, QVariantMap{{"W", "2"}});
    test.add(test.write("a.v", "module a(input [`W-1:0] x); endmodule\n"),
             {{DesignInfo::Defines, QVariantMap{{"W", "3"}}}});
    test.add(test.write("b.v", "module b(input [`W-1:0] x); a u(); endmodule\n"));
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()), (QStringList{"b/x[1:0]", "b/u/x[2:0]"}));
}

void tst_Extraction::namesOfOtherStandardsAreTaken()
{
    // One file needs the old keywords, the other the new ones; one says so and one doesn't.
    for (const char *standard : {"", "1364-2001"}) {
        ExtractionTest test;
        test.add(
            test.write("old.v", "module old(input do, output bit); assign bit = do; endmodule"));
        test.add(test.write("new.v", "module top(input logic x); old u(x, ); endmodule"));
        test.info.insert(DesignInfo::VerilogStandard, standard);
        QCOMPARE(test.modules().errors(), QStringList());
        QVERIFY(netLines(*test.netlist()).contains("top/u/do"));
    }
}

void tst_Extraction::escapedTopNameIsTaken()
{
    ExtractionTest test;
    test.add(test.write("a.v",
                        "module \\a;b (input x); leaf__DOT__x u(x); endmodule\n"
                        "module leaf__DOT__x(input y); wire a__DOT__b; endmodule\n"
                        "module top; \\a;b  u(1); endmodule\n"));
    const ModulesAnswer answer = test.modules("a;b");
    QCOMPARE(answer.topModules, QStringList{"a;b"});
    QCOMPARE(answer.errors(), QStringList());
    const auto netlist = test.netlist();
    QCOMPARE(levelLines(*netlist), (QStringList{"a;b a;b", "a;b/u leaf__DOT__x"}));
    QCOMPARE(netLines(*netlist), (QStringList{"a;b/x", "a;b/u/y", "a;b/u/a__DOT__b"}));
}

void tst_Extraction::jtagIsNoticed()
{
    ExtractionTest test;
    test.add(test.write("a.v", "module top(input x); OD_JTAG j(.tck(x)); endmodule"));
    QCOMPARE(test.modules().errors(), QStringList());
    QVERIFY(test.netlist()->usesJtag);
}

/// In included files as in sources, however deep, and from wherever they are included.
void tst_Extraction::excludedRegionsOfIncludesStayOut()
{
    ExtractionTest test;
    const QByteArray region = "// synthesis translate_off\nwire only_simulated;\n"
                              "nonsense ( here\n// synthesis translate_on\n";
    test.write("src/beside.vh", "wire beside;\n" + region + "`include \"../inc/sub/deep.vh\"\n");
    test.write("inc/sub/deep.vh", "`include \"deeper.vh\"\n" + region + "wire deep;\n");
    test.write("inc/sub/deeper.vh", "wire deeper;\n");
    test.write("inc/by_path.vh", region + "wire by_path;\n`include \"sub/deep2.vh\"\n");
    test.write("inc/sub/deep2.vh", "wire deep2;\n");
    test.write("inc/itself.vh",
               "`ifndef ITSELF\n`define ITSELF\n`include \"itself.vh\"\n" + region
                   + "wire itself;\n`endif\n");
    test.info.insert(DesignInfo::IncludePath, QStringList{test.path("inc")});
    test.add(test.write("src/a.v",
                        "module top;\n`include \"beside.vh\"\n`include <by_path.vh>\n"
                        "`include \"itself.vh\"\nendmodule\n"));
    QCOMPARE(test.modules().messages, QStringList());
    QCOMPARE(netLines(*test.netlist()),
             (QStringList{"top/beside", "top/deeper", "top/deep", "top/by_path", "top/deep2",
                          "top/itself"}));

    // The cache knows what was read.
    test.write("inc/sub/deep.vh",
               "// synthesis translate_off\nx\n// synthesis translate_on\n"
               "wire changed;\n");
    QCOMPARE(test.modules().messages, QStringList());
    QCOMPARE(netLines(*test.netlist()).mid(0, 2), (QStringList{"top/beside", "top/changed"}));
}

MOLK_TEST_MAIN(tst_Extraction)
#include "tst_extraction.moc"
