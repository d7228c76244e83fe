// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogscanner.h"
#include "testmain.h"

using Standin::DesignGraph;

class tst_VerilogScanner : public QObject
{
    Q_OBJECT

private slots:
    void instancesAreFound_data();
    void instancesAreFound();
    void notEverythingIsAnInstance_data();
    void notEverythingIsAnInstance();
    void topsAndModules_data();
    void topsAndModules();
    void vhdlIsScanned_data();
    void vhdlIsScanned();
    void stubsHaveWhatInstancesUse_data();
    void stubsHaveWhatInstancesUse();
    void backslashAloneNamesNothing();
    void ownParametersAreKnown();
    void longTextsAreScanned_data();
    void longTextsAreScanned();
};

/// One line a module: "name: type instance, type instance".
static QStringList lines(const DesignGraph &graph)
{
    QStringList result;
    for (const Standin::ScannedModule &module : graph.all()) {
        QStringList uses;
        for (const Standin::InstanceUse &use : module.instances)
            uses.append(QString::fromUtf8(use.type + ' ' + use.name).trimmed());
        result.append(QString::fromUtf8(module.name) + ": " + uses.join(", "));
    }
    return result;
}

void tst_VerilogScanner::instancesAreFound_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("found");

    QTest::newRow("named") << QByteArray("leaf u(.a(x), .b());") << "leaf u";
    QTest::newRow("positional") << QByteArray("leaf u(x, y);") << "leaf u";
    QTest::newRow("no-ports") << QByteArray("leaf u();") << "leaf u";
    QTest::newRow("parameters") << QByteArray("leaf #(.W(3), .N(\"a)\")) u(x);") << "leaf u";
    QTest::newRow("one-parameter") << QByteArray("leaf #3 u(x);") << "leaf u";
    QTest::newRow("list") << QByteArray("leaf u(x), v(y), w(z);") << "leaf u, leaf v, leaf w";
    QTest::newRow("array") << QByteArray("leaf u[3:0](x);") << "leaf u";
    QTest::newRow("two-dimensions") << QByteArray("leaf u[3:0][1:0](x);") << "leaf u";
    QTest::newRow("wildcard") << QByteArray("leaf u(.*);") << "leaf u";
    QTest::newRow("escaped") << QByteArray("\\le.af  \\u[1] (x);") << "le.af u[1]";
    QTest::newRow("escaped-keyword") << QByteArray("\\module  u (x);") << "module u";
    QTest::newRow("attribute") << QByteArray("(* keep = \"a;b\" *) leaf u(x);") << "leaf u";
    QTest::newRow("generate") << QByteArray(
        "generate for (i=0;i<3;i=i+1) begin : g leaf u(x); end endgenerate")
                              << "leaf u";
    QTest::newRow("if-else") << QByteArray("if (A) leaf u(x); else other v(y);")
                             << "leaf u, other v";
    QTest::newRow("case") << QByteArray("case (A) 0: leaf u(x); default: other v(y); endcase")
                          << "leaf u, other v";
    QTest::newRow("escaped-nothing")
        << QByteArray("\\ u (); u #(.A(1)) \\ (); leaf v(x);") << "leaf v";
    QTest::newRow("concatenation") << QByteArray("leaf u({a, b}, c[1:0], f(x, y));") << "leaf u";
    QTest::newRow("dollar") << QByteArray("lpm$x u$1(x);") << "lpm$x u$1";
    QTest::newRow("behind-function")
        << QByteArray("function [3:0] f(input a, input b); f = a; endfunction leaf u(x);")
        << "leaf u";
    QTest::newRow("behind-typedef")
        << QByteArray("typedef struct packed { logic a; foo_t b; } t; leaf u(x);") << "leaf u";
    QTest::newRow("event-list") << QByteArray("always @(*) x = y; leaf u(x);") << "leaf u";
    QTest::newRow("spaced-event-list") << QByteArray("always @( * ) x = y; leaf u(x);") << "leaf u";
    QTest::newRow("directive") << QByteArray("`celldefine leaf u(x);\n`timescale 1ns/1ps\n")
                               << "leaf u";
}

void tst_VerilogScanner::instancesAreFound()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, found);
    QCOMPARE(lines(Standin::scanVerilog("module top(input x);\n" + body + "\nendmodule\n")),
             QStringList("top: " + found));
}

void tst_VerilogScanner::notEverythingIsAnInstance_data()
{
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("task-call") << QByteArray("initial foo(x, y);");
    QTest::newRow("gate") << QByteArray("and a1(x, y, z); nand (x, y);");
    QTest::newRow("declaration") << QByteArray("foo_t x; foo_t y = z; pkg::foo_t w;");
    QTest::newRow("function") << QByteArray("function foo_t bar(input x); endfunction");
    QTest::newRow("task") << QByteArray("task automatic bar(input x); endtask");
    QTest::newRow("prototype") << QByteArray("import \"DPI-C\" function foo_t bar(input int x);");
    QTest::newRow("extern") << QByteArray("extern module foo (input x);");
    QTest::newRow("method") << QByteArray("initial a.b c(x);");
    QTest::newRow("comment") << QByteArray("// leaf u(x);\n/* leaf u(x); */");
    QTest::newRow("string") << QByteArray("initial $display(\"leaf u(x);\");");
    QTest::newRow("modport") << QByteArray("modport m (input a), s (output a);");
    QTest::newRow("assertion") << QByteArray("assert property (a b (c));");
    QTest::newRow("unfinished") << QByteArray("leaf u(x)");
    QTest::newRow("unclosed") << QByteArray("leaf u(x;");
}

void tst_VerilogScanner::notEverythingIsAnInstance()
{
    QFETCH(QByteArray, body);
    QCOMPARE(lines(Standin::scanVerilog("module top;\n" + body + "\nendmodule\n")),
             QStringList("top: "));
}

void tst_VerilogScanner::topsAndModules_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QStringList>("topModules");
    QTest::addColumn<QStringList>("modules");
    QTest::addColumn<QList<QByteArray>>("unknown");

    const QByteArray three = "module c; endmodule module b; c u(); X x(); endmodule\n"
                             "module a; b u(); endmodule\n";
    QTest::newRow("open") << three << "" << QStringList{"a"} << QStringList{"c", "b", "a"}
                          << QList<QByteArray>{"X"};
    QTest::newRow("set") << three << "b" << QStringList{"b"} << QStringList{"c", "b"}
                         << QList<QByteArray>{"X"};
    QTest::newRow("unknown-top") << three << "nosuch" << QStringList() << QStringList()
                                 << QList<QByteArray>{"X"};
    QTest::newRow("other-case") << three << "A" << QStringList() << QStringList()
                                << QList<QByteArray>{"X"};
    QTest::newRow("several") << QByteArray("module z; endmodule module y; endmodule") << ""
                             << QStringList{"z", "y"} << QStringList{"z", "y"}
                             << QList<QByteArray>();
    QTest::newRow("recursive") << QByteArray("module r; r u(); endmodule") << "" << QStringList{"r"}
                               << QStringList{"r"} << QList<QByteArray>();
    QTest::newRow("circle") << QByteArray("module p; q u(); endmodule module q; p u(); endmodule")
                            << "" << QStringList() << QStringList{"p", "q"} << QList<QByteArray>();
    QTest::newRow("interfaces-are-none")
        << QByteArray("interface i; endinterface package k; endpackage\n"
                      "primitive u(o, i); endprimitive\n"
                      "module m(i.s b); i n(); virtual interface i v; endmodule\n")
        << "" << QStringList{"m"} << QStringList{"m"} << QList<QByteArray>();
    QTest::newRow("interface-as-top")
        << QByteArray("interface i; endinterface module m; endmodule") << "i" << QStringList()
        << QStringList() << QList<QByteArray>();
    QTest::newRow("kinds") << QByteArray(
        "macromodule a; endmodule program b; endprogram\n"
        "module automatic c import p::*; #(parameter X = 1) (); endmodule : c\n")
                           << "" << QStringList{"a", "b", "c"} << QStringList{"a", "b", "c"}
                           << QList<QByteArray>();
    QTest::newRow("bind") << QByteArray("module chk; endmodule module m; endmodule\n"
                                        "bind m chk u(.a(b));")
                          << "" << QStringList{"m"} << QStringList{"chk", "m"}
                          << QList<QByteArray>();
    QTest::newRow("twice") << QByteArray("module m; endmodule module m; l u(); endmodule\n"
                                         "module l; endmodule")
                           << "" << QStringList{"m"} << QStringList{"m", "l"}
                           << QList<QByteArray>();
    QTest::newRow("never-ended") << QByteArray("module m; l u(); module l; endmodule") << ""
                                 << QStringList{"m"} << QStringList{"l", "m"}
                                 << QList<QByteArray>();
    QTest::newRow("empty") << QByteArray() << "" << QStringList() << QStringList()
                           << QList<QByteArray>();
    QTest::newRow("no-module") << QByteArray("package p; endpackage") << "" << QStringList()
                               << QStringList() << QList<QByteArray>();
}

void tst_VerilogScanner::topsAndModules()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, top);
    const DesignGraph graph = Standin::scanVerilog(text);
    const Standin::ModuleLists lists = Standin::moduleLists(graph, top);
    QTEST(lists.topModules, "topModules");
    QTEST(lists.modules, "modules");
    QTEST(graph.unknownTypes(), "unknown");
}

void tst_VerilogScanner::vhdlIsScanned_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("found");

    QTest::newRow("entity") << QByteArray("entity Top is end entity Top;") << QStringList{"Top: "};
    QTest::newRow("component-instance")
        << QByteArray("entity t is end; architecture a of t is\n"
                      "component leaf port (a : in bit); end component;\n"
                      "signal s : bit; begin u1 : leaf port map (a => s); end a;")
        << QStringList{"t: leaf u1"};
    QTest::newRow("explicit-component")
        << QByteArray("entity t is end; architecture a of t is begin u : component leaf; end;")
        << QStringList{"t: leaf u"};
    QTest::newRow("entity-instance")
        << QByteArray("ENTITY t IS END; ARCHITECTURE a OF T IS BEGIN\n"
                      "u : ENTITY work.Leaf(rtl) GENERIC MAP (1) PORT MAP (x); END;")
        << QStringList{"t: Leaf u"};
    QTest::newRow("generate") << QByteArray(
        "entity t is end; architecture a of t is begin\n"
        "g : for i in 0 to 3 generate begin u : entity lib.leaf port map (x);\n"
        "end generate; end;") << QStringList{"t: leaf u"};
    QTest::newRow("nothing-else") << QByteArray(
        "entity t is port (a : in bit; b : out bit_vector(1 downto 0)); end;\n"
        "architecture a of t is signal c, d : bit; begin\n"
        "p : process begin wait; end process; b : block begin end block;\n"
        "-- u : leaf port map (x);\nx <= \"u : leaf port map\"; end;")
                                  << QStringList{"t: "};
    QTest::newRow("configuration")
        << QByteArray("entity t is end; architecture a of t is for all : x use entity work.y(r);\n"
                      "begin u : x port map (c); end;")
        << QStringList{"t: y, x u"};
    QTest::newRow("block-comment")
        << QByteArray("/* entity x is */ entity y is end;") << QStringList{"y: "};
    QTest::newRow("character") << QByteArray("entity y is end; architecture a of y is begin\n"
                                             "c <= '\"'; u : leaf port map (x); end;")
                               << QStringList{"y: leaf u"};
}

void tst_VerilogScanner::vhdlIsScanned()
{
    QFETCH(QByteArray, text);
    DesignGraph graph;
    Standin::scanVhdl(text, &graph);
    QTEST(lines(graph), "found");
}

void tst_VerilogScanner::stubsHaveWhatInstancesUse_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("stubs");

    QTest::newRow("named") << QByteArray("IBUF b(.O(x), .I(y));")
                           << QByteArray("module IBUF (input wire I, input wire O); endmodule\n");
    QTest::newRow("positional") << QByteArray("IBUF b(x, , y);")
                                << QByteArray(
                                       "module IBUF (input wire molk_port0, input wire molk_port1, "
                                       "input wire molk_port2); endmodule\n");
    QTest::newRow("trailing-comma")
        << QByteArray("IBUF b(x, );")
        << QByteArray("module IBUF (input wire molk_port0, input wire molk_port1); endmodule\n");
    QTest::newRow("none") << QByteArray("GSR g();") << QByteArray("module GSR (); endmodule\n");
    QTest::newRow("wildcard") << QByteArray("GSR g(.*);")
                              << QByteArray("module GSR (); endmodule\n");
    QTest::newRow("united")
        << QByteArray("B a(.x(p)); B #(.N(1)) c(.y(q));")
        << QByteArray("module B #(parameter N = 0) (input wire x, input wire y); endmodule\n");
    QTest::newRow("type-parameter")
        << QByteArray("typedef logic [3:0] w_t; B #(.T(logic [1:0]), .U(w_t), .V(5)) b();")
        << QByteArray("module B #(parameter type T = logic, parameter type U = logic, "
                      "parameter V = 0) (); endmodule\n");
    QTest::newRow("positional-parameter")
        << QByteArray("B #(3, int) b();")
        << QByteArray("module B #(parameter molk_parameter0 = 0, "
                      "parameter type molk_parameter1 = logic) (); endmodule\n");
    QTest::newRow("defparam")
        << QByteArray("B b[1:0](); defparam b[0].INIT = 3, b[1].X = 2;")
        << QByteArray("module B #(parameter INIT = 0, parameter X = 0) (); endmodule\n");
    QTest::newRow("escaped") << QByteArray("\\B+1  b(.\\p.q (x));")
                             << QByteArray("module \\B+1  (input wire \\p.q ); endmodule\n");
    QTest::newRow("known") << QByteArray("top t();") << QByteArray();
}

void tst_VerilogScanner::stubsHaveWhatInstancesUse()
{
    QFETCH(QByteArray, body);
    QTEST(Standin::stubModules(Standin::scanVerilog("module top;\n" + body + "\nendmodule\n")),
          "stubs");
}

void tst_VerilogScanner::backslashAloneNamesNothing()
{
    const DesignGraph graph =
        Standin::scanVerilog("module m; \\ u (); leaf #(\\ ) v (.a()); endmodule\n");
    QCOMPARE(graph.unknownTypes(), QList<QByteArray>{"leaf"});
    QVERIFY(!Standin::stubModules(graph).contains('\\'));
}

void tst_VerilogScanner::ownParametersAreKnown()
{
    const DesignGraph graph = Standin::scanVerilog(
        "module m #(parameter A = 1, B = f(2, 3), parameter [3:0] C = 4) (input x);\n"
        "parameter D = A == 1, E = 2; localparam F = 3; wire g = 1; endmodule\n");
    QCOMPARE(graph.all().first().parameters, (QVector<QByteArray>{"A", "B", "C", "D", "E"}));
    DesignGraph vhdl;
    Standin::scanVhdl("entity e is generic (A, B : natural := f(1); C : bit); end;", &vhdl);
    QCOMPARE(vhdl.all().first().parameters, (QVector<QByteArray>{"A", "B", "C"}));
}

void tst_VerilogScanner::longTextsAreScanned_data()
{
    QTest::addColumn<QByteArray>("piece");

    QTest::newRow("open-brackets") << QByteArray("a b (");
    QTest::newRow("open-ranges") << QByteArray("a b [");
    QTest::newRow("open-parameters") << QByteArray("a #(");
    QTest::newRow("open-attributes") << QByteArray("(* a ");
    QTest::newRow("open-comments") << QByteArray("/* a ");
    QTest::newRow("open-strings") << QByteArray("\" a ");
    QTest::newRow("modules") << QByteArray("module m ( ");
    QTest::newRow("many-modules") << QByteArray("module m; ");
    QTest::newRow("typedefs") << QByteArray("typedef ");
    QTest::newRow("parameters") << QByteArray("parameter a = ");
    QTest::newRow("functions") << QByteArray("function ");
    QTest::newRow("binds") << QByteArray("bind a b c (");
    QTest::newRow("properties") << QByteArray("property p ");
    QTest::newRow("lists") << QByteArray("a b (), ");
    QTest::newRow("directives") << QByteArray("`line ");
    QTest::newRow("defparams") << QByteArray("defparam a.b = ");
}

/// Texts that would take a reader that looks ahead again and again minutes. Such a reader runs into
/// the time limit of the whole program.
void tst_VerilogScanner::longTextsAreScanned()
{
    QFETCH(QByteArray, piece);
    const QByteArray text = "module top;\n" + piece.repeated(200000);
    QVERIFY(!Standin::scanVerilog(text).all().isEmpty());
}

MOLK_TEST_GUILESS_MAIN(tst_VerilogScanner)
#include "tst_verilogscanner.moc"
