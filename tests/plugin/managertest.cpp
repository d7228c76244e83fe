// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "managertest.h"

#include "dev/devicearg.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTest>

using namespace MOLK;

ManagerTest::ManagerTest() = default;

ManagerTest::~ManagerTest() = default;

void ManagerTest::initTestCase()
{
    // Static initialisation has made the manager, and nothing more.
    QVERIFY(manager());
    QVERIFY(manager()->parent() == nullptr);
    QVERIFY(!saveAction());
    QVERIFY(manager()->molkViews().isEmpty());

    bench = std::make_unique<ViewBench>();
    plugin = std::make_unique<MolkInserterPlugin>();
    QVERIFY(plugin->initialize());

    QVERIFY(saveAction());
    QVERIFY(!saveAction()->isEnabled());
    QCOMPARE(saveAction()->text(), QString());
    QCOMPARE(bench->host.callsOf({"registerAction"}),
             QStringList("registerAction Core.Action.Save MOLK.MolkViewManager.Context"));
}

void ManagerTest::cleanup()
{
    bench->host.documentArea()->dropAllViews();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(manager()->molkViews().isEmpty());
    QVERIFY(!saveAction()->isEnabled());
    saveAction()->setText(QString());
    bench->host.design().clearAnswers();
    bench->host.serveDesign("top", benchNetlist);
    bench->host.clearCalls();
    const QStringList files = QDir(bench->dir.path()).entryList(QDir::Files);
    for (const QString &file : files)
        QVERIFY(QFile::remove(bench->path(file)));
}

void ManagerTest::cleanupTestCase()
{
    const QPointer<QAction> action = saveAction();
    plugin->shutdown();
    QVERIFY(!action);
    plugin.reset();
    bench.reset();
}

QString ManagerTest::actionState()
{
    return saveAction()->text() + " | " + saveAction()->toolTip() + " | "
        + QLatin1String(saveAction()->isEnabled() ? "on" : "off");
}

MolkView *ManagerTest::open(const QString &file)
{
    const int before = manager()->molkViews().size();
    MolkViewManager::openMolkView(file, DEV::DeviceArg("OD-500"));
    const QList<MolkView *> views = manager()->molkViews();
    return views.size() == before + 1 ? views.last() : nullptr;
}
