// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testwidgetsmain.h"

#include "host/host.h"

#include "core/ifilewizardfactory.h"
#include "core/iproject.h"
#include "core/projectmanager.h"
#include "dev/devicearg.h"
#include "qutil/eventmanager.h"
#include "qutil/ieventhandler.h"
#include "te/designmanager.h"
#include "te/flowmanager.h"
#include "te/taskengine.h"

#include <QTimer>

#include <memory>

using Standin::Event;
using Standin::Host;

/// What the host says of itself, of the project and of the design, and what it records.
class TestHostServices : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void thereIsOneHost();
    void recordingCanBeTurnedOff();
    void callsAreFilteredByName();
    void eventsAreRecorded();
    void deviceArgumentHoldsAName();
    void fileWizardsHaveAPictureAndAreFoundByType();
    void scriptedDesignIsAnswered();
    void withoutAProjectTheDesignIsEmpty();
    void designServicesStandWithoutAHost();
    void currentProjectIsTheTestsOwn();

private:
    std::unique_ptr<Host> host;
};

void TestHostServices::init()
{
    host = std::make_unique<Host>();
}

void TestHostServices::cleanup()
{
    host.reset();
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

MOLK_TEST_MAIN(TestHostServices)
#include "tst_hostservices.moc"
