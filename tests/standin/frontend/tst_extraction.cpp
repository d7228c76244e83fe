// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testwidgetsmain.h"

#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <functional>

namespace DesignInfo = Standin::DesignInfo;

static const char oneTop[] = "module leaf(input a, output b); assign b = a; endmodule\n"
                             "module top(input x, output [3:0] y);\n"
                             "leaf u(.a(x), .b(y[0])); endmodule\n";

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
    void errorsNameThePlace_data();
    void errorsNameThePlace();
    void vhdlErrorsNameThePlace();
    void survivableConstructsAreNoErrors_data();
    void survivableConstructsAreNoErrors();
    void definesAndParametersCount();
    void fileDefinesHoldForOneFile();
    void namesOfOtherStandardsAreTaken();
    void unreadableFilesAreErrors();
    void missingToolIsAnError();
    void crashingToolIsAnError();
    void silentToolIsAnError();
    void slowToolIsStopped();
    void escapedTopNameIsTaken();
    void oddTopNameIsRefused();
    void errorsLeaveAnEmptyNetlist();
    void nothingReadLeavesAnEmptyNetlist();
    void jtagIsNoticed();
    void secondReadingRunsNoTool();
    void anotherProcessRunsNoTool();
    void changedSourceIsReadAgain();
    void touchedIncludeIsReadAgain();
    void appearedIncludeIsReadAgain();
    void excludedRegionsOfIncludesStayOut();
    void includedFilesKeepTheirPlaces();
    void errorsAreNotKept();
    void damagedCacheIsIgnored();
    void cancelEndsTheReading();
    void cancelOfTheSecondCallLeavesAnEmptyNetlist();
    void destroyedDuringTheCall();
    void quickReadingShowsNoDialog();
    void dialogTellsWhatIsDone();
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
    QVERIFY2(errors.first().startsWith("ERROR: " + file + ": "), qPrintable(errors.first()));
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

void tst_Extraction::errorsNameThePlace_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("place");

    QTest::newRow("syntax") << QByteArray("module top;\n  wire a = ;\nendmodule\n") << "2:12: ";
    QTest::newRow("undeclared") << QByteArray("module top;\n\n  assign a.b = 1;\nendmodule\n")
                                << "3:10: ";
    QTest::newRow("include") << QByteArray("\n  `include \"nosuch.vh\"\nmodule top; endmodule\n")
                             << "2:";
    QTest::newRow("macro") << QByteArray("module top;\nassign a = `NOSUCH;\nendmodule\n") << "2:";
    QTest::newRow("behind-excluded")
        << QByteArray("module top;\n// synthesis translate_off\nbad bad bad;\n"
                      "// synthesis translate_on\n  wire a = ;\nendmodule\n")
        << "5:12: ";
    QTest::newRow("two-tops") << QByteArray("module a; wire x = ; endmodule\nmodule b; endmodule")
                              << "1:";
    QTest::newRow("unended") << QByteArray("module top;\nwire a;\n") << "";
    QTest::newRow("unended-condition") << QByteArray("module top;\n`ifdef X\nendmodule\n") << "";
}

void tst_Extraction::errorsNameThePlace()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, place);
    ExtractionTest test;
    const QString file = test.write("with blank/a.v", text);
    test.add(file);
    const QStringList errors = test.modules().errors();
    QVERIFY(!errors.isEmpty());
    QVERIFY2(errors.first().startsWith("ERROR: " + file + ':' + place), qPrintable(errors.first()));
}

void tst_Extraction::vhdlErrorsNameThePlace()
{
    ExtractionTest test;
    const QString file = test.write("a.vhd",
                                    "entity a is end;\narchitecture r of a is\n"
                                    "signal s : nosuch;\nbegin end;\n");
    test.add(file);
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.errors().mid(0, 1),
             QStringList("ERROR: " + file + ":3:12: no declaration for \"nosuch\""));
    QCOMPARE(answer.topModules, QStringList{"a"});
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

void tst_Extraction::unreadableFilesAreErrors()
{
    ExtractionTest test;
    test.add(test.path("nosuch.v"));
    test.add(test.path("."));
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.messages,
             (QStringList{"ERROR: " + test.path("nosuch.v") + ": No such file or directory",
                          "ERROR: " + test.path(".") + ": not a regular file"}));
    QCOMPARE(test.extraction->toolRuns(), 0);
}

void tst_Extraction::missingToolIsAnError()
{
    Standin::ExtractionOptions options;
    options.verilator = "/nonexistent/verilator_bin";
    options.ghdl = "/nonexistent/ghdl";
    ExtractionTest test(options);
    test.add(test.write("a.v", oneTop));
    QCOMPARE(test.modules().errors(),
             QStringList("ERROR: /nonexistent/verilator_bin can't be started: is it installed?"));
}

void tst_Extraction::crashingToolIsAnError()
{
    ExtractionTest writer;
    Standin::ExtractionOptions options;
    options.verilator = writer.write("tool", "#!/bin/sh\nkill -SEGV $$\n");
    QFile::setPermissions(options.verilator, QFile::ReadOwner | QFile::ExeOwner);
    ExtractionTest test(options);
    test.add(test.write("a.v", oneTop));
    QCOMPARE(test.modules().errors(), QStringList("ERROR: tool crashed (signal 11)"));
}

void tst_Extraction::silentToolIsAnError()
{
    // It does what the first stage does and nothing in the second.
    ExtractionTest writer;
    Standin::ExtractionOptions options;
    options.verilator =
        writer.write("tool", "#!/bin/sh\ncase \"$1\" in -E) cat s0001.v;; *) ;; esac\n");
    QFile::setPermissions(options.verilator, QFile::ReadOwner | QFile::ExeOwner);
    ExtractionTest test(options);
    test.add(test.write("a.v", oneTop));
    const QStringList errors = test.modules().errors();
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith("ERROR: the elaborated design can't be read: "),
             qPrintable(errors.first()));
}

void tst_Extraction::slowToolIsStopped()
{
    ExtractionTest writer;
    Standin::ExtractionOptions options;
    options.verilator = writer.write("tool", "#!/bin/sh\nsleep 60\n");
    options.timeoutSeconds = 1;
    QFile::setPermissions(options.verilator, QFile::ReadOwner | QFile::ExeOwner);
    ExtractionTest test(options);
    test.add(test.write("a.v", oneTop));
    QCOMPARE(test.modules().errors(), QStringList("ERROR: tool was stopped after 1 s"));
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

/// Names that the tool could take for an option or expand.
void tst_Extraction::oddTopNameIsRefused()
{
    const QStringList names{"-x", "a$b;", "a\"b", "a`b", "+x", "@f"};
    for (const QString &name : names) {
        ExtractionTest test;
        test.add(test.write("a.v", "module \\" + name.toLatin1() + " (input x); endmodule\n"));
        const ModulesAnswer answer = test.modules();
        QCOMPARE(answer.topModules, QStringList(name));
        QCOMPARE(
            answer.errors(),
            QStringList(
                QString("ERROR: the top module \"%1\" can't be elaborated by its name").arg(name)));
    }
}

void tst_Extraction::errorsLeaveAnEmptyNetlist()
{
    ExtractionTest test;
    test.add(test.write("a.v", "module top; wire = ; endmodule"));
    QVERIFY(!test.modules().errors().isEmpty());
    QStringList log;
    const auto netlist = test.netlist(&log);
    QVERIFY(!log.filter("ERROR").isEmpty());
    QCOMPARE(netlist->top->name(), QString("top"));
    QVERIFY(netlist->top->children().isEmpty());
    QVERIFY(netLines(*netlist).isEmpty());
}

void tst_Extraction::nothingReadLeavesAnEmptyNetlist()
{
    ExtractionTest test;
    const auto netlist = test.netlist();
    QVERIFY(netlist);
    QCOMPARE(netlist->top->name(), QString());
}

void tst_Extraction::jtagIsNoticed()
{
    ExtractionTest test;
    test.add(test.write("a.v", "module top(input x); OD_JTAG j(.tck(x)); endmodule"));
    QCOMPARE(test.modules().errors(), QStringList());
    QVERIFY(test.netlist()->usesJtag);
}

void tst_Extraction::secondReadingRunsNoTool()
{
    ExtractionTest test;
    test.add(test.write("a.v", oneTop));
    const ModulesAnswer first = test.modules();
    const QStringList nets = netLines(*test.netlist());
    QCOMPARE(test.extraction->toolRuns(), 2);
    const ModulesAnswer second = test.modules();
    QCOMPARE(second.topModules, first.topModules);
    QCOMPARE(second.modules, first.modules);
    QCOMPARE(netLines(*test.netlist()), nets);
    QCOMPARE(netLines(*test.netlist()), nets);
    QCOMPARE(test.extraction->toolRuns(), 2);
}

void tst_Extraction::anotherProcessRunsNoTool()
{
    ExtractionTest test;
    test.addData({"mixed/pulse.vhd", "mixed/toggler.v", "mixed/board.v"});
    const ModulesAnswer first = test.modules();
    const QStringList levels = levelLines(*test.netlist());
    test.restart();
    const ModulesAnswer second = test.modules();
    QCOMPARE(second.topModules, first.topModules);
    QCOMPARE(second.modules, first.modules);
    QCOMPARE(second.messages, first.messages);
    QCOMPARE(levelLines(*test.netlist()), levels);
    QCOMPARE(test.extraction->toolRuns(), 0);
}

void tst_Extraction::changedSourceIsReadAgain()
{
    ExtractionTest test;
    test.add(test.write("a.v", "module top(input x); endmodule"));
    test.modules();
    test.write("a.v", "module top(input y); endmodule");
    test.modules();
    QCOMPARE(test.extraction->toolRuns(), 4);
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/y"});
    // What it was before is still known.
    test.write("a.v", "module top(input x); endmodule");
    test.modules();
    QCOMPARE(test.extraction->toolRuns(), 4);
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x"});
}

void tst_Extraction::touchedIncludeIsReadAgain()
{
    ExtractionTest test;
    test.write("inc/deep.vh", "`define W 4\n");
    test.write("inc/w.vh", "`include \"deep.vh\"\n");
    test.info.insert(DesignInfo::IncludePath, QStringList{test.path("inc")});
    test.add(test.write("a.v", "`include \"w.vh\"\nmodule top(input [`W-1:0] x); endmodule"));
    QCOMPARE(test.modules().errors(), QStringList());
    test.modules();
    QCOMPARE(test.extraction->toolRuns(), 2);
    test.write("inc/deep.vh", "`define W 5\n");
    test.modules();
    QCOMPARE(test.extraction->toolRuns(), 4);
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x[4:0]"});
    test.write("inc/deep.vh", "`define W 6\n");
    test.restart();
    test.modules();
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x[5:0]"});
}

void tst_Extraction::appearedIncludeIsReadAgain()
{
    ExtractionTest test;
    QDir(test.directory.path()).mkdir("first");
    test.write("second/w.vh", "`define W 4\n");
    test.info.insert(DesignInfo::IncludePath, QStringList{test.path("first"), test.path("second")});
    test.add(test.write("a.v", "`include \"w.vh\"\nmodule top(input [`W-1:0] x); endmodule"));
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x[3:0]"});
    test.write("first/w.vh", "`define W 2\n");
    test.modules();
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x[1:0]"});
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

void tst_Extraction::includedFilesKeepTheirPlaces()
{
    ExtractionTest test;
    const QString file = test.write("inc/part.vh",
                                    "// synopsys translate_off\n// synopsys translate_on\n"
                                    "  wire = 1;\n");
    test.info.insert(DesignInfo::IncludePath, QStringList{test.path("inc")});
    test.add(test.write("a.v", "module top(input x);\n`include \"part.vh\"\nendmodule\n"));
    const QStringList errors = test.modules().errors();
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith("ERROR: " + file + ":3:8: "), qPrintable(errors.first()));
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x"});
}

void tst_Extraction::errorsAreNotKept()
{
    ExtractionTest test;
    test.add(test.write("a.v", "`include \"w.vh\"\nmodule top(input [`W-1:0] x); endmodule"));
    QVERIFY(!test.modules().errors().isEmpty());
    test.write("w.vh", "`define W 2\n");
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x[1:0]"});
}

void tst_Extraction::damagedCacheIsIgnored()
{
    ExtractionTest test;
    test.add(test.write("a.v", oneTop));
    test.modules();
    const QDir cache(test.path("cache"));
    const QStringList entries = cache.entryList(QDir::Files);
    QCOMPARE(entries.size(), 1);
    QVERIFY(!test.write("cache/" + entries.first(), "damaged").isEmpty());
    test.restart();
    QCOMPARE(test.modules().topModules, QStringList{"top"});
    QCOMPARE(test.extraction->toolRuns(), 2);
}

/// Calls \a act as soon as the extraction's dialog is shown.
class OnDialog : public QObject
{
public:
    explicit OnDialog(std::function<void(QProgressDialog *)> action)
        : act(std::move(action))
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *dialog = qobject_cast<QProgressDialog *>(watched);
        if (dialog && event->type() == QEvent::Show) {
            ++shown;
            const auto call = act;
            QTimer::singleShot(0, dialog, [dialog, call] { call(dialog); });
        }
        return false;
    }

    int shown = 0;

private:
    std::function<void(QProgressDialog *)> act;
};

static Standin::ExtractionOptions withSlowTool(ExtractionTest *writer)
{
    Standin::ExtractionOptions options;
    options.verilator = writer->write("tool", "#!/bin/sh\nsleep 60\n");
    QFile::setPermissions(options.verilator, QFile::ReadOwner | QFile::ExeOwner);
    return options;
}

static void pressCancel(QProgressDialog *dialog)
{
    auto *button = dialog->findChild<QPushButton *>();
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);
}

void tst_Extraction::cancelEndsTheReading()
{
    ExtractionTest writer;
    ExtractionTest test(withSlowTool(&writer));
    test.add(test.write("a.v", oneTop));
    OnDialog onDialog(pressCancel);
    QCOMPARE(test.modules("top").messages, QStringList("ERROR: cancelled"));
    QCOMPARE(onDialog.shown, 1);
    QCOMPARE(test.netlist()->top->name(), QString("top"));
}

void tst_Extraction::cancelOfTheSecondCallLeavesAnEmptyNetlist()
{
    ExtractionTest test;
    test.add(test.write("a.v", oneTop));
    QCOMPARE(test.modules().errors(), QStringList());
    {
        OnDialog onDialog(pressCancel);
        QStringList log;
        const auto netlist = test.netlist(&log);
        QCOMPARE(onDialog.shown, 1);
        QCOMPARE(log, QStringList("ERROR: cancelled"));
        QCOMPARE(netlist->top->name(), QString("top"));
        QVERIFY(netlist->top->children().isEmpty());
    }
    QCOMPARE(test.netlist()->top->children().size(), 1);
}

void tst_Extraction::destroyedDuringTheCall()
{
    ExtractionTest writer;
    ExtractionTest test(withSlowTool(&writer));
    test.add(test.write("a.v", oneTop));
    QTimer::singleShot(50, this, [&] { test.extraction.reset(); });
    QCOMPARE(test.modules().messages, QStringList("ERROR: cancelled"));
}

void tst_Extraction::quickReadingShowsNoDialog()
{
    ExtractionTest test;
    test.add(test.write("a.v", oneTop));
    test.modules();
    OnDialog onDialog([](QProgressDialog *) {});
    test.modules();
    QCOMPARE(onDialog.shown, 0);
}

void tst_Extraction::dialogTellsWhatIsDone()
{
    ExtractionTest writer;
    ExtractionTest test(withSlowTool(&writer));
    test.add(test.write("a.v", oneTop));
    test.add(test.write("b.v", "\n"));
    QString title;
    QString text;
    OnDialog onDialog([&](QProgressDialog *dialog) {
        title = dialog->windowTitle();
        text = dialog->labelText();
        QVERIFY(dialog->isModal());
        pressCancel(dialog);
    });
    test.modules();
    QCOMPARE(title, QString("Reading the Design"));
    QVERIFY2(text.startsWith("Preprocessing the sources...\n2 files, "), qPrintable(text));
}

MOLK_TEST_MAIN(tst_Extraction)
#include "tst_extraction.moc"
