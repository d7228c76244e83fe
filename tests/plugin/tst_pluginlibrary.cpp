// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The library as a host meets it: its bytes, its symbols, its entry points. Nothing here links the
// plug-in's code.

#include "elfsection.h"
#include "testwidgetsmain.h"

#include "addin/iplugin.h"
#include "host/host.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

class tst_PluginLibrary : public QObject
{
    Q_OBJECT

private slots:
    void fileHasItsName();
    void metadataOfTheBuiltLibrary();
    void metadataOfTheInstalledLibrary_data();
    void metadataOfTheInstalledLibrary();
    void metadataIsTheSameInEveryBuild_data();
    void metadataIsTheSameInEveryBuild();
    void onlyTheInterfaceIsExported();
    void hostSymbolsStayOpen();
    void metaDataIsReadWithoutLoading();
    void entryPointsWork();
};

static const char library[] = MOLK_PLUGIN_FILE;

// The block that hosts read, field by field.
static QByteArray wantedMetadata()
{
    QByteArray block = "QTMETADATA !";
    block.append('\0');                     // format
    block.append(char(5)).append(char(15)); // Qt
    block.append('\0');                     // a release build for any processor
    block.append(char(0xbf));               // a map
    block.append(char(0x02)).append(char(0x78)).append(char(0x1b));
    block.append("MOLK.MolkInserterPlugin/1.0");
    block.append(char(0x03)).append(char(0x72)).append("MolkInserterPlugin");
    block.append(char(0xff));
    return block;
}

static QString outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished(60000);
    const QString output = QString::fromLocal8Bit(process.readAll());
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        QTest::qFail(qPrintable(program + ": " + output), __FILE__, __LINE__);
    return output;
}

static void compareMetadata(const QString &file)
{
    QCOMPARE(wantedMetadata().size(), 68);
    QCOMPARE(elfSections(file, ".qtmetadata"), QList<QByteArray>({wantedMetadata()}));
    QCOMPARE(elfSections(file, ".qtmetad"), QList<QByteArray>({wantedMetadata()}));
}

void tst_PluginLibrary::fileHasItsName()
{
    QCOMPARE(QFileInfo(library).fileName(), QString("libMolkInserterPlugin.so"));
}

void tst_PluginLibrary::metadataOfTheBuiltLibrary()
{
    compareMetadata(library);
}

void tst_PluginLibrary::metadataOfTheInstalledLibrary_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("as-it-is") << QStringList();
    QTest::newRow("stripped") << QStringList("--strip");
}

void tst_PluginLibrary::metadataOfTheInstalledLibrary()
{
    QFETCH(QStringList, options);
    QTemporaryDir prefix;

    outputOf(MOLK_CMAKE,
             QStringList(
                 {"--install", MOLK_BUILD_DIR, "--component", "plugin", "--prefix", prefix.path()})
                 + options);

    const QString installed = prefix.filePath(MOLK_PLUGIN_INSTALL_DIR "/libMolkInserterPlugin.so");
    QVERIFY(QFile::exists(installed));
    compareMetadata(installed);
}

void tst_PluginLibrary::metadataIsTheSameInEveryBuild_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("debug") << QStringList({"-g", "-O0"});
    QTest::newRow("release") << QStringList({"-O3", "-DNDEBUG"});
#if defined(__x86_64__)
    QTest::newRow("avx2") << QStringList("-mavx2");
    QTest::newRow("avx512") << QStringList({"-march=skylake-avx512", "-O2"});
#endif
}

// Compiles the plug-in class once more, with \a options where CMAKE_CXX_FLAGS stand.
void tst_PluginLibrary::metadataIsTheSameInEveryBuild()
{
    QFETCH(QStringList, options);
    QFile database(MOLK_BUILD_DIR "/compile_commands.json");
    QVERIFY(database.open(QIODevice::ReadOnly));
    QStringList command;
    const QJsonArray entries = QJsonDocument::fromJson(database.readAll()).array();
    for (const QJsonValue &entry : entries) {
        if (entry["file"].toString().endsWith("/plugin/molkinserterplugin.cpp"))
            command = QProcess::splitCommand(entry["command"].toString());
    }
    QVERIFY(!command.isEmpty());
    const int output = command.indexOf("-o") + 1;
    QVERIFY(output > 0);
    QTemporaryDir dir;
    const QString object = dir.filePath("plugin.o");
    command[output] = object;
    const int compiler = command.indexOf(QRegularExpression(".*(\\+\\+|clazy)[^/]*"));
    QVERIFY(compiler >= 0);
    for (int i = 0; i < options.size(); ++i)
        command.insert(compiler + 1 + i, options.at(i));

    outputOf(command.first(), command.mid(1));

    QCOMPARE(elfSections(object, ".qtmetadata"), QList<QByteArray>({wantedMetadata()}));
}

void tst_PluginLibrary::onlyTheInterfaceIsExported()
{
    const QString output = outputOf(MOLK_NM, {"-D", "--defined-only", library});
    const QRegularExpression allowed("^(qt_plugin_instance|qt_plugin_query_metadata"
                                     "|_ZNK?4MOLK(8MolkView|15MolkViewManager)[A-Z0-9].*"
                                     "|_ZThn[0-9]+_N4MOLK8MolkView[A-Z0-9].*"
                                     "|_ZT[ISV]N4MOLK(8MolkView|15MolkViewManager)E)$");
    QStringList names;
    const QStringList lines = output.split('\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QString name = line.section(' ', -1);
        QVERIFY2(allowed.match(name).hasMatch(), qPrintable(name));
        names.append(name);
    }
    for (const char *wanted :
         {"qt_plugin_instance", "qt_plugin_query_metadata", "_ZN4MOLK15MolkViewManager8instanceEv",
          "_ZN4MOLK15MolkViewManager12openMolkViewERK7QStringRKN3DEV9DeviceArgE",
          "_ZN4MOLK15MolkViewManager13closeMolkViewERK7QString",
          "_ZN4MOLK8MolkView16staticMetaObjectE", "_ZN4MOLK8MolkView4saveEv"})
        QVERIFY2(names.contains(QLatin1String(wanted)), wanted);
}

void tst_PluginLibrary::hostSymbolsStayOpen()
{
    const QString output = outputOf(MOLK_NM, {"-D", "-C", "--undefined-only", library});
    for (const char *wanted :
         {"Addin::IPlugin::addAutoReleasedObject(QObject*)",
          "Core::ActionManager::registerAction(QAction*, QString const&, QString const&)",
          "Core::ViewManager::showView(Core::IView*)", "Core::ProjectManager::currentProject()",
          "TE::TaskEngine::instance()", "QUtil::EventManager::instance()",
          "FATHOM::catchRtlNetsWithProgressDialog(FATHOM::RtlNetlist**, QStringList&, QWidget*)"})
        QVERIFY2(output.contains(QLatin1String(wanted)), wanted);
    QVERIFY(!output.contains("Standin::"));
}

void tst_PluginLibrary::metaDataIsReadWithoutLoading()
{
    QPluginLoader loader(library);

    const QJsonObject metaData = loader.metaData();

    QCOMPARE(metaData["IID"].toString(), QString("MOLK.MolkInserterPlugin/1.0"));
    QCOMPARE(metaData["className"].toString(), QString("MolkInserterPlugin"));
    QVERIFY(!metaData["debug"].toBool());
    QVERIFY(!metaData.contains("MetaData"));
    QVERIFY(!loader.isLoaded());
    QFile maps("/proc/self/maps");
    QVERIFY(maps.open(QIODevice::ReadOnly));
    QVERIFY(!maps.readAll().contains("libMolkInserterPlugin"));
}

// Loads the library for good, so it comes last.
void tst_PluginLibrary::entryPointsWork()
{
    Standin::Host host;
    QPluginLoader loader(library);
    // The code stays until the process ends, so that what it registered can't dangle.
    loader.setLoadHints(QLibrary::PreventUnloadHint);
    QVERIFY2(loader.load(), qPrintable(loader.errorString()));
    QLibrary resolver(library);
    const auto instance = reinterpret_cast<QObject *(*)()>(resolver.resolve("qt_plugin_instance"));
    const auto query =
        reinterpret_cast<const char *(*)()>(resolver.resolve("qt_plugin_query_metadata"));
    const auto manager =
        reinterpret_cast<QObject *(*)()>(resolver.resolve("_ZN4MOLK15MolkViewManager8instanceEv"));
    QVERIFY(instance && query && manager);

    // Static initialisation has made the manager, and registered nothing.
    QVERIFY(manager());
    QCOMPARE(manager()->metaObject()->className(), "MOLK::MolkViewManager");
    QCOMPARE(host.calls(), QStringList());

    QCOMPARE(QByteArray(query(), 68), wantedMetadata());
    const QPointer<QObject> plugin = instance();
    QVERIFY(plugin);
    QCOMPARE(instance(), plugin.data());
    QCOMPARE(loader.instance(), plugin.data());
    QVERIFY(plugin->parent() == nullptr);
    QCOMPARE(plugin->metaObject()->className(), "MOLK::MolkInserterPlugin");
    QCOMPARE(qobject_cast<Addin::IPlugin *>(plugin.data()), plugin.data());

    delete plugin.data();
    const QPointer<QObject> next = instance();
    QVERIFY(next);
    auto *addin = qobject_cast<Addin::IPlugin *>(next.data());
    QVERIFY(addin);
    QVERIFY(addin->initialize());
    QCOMPARE(host.callsOf({"registerAction"}),
             QStringList("registerAction Core.Action.Save MOLK.MolkViewManager.Context"));
    addin->shutdown();
    delete next.data();
}

MOLK_TEST_MAIN(tst_PluginLibrary)
#include "tst_pluginlibrary.moc"
