// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testwidgetsmain.h"

#include "host/host.h"
#include "host/molkbridge.h"

#include "addin/iplugin.h"
#include "core/iview.h"
#include "dev/devicearg.h"

#include <QFile>
#include <QTemporaryDir>

using Standin::Host;
using Standin::MolkBridge;

/// A library can be taken through its life once in a process, so the tests on the good ones build
/// on one another in the order in which they stand.
class TestHostPlugins : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void unusableFilesAreRefused_data();
    void unusableFilesAreRefused();
    void otherInterfaceIsRefusedWithoutLoading();
    void pluginThatRefusesIsDeletedWithItsObjects();
    void pluginsGoThroughTheirLifeInOrder();
    void spentLibraryIsRefused();
    void bridgeNamesWhatIsMissing();
    void bridgeWithoutALibraryDoesNothing();
};

static const QString iid = "MOLK.MolkInserterPlugin/1.0";

static QString library(const QString &name)
{
    return MOLK_TEST_PLUGINS + name + ".so";
}

static QStringList takeNews()
{
    const QStringList news = qApp->property("news").toStringList();
    qApp->setProperty("news", QStringList());
    return news;
}

void TestHostPlugins::cleanup()
{
    takeNews();
}

void TestHostPlugins::unusableFilesAreRefused_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("why");

    QTest::newRow("missing") << library("missing") << "there is no such file.";
    QTest::newRow("directory") << QString(MOLK_TEST_PLUGINS) << "there is no such file.";
    QTest::newRow("other-library")
        << library("notaplugin") << "it is no plug-in of this version of Qt.";
    QTest::newRow("other-class") << library("wrongclass")
                                 << "it does not implement the interface \"Addin.IPlugin/1.0\".";
    QTest::newRow("other-interface")
        << library("wronginterface")
        << "its interface is \"Other.Plugin/1.0\", not \"MOLK.MolkInserterPlugin/1.0\".";
}

void TestHostPlugins::unusableFilesAreRefused()
{
    QFETCH(QString, file);
    QFETCH(QString, why);
    Host host;
    QString error;

    QVERIFY(!host.plugins().load(file, iid, &error));

    QCOMPARE(error, "Cannot load the plug-in " + file + ": " + why);
    QVERIFY(host.plugins().plugins().isEmpty());
    QCOMPARE(host.calls(), QStringList());
}

void TestHostPlugins::otherInterfaceIsRefusedWithoutLoading()
{
    Host host;
    QString error;
    QVERIFY(!host.plugins().load(library("wronginterface"), iid, &error));
    QVERIFY(!qEnvironmentVariableIsSet("MOLK_TEST_WRONG_INTERFACE_LOADED"));

    QVERIFY(host.plugins().load(library("wronginterface"), "Other.Plugin/1.0", &error));
    QVERIFY(qEnvironmentVariableIsSet("MOLK_TEST_WRONG_INTERFACE_LOADED"));

    QVERIFY(!host.plugins().load(library("unresolved"), iid, &error));
    QVERIFY2(error.contains("molkTestSymbolThatNobodyHas"), qPrintable(error));
}

void TestHostPlugins::pluginThatRefusesIsDeletedWithItsObjects()
{
    Host host;
    QString error;

    QVERIFY(!host.plugins().load(library("refusing"), iid, &error));

    QCOMPARE(error,
             "Cannot load the plug-in " + library("refusing") + ": it could not be initialised.");
    QCOMPARE(takeNews(), QStringList({"deleted left over", "deleted refusing"}));
    QVERIFY(host.objects().objects().isEmpty());
    host.plugins().startExtensions();
    host.shutDown();
    QCOMPARE(takeNews(), QStringList());
}

void TestHostPlugins::pluginsGoThroughTheirLifeInOrder()
{
    Host host;
    QString error;

    Addin::IPlugin *good = host.plugins().load(library("good"), iid, &error);
    QVERIFY2(good, qPrintable(error));
    QCOMPARE(good->metaObject()->className(), "GoodPlugin");
    QVERIFY(!host.plugins().load(library("good"), iid, &error));
    QCOMPARE(error, "Cannot load the plug-in " + library("good") + ": it is loaded already.");
    QVERIFY(host.plugins().load(library("second"), iid, &error));
    QCOMPARE(host.plugins().plugins().size(), 2);
    QCOMPARE(host.plugins().plugins().first(), good);
    QCOMPARE(host.objects().objects().size(), 2);
    QCOMPARE(host.objects().objects().first()->objectName(), QString("one"));

    host.plugins().startExtensions();
    host.plugins().startExtensions();
    QCOMPARE(takeNews(),
             QStringList({"initialize", "initialize second", "extensions", "extensions second"}));

    MolkBridge bridge;
    QVERIFY(!bridge.isReady());
    QVERIFY2(bridge.resolve(library("good"), &error), qPrintable(error));
    QVERIFY(bridge.isReady());
    bridge.openMolkView("a.molk", DEV::DeviceArg("OD-7"));
    bridge.openMolkView("b.molk", DEV::DeviceArg());
    const QList<Core::IView *> views = bridge.molkViews();
    QCOMPARE(views, host.documentArea()->views());
    QCOMPARE(views.first()->windowTitle(), QString("a.molk for OD-7"));
    QVERIFY(bridge.closeMolkView("known"));
    QVERIFY(!bridge.closeMolkView("unknown"));
    QCOMPARE(takeNews(), QStringList({"close known", "close unknown"}));

    host.clearCalls();
    bridge.reset();
    QVERIFY(!bridge.isReady());
    host.shutDown();
    QCOMPARE(host.calls(),
             QStringList({"viewClosed a.molk for OD-7", "viewClosed b.molk for ",
                          "viewActiveted null", "shutdown SecondPlugin", "shutdown GoodPlugin"}));
    QCOMPARE(takeNews(),
             QStringList(
                 {"shutdown second", "shutdown", "deleted two", "deleted one", "deleted plug-in"}));
    QVERIFY(host.plugins().plugins().isEmpty());
    QVERIFY(host.objects().objects().isEmpty());
}

void TestHostPlugins::spentLibraryIsRefused()
{
    Host host;
    QString error;
    QVERIFY(!host.plugins().load(library("good"), iid, &error));
    QCOMPARE(error,
             "Cannot load the plug-in " + library("good")
                 + ": it has been shut down in this process before.");
}

void TestHostPlugins::bridgeNamesWhatIsMissing()
{
    MolkBridge bridge;
    QString error;
    QVERIFY(!bridge.resolve(library("notaplugin"), &error));
    QCOMPARE(error,
             "The plug-in " + library("notaplugin")
                 + " does not export these operations of MOLK::MolkViewManager: instance, "
                   "openMolkView, closeMolkView, molkViews.");
    QVERIFY(!bridge.isReady());
}

void TestHostPlugins::bridgeWithoutALibraryDoesNothing()
{
    const MolkBridge bridge;
    bridge.openMolkView("a.molk", DEV::DeviceArg());
    QVERIFY(!bridge.closeMolkView("a.molk"));
    QVERIFY(bridge.molkViews().isEmpty());
}

MOLK_TEST_MAIN(TestHostPlugins)
#include "tst_hostplugins.moc"
