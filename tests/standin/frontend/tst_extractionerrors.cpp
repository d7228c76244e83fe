// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testwidgetsmain.h"

namespace DesignInfo = Standin::DesignInfo;

/// What is told of designs and tools that fail, and what is delivered then.
class tst_ExtractionErrors : public QObject
{
    Q_OBJECT

private slots:
    void errorsNameThePlace_data();
    void errorsNameThePlace();
    void vhdlErrorsNameThePlace();
    void includedFilesKeepTheirPlaces();
    void unreadableFilesAreErrors();
    void missingToolIsAnError();
    void crashingToolIsAnError();
    void abortIsACrash();
    void wantOfMemoryIsBelievedTheSecondTime();
    void silentToolIsAnError();
    void slowToolIsStopped();
    void oddTopNameIsRefused();
    void errorsLeaveAnEmptyNetlist();
    void nothingReadLeavesAnEmptyNetlist();
};

void tst_ExtractionErrors::errorsNameThePlace_data()
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

void tst_ExtractionErrors::errorsNameThePlace()
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

void tst_ExtractionErrors::vhdlErrorsNameThePlace()
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

void tst_ExtractionErrors::includedFilesKeepTheirPlaces()
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

void tst_ExtractionErrors::unreadableFilesAreErrors()
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

void tst_ExtractionErrors::missingToolIsAnError()
{
    Standin::ExtractionOptions options;
    options.verilator = "/nonexistent/verilator_bin";
    options.ghdl = "/nonexistent/ghdl";
    ExtractionTest test(options);
    test.add(test.write("a.v", oneTop));
    QCOMPARE(test.modules().errors(),
             QStringList("ERROR: /nonexistent/verilator_bin can't be started: is it installed?"));
}

void tst_ExtractionErrors::crashingToolIsAnError()
{
    ExtractionTest writer;
    ExtractionTest test(writer.optionsWithTool("#!/bin/sh\nkill -SEGV $$\n"));
    test.add(test.write("a.v", oneTop));
    QCOMPARE(test.modules().errors(), QStringList("ERROR: tool crashed (signal 11)"));
}

// What the C++ library says of an exception that nobody catches.
static QByteArray abortWith(const QByteArray &exception)
{
    return "echo \"terminate called after throwing an instance of '" + exception
        + "'\" >&2\nkill -ABRT $$\n";
}

void tst_ExtractionErrors::abortIsACrash()
{
    ExtractionTest writer;
    ExtractionTest test(writer.optionsWithTool("#!/bin/sh\n" + abortWith("std::out_of_range")));
    test.add(test.write("a.v", oneTop));
    QCOMPARE(test.modules().errors(), QStringList("ERROR: tool crashed (signal 6)"));
}

static QStringList errorsWithoutMemory(const QByteArray &condition)
{
    ExtractionTest writer;
    ExtractionTest test(writer.optionsWithTool("#!/bin/sh\nif " + condition + "; then\n"
                                               + abortWith("std::bad_alloc")
                                               + "fi\nexec verilator_bin \"$@\"\n"));
    test.add(test.write("a.v", oneTop));
    return test.modules().errors();
}

void tst_ExtractionErrors::wantOfMemoryIsBelievedTheSecondTime()
{
    const QTemporaryDir directory;
    QCOMPARE(errorsWithoutMemory("mkdir '" + QFile::encodeName(directory.filePath("once")) + "'"),
             QStringList());
    QCOMPARE(errorsWithoutMemory("true"),
             QStringList("ERROR: tool gave up; it may use 4096 MB of memory"));
}

void tst_ExtractionErrors::silentToolIsAnError()
{
    // It does what the first stage does and nothing in the second.
    ExtractionTest writer;
    ExtractionTest test(
        writer.optionsWithTool("#!/bin/sh\ncase \"$1\" in -E) cat s0001.v;; *) ;; esac\n"));
    test.add(test.write("a.v", oneTop));
    const QStringList errors = test.modules().errors();
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith("ERROR: the elaborated design can't be read: "),
             qPrintable(errors.first()));
}

void tst_ExtractionErrors::slowToolIsStopped()
{
    ExtractionTest writer;
    Standin::ExtractionOptions options = writer.optionsWithTool(slowTool);
    options.timeoutSeconds = 1;
    ExtractionTest test(options);
    test.add(test.write("a.v", oneTop));
    QCOMPARE(test.modules().errors(), QStringList("ERROR: tool was stopped after 1 s"));
}

/// Names that the tool could take for an option or expand.
void tst_ExtractionErrors::oddTopNameIsRefused()
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

void tst_ExtractionErrors::errorsLeaveAnEmptyNetlist()
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

void tst_ExtractionErrors::nothingReadLeavesAnEmptyNetlist()
{
    ExtractionTest test;
    const auto netlist = test.netlist();
    QVERIFY(netlist);
    QCOMPARE(netlist->top->name(), QString());
}

MOLK_TEST_MAIN(tst_ExtractionErrors)
#include "tst_extractionerrors.moc"
