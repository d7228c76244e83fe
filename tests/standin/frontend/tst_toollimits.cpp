// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testmain.h"

/// The limits on sources and on the real tools, made small enough to be met.
class tst_ToolLimits : public QObject
{
    Q_OBJECT

private slots:
    void memoryIsLimited();
    void outputIsLimited();
    void textIsLimited();
    void timeIsLimited();
    void outputOfVhdlIsLimited();
    void timeOfVhdlIsLimited();
    void memoryOfVhdlIsLimited();
    void floodOfMessagesIsCut();
    void sourcesAreLimited();
    void sourcesTogetherAreLimited();
    void limitEndsTheReadingAtOnce();
};

static void addLargeDesign(ExtractionTest *test)
{
    QByteArray text = "module top(input clk);\n";
    for (int i = 0; i < 20000; ++i)
        text += "wire [7:0] some_net_of_the_design_" + QByteArray::number(i) + ";\n";
    test->add(test->write("large.v", text + "endmodule\n"));
}

void tst_ToolLimits::memoryIsLimited()
{
    Standin::ExtractionOptions options;
    options.memoryBytes = 24 << 20;
    ExtractionTest test(options);
    addLargeDesign(&test);
    QCOMPARE(test.modules().errors(),
             QStringList("ERROR: verilator_bin gave up; it may use 24 MB of memory"));
    QCOMPARE(netLines(*test.netlist()), QStringList());
}

void tst_ToolLimits::outputIsLimited()
{
    Standin::ExtractionOptions options;
    options.outputBytes = 1 << 20;
    ExtractionTest test(options);
    addLargeDesign(&test);
    QCOMPARE(test.modules().errors(),
             QStringList("ERROR: verilator_bin was stopped: it wrote more than 1 MB"));
    QCOMPARE(netLines(*test.netlist()), QStringList());
}

/// Few sources can include a lot. Other errors of theirs don't hide that it is too much.
void tst_ToolLimits::textIsLimited()
{
    Standin::ExtractionOptions options;
    options.textBytes = 1 << 20;
    ExtractionTest test(options);
    test.write("nets.vh", QByteArray("wire some_net;\n").repeated(10000));
    const QString file =
        test.write("top.v",
                   "`include \"missing.vh\"\nmodule top(input clk);\n"
                       + QByteArray("`include \"nets.vh\"\n").repeated(10) + "endmodule\n");
    test.add(file);
    const QStringList errors = test.modules().errors();
    QCOMPARE(errors.size(), 2);
    QVERIFY2(errors.first().startsWith("ERROR: " + file + ":1"), qPrintable(errors.first()));
    QCOMPARE(errors.last(), QString("ERROR: verilator_bin was stopped: it wrote more than 1 MB"));
    QCOMPARE(netLines(*test.netlist()), QStringList());
    QCOMPARE(test.extraction->toolRuns(), 1);
}

void tst_ToolLimits::timeIsLimited()
{
    Standin::ExtractionOptions options;
    options.timeoutSeconds = 1;
    ExtractionTest test(options);
    test.add(test.write("a.v",
                        "module top; function automatic integer f(input integer n);\n"
                        "integer i; begin f = 0; for (i = 0; i < 16000; i = i + 1)\n"
                        "f = f + i * n; end endfunction\n"
                        "genvar g; for (g = 0; g < 16000; g = g + 1) begin : b\n"
                        "localparam P = f(g); wire [P % 7 : 0] w; end endmodule\n"));
    const QStringList errors = test.modules().errors();
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first() == "ERROR: verilator_bin was stopped after 1 s"
                 || errors.first()
                     == "ERROR: verilator_bin was stopped after 1 s of processor time",
             qPrintable(errors.first()));
}

static void addEntity(ExtractionTest *test, const QByteArray &declarations,
                      const QByteArray &statements)
{
    test->add(test->write("a.vhd",
                          "entity a is port (x : in bit; y : out bit); end;\n"
                          "architecture r of a is\n  function f return natural is\n"
                              + declarations + "\n  begin\n" + statements
                              + "\n  end;\n  constant C : natural := f;\n"
                                "begin y <= x when C = 1 else '0'; end;\n"));
}

/// GHDL runs functions while it synthesizes.
void tst_ToolLimits::timeOfVhdlIsLimited()
{
    Standin::ExtractionOptions options;
    options.timeoutSeconds = 1;
    ExtractionTest test(options);
    addEntity(&test, "variable i : natural := 0;",
              "while true loop i := (i + 1) mod 7; end loop; return i;");
    const QStringList errors = test.modules().errors();
    QVERIFY(!errors.isEmpty());
    QVERIFY2(errors.first() == "ERROR: ghdl was stopped after 1 s"
                 || errors.first() == "ERROR: ghdl was stopped after 1 s of processor time",
             qPrintable(errors.join('\n')));
}

void tst_ToolLimits::memoryOfVhdlIsLimited()
{
    Standin::ExtractionOptions options;
    options.memoryBytes = qint64(512) << 20;
    ExtractionTest test(options);
    addEntity(&test,
              "type t is array (natural range <>) of integer;\n"
              "variable a : t(0 to 300000000) := (others => 1);",
              "return a(7);");
    QCOMPARE(test.modules().errors(),
             QStringList("ERROR: ghdl gave up; it may use 512 MB of memory"));
}

/// The log is read as far as it makes sense, so that a design can't fill the memory with it.
void tst_ToolLimits::floodOfMessagesIsCut()
{
    Standin::ExtractionOptions options;
    options.outputBytes = 20 << 20;
    ExtractionTest test(options);
    addEntity(&test, "",
              "while true loop report \"" + QByteArray(1000, 'x')
                  + "\" severity warning; end loop; return 1;");
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.errors(), QStringList("ERROR: ghdl was stopped: it wrote more than 20 MB"));
    QVERIFY2(!answer.messages.filter(QString(1000, 'x')).isEmpty(),
             qPrintable(answer.messages.join('\n')));
}

void tst_ToolLimits::outputOfVhdlIsLimited()
{
    Standin::ExtractionOptions options;
    options.outputBytes = 256;
    ExtractionTest test(options);
    test.addData({"mixed/pulse.vhd"});
    // What is left of the design may be too much for the next tool.
    QCOMPARE(test.modules().errors().value(0),
             QString("ERROR: ghdl was stopped: it wrote more than 0 MB"));
}

void tst_ToolLimits::sourcesAreLimited()
{
    Standin::ExtractionOptions options;
    options.sourceBytes = 1 << 20;
    ExtractionTest test(options);
    const QString file = test.write("a.v", QByteArray((1 << 20) + 1, ' '));
    test.add(file);
    test.add(test.write("b.v", "module b(input x); endmodule\n"));
    QCOMPARE(test.modules().errors(),
             QStringList("ERROR: " + file + ": the file is longer than 1 MB"));
    QCOMPARE(netLines(*test.netlist()), QStringList{"b/x"});
}

void tst_ToolLimits::sourcesTogetherAreLimited()
{
    Standin::ExtractionOptions options;
    options.sourceBytes = 1 << 16;
    ExtractionTest test(options);
    const QByteArray text(1 << 16, ' ');
    for (int i = 0; i < 9; ++i)
        test.add(test.write(QString("%1.v").arg(i), text));
    const QStringList errors = test.modules().errors();
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith("ERROR: " + test.path("8.v") + ": the file is longer"),
             qPrintable(errors.first()));
}

/// What meets a limit once would meet it again with every part of the design.
void tst_ToolLimits::limitEndsTheReadingAtOnce()
{
    Standin::ExtractionOptions options;
    options.memoryBytes = 64 << 20;
    ExtractionTest test(options);
    addLargeDesign(&test);
    addLargeDesign(&test);
    const QStringList errors = test.modules().errors();
    QVERIFY2(!errors.filter("may use 64 MB of memory").isEmpty(), qPrintable(errors.join('\n')));
    QVERIFY(test.extraction->toolRuns() <= 3);
}

MOLK_TEST_GUILESS_MAIN(tst_ToolLimits)
#include "tst_toollimits.moc"
