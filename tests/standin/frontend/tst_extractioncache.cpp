// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testwidgetsmain.h"

namespace DesignInfo = Standin::DesignInfo;

/// What was read once is not read again, and what has changed is.
class tst_ExtractionCache : public QObject
{
    Q_OBJECT

private slots:
    void secondReadingRunsNoTool();
    void anotherProcessRunsNoTool();
    void changedSourceIsReadAgain();
    void touchedIncludeIsReadAgain();
    void appearedIncludeIsReadAgain();
    void errorsAreNotKept();
    void damagedCacheIsIgnored();
};

void tst_ExtractionCache::secondReadingRunsNoTool()
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

void tst_ExtractionCache::anotherProcessRunsNoTool()
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

void tst_ExtractionCache::changedSourceIsReadAgain()
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

void tst_ExtractionCache::touchedIncludeIsReadAgain()
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

void tst_ExtractionCache::appearedIncludeIsReadAgain()
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

void tst_ExtractionCache::errorsAreNotKept()
{
    ExtractionTest test;
    test.add(test.write("a.v", "`include \"w.vh\"\nmodule top(input [`W-1:0] x); endmodule"));
    QVERIFY(!test.modules().errors().isEmpty());
    test.write("w.vh", "`define W 2\n");
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x[1:0]"});
}

void tst_ExtractionCache::damagedCacheIsIgnored()
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

MOLK_TEST_MAIN(tst_ExtractionCache)
#include "tst_extractioncache.moc"
