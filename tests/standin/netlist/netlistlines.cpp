// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlistlines.h"

#include "netlist/verilatorxml.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"

#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

template<typename Object>
static QString flagText(const Object *object)
{
    return QLatin1String(object->noProbeIn ? " -in" : "")
        + QLatin1String(object->noProbeOut ? " -out" : "");
}

static QString bitText(const FATHOM::RtlNetBus *bus)
{
    QString digits;
    for (const FATHOM::RtlNet *bit : bus->nets())
        digits += QString::number(int(bit->noProbeIn) + 2 * int(bit->noProbeOut));
    return digits.count(digits.at(0)) == digits.size() ? QString() : " " + digits;
}

static void addLines(const FATHOM::Hierachy *level, const QString &indent, QStringList *lines)
{
    *lines += indent + level->name() + " (" + level->module() + ")";
    for (const FATHOM::RtlNet *net : level->singleNets())
        *lines += indent + "  . " + net->name() + flagText(net);
    for (const FATHOM::RtlNetBus *bus : level->netbuses())
        *lines += indent + "  = " + bus->BusName() + flagText(bus) + bitText(bus);
    for (const FATHOM::Hierachy *child : level->children())
        addLines(child, indent + "  ", lines);
}

QStringList netlistLines(const FATHOM::RtlNetlist &netlist)
{
    QStringList lines;
    addLines(netlist.top, QString(), &lines);
    return lines;
}

static QList<FATHOM::RtlNet *> allNets(const FATHOM::RtlNetlist &netlist)
{
    QList<FATHOM::RtlNet *> nets = netlist.top->singleNetsIncludeSub();
    for (const FATHOM::RtlNetBus *bus : netlist.top->netbusesIncludeSub())
        nets += bus->nets();
    return nets;
}

QStringList allFullNames(const FATHOM::RtlNetlist &netlist)
{
    QStringList names;
    for (const FATHOM::RtlNet *net : allNets(netlist))
        names += net->fullPathName();
    for (const FATHOM::RtlNetBus *bus : netlist.top->netbusesIncludeSub())
        names += bus->fullBusName();
    return names;
}

QStringList namesNotFound(const FATHOM::RtlNetlist &netlist)
{
    QStringList wrong;
    for (FATHOM::RtlNet *net : allNets(netlist)) {
        if (netlist.findNet(net->fullPathName()) != net)
            wrong += "not found: " + net->fullPathName();
    }
    QSet<QString> seen;
    for (const QString &name : allFullNames(netlist)) {
        if (seen.contains(name))
            wrong += "twice: " + name;
        seen.insert(name);
    }
    for (const FATHOM::RtlNetBus *bus : netlist.top->netbusesIncludeSub()) {
        if (netlist.findNet(bus->fullBusName()))
            wrong += "is no net: " + bus->fullBusName();
    }
    return wrong;
}

static bool writeFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

std::unique_ptr<FATHOM::RtlNetlist> elaborated(const QByteArray &source, const QByteArray &stubs)
{
    const QTemporaryDir directory;
    const QString xml = directory.filePath("design.xml");
    if (!writeFile(directory.filePath("design.sv"), source)
        || !writeFile(directory.filePath("stubs.v"), stubs)) {
        QTest::qFail("the sources can't be written", __FILE__, __LINE__);
        return nullptr;
    }
    QProcess verilator;
    verilator.setWorkingDirectory(directory.path());
    verilator.setProcessChannelMode(QProcess::MergedChannels);
    verilator.start("verilator_bin",
                    {"--xml-only", "-O0", "--bbox-unsup", "--bbox-sys", "-Wno-fatal", "-Wno-lint",
                     "-Wno-style", "--no-timing", "--Mdir", "m", "--xml-output", xml,
                     "--top-module", "top", "design.sv", "stubs.v"});
    if (!verilator.waitForFinished() || verilator.exitCode() != 0) {
        QTest::qFail(verilator.readAll().constData(), __FILE__, __LINE__);
        return nullptr;
    }
    Standin::XmlReadOptions options;
    options.blackBoxFiles = QStringList("stubs.v");
    Standin::ModuleTable table;
    QString error;
    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    if (Standin::readVerilatorXml(xml, options, &table, &error))
        netlist.reset(Standin::elaborate(std::move(table), &error));
    if (!netlist)
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    return netlist;
}

std::unique_ptr<FATHOM::RtlNetlist> elaboratedFile(const QString &name, const QByteArray &stubs)
{
    QFile file(QString(MOLK_TESTS_DIR) + "/data/rtl/" + name);
    if (!file.open(QIODevice::ReadOnly)) {
        QTest::qFail(qPrintable(file.fileName()), __FILE__, __LINE__);
        return nullptr;
    }
    return elaborated(file.readAll(), stubs);
}
