// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testwidgetsmain.h"

#include "frontend/extraction.h"
#include "host/host.h"
#include "project/edamproject.h"

#include "fathom/extraction.h"
#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"
#include "te/designmanager.h"
#include "te/taskengine.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

using Standin::Host;

/// The host's net extraction: answers that a test has scripted, and real ones.
class TestHostExtraction : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void refusalCountsCalls();
    void scriptedModulesAreAnsweredInOrder();
    void servedAnswersComeWhenTheQueueIsEmpty();
    void scriptedNetlistIsDeliveredFromANestedLoop();
    void netlistsNobodyAskedForAreDeleted();
    void eachServedNetlistIsNew();
    void hookRunsInTheMiddleOfTheCall();
    void hookMayAskForAnotherNetlist();
    void refusedModulesAreAnError();
    void refusedNetlistIsNull();
    void scriptedNullNetlistIsDelivered();
    void callsOfTheExtractionAreRecorded();
    void unscriptedDesignIsExtractedForReal();
    void realExtractionWithoutADesignStillDelivers();

private:
    std::unique_ptr<Host> host;
};

/// A netlist that can be told from others and counts how many there are.
class CountedNetlist : public FATHOM::RtlNetlist
{
public:
    CountedNetlist() { ++living; }
    ~CountedNetlist() override { --living; }

    FATHOM::RtlNet *findNet(const QString &) const override { return nullptr; }

    static int living;
};

int CountedNetlist::living = 0;

struct Answer
{
    QStringList topModules;
    QStringList modules;
    QStringList messages;
};

static Answer askModules(const QString &top = QString())
{
    Answer answer;
    QMap<QString, QVariant> info;
    if (!top.isNull())
        info.insert("Top", top);
    FATHOM::catchRtlModules(answer.topModules, answer.modules, answer.messages, info, nullptr);
    return answer;
}

static FATHOM::RtlNetlist *askNetlist(QStringList *log = nullptr)
{
    FATHOM::RtlNetlist *netlist = nullptr;
    QStringList lines;
    FATHOM::catchRtlNetsWithProgressDialog(&netlist, log ? *log : lines, nullptr);
    return netlist;
}

void TestHostExtraction::init()
{
    host = std::make_unique<Host>();
}

void TestHostExtraction::cleanup()
{
    host.reset();
    QCOMPARE(CountedNetlist::living, 0);
}

void TestHostExtraction::refusalCountsCalls()
{
    host->extraction().serve({{"top"}, {"top"}, {}}, nullptr);
    host->refuse("catchRtlModules", 2);
    host->refuse("catchRtlModules", 3);
    host->refuse("another call", 1);

    QList<int> refused;
    for (int call = 1; call <= 5; ++call) {
        if (askModules().modules.isEmpty())
            refused.append(call);
    }
    QCOMPARE(refused, QList<int>({2, 3}));
}

void TestHostExtraction::scriptedModulesAreAnsweredInOrder()
{
    host->extraction().queueModules({{"a"}, {"a", "b"}, {"WARNING: x"}});
    host->extraction().queueModules({{}, {}, {"ERROR: y"}});

    const Answer first = askModules();
    QCOMPARE(first.topModules, QStringList("a"));
    QCOMPARE(first.modules, QStringList({"a", "b"}));
    QCOMPARE(first.messages, QStringList("WARNING: x"));
    QCOMPARE(askModules().messages, QStringList("ERROR: y"));
}

void TestHostExtraction::servedAnswersComeWhenTheQueueIsEmpty()
{
    host->serveDesign("top", [] { return new CountedNetlist; });
    host->extraction().queueModules({{"queued"}, {"queued"}, {}});

    QCOMPARE(askModules().modules, QStringList("queued"));
    QCOMPARE(askModules().modules, QStringList("top"));
    QCOMPARE(askModules().topModules, QStringList("top"));
    const QMap<QString, QVariant> info =
        TE::TaskEngine::instance()->designManager()->getSourceFileInfo();
    QCOMPARE(info.value("Top"), QVariant("top"));
    QCOMPARE(info.value("Files").toList().size(), 1);
}

void TestHostExtraction::scriptedNetlistIsDeliveredFromANestedLoop()
{
    auto *netlist = new CountedNetlist;
    host->extraction().queueNetlist(netlist, {"INFO: done"});
    bool turned = false;
    QTimer::singleShot(0, this, [&turned] { turned = true; });

    QStringList log;
    const std::unique_ptr<FATHOM::RtlNetlist> got(askNetlist(&log));

    QCOMPARE(got.get(), netlist);
    QCOMPARE(log, QStringList("INFO: done"));
    QVERIFY(turned);
}

void TestHostExtraction::netlistsNobodyAskedForAreDeleted()
{
    host->extraction().queueNetlist(new CountedNetlist);
    host->extraction().queueNetlist(new CountedNetlist);
    QCOMPARE(CountedNetlist::living, 2);
    host->extraction().clear();
    QCOMPARE(CountedNetlist::living, 0);

    host->extraction().queueNetlist(new CountedNetlist);
    host.reset();
    QCOMPARE(CountedNetlist::living, 0);
}

void TestHostExtraction::eachServedNetlistIsNew()
{
    host->extraction().serveTop("top", [] { return new CountedNetlist; });

    const std::unique_ptr<FATHOM::RtlNetlist> a(askNetlist());
    const std::unique_ptr<FATHOM::RtlNetlist> b(askNetlist());

    QVERIFY(a && b && a != b);
    QCOMPARE(CountedNetlist::living, 2);
}

void TestHostExtraction::hookRunsInTheMiddleOfTheCall()
{
    QStringList order;
    host->extraction().serveTop("top", [] { return new CountedNetlist; });
    host->extraction().duringModules([&order] { order.append("modules"); });
    host->extraction().duringNetlist([&order] { order.append("nets"); });

    askModules();
    order.append("between");
    delete askNetlist();
    order.append("after");
    askModules();
    delete askNetlist();

    QCOMPARE(order, QStringList({"modules", "between", "nets", "after"}));
}

void TestHostExtraction::hookMayAskForAnotherNetlist()
{
    auto *outer = new CountedNetlist;
    auto *inner = new CountedNetlist;
    host->extraction().queueNetlist(outer);
    host->extraction().queueNetlist(inner);
    std::unique_ptr<FATHOM::RtlNetlist> second;
    host->extraction().duringNetlist([&second] { second.reset(askNetlist()); });

    const std::unique_ptr<FATHOM::RtlNetlist> first(askNetlist());

    QCOMPARE(first.get(), outer);
    QCOMPARE(second.get(), inner);
}

void TestHostExtraction::refusedModulesAreAnError()
{
    host->extraction().serveTop("top", nullptr);
    host->refuse("catchRtlModules");

    const Answer answer = askModules();

    QCOMPARE(answer.messages, QStringList("ERROR: The net extraction service refused the call."));
    QCOMPARE(answer.modules, QStringList());
    QCOMPARE(askModules().modules, QStringList("top"));
}

void TestHostExtraction::refusedNetlistIsNull()
{
    host->extraction().serveTop("top", [] { return new CountedNetlist; });
    host->refuse("catchRtlNetsWithProgressDialog");

    QVERIFY(!askNetlist());
    const std::unique_ptr<FATHOM::RtlNetlist> next(askNetlist());
    QVERIFY(next);
}

void TestHostExtraction::scriptedNullNetlistIsDelivered()
{
    host->extraction().queueNetlist(nullptr);
    QVERIFY(!askNetlist());
}

void TestHostExtraction::callsOfTheExtractionAreRecorded()
{
    host->extraction().serveTop("top", [] { return new CountedNetlist; });

    askModules("soc");
    askModules();
    delete askNetlist();

    QCOMPARE(host->calls(),
             QStringList({"catchRtlModules top=soc",
                          "catchRtlModules top=", "catchRtlNetsWithProgressDialog"}));
}

static Standin::ExtractionOptions optionsIn(const QTemporaryDir &directory)
{
    Standin::ExtractionOptions options;
    options.cacheDirectory = directory.filePath("cache");
    return options;
}

void TestHostExtraction::unscriptedDesignIsExtractedForReal()
{
    QTemporaryDir directory;
    QFile file(directory.filePath("soc.v"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("module leaf(input a, output b);\nassign b = a;\nendmodule\n"
               "module soc(input a, output b);\nwire w;\nleaf u0(.a(a), .b(w));\n"
               "assign b = w;\nendmodule\n");
    file.close();
    host->setExtractionOptions(optionsIn(directory));
    host->setProject(Standin::EdamProject::adHoc({file.fileName()}, "soc"));

    QMap<QString, QVariant> info = TE::TaskEngine::instance()->designManager()->getSourceFileInfo();
    Answer answer;
    FATHOM::catchRtlModules(answer.topModules, answer.modules, answer.messages, info, nullptr);
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(askNetlist());

    QCOMPARE(answer.messages.filter("ERROR"), QStringList());
    QCOMPARE(answer.topModules, QStringList("soc"));
    answer.modules.sort();
    QCOMPARE(answer.modules, QStringList({"leaf", "soc"}));
    QVERIFY(netlist);
    QCOMPARE(netlist->top->name(), QString("soc"));
    QVERIFY(netlist->findNet("soc/u0/a"));
}

void TestHostExtraction::realExtractionWithoutADesignStillDelivers()
{
    host.reset();

    const std::unique_ptr<FATHOM::RtlNetlist> netlist(askNetlist());

    QVERIFY(netlist);
    QVERIFY(netlist->top);
}

MOLK_TEST_MAIN(TestHostExtraction)
#include "tst_hostextraction.moc"
