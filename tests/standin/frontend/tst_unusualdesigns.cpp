// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testmain.h"

/// Designs with what is no hardware, stands in other files or nowhere, or is seldom written: they
/// are read without errors.
class tst_UnusualDesigns : public QObject
{
    Q_OBJECT

private slots:
    void readableConstructsAreNoErrors_data();
    void readableConstructsAreNoErrors();
    void codeWithoutHardwareIsNoError_data();
    void codeWithoutHardwareIsNoError();
    void filesWithAndWithoutTimeScalesGiveNoMessages();
    void blackBoxesAreNeverErrors_data();
    void blackBoxesAreNeverErrors();
    void packagesNeedNoOrder();
    void topWithInterfacePortsIsRead();
};

static void addBodies()
{
    QTest::addColumn<QByteArray>("body");
}

void tst_UnusualDesigns::readableConstructsAreNoErrors_data()
{
    addBodies();
    QTest::newRow("assigned-wire") << QByteArray("wire w; always @* w = a[0]; initial w = 1;");
    QTest::newRow("assigned-input") << QByteArray("assign a = 3; always @* clk = 1;");
    QTest::newRow("implicit-enumeration")
        << QByteArray("typedef enum logic [1:0] {A, B} e; e x; assign x = a[1:0];\n"
                      "struct packed {e y; logic z;} s; assign s = '{default: '1};");
    QTest::newRow("expression-on-output") << QByteArray("sub u(.o(1'b0));");
    QTest::newRow("strengths") << QByteArray(
        "assign (strong0, weak1) q = a[0]; wire (pull0, pull1) w = a[0];\n"
        "buf (supply0, highz1) (g, a[0]); trireg (small) #(0, 0, 50) t; wire h; pulldown (strong0) "
        "p(h);");
    QTest::newRow("nameless-primitives") << QByteArray(
        "mux2 (m, a[0], a[1], a[2]); mux2 #(1, 2) (n, a[0], a[1], a[2]), u(o, a[0], a[1], a[2]);");
    QTest::newRow("guarded-event") << QByteArray("always @(posedge clk iff a[0] or negedge a[1]);");
    QTest::newRow("configuration") << QByteArray("endmodule config c; design top; endconfig\n"
                                                 "module other;");
    QTest::newRow("covergroup") << QByteArray(
        "covergroup g @(posedge clk); coverpoint a { bins b = {[0:3]}; } endgroup g c = new();");
    QTest::newRow("assertions") << QByteArray(
        "default clocking c @(posedge clk); endclocking default disable iff (a[0]);\n"
        "sequence s; a[0] ##1 a[1]; endsequence property p; @(posedge clk) s |-> a[2];\n"
        "endproperty cover property (p); l: assert property (@(posedge clk)\n"
        "disable iff (a[0]) a[0] |-> ##[1:3] a[1] ) else $error(\"x\");\n"
        "assert property (@(posedge clk) s_eventually a[0]); assume property (a[0] |=> a[1]);");
    QTest::newRow("delays") << QByteArray(
        "wire w; reg r; assign #(1:2:3, 2) w = a[0]; always #5 r = ~r;\n"
        "initial begin #1.5ns; r <= #2 1; wait (a[0]); @(negedge clk); end");
    QTest::newRow("force") << QByteArray("reg r; initial begin force r = 1; #1 release r; end\n"
                                         "always @(a) if (a[0]) assign r = 0; else deassign r;");
    QTest::newRow("old-directives")
        << QByteArray("endmodule\n`uselib dir=/nowhere libext=.v\n`celldefine\n`delay_mode_path\n"
                      "`suppress_faults\n`default_decay_time 10\n`endcelldefine\n"
                      "`pragma foo bar\n`resetall\nmodule other;");
    QTest::newRow("protected") << QByteArray(
        "endmodule module sealed(input x);\n`protected\nAB \"CD /* 12#@! endmodule `if\n"
        "`endprotected\nendmodule module other;");
    QTest::newRow("protected-by-pragma")
        << QByteArray("endmodule module sealed(input x);\n`pragma protect begin_protected\n"
                      "`pragma protect version=1\n`pragma protect data_block\nq8dj38dj\"'`zz\n"
                      "`pragma protect end_protected\nendmodule module other;");
    QTest::newRow("many-generated")
        << QByteArray("genvar i; for (i = 0; i < 3000; i = i + 1) begin : g wire w; end");
    QTest::newRow("elaboration-tasks")
        << QByteArray("if (1) $error(\"must not\"); if (1) $fatal(1, \"stop\"); $info(\"x\");");
}

void tst_UnusualDesigns::readableConstructsAreNoErrors()
{
    QFETCH(QByteArray, body);
    ExtractionTest test;
    test.add(test.write("a.sv",
                        "primitive mux2(o, s, x, y); output o; input s, x, y;\n"
                        "table 0 1 ? : 1; 0 0 ? : 0; 1 ? 1 : 1; 1 ? 0 : 0; endtable endprimitive\n"
                        "module sub(output o); endmodule\n"
                        "module top(input clk, input [7:0] a, output q);\nwire keep;\n"
                            + body + "\nendmodule\n"));
    QCOMPARE(test.modules("top").errors().join('\n'), QString());
    QCOMPARE(missing(netLines(*test.netlist()), {"top/clk", "top/a[7:0]", "top/keep"}),
             QStringList());
}

void tst_UnusualDesigns::codeWithoutHardwareIsNoError_data()
{
    addBodies();
    QTest::newRow("class") << QByteArray(
        "class c; rand bit [3:0] r; constraint k { r inside {[0:3]}; soft r == 1; }\n"
        "covergroup g; coverpoint r; endgroup function new(); g = new; endfunction endclass");
    QTest::newRow("missing-base-class") << QByteArray(
        "class c extends nosuch_base; function new(string n); super.new(n); endfunction endclass");
    QTest::newRow("undefined-macro-in-class")
        << QByteArray("class c; `nosuch_utils(c) int x; endclass");
    QTest::newRow("program") << QByteArray(
        "program p; initial begin randsequence (m) m : x; x : { $finish; }; endsequence end "
        "endprogram");
    QTest::newRow("testbench") << QByteArray(
        "module tb; reg c; top dut(c); initial begin wait_order (a, b); expect (c); end endmodule");
    QTest::newRow("checker") << QByteArray(
        "checker k(input logic c); assert property (@(posedge c) c); endchecker");
}

void tst_UnusualDesigns::codeWithoutHardwareIsNoError()
{
    QFETCH(QByteArray, body);
    ExtractionTest test;
    test.add(test.write("top.sv", "module top(input x); wire w; endmodule\n"));
    test.add(test.write("bench.sv", body + '\n'));
    QCOMPARE(test.modules("top").errors().join('\n'), QString());
    QCOMPARE(netLines(*test.netlist()), (QStringList{"top/x", "top/w"}));
}

/// Time scales mean nothing for nets, and a message for each module would hide the others.
void tst_UnusualDesigns::filesWithAndWithoutTimeScalesGiveNoMessages()
{
    ExtractionTest test;
    test.add(test.write("one.v", "module one(input a); endmodule\n"));
    test.add(test.write("two.v", "`timescale 1ns/1ps\nmodule two(input a); endmodule\n"));
    test.add(test.write("top.sv",
                        "package p; endpackage\nmodule top(input x);\ntimeunit 10ps;\n"
                        "one u(x); two v(x); three w(x); endmodule\n"
                        "module three(input a); endmodule\n"));
    QCOMPARE(test.modules().messages, QStringList());
}

void tst_UnusualDesigns::blackBoxesAreNeverErrors_data()
{
    addBodies();
    QTest::newRow("register") << QByteArray("FDRE #(.INIT(1'b0)) f(.C(x), .D(w), .Q(v[0]));");
    QTest::newRow("array") << QByteArray("SB_IO #(.T(1)) io[3:0] (.PIN(v), .D(x));");
    QTest::newRow("defparam") << QByteArray("RAM r(.A(v)); defparam r.INIT = 0, r.W = \"x\";");
    QTest::newRow("by-position") << QByteArray("PLL p(x, , v[2:0]);");
    QTest::newRow("interface") << QByteArray("bus b(); BOX u(.b(b), .x(x));");
    QTest::newRow("pin-twice") << QByteArray("BOX u(.x(x), .x(w));");
    QTest::newRow("expressions") << QByteArray("BOX u(.x(~x), .y({v, 2'b0}), .z(), .t(1'bz));");
    QTest::newRow("types") << QByteArray("BOX #(.T(logic [3:0]), .N(5)) u(.x(x));");
}

void tst_UnusualDesigns::blackBoxesAreNeverErrors()
{
    QFETCH(QByteArray, body);
    ExtractionTest test;
    test.add(test.write("top.sv",
                        "interface bus; logic d; endinterface\nmodule top(input x);\nwire w;\n"
                        "wire [3:0] v;\n"
                            + body + "\nendmodule\n"));
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(missing(netLines(*test.netlist()), {"top/x", "top/w", "top/v[3:0]"}), QStringList());
}

void tst_UnusualDesigns::packagesNeedNoOrder()
{
    ExtractionTest test;
    const QString top = test.write("top.sv",
                                   "module top import p::*; (input p::t x);\n"
                                   "q::u [p::N-1:0] y;\nendmodule\n");
    test.add(top);
    test.add(
        test.write("p.sv", "package p; localparam N = q::M; typedef q::u t;\nendpackage : p\n"));
    test.add(
        test.write("q.sv", "  package q; localparam M = 2; typedef logic [2:0] u; endpackage\n"));
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()), (QStringList{"top/x[2:0]", "top/y[5:0]"}));
}

void tst_UnusualDesigns::topWithInterfacePortsIsRead()
{
    ExtractionTest test;
    const QString file =
        test.write("top.sv",
                   "interface bus #(parameter W = 4); logic [W-1:0] d; modport s(input d); modport "
                   "m(output d);\n"
                   "endinterface\nmodule leaf(bus.s b); wire w; endmodule\n"
                   "module top #(parameter N = 2) (input x, bus.s first,\n"
                   "  bus.m many [N-1:0], output y, bus last);\n"
                   "assign y = first.d[0]; assign many[1].d = 3; leaf u(.b(last)); endmodule\n");
    test.add(file);
    const ModulesAnswer answer = test.modules("top");
    const QString line = "WARNING: " + file
        + ":%1: the interface port \"%2\" of the top module is taken for an interface in it";
    QCOMPARE(answer.messages,
             (QStringList{line.arg("4", "first"), line.arg("5", "many"), line.arg("5", "last")}));
    const auto netlist = test.netlist();
    QCOMPARE(levelLines(*netlist),
             (QStringList{"top top", "top/first bus", "top/many[1] bus", "top/many[0] bus",
                          "top/last bus", "top/u leaf"}));
    QCOMPARE(missing(netLines(*netlist), {"top/x", "top/y", "top/many[1]/d[3:0]", "top/u/w"}),
             QStringList());
}

MOLK_TEST_GUILESS_MAIN(tst_UnusualDesigns)
#include "tst_unusualdesigns.moc"
