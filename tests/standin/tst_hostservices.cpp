// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testwidgetsmain.h"

#include "frontend/extraction.h"
#include "host/host.h"
#include "project/edamproject.h"

#include "core/ifilewizardfactory.h"
#include "core/iproject.h"
#include "core/projectmanager.h"
#include "dev/devicearg.h"
#include "fathom/extraction.h"
#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"
#include "qutil/eventmanager.h"
#include "qutil/ieventhandler.h"
#include "te/designmanager.h"
#include "te/flowmanager.h"
#include "te/taskengine.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

using Standin::Event;
using Standin::Host;

class TestHostServices : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void thereIsOneHost();
    void recordingCanBeTurnedOff();
    void callsAreFilteredByName();
    void refusalCountsCalls();
    void eventsAreRecorded();
    void deviceArgumentHoldsAName();
    void fileWizardsHaveAPictureAndAreFoundByType();
    void scriptedDesignIsAnswered();
    void withoutAProjectTheDesignIsEmpty();
    void designServicesStandWithoutAHost();
    void currentProjectIsTheTestsOwn();
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

void TestHostServices::init()
{
    host = std::make_unique<Host>();
}

void TestHostServices::cleanup()
{
    host.reset();
    QCOMPARE(CountedNetlist::living, 0);
}

void TestHostServices::thereIsOneHost()
{
    QCOMPARE(Host::instance(), host.get());
    host.reset();
    QVERIFY(!Host::instance());
}

void TestHostServices::recordingCanBeTurnedOff()
{
    host->setRecording(false);
    Core::ProjectManager::currentProject();
    QCOMPARE(host->calls(), QStringList());

    host->setRecording(true);
    Core::ProjectManager::currentProject();
    QCOMPARE(host->calls(), QStringList("currentProject"));

    host->clearCalls();
    QCOMPARE(host->calls(), QStringList());
}

void TestHostServices::callsAreFilteredByName()
{
    Core::ProjectManager::currentProject();
    TE::TaskEngine::instance()->designManager()->getOptionValue("IncludePath");
    TE::TaskEngine::instance()->designManager()->workingDir();

    QCOMPARE(host->callsOf({"workingDir", "getOptionValue"}),
             QStringList({"getOptionValue IncludePath", "workingDir"}));
    QCOMPARE(host->callsOf({"getOption"}), QStringList());
}

void TestHostServices::refusalCountsCalls()
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

void TestHostServices::eventsAreRecorded()
{
    struct Handler : QUtil::IEventHandler
    {
        void handleIEvent(const QUtil::IEvent *) override {}
    } handler;
    QUtil::EventManager *manager = QUtil::EventManager::instance();

    manager->subscribe(&handler, "TE.File.Add");
    host->events().send(Event("TE.File.Add", {{"file", "/a.v"}}));
    manager->unsubscribe(&handler, "TE.File.Add");
    manager->unsubscribeAll(&handler);

    QCOMPARE(host->calls(),
             QStringList({"subscribe TE.File.Add", "send TE.File.Add file=/a.v",
                          "unsubscribe TE.File.Add", "unsubscribeAll"}));
}

void TestHostServices::deviceArgumentHoldsAName()
{
    QCOMPARE(DEV::DeviceArg("OD-7").device(), QString("OD-7"));
    QCOMPARE(DEV::DeviceArg().device(), QString());
}

/// A factory as a plug-in would bring it.
class TestFactory : public Core::IFileWizardFactory
{
    Q_OBJECT

public:
    QString id() const override { return "test"; }
    QString name() const override { return "Test"; }
    QString description() const override { return "Makes nothing."; }
    void runWizard(QWidget *, const QString &) override {}
};

void TestHostServices::fileWizardsHaveAPictureAndAreFoundByType()
{
    auto *factory = new TestFactory;
    QVERIFY(!factory->icon().isNull());

    host->objects().add(nullptr, factory);
    QCOMPARE(host->objects().objects<Core::IWizardFactory>(),
             QList<Core::IWizardFactory *>{factory});
    QCOMPARE(host->objects().objects<Core::IFileWizardFactory>(),
             QList<Core::IFileWizardFactory *>{factory});
    QVERIFY(host->objects().objects<QTimer>().isEmpty());

    host->objects().release(nullptr);
    QVERIFY(host->objects().objects().isEmpty());
}

void TestHostServices::scriptedDesignIsAnswered()
{
    TE::DesignManager *manager = TE::TaskEngine::instance()->designManager();
    Standin::Design &design = host->design();
    design.setSourceFiles({"/a.v", "/b.v"}, "top");
    design.setOptionValue("Synthesize_tool", "Synplify");
    design.setOptionValue("IncludePath", QStringList({"inc", "/abs"}));
    design.setWorkingDir("/work");
    TE::DesignFile file;
    file.path = "/a.v";
    file.type = 2;
    file.enable = true;
    design.setFileInfo(file);
    design.setResultFile("RES.netlist", "/work/out.v");

    const QMap<QString, QVariant> info = manager->getSourceFileInfo();
    QCOMPARE(info.value("Top"), QVariant("top"));
    QCOMPARE(info.value("Files").toList(),
             QVariantList({QVariantMap{{"Path", "/a.v"}}, QVariantMap{{"Path", "/b.v"}}}));
    QCOMPARE(manager->getOptionValue("Synthesize_tool"), QVariant("Synplify"));
    QCOMPARE(manager->getOptionValue("IncludePath").toStringList(), QStringList({"inc", "/abs"}));
    QCOMPARE(manager->workingDir(), QString("/work"));
    QCOMPARE(manager->getFileInfo("/a.v").type, 2);
    QVERIFY(manager->getFileInfo("/a.v").enable);
    QCOMPARE(manager->getFileInfo("/b.v").type, 0);
    QCOMPARE(TE::TaskEngine::instance()->flowManager()->resultFile("RES.netlist"),
             QString("/work/out.v"));

    design.clearAnswers();
    QVERIFY(manager->getSourceFileInfo().isEmpty());
    QVERIFY(!manager->getOptionValue("Synthesize_tool").isValid());
}

void TestHostServices::withoutAProjectTheDesignIsEmpty()
{
    TE::DesignManager *manager = TE::TaskEngine::instance()->designManager();

    QVERIFY(manager->getSourceFileInfo().isEmpty());
    QVERIFY(!manager->getOptionValue("TopModule").isValid());
    QCOMPARE(manager->workingDir(), QString());
    QCOMPARE(manager->getFileInfo("/a.v").path, QString());
    QVERIFY(!manager->getFileInfo("/a.v").enable);
    QCOMPARE(TE::TaskEngine::instance()->flowManager()->resultFile("RES.netlist"), QString());
    QVERIFY(!Core::ProjectManager::currentProject());
}

void TestHostServices::designServicesStandWithoutAHost()
{
    host.reset();
    TE::TaskEngine *engine = TE::TaskEngine::instance();
    QVERIFY(engine);
    QCOMPARE(engine, TE::TaskEngine::instance());
    QVERIFY(engine->designManager()->getSourceFileInfo().isEmpty());
    QCOMPARE(engine->flowManager()->resultFile("RES.netlist"), QString());
    QVERIFY(!Core::ProjectManager::currentProject());
}

void TestHostServices::currentProjectIsTheTestsOwn()
{
    struct Project : Core::IProject
    {
        bool addFile(const QString &) override { return true; }
    } project;

    host->setCurrentProject(&project);
    QCOMPARE(Core::ProjectManager::currentProject(), &project);
    host->setCurrentProject(nullptr);
    QVERIFY(!Core::ProjectManager::currentProject());
}

void TestHostServices::scriptedModulesAreAnsweredInOrder()
{
    host->extraction().queueModules({{"a"}, {"a", "b"}, {"WARNING: x"}});
    host->extraction().queueModules({{}, {}, {"ERROR: y"}});

    const Answer first = askModules();
    QCOMPARE(first.topModules, QStringList("a"));
    QCOMPARE(first.modules, QStringList({"a", "b"}));
    QCOMPARE(first.messages, QStringList("WARNING: x"));
    QCOMPARE(askModules().messages, QStringList("ERROR: y"));
}

void TestHostServices::servedAnswersComeWhenTheQueueIsEmpty()
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

void TestHostServices::scriptedNetlistIsDeliveredFromANestedLoop()
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

void TestHostServices::netlistsNobodyAskedForAreDeleted()
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

void TestHostServices::eachServedNetlistIsNew()
{
    host->extraction().serveTop("top", [] { return new CountedNetlist; });

    const std::unique_ptr<FATHOM::RtlNetlist> a(askNetlist());
    const std::unique_ptr<FATHOM::RtlNetlist> b(askNetlist());

    QVERIFY(a && b && a != b);
    QCOMPARE(CountedNetlist::living, 2);
}

void TestHostServices::hookRunsInTheMiddleOfTheCall()
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

void TestHostServices::hookMayAskForAnotherNetlist()
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

void TestHostServices::refusedModulesAreAnError()
{
    host->extraction().serveTop("top", nullptr);
    host->refuse("catchRtlModules");

    const Answer answer = askModules();

    QCOMPARE(answer.messages, QStringList("ERROR: The net extraction service refused the call."));
    QCOMPARE(answer.modules, QStringList());
    QCOMPARE(askModules().modules, QStringList("top"));
}

void TestHostServices::refusedNetlistIsNull()
{
    host->extraction().serveTop("top", [] { return new CountedNetlist; });
    host->refuse("catchRtlNetsWithProgressDialog");

    QVERIFY(!askNetlist());
    const std::unique_ptr<FATHOM::RtlNetlist> next(askNetlist());
    QVERIFY(next);
}

void TestHostServices::scriptedNullNetlistIsDelivered()
{
    host->extraction().queueNetlist(nullptr);
    QVERIFY(!askNetlist());
}

void TestHostServices::callsOfTheExtractionAreRecorded()
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

void TestHostServices::unscriptedDesignIsExtractedForReal()
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

void TestHostServices::realExtractionWithoutADesignStillDelivers()
{
    host.reset();

    const std::unique_ptr<FATHOM::RtlNetlist> netlist(askNetlist());

    QVERIFY(netlist);
    QVERIFY(netlist->top);
}

MOLK_TEST_MAIN(TestHostServices)
#include "tst_hostservices.moc"
