// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/extraction.h"
#include "molkcore.h"
#include "molkfile.h"
#include "project/edamproject.h"
#include "testwidgetsmain.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"

#include <QFile>
#include <QHash>
#include <QTemporaryDir>

#include <memory>

static const char projectPath[] = MOLK_EXAMPLES_DIR "/soc/soc.eda.yml";
static const char configurationPath[] = MOLK_EXAMPLES_DIR "/soc/soc.molk";

/// The example as it lies in the repository: project, design and configuration fit together.
class ExampleTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void theProjectIsFreeOfOddities();
    void theDesignIsReadWithoutAWord();
    void theHierarchyIsDeep();
    void theDesignHoldsEveryKindOfName_data();
    void theDesignHoldsEveryKindOfName();
    void theMemoryIsLeftOut();
    void theConfigurationFitsTheDesign();
    void theConfigurationIsAsTheWriterWritesIt();

private:
    QTemporaryDir cache;
    std::unique_ptr<Standin::EdamProject> project;
    QStringList warnings;
    QStringList log;
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    QHash<QString, FATHOM::RtlNetBus *> buses;
};

void ExampleTest::initTestCase()
{
    QStringList errors;
    project = Standin::EdamProject::open(projectPath, &errors, &warnings);
    QVERIFY2(project, qPrintable(errors.join('\n')));

    Standin::ExtractionOptions options;
    options.cacheDirectory = cache.path();
    Standin::Extraction extraction(options);
    QStringList tops;
    QStringList modules;
    extraction.catchModules(tops, modules, log, project->designInfo(), nullptr);
    QCOMPARE(tops, QStringList("beacon_soc"));

    FATHOM::RtlNetlist *made = nullptr;
    QStringList netLog;
    extraction.catchNets(&made, netLog, nullptr);
    netlist.reset(made);
    const auto all = netlist->top->netbusesIncludeSub();
    for (FATHOM::RtlNetBus *bus : all)
        buses.insert(bus->fullBusName(), bus);
}

void ExampleTest::cleanupTestCase()
{
    netlist.reset();
    project.reset();
}

void ExampleTest::theProjectIsFreeOfOddities()
{
    QCOMPARE(warnings, QStringList());
    const auto files = project->files();
    for (const TE::DesignFile &file : files)
        QVERIFY2(QFile::exists(file.path), qPrintable(file.path));
}

void ExampleTest::theDesignIsReadWithoutAWord()
{
    // Where the machine can't confine a program the log says so; that is no word on the design.
    QCOMPARE(log, log.filter(QRegExp("^WARNING: bubblewrap is missing")));
    QCOMPARE(netlist->top->name(), "beacon_soc");
    QVERIFY(!netlist->usesJtag);
}

static int depthOf(const FATHOM::Hierachy *level)
{
    int deepest = 0;
    const auto children = level->children();
    for (const FATHOM::Hierachy *child : children)
        deepest = qMax(deepest, depthOf(child));
    return deepest + 1;
}

void ExampleTest::theHierarchyIsDeep()
{
    QCOMPARE(depthOf(netlist->top), 5);
}

void ExampleTest::theDesignHoldsEveryKindOfName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isBus");
    QTest::addColumn<bool>("mayWatch");
    QTest::addColumn<bool>("mayDrive");

    QTest::newRow("five-levels") << "u_io/u_uart/u_tx_fifo/u_level/full" << false << true << true;
    QTest::newRow("falling-range") << "u_io/u_uart/tx_byte[7:0]" << true << true << true;
    QTest::newRow("rising-range") << "u_sequencer/pattern[0:7]" << true << true << true;
    QTest::newRow("generate-loop") << "u_io/u_gpio/g_pin[3]/sampled" << false << true << true;
    QTest::newRow("array-of-instances") << "u_quiet[1]/clean" << false << true << true;
    QTest::newRow("parameter-16") << "u_io/u_gpio/g_pin[0]/u_debounce/stable_for[15:0]" << true
                                  << true << true;
    QTest::newRow("parameter-4") << "u_io/u_gpio/g_pin[2]/u_debounce/stable_for[3:0]" << true
                                 << true << true;
    QTest::newRow("interface") << "bridge_bus/rdata[31:0]" << true << true << true;
    QTest::newRow("vhdl") << "u_io/u_watchdog/cycles_left[23:0]" << true << true << true;
    QTest::newRow("escaped-star") << "u_bridge/u_baud/tick*16" << false << true << true;
    QTest::newRow("escaped-dash") << "u_bridge/u_receiver/break-seen" << false << true << true;
    QTest::newRow("escaped-dot") << "bite.count[3:0]" << true << true << true;
    QTest::newRow("structure") << "interrupts[3:0]" << true << true << true;
    QTest::newRow("clock") << "clk" << false << true << false;
    QTest::newRow("top-input") << "uart_rx" << false << true << false;
    QTest::newRow("pads") << "pins[0:7]" << true << true << false;
    QTest::newRow("constant") << "interrupt_mask[3:0]" << true << false << false;
}

void ExampleTest::theDesignHoldsEveryKindOfName()
{
    QFETCH(QString, name);
    QFETCH(bool, isBus);
    QFETCH(bool, mayWatch);
    QFETCH(bool, mayDrive);

    const QString path = "beacon_soc/" + name;
    if (isBus) {
        const FATHOM::RtlNetBus *bus = buses.value(path);
        QVERIFY(bus);
        QCOMPARE(!bus->noProbeIn, mayWatch);
        QCOMPARE(!bus->noProbeOut, mayDrive);
    } else {
        const FATHOM::RtlNet *net = netlist->findNet(path);
        QVERIFY(net);
        QCOMPARE(!net->noProbeIn, mayWatch);
        QCOMPARE(!net->noProbeOut, mayDrive);
    }
}

void ExampleTest::theMemoryIsLeftOut()
{
    const auto names = buses.keys();
    for (const QString &name : names)
        QVERIFY2(!name.startsWith("beacon_soc/u_io/u_ram/memory"), qPrintable(name));
}

static QList<MOLK::ProbeIn *> allPorts(const MOLK::MolkCore *core)
{
    QList<MOLK::ProbeIn *> ports = core->getAllProbeIns();
    const auto outs = core->getAllProbeOuts();
    ports.reserve(ports.size() + outs.size());
    for (MOLK::ProbeOut *out : outs)
        ports.append(out);
    return ports;
}

void ExampleTest::theConfigurationFitsTheDesign()
{
    bool ok = false;
    QString error;
    const auto cores = MOLK::readMOLKConfigFromXml(configurationPath, &ok, &error);
    QVERIFY2(ok, qPrintable(error));
    QCOMPARE(cores.size(), 2);

    int signalCount = 0;
    for (const MOLK::MolkCore *core : cores) {
        const auto ports = allPorts(core);
        for (const MOLK::ProbeIn *port : ports) {
            const QStringList names = port->singleSignals();
            for (const QString &name : names)
                QVERIFY2(netlist->findNet(name), qPrintable(name));
            const auto items = port->getSignalNet();
            for (const MOLK::SignalItem &item : items) {
                if (!item.members.isEmpty())
                    QVERIFY2(buses.contains(item.name), qPrintable(item.name));
            }
            signalCount += names.size();
        }
        if (core->useUserClock)
            QVERIFY(netlist->findNet(core->getUserClockName()));
    }
    QVERIFY(signalCount > 50);
    qDeleteAll(cores);
}

void ExampleTest::theConfigurationIsAsTheWriterWritesIt()
{
    bool ok = false;
    const auto cores = MOLK::readMOLKConfigFromXml(configurationPath, &ok, nullptr);
    QVERIFY(ok);
    QTemporaryDir dir;
    QVERIFY(MOLK::writeMOLKConfigToXml(cores, dir.filePath("copy.molk")));
    qDeleteAll(cores);

    QFile original(configurationPath);
    QFile copy(dir.filePath("copy.molk"));
    QVERIFY(original.open(QIODevice::ReadOnly));
    QVERIFY(copy.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(copy.readAll()), QString::fromUtf8(original.readAll()));
}

MOLK_TEST_MAIN(ExampleTest)
#include "tst_example.moc"
