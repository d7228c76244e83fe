// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testmain.h"

/// Designs with errors, and with what the front end can't read: the errors are told with their
/// places, and the rest of the design is there.
class tst_FaultyDesigns : public QObject
{
    Q_OBJECT

private slots:
    void theRestIsRead_data();
    void theRestIsRead();
    void faultyFileSpoilsNoOther_data();
    void faultyFileSpoilsNoOther();
    void missingFileSpoilsNoOther();
    void faultyTopKeepsWhatItInstantiates();
    void faultyHeaderKeepsWhatIsBelow();
    void moduleOutlivesItsFirstLine_data();
    void moduleOutlivesItsFirstLine();
    void faultsOfAllFilesAreTold();
    void faultsDontHideThatAFileIsOfAnOlderStandard();
    void consequencesAreNotTold();
    void sourcesWithoutTopAreCheckedWhole();
    void modulesThatContainEachOtherAreErrors();
    void crashIsLedBackToItsModule();
    void rewrittenPlacesAreRight();
};

void tst_FaultyDesigns::theRestIsRead_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("place");
    QTest::addColumn<QStringList>("nets");

    // The body begins in the third line, and behind it a process and an instance follow.
    QTest::newRow("lost-semicolon") << QByteArray("wire [1:0] x = {2{clk}}\nwire y, z;")
                                    << "4:1: " << QStringList{"top/x[1:0]", "top/y", "top/z"};
    QTest::newRow("lost-semicolon-behind-an-escaped-name")
        << QByteArray("wire y = \\first \nwire z;") << "4:1: " << QStringList{"top/y", "top/z"};
    QTest::newRow("lost-semicolons-ahead-of-processes")
        << QByteArray("reg x; wire y = x, z = x\nalways @* begin : g\nreg w; w = x\nx = w\nend")
        << "4:1: " << QStringList{"top/x", "top/y", "top/z"};
    QTest::newRow("lost-semicolon-behind-an-instance")
        << QByteArray("leaf v(.a(clk))\nleaf w(.a(clk));")
        << "4:1: " << QStringList{"top/v/a", "top/w/a"};
    QTest::newRow("lost-comma-between-connections")
        << QByteArray("wire [3:0] x;\nleaf v(.a(clk)\n.b(x));")
        << "5:1: " << QStringList{"top/v/a", "top/x[3:0]"};
    QTest::newRow("expression") << QByteArray("wire x;\nassign x = ;")
                                << "4:12: " << QStringList{"top/x"};
    QTest::newRow("unclosed-event")
        << QByteArray("reg r;\nalways @(posedge clk begin r <= x; end\nwire x;")
        << "4:" << QStringList{"top/r", "top/x"};
    QTest::newRow("unclosed-range")
        << QByteArray("wire [7:0 y; wire x;") << "3:" << QStringList{"top/x"};
    QTest::newRow("unended-block")
        << QByteArray("wire x;\nalways @* begin if (x) begin") << "5:" << QStringList{"top/x"};
    QTest::newRow("stray-end") << QByteArray("wire x; end wire y;")
                               << "3:" << QStringList{"top/x", "top/y"};
    QTest::newRow("condition-without-brackets")
        << QByteArray("if x begin end\nwire y;") << "3:" << QStringList{"top/y"};
    QTest::newRow("undefined-name")
        << QByteArray("wire x; assign x = nosuch + 1;") << "3:20: " << QStringList{"top/x"};
    QTest::newRow("undefined-function")
        << QByteArray("wire x; assign x = nosuch(1);") << "3:20: " << QStringList{"top/x"};
    QTest::newRow("undefined-type")
        << QByteArray("nosuch_t a, b; wire x;") << "3:" << QStringList{"top/x"};
    QTest::newRow("undefined-package")
        << QByteArray("import nosuch::*; wire x;") << "3:8: " << QStringList{"top/x"};
    QTest::newRow("undefined-macro") << QByteArray("wire x; assign x = `NOSUCH; wire y;")
                                     << "3:20: " << QStringList{"top/x", "top/y"};
    QTest::newRow("undefined-macro-with-arguments")
        << QByteArray("`NOSUCH(a, b)\nwire x;") << "3:1: " << QStringList{"top/x"};
    QTest::newRow("macro-arguments")
        << QByteArray("`define M(a) a\nwire x = `M(1,2);\nwire y;") << "4:" << QStringList{"top/y"};
    QTest::newRow("missing-include")
        << QByteArray("`include \"nosuch.vh\"\nwire x;") << "3:" << QStringList{"top/x"};
    QTest::newRow("unended-string")
        << QByteArray("initial $display(\"x\n);\nwire x;") << "4:" << QStringList{"top/x"};
    QTest::newRow("generate-condition")
        << QByteArray("if (NOSUCH) begin : g wire z; end\nwire x;") << "3:" << QStringList{"top/x"};
    QTest::newRow("endless-generate")
        << QByteArray("genvar i; for (i = 0; i < 10; i = i) begin : g wire z; end wire x;")
        << "3:" << QStringList{"top/x"};
    QTest::newRow("wrong-pin") << QByteArray("leaf v(.nosuch(clk), .none(1), .a(clk));")
                               << "3:" << QStringList{"top/v/a", "top/v/b[3:0]"};
    QTest::newRow("too-many-pins") << QByteArray("leaf v(clk, , , clk, clk);")
                                   << "3:" << QStringList{"top/v/a", "top/v/b[3:0]"};
    QTest::newRow("wrong-parameter")
        << QByteArray("leaf #(.X(1), .W(2)) v(clk);") << "3:" << QStringList{"top/v/b[1:0]"};
    QTest::newRow("declared-twice")
        << QByteArray("input clk; wire x;") << "3:" << QStringList{"top/x"};
    QTest::newRow("recursive-function")
        << QByteArray("function automatic integer f(input integer n); f = n < 2 ? 1 : f(n - 1);\n"
                      "endfunction\nlocalparam F = f(4); wire x;")
        << "5:" << QStringList{"top/x"};
    QTest::newRow("not-supported")
        << QByteArray("typedef union tagged {void A; int B;} v_t; v_t v; wire x;")
        << "3:" << QStringList{"top/x"};
}

void tst_FaultyDesigns::theRestIsRead()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, place);
    QFETCH(QStringList, nets);
    ExtractionTest test;
    test.add(test.write("leaf.v",
                        "module leaf #(parameter W = 4) (input a, output [W-1:0] b); endmodule\n"));
    const QString file =
        test.write("a.v",
                   "module top(input clk, output q);\nwire first;\n" + body
                       + "\nreg last; always @(posedge clk) last <= first;\nleaf u(clk);\n"
                         "endmodule\n");
    test.add(file);
    const ModulesAnswer answer = test.modules("top");
    QVERIFY(!answer.errors().isEmpty());
    QVERIFY2(answer.errors().first().startsWith("ERROR: " + file + ':' + place),
             qPrintable(answer.errors().join('\n')));
    QCOMPARE(answer.topModules, QStringList{"top"});
    const auto netlist = test.netlist();
    QCOMPARE(missing(netLines(*netlist), nets + QStringList{"top/clk", "top/q", "top/first"}),
             QStringList());
    // What isn't ended may take what stands behind it along.
    if (!body.contains("if (x) begin"))
        QCOMPARE(missing(netLines(*netlist), {"top/last", "top/u/b[3:0]"}), QStringList());
}

void tst_FaultyDesigns::faultyFileSpoilsNoOther_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("place");

    QTest::newRow("garbage") << QByteArray("this is ) not } Verilog ( at all {\n") << "1:";
    QTest::newRow("binary") << QByteArray("\x7f"
                                          "ELF\x02\x01\0\0\0\xff\xfe\x80\n\0",
                                          14)
                            << "";
    QTest::newRow("unended-module") << QByteArray("\nmodule bad(input x);\nwire y;\n") << "2:";
    QTest::newRow("unended-process")
        << QByteArray("module bad(input x);\nalways @* begin\nif (x) begin\n") << "1:";
    QTest::newRow("unended-condition") << QByteArray("module bad;\n`ifdef A\nendmodule\n") << "";
    QTest::newRow("unended-else") << QByteArray("module bad;\n`ifndef A\n`else\nendmodule\n") << "";
    QTest::newRow("stray-endif") << QByteArray("module bad; endmodule\n`endif\n") << "2:1: ";
    QTest::newRow("unended-comment") << QByteArray("module bad; endmodule\n/* to the end\n") << "";
    QTest::newRow("unended-macro-arguments")
        << QByteArray("`define M(a, b) a\nmodule bad; wire `M(x;\nendmodule\n") << "";
    QTest::newRow("unended-string")
        << QByteArray("module bad; initial $display(\"x); endmodule\n") << "";
    QTest::newRow("unended-attribute")
        << QByteArray("module bad; (* keep wire x; endmodule\n") << "";
    QTest::newRow("unended-function")
        << QByteArray("module bad; function f(input a);\nendmodule\n") << "";
    QTest::newRow("stray-endmodule") << QByteArray("endmodule\nendmodule\n") << "1:";
    QTest::newRow("unended-package") << QByteArray("package bad; typedef logic t;\n") << "";
    QTest::newRow("unended-class") << QByteArray("class bad; int x;\n") << "";
    QTest::newRow("wrong-end") << QByteArray("program bad(input x);\nendmodule\n") << "1: ";
    QTest::newRow("unended-class-in-a-package")
        << QByteArray("package bad; typedef logic t;\nclass c; int y;\nendpackage\n") << "2: ";
    QTest::newRow("brackets") << QByteArray("module bad(((((; endmodule\n") << "1:";
}

/// Ahead of, between and behind files without faults.
void tst_FaultyDesigns::faultyFileSpoilsNoOther()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, place);
    for (int at = 0; at < 3; ++at) {
        ExtractionTest test;
        const QString faulty = test.write("bad.v", text);
        QStringList files{
            test.write("leaf.v", "module leaf(input a, output b); wire inner; endmodule\n"),
            test.write("top.v", "module top(input x);\nwire y; leaf u(x, y); endmodule\n")};
        files.insert(at, faulty);
        for (const QString &file : qAsConst(files))
            test.add(file);
        const ModulesAnswer answer = test.modules("top");
        const QStringList placed = answer.errors().filter("ERROR: " + faulty + ':' + place);
        QVERIFY2(!placed.isEmpty(), qPrintable(answer.messages.join('\n')));
        QCOMPARE(answer.topModules, QStringList{"top"});
        QCOMPARE(netLines(*test.netlist()),
                 (QStringList{"top/x", "top/y", "top/u/a", "top/u/b", "top/u/inner"}));
    }
}

void tst_FaultyDesigns::missingFileSpoilsNoOther()
{
    ExtractionTest test;
    test.add(test.path("nosuch.v"));
    test.add(test.write("top.v", "module top(input x); leaf u(x); endmodule\n"));
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.errors(),
             QStringList("ERROR: " + test.path("nosuch.v") + ": No such file or directory"));
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x"});
    // The file may appear.
    test.write("nosuch.v", "module leaf(input a); endmodule\n");
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()), (QStringList{"top/x", "top/u/a"}));
}

void tst_FaultyDesigns::faultyTopKeepsWhatItInstantiates()
{
    ExtractionTest test;
    QByteArray body;
    for (int i = 0; i < 12; ++i)
        body += "assign w" + QByteArray::number(i) + " = nosuch" + QByteArray::number(i) + ";\n";
    test.add(test.write("a.v",
                        "module leaf(input a); wire w; endmodule\nmodule top;\n" + body
                            + "leaf u(nosuch), v(.*); endmodule\n"));
    QVERIFY(!test.modules("top").errors().isEmpty());
    QVERIFY(levelLines(*test.netlist()).contains("top top"));
}

void tst_FaultyDesigns::faultyHeaderKeepsWhatIsBelow()
{
    ExtractionTest test;
    test.add(test.write("a.v",
                        "module leaf(input a); wire w; endmodule\n"
                        "module middle(input [3:0 x, output );\nleaf u(x[0]); endmodule\n"
                        "module top(input x);\nmiddle m(x, , ); endmodule\n"));
    QVERIFY(!test.modules("top").errors().isEmpty());
    QCOMPARE(levelLines(*test.netlist()), (QStringList{"top top", "top/m middle", "top/m/u leaf"}));
}

void tst_FaultyDesigns::moduleOutlivesItsFirstLine_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QString>("place");
    QTest::addColumn<QStringList>("nets");

    QTest::newRow("undefined-macro")
        << QByteArray("(input clk,\ninput [`W-1:0] x, output [3:0] y);")
        << "2:8: " << QStringList{"top/m/x", "top/m/y[3:0]"};
    QTest::newRow("undefined-parameter")
        << QByteArray("(input clk,\ninput x, output [4*(W-1):0] y);")
        << "2:" << QStringList{"top/m/y"};
    QTest::newRow("undefined-type")
        << QByteArray("(input clk,\ninput t x,\noutput t [1:0] y, input wire t z);")
        << "3:16: " << QStringList{"top/m/x", "top/m/y[1:0]", "top/m/z"};
    QTest::newRow("missing-package")
        << QByteArray("import p::*, q::*; #(parameter W = p::W, parameter type T = p::t)\n"
                      "(input clk, input p::t x, output [p::N:0] y);")
        << "1:" << QStringList{"top/m/x", "top/m/y"};
    QTest::newRow("undefined-value")
        << QByteArray("#(parameter W = `W, V = 4)\n(input clk, input [V:W] x);")
        << "1:" << QStringList{"top/m/x[4:1]"};
    QTest::newRow("undefined-value-in-brackets")
        << QByteArray("#(parameter W = (2 + (P)) * 2, V = 4)\n(input clk, input [V:W] x);")
        << "1:" << QStringList{"top/m/x[4:1]"};
    QTest::newRow("undefined-value-behind-brackets")
        << QByteArray("#(parameter W = $clog2(4) + {2'd1, 2'd2} + P, V = 4)\n"
                      "(input clk, input [V:W] x);")
        << "1:" << QStringList{"top/m/x[4:1]"};
    QTest::newRow("lost-comma") << QByteArray(
        "#(parameter W = 2\nparameter V = 4) (\ninput clk\ninput [V:W] x\n);")
                                << "2:1: " << QStringList{"top/m/x[4:2]"};
    QTest::newRow("lost-comma-between-names")
        << QByteArray("(clk\n, x\ny, z);\ninput clk, x; output y, z;")
        << "3:1: " << QStringList{"top/m/x", "top/m/y", "top/m/z"};
}

void tst_FaultyDesigns::moduleOutlivesItsFirstLine()
{
    QFETCH(QByteArray, header);
    QFETCH(QString, place);
    QFETCH(QStringList, nets);
    ExtractionTest test;
    test.add(test.write("top.v",
                        "module leaf(input a); endmodule\n"
                        "module top(input c); mid m(.clk(c)); endmodule\n"));
    const QString file = test.write(
        "mid.sv", "module mid " + header + "\nwire inner; leaf u(.a(clk));\nendmodule\n");
    test.add(file);
    const ModulesAnswer answer = test.modules("top");
    QVERIFY2(answer.errors().value(0).startsWith("ERROR: " + file + ':' + place),
             qPrintable(answer.errors().join('\n')));
    nets += {"top/c", "top/m/clk", "top/m/inner", "top/m/u/a"};
    const QStringList lines = netLines(*test.netlist());
    QCOMPARE(missing(lines, nets), QStringList());
}

void tst_FaultyDesigns::faultsOfAllFilesAreTold()
{
    ExtractionTest test;
    const QString one = test.write("one.v", "module one(input a);\nwire = a;\nendmodule\n");
    const QString two =
        test.write("two.v", "module two(input a);\nassign a = nosuch;\nendmodule\n");
    test.add(one);
    test.add(two);
    test.add(test.write("top.v", "module top(input x); one u(x); two v(x); endmodule\n"));
    const QStringList errors = test.modules().errors();
    QCOMPARE(errors.size(), 2);
    QVERIFY2(errors.at(0).startsWith("ERROR: " + one + ":2:6: "), qPrintable(errors.at(0)));
    QVERIFY2(errors.at(1).startsWith("ERROR: " + two + ":2:12: "), qPrintable(errors.at(1)));
    QCOMPARE(netLines(*test.netlist()), (QStringList{"top/x", "top/u/a", "top/v/a"}));
}

/// Words that are names in old files only, beside a fault, and in a file that would be faulty as an
/// old one.
void tst_FaultyDesigns::faultsDontHideThatAFileIsOfAnOlderStandard()
{
    ExtractionTest test;
    const QString ram = test.write("ram.v",
                                   "module ram(clk, do);\ninput clk; output [7:0] do;\n"
                                   "reg [7:0] bit; assign do = bit;\nendmodule\n");
    test.add(ram);
    const QString bad = test.write("bad.v",
                                   "module bad(input clk);\nlogic [3:0] x; assign x = ;\n"
                                   "wire y; always_ff @(posedge clk) x <= 1;\nendmodule\n");
    test.add(bad);
    const QString top = test.write("top.v",
                                   "module top(input clk);\nwire [7:0] q; assign q = ;\n"
                                   "bad b(clk);\nram r(.clk(clk), .do(q));\nendmodule\n");
    test.add(top);
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.errors().size(), 2);
    QVERIFY2(answer.errors().at(0).startsWith("ERROR: " + bad + ":2:"),
             qPrintable(answer.messages.join('\n')));
    QVERIFY2(answer.errors().at(1).startsWith("ERROR: " + top + ":2:"),
             qPrintable(answer.messages.join('\n')));
    const QString old = ": read by the keywords of another standard";
    QCOMPARE(answer.messages.filter(old),
             (QStringList{"WARNING: " + ram + old, "WARNING: " + top + old}));
    QCOMPARE(netLines(*test.netlist()),
             (QStringList{"top/clk", "top/b/clk", "top/b/y", "top/r/clk", "top/q[7:0]",
                          "top/b/x[3:0]", "top/r/do[7:0]", "top/r/bit[7:0]"}));
}

void tst_FaultyDesigns::consequencesAreNotTold()
{
    ExtractionTest test;
    const QString file = test.write("top.v",
                                    "module top(input x);\nnosuch_t [3 y;\nwire z = y[0];\n"
                                    "assign w = y[1];\nendmodule\n");
    test.add(file);
    const QStringList errors = test.modules().errors();
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith("ERROR: " + file + ":2:"), qPrintable(errors.first()));
    QVERIFY(netLines(*test.netlist()).contains("top/x"));
}

/// Errors of one file don't hide those of others, and code without hardware is none.
void tst_FaultyDesigns::sourcesWithoutTopAreCheckedWhole()
{
    ExtractionTest test;
    const QString one = test.write("one.v", "module one;\nalways @* begin\nendmodule\n");
    test.add(one);
    const QString two = test.write("two.sv", "module two;\nwire = 1;\nendmodule\n");
    test.add(two);
    test.add(test.write("three.sv", "class c; `nosuch(c) endclass\n"));
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.topModules, (QStringList{"one", "two"}));
    QCOMPARE(answer.errors().size(), 2);
    QVERIFY(answer.errors().at(0).startsWith("ERROR: " + one + ":3:1: "));
    QVERIFY(answer.errors().at(1).startsWith("ERROR: " + two + ":2:6: "));
}

void tst_FaultyDesigns::modulesThatContainEachOtherAreErrors()
{
    ExtractionTest test;
    const QString file = test.write("a.v",
                                    "module a(input x); b u(x); endmodule\n"
                                    "module b(input x); wire w; a u(x); endmodule\n"
                                    "module top(input x); a u(x); endmodule\n");
    test.add(file);
    QCOMPARE(
        test.modules().errors(),
        QStringList("ERROR: " + file + ":2: the module \"a\" contains itself by way of others"));
    QVERIFY(netLines(*test.netlist()).contains("top/u/u/w"));
}

/// A tool that crashes on one module and says nothing of it.
void tst_FaultyDesigns::crashIsLedBackToItsModule()
{
    ExtractionTest writer;
    ExtractionTest test(writer.optionsWithTool(
        "#!/bin/sh\ncase \"$1\" in --xml-only) if grep -q deadly design.v; then\n"
        "kill -SEGV $$; fi;; esac\nexec /usr/bin/verilator_bin \"$@\"\n"));
    QByteArray text = "module top(input x);\n";
    for (int i = 0; i < 20; ++i)
        text += "m" + QByteArray::number(i) + " u" + QByteArray::number(i) + "(x);\n";
    text += "endmodule\n";
    for (int i = 0; i < 20; ++i)
        text += "module m" + QByteArray::number(i) + "(input x); wire y;\nassign y = x;"
            + (i == 13 ? "initial $deadly;" : "") + " endmodule\n";
    test.add(test.write("a.v", text));
    const QStringList errors = test.modules().errors();
    QVERIFY2(errors.contains("ERROR: the module \"m13\" can't be read: the tool fails on it"),
             qPrintable(errors.join('\n')));
    const QStringList nets = netLines(*test.netlist());
    QCOMPARE(nets.size(), 1 + 20 * 2);
}

/// What is moved and rewritten keeps the places that it has in its file.
void tst_FaultyDesigns::rewrittenPlacesAreRight()
{
    ExtractionTest test;
    test.add(test.write("top.sv", "module top(input p::t x);\nendmodule\n"));
    const QString file = test.write("p.sv",
                                    "\n  package p;\n  typedef logic t; typedef nosuch u;\n"
                                    "  localparam Z = ;\nendpackage\nmodule other(input = 3);\n"
                                    "endmodule\n");
    test.add(file);
    const QStringList errors = test.modules("top").errors();
    QVERIFY2(!errors.filter(file + ":4:18: ").isEmpty(), qPrintable(errors.join('\n')));
    QVERIFY2(!errors.filter(file + ":6:20: ").isEmpty(), qPrintable(errors.join('\n')));
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x"});
}

MOLK_TEST_GUILESS_MAIN(tst_FaultyDesigns)
#include "tst_faultydesigns.moc"
