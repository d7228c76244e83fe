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
    void timeIsLimited();
    void outputOfVhdlIsLimited();
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

void tst_ToolLimits::outputOfVhdlIsLimited()
{
    Standin::ExtractionOptions options;
    options.outputBytes = 256;
    ExtractionTest test(options);
    test.addData({"mixed/pulse.vhd"});
    const QStringList errors = test.modules().errors();
    QVERIFY(!errors.isEmpty());
    QVERIFY2(errors.first().contains("wrote more than") || errors.first().contains("failed"),
             qPrintable(errors.first()));
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
