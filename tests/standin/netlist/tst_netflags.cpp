// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlistlines.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"
#include "testmain.h"

#include <memory>

// The rules of docs/net-flags.md, each with cases in which it holds and in which it doesn't.
class TestNetFlags : public QObject
{
    Q_OBJECT

private slots:
    void flagsFollowTheRules_data();
    void flagsFollowTheRules();
    void manyReferencesToAWideNetCostLittle();
};

// Each row: source of a design, the name of a net or bus, and its line without the name.
void TestNetFlags::flagsFollowTheRules_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("net");
    QTest::addColumn<QString>("flags");
    const auto row = [](const char *name, const QByteArray &ports, const QByteArray &body,
                        const QString &net, const QString &flags) {
        QTest::newRow(name) << "module top (input clk, rst, a, b, input [3:0] v" + ports + "); "
                + body + " endmodule"
                            << net << flags;
    };

    row("top-input", "", "", "top/a", "-out");
    row("top-input-bus", "", "", "top/v[3:0]", "-out");
    row("top-output", ", output x", "assign x = a;", "top/x", "");
    row("top-inout", ", inout x", "assign x = a;", "top/x", "-out");
    row("input-of-a-child", "", "m u (.i(a)); endmodule module m (input i); wire x = i;", "top/u/i",
        "");
    row("output-of-a-child", "",
        "m u (.i(a), .o()); endmodule module m (input i, output o); assign o = i;", "top/u/o", "");

    row("driven-by-assign", "", "wire x = a;", "top/x", "");
    row("driven-by-always", "", "reg x; always @(posedge clk) x <= a;", "top/x", "");
    row("driven-by-child", "",
        "wire x; m u (.o(x)); endmodule module m (output reg o); "
        "always @* o = top.a;",
        "top/x", "");
    row("driven-by-gate", "", "wire x; and (x, a, b);", "top/x", "");
    row("driven-by-primitive", "",
        "wire x; p u (x, a); endmodule primitive p (o, i); output o; "
        "input i; table 0 : 1; 1 : 0; endtable endprimitive module unused;",
        "top/x", "");
    row("driven-by-task", "", "reg x; task t(output o); o = a; endtask always @* t(x);", "top/x",
        "");
    row("read-by-task", "", "wire x; reg y; task t(input i); y = i; endtask always @* t(x);",
        "top/x", "-in");

    row("constant", "", "wire x = 1'b1;", "top/x", "-in -out");
    row("constant-bus", "", "wire [3:0] x; assign x = 4'ha;", "top/x[3:0]", "-in -out");
    row("constant-bits", "", "wire [3:0] x; assign x[3:2] = 2'b10; assign x[1:0] = v[1:0];",
        "top/x[3:0]", "-out 3300");
    row("constant-supply", "", "supply0 x;", "top/x", "-in -out");
    row("constant-parameter", "", "parameter P = 1; wire x; assign x = P;", "top/x", "-in -out");
    row("constant-initial-value", "", "reg [1:0] x = 2'd1;", "top/x[1:0]", "-in -out");
    row("initial-value-of-a-register", "", "reg x = 1'b1; always @(posedge clk) x <= a;", "top/x",
        "");
    row("initial-block", "", "reg x; initial x = 0;", "top/x", "-in -out");
    row("constant-output-of-a-child", "",
        "wire x; m u (.o(x)); endmodule module m (output o); "
        "assign o = 1'b0;",
        "top/x", "-in -out");
    row("constant-bits-of-a-child", "",
        "wire [1:0] x; m u (.o(x), .i(a)); endmodule "
        "module m (output [1:0] o, input i); assign o[1] = 1'b0; assign o[0] = i;",
        "top/x[1:0]", "-out 30");
    row("constant-in-a-process", "", "reg x; always @(posedge clk) x <= 1'b1;", "top/x", "");

    row("undriven", "", "wire x;", "top/x", "-in");
    row("undriven-bits", "", "wire [3:0] x; assign x[1] = a;", "top/x[3:0]", "1101");
    row("undriven-but-read", ", output y", "wire x; assign y = x;", "top/x", "-in");
    row("undriven-output-of-a-child", "", "wire x; m u (.o(x)); endmodule module m (output o);",
        "top/x", "-in");
    row("driven-somewhere", "", "reg [3:0] x; always @(posedge clk) x[v[1:0]] <= a;", "top/x[3:0]",
        "");
    row("driven-by-a-part", "", "wire [3:0] x; assign {x[3], x[1:0]} = {a, v[1:0]};", "top/x[3:0]",
        "0100");
    row("on-a-black-box", "", "wire x; BOX u (.p(x));", "top/x", "");

    row("clock", "", "wire x = a; reg r; always @(posedge x) r <= b;", "top/x", "-out");
    row("falling-clock", "", "wire x = a; reg r; always @(negedge x) r <= b;", "top/x", "-out");
    row("clock-bit", "", "wire [1:0] x = v[1:0]; reg r; always @(posedge x[1]) r <= b;",
        "top/x[1:0]", "-out 20");
    row("clock-of-a-memory", "", "wire x = a; reg m [0:255]; always @(posedge x) m[v] <= b;",
        "top/x", "-out");
    row("level-in-a-sensitivity-list", "", "wire x = a; reg r; always @(x) r = x;", "top/x", "");
    row("asynchronous-reset", "",
        "wire x = a; reg r; always @(posedge clk or posedge x) "
        "if (x) r <= 0; else r <= b;",
        "top/x", "");
    row("asynchronous-reset-of-a-named-block", "",
        "wire x = a; reg r; if (1) begin : g always @(posedge clk or posedge x) begin : l "
        "begin : m if (x) r <= 0; else r <= b; end end end",
        "top/x", "");
    row("clock-hidden-in-a-named-block", "",
        "wire x = a; reg r; always @(posedge rst or posedge x) begin : l "
        "reg x; x = b; if (rst) r <= 0; else r <= x; end",
        "top/x", "-out");
    row("clock-beside-a-reset", "",
        "wire x = a; reg r; always @(posedge rst or posedge x) "
        "if (rst) r <= 0; else r <= b;",
        "top/x", "-out");
    row("two-edges-none-tested", "",
        "wire x = a; reg r; always @(posedge clk or posedge x) "
        "r <= b;",
        "top/x", "-out");
    row("clock-of-a-child", "",
        "wire x = a; m u (.c(x)); endmodule module m (input c); reg r; "
        "always @(posedge c) r <= 1;",
        "top/x", "-out");
    row("clock-bit-of-a-child", "",
        "wire [1:0] x = v[1:0]; m u (.c({x[0], b})); endmodule "
        "module m (input [1:0] c); reg r; always @(posedge c[1]) r <= 1;",
        "top/x[1:0]", "-out 02");
    row("clock-by-position", "",
        "wire x = a; m u (x); endmodule module m (input c); reg r; "
        "always @(posedge c) r <= 1;",
        "top/x", "-out");
    row("clock-of-an-array", "",
        "wire [1:0] x = v[1:0]; m u [1:0] (x); endmodule "
        "module m (input c); reg r; always @(posedge c) r <= 1;",
        "top/x[1:0]", "-out");
    row("clock-shared-by-an-array", "",
        "wire x = a; m u [1:0] (x); endmodule "
        "module m (input c); reg r; always @(posedge c) r <= 1;",
        "top/x", "-out");
    row("data-of-an-array", "",
        "wire [1:0] x = v[1:0]; m u [1:0] (clk, x); endmodule "
        "module m (input c, d); reg r; always @(posedge c) r <= d;",
        "top/x[1:0]", "");
    row("alias-of-a-clock", "", "wire x = a; wire y = x; reg r; always @(posedge y) r <= b;",
        "top/x", "-out");
    row("far-alias-of-a-clock", "",
        "wire x, y, z; assign z = y; assign y = x; assign x = a; "
        "reg r; always @(posedge z) r <= b;",
        "top/x", "-out");
    row("alias-bit-of-a-clock", "",
        "wire [1:0] x; assign x = v[1:0]; reg r; wire [1:0] y; "
        "assign y = x; always @(posedge y[0]) r <= b;",
        "top/x[1:0]", "-out 02");
    row("gate-behind-which-is-a-clock", "",
        "wire x = a; wire y = x & b; reg r; "
        "always @(posedge y) r <= b;",
        "top/x", "");
    row("interface-clock", "",
        "wire x = a; i bus (x); m u (bus); endmodule interface i (input c); "
        "logic d; endinterface module m (i p); always @(posedge p.c) p.d <= 1;",
        "top/x", "-out");
    row("interface-member-driven-below", "",
        "i bus (a); m u (bus); endmodule "
        "interface i (input c); logic d; logic e; endinterface module n (i q); assign q.d = 1; "
        "endmodule module m (i p); n u (p);",
        "top/bus/d", "");
    row("interface-member-undriven", "",
        "i bus (a); m u (bus); endmodule interface i (input c); "
        "logic d; logic e; endinterface module m (i p); assign p.d = p.e;",
        "top/bus/e", "-in");
    row("interface-member-driven-here", "",
        "i bus (a); assign bus.d = b; endmodule "
        "interface i (input c); logic d; endinterface module unused;",
        "top/bus/d", "");

    row("two-assigns", "", "wire x; assign x = a; assign x = b;", "top/x", "-out");
    row("two-assigns-to-other-bits", "", "wire [1:0] x; assign x[0] = a; assign x[1] = b;",
        "top/x[1:0]", "");
    row("overlapping-assigns", "", "wire [3:0] x; assign x[2:0] = v[2:0]; assign x[3:2] = v[1:0];",
        "top/x[3:0]", "-out 0200");
    row("one-always-many-times", "", "reg x; always @* begin x = a; if (b) x = 0; end", "top/x",
        "");
    row("two-always", "", "reg x; always @(posedge clk) x <= a; always @(posedge rst) x <= b;",
        "top/x", "-out");
    row("two-children", "",
        "wire x; m u (.o(x), .i(a)); m w (.o(x), .i(b)); endmodule "
        "module m (output o, input i); assign o = i;",
        "top/x", "-out");
    row("array-that-drives-one-net", "",
        "wire x; m u [1:0] (.o(x), .i(a)); endmodule "
        "module m (output o, input i); assign o = i;",
        "top/x", "-out");
    row("array-that-drives-a-bus", "",
        "wire [1:0] x; m u [1:0] (.o(x), .i(a)); endmodule "
        "module m (output o, input i); assign o = i;",
        "top/x[1:0]", "");

    row("tri-state", "", "wire x = a ? b : 1'bz;", "top/x", "-out");
    row("tri-state-in-a-process", "", "reg x; always @* if (a) x = b; else x = 1'bz;", "top/x",
        "-out");
    row("tri-state-gate", "", "wire x; bufif1 (x, a, b);", "top/x", "-out");
    row("tri-state-of-a-child", "",
        "wire x; m u (.o(x), .i(a)); endmodule "
        "module m (output o, input i); assign o = i ? 1'bz : 1'b0;",
        "top/x", "-out");
    row("comparison-with-z", "", "wire x = v ==? 4'b1zz0;", "top/x", "");
    row("inout-of-a-child", "", "wire x; m u (.p(x)); endmodule module m (inout p);", "top/x",
        "-out");
    row("pull", "", "wire x; pullup (x);", "top/x", "-out");

    row("pad-on-pins-alone", ", inout x", "BOX u (.p(x));", "top/x", "-in -out");
    row("pad-below", ", inout x", "m u (.q(x)); endmodule module m (inout q); BOX u (.p(q));",
        "top/x", "-in -out");
    row("pad-that-is-read", ", inout x, output y", "BOX u (.p(x)); assign y = x;", "top/x", "-out");
    row("output-pad", ", output x", "BOX u (.p(x));", "top/x", "-in -out");
    row("output-with-logic-on-a-pin", ", output x", "assign x = a; BOX u (.p(x));", "top/x", "");
    row("inner-net-on-pins-alone", "", "wire x; BOX u (.p(x)); BOX w (.p(x));", "top/x", "");

    row("function-local-of-the-same-name", "",
        "wire x; function f(input x); f = x; endfunction "
        "wire y = f(a);",
        "top/x", "-in");
    row("block-local-of-the-same-name", "",
        "wire x; reg y; always @* begin : n reg x; x = a; "
        "y = x; end",
        "top/x", "-in");
    row("scope-of-the-same-name", "", "wire x; if (1) begin : g wire x = a; end", "top/x", "-in");
    row("from-a-scope", "", "wire x; if (1) begin : g assign x = a; end", "top/x", "");
}

void TestNetFlags::flagsFollowTheRules()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, net);
    QFETCH(QString, flags);
    const auto netlist = elaborated(source, "module BOX (input wire p); endmodule");
    QVERIFY(netlist);
    const QString name = net.section('/', -1);
    QStringList level = net.split('/');
    level.removeLast();
    FATHOM::Hierachy *at = netlist->top;
    for (const QString &step : level.mid(1)) {
        const QList<FATHOM::Hierachy *> children = at->children();
        for (FATHOM::Hierachy *child : children) {
            if (child->name() == step)
                at = child;
        }
    }
    QStringList found;
    for (const QString &line : netlistLines(*netlist)) {
        const int indent = 2 * level.size();
        if (line.startsWith(QString(indent, ' ') + ". " + name)
            || line.startsWith(QString(indent, ' ') + "= " + name))
            found += line.mid(indent + 2);
    }
    QVERIFY(!found.isEmpty());
    QCOMPARE(found.first(), (name + ' ' + flags).trimmed());
    QVERIFY(at == netlist->top || level.size() > 1);
}

// Ten thousand parts of a net of sixteen thousand bits: whoever looks at every bit for every part
// needs minutes here.
void TestNetFlags::manyReferencesToAWideNetCostLittle()
{
    QByteArray source = "module top (input clk, input [16383:0] d, output [16383:0] q);\n"
                        "reg [16383:0] w; assign q = w;\n";
    for (int i = 0; i < 5000; ++i) {
        const QByteArray number = QByteArray::number(i);
        source += "wire [16383:0] a" + number.right(1) + "_" + number + "; always @(posedge clk) w["
            + number + "] <= ^w[16383:" + number + "];\n";
    }
    const auto netlist = elaborated(source + "endmodule");
    QVERIFY(netlist);
    const FATHOM::RtlNet *driven = netlist->findNet("top/w[4999]");
    const FATHOM::RtlNet *undriven = netlist->findNet("top/w[5000]");
    QVERIFY(driven && undriven);
    QVERIFY(!driven->noProbeIn && !driven->noProbeOut);
    QVERIFY(undriven->noProbeIn);
}

MOLK_TEST_GUILESS_MAIN(TestNetFlags)

#include "tst_netflags.moc"
