// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkfilewizardfactory.h"
#include "molkinserterplugin.h"
#include "molkview.h"
#include "molkviewmanager.h"
#include "testwidgetsmain.h"
#include "viewbench.h"

#include "dev/devicearg.h"

#include <QAction>
#include <QPointer>

using namespace MOLK;

// The manager comes up and goes down once in a process, so this is the life of one plug-in, told in
// the order in which it happens.
class tst_MolkInserterPlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void answersForItsTypes();
    void hasNoMembersOfItsOwn();
    void initializeRegistersInOrder();
    void extensionsDoNothing();
    void shutdownInsideAnOpeningEndsTheManager();
    void poolReleasesTheWizard();
    void cleanupTestCase();

private:
    std::unique_ptr<ViewBench> bench;
    std::unique_ptr<MolkInserterPlugin> plugin;
};

void tst_MolkInserterPlugin::initTestCase()
{
    bench = std::make_unique<ViewBench>();
    plugin = std::make_unique<MolkInserterPlugin>();
    QVERIFY(plugin->parent() == nullptr);
    QCOMPARE(bench->host.calls(), QStringList());
}

void tst_MolkInserterPlugin::answersForItsTypes()
{
    void *self = plugin.get();
    QCOMPARE(plugin->qt_metacast("MOLK::MolkInserterPlugin"), self);
    QCOMPARE(plugin->qt_metacast(ADDIN_IPLUGIN_IID), self);
    QCOMPARE(plugin->qt_metacast("Addin::IPlugin"), self);
    QVERIFY(plugin->qt_metacast("MolkInserterPlugin") == nullptr);
    QVERIFY(plugin->qt_metacast(nullptr) == nullptr);
    QCOMPARE(qobject_cast<Addin::IPlugin *>(static_cast<QObject *>(plugin.get())), plugin.get());
}

void tst_MolkInserterPlugin::hasNoMembersOfItsOwn()
{
    QCOMPARE(sizeof(MolkInserterPlugin), sizeof(Addin::IPlugin));
    const QMetaObject *meta = plugin->metaObject();
    QCOMPARE(meta->methodCount(), meta->methodOffset());
    QCOMPARE(sizeof(MolkViewManager), sizeof(QObject));
}

void tst_MolkInserterPlugin::initializeRegistersInOrder()
{
    QVERIFY(plugin->initialize());

    QCOMPARE(bench->host.calls(),
             QStringList({"addAutoReleasedObject MOLK::MolkFileWizardFactory",
                          "registerAction Core.Action.Save MOLK.MolkViewManager.Context"}));
    QCOMPARE(bench->host.objects().objects<MolkFileWizardFactory>().size(), 1);
    QCOMPARE(bench->host.objects().objects<Core::IWizardFactory>().first()->id(),
             QString("MB.Wizard.MOLK"));
    QVERIFY(bench->host.objects().objects<MolkViewManager>().isEmpty());
}

void tst_MolkInserterPlugin::extensionsDoNothing()
{
    bench->host.clearCalls();

    plugin->extensions();

    QCOMPARE(bench->host.calls(), QStringList());
}

void tst_MolkInserterPlugin::shutdownInsideAnOpeningEndsTheManager()
{
    const QPointer<MolkViewManager> manager = MolkViewManager::instance();
    const QPointer<QAction> action = manager->findChild<QAction *>();
    MolkViewManager::openMolkView(bench->writeCores(1, "a.molk"), DEV::DeviceArg());
    QCOMPARE(manager->molkViews().size(), 1);
    MolkView *view = manager->molkViews().first();
    bench->host.extraction().duringNetlist([&] { plugin->shutdown(); });

    QVERIFY(MolkViewManager::openMolkView(bench->writeCores(1, "b.molk"), DEV::DeviceArg()));

    QVERIFY(!manager);
    QVERIFY(!action);
    // The view that was open is the host's and lives on; it has nobody to tell any more.
    QCOMPARE(bench->host.documentArea()->views(), QList<Core::IView *>({view}));
    view->onModified();
    view->setModified(false);
    bench->host.documentArea()->dropAllViews();
}

void tst_MolkInserterPlugin::poolReleasesTheWizard()
{
    const QPointer<QObject> wizard = bench->host.objects().objects<MolkFileWizardFactory>().first();

    plugin.reset();

    QVERIFY(!wizard);
}

void tst_MolkInserterPlugin::cleanupTestCase()
{
    bench.reset();
}

MOLK_TEST_MAIN(tst_MolkInserterPlugin)
#include "tst_molkinserterplugin.moc"
