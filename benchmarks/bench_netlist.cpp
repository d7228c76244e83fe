// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// From the file that the front end writes to the design's hierarchy, against one bare pass of the
// XML parser over the same file; and the memory that a net bit takes before anybody asks for bits.
//
// The front end runs once, outside of what is measured, on a design of a million net bits that is
// made here: modules that differ, in three copies each, with what usually fills modules.

#include "comparison.h"

#include "netlist/moduletable.h"
#include "netlist/verilatorxml.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QXmlStreamReader>

#include <memory>

static const int modules = 240;
static const int copies = 3;
static const int buses = 40;
static const int singles = 100;
static const int bitsOfABus = 32;
static const int levels = modules * copies;
static const int bits = levels * (buses * bitsOfABus + singles);

static void writeModule(QTextStream &text, int number)
{
    text << "module unit" << number << "(input logic clk, input logic rst_n);\n";
    for (int i = 0; i < buses; ++i)
        text << "  logic [" << bitsOfABus - 1 << ":0] payload_data_" << i << "_q;\n";
    for (int i = 2; i < singles; ++i)
        text << "  logic handshake_valid_" << i << "_q;\n";
    for (int i = 1; i < buses; ++i) {
        text << "  always_ff @(posedge clk or negedge rst_n)\n"
             << "    if (!rst_n) payload_data_" << i << "_q <= 0;\n"
             << "    else if (handshake_valid_" << i + 1 << "_q) payload_data_" << i
             << "_q <= payload_data_" << i - 1 << "_q + {payload_data_" << i << "_q[" << i % 24 + 7
             << ":0], " << 24 - i % 24 << "'d" << number << "};\n";
    }
    for (int i = 3; i < singles; ++i) {
        text << "  assign handshake_valid_" << i << "_q = handshake_valid_" << i - 1
             << "_q & ~payload_data_" << i % buses << "_q[" << i % bitsOfABus << "];\n";
    }
    text << "endmodule\n";
}

static void writeDesign(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("no temporary file");
    QTextStream text(&file);
    for (int i = 0; i < modules; ++i)
        writeModule(text, i);
    text << "module top(input logic clk, input logic rst_n);\n";
    for (int i = 0; i < levels; ++i)
        text << "  unit" << i % modules << " u_unit_" << i << "(.clk(clk), .rst_n(rst_n));\n";
    text << "endmodule\n";
}

static void runFrontEnd(const QString &source, const QString &output)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::ForwardedChannels);
    tool.start("verilator",
               {"--xml-only", "-O0", "-Wno-fatal", "-Wno-lint", "-Wno-style", "--no-timing",
                "--top-module", "top", "--Mdir", output + ".dir", "--xml-output", output, source});
    if (!tool.waitForFinished(-1) || tool.exitStatus() != QProcess::NormalExit
        || tool.exitCode() != 0)
        qFatal("verilator has failed: %s", qPrintable(tool.errorString()));
}

static void parseBare(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no output");
    QXmlStreamReader xml(&file);
    while (!xml.atEnd())
        xml.readNext();
    if (xml.hasError())
        qFatal("%s", qPrintable(xml.errorString()));
}

static FATHOM::RtlNetlist *build(const QString &path)
{
    Standin::ModuleTable table;
    QString error;
    if (!Standin::readVerilatorXml(path, Standin::XmlReadOptions(), &table, &error))
        qFatal("%s", qPrintable(error));
    FATHOM::RtlNetlist *netlist = Standin::elaborate(std::move(table), &error);
    if (!netlist)
        qFatal("%s", qPrintable(error));
    return netlist;
}

// Asks for no bit, so that none is made.
static void requireWhole(const FATHOM::RtlNetlist &netlist)
{
    const int found = netlist.top->netbusesIncludeSub().size() * bitsOfABus
        + netlist.top->singleNetsIncludeSub().size();
    // The top has its two ports.
    if (found != bits + 2)
        qFatal("the design has %d bits and not %d", found, bits + 2);
}

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    Comparison comparison(argc, argv);
    if (!comparison.wantsAny({"netlist-build", "netlist-heap"}))
        return comparison.exitCode();
    const QTemporaryDir directory;
    const QString xml = directory.filePath("design.xml");
    writeDesign(directory.filePath("design.sv"));
    runFrontEnd(directory.filePath("design.sv"), xml);

    std::unique_ptr<FATHOM::RtlNetlist> netlist;
    const Side value{[&] { netlist.reset(build(xml)); }, [] {},
                     [&] {
                         netlist.reset();
                     }};
    comparison.time("netlist-build", 1.3, bits, value, {[&] {
                        parseBare(xml);
                    }},
                    Clock::Wall);

    if (comparison.wants("netlist-heap")) {
        const double before = Comparison::heap();
        netlist.reset(build(xml));
        const double bytes = (Comparison::heap() - before) / bits;
        requireWhole(*netlist);
        comparison.print("netlist-heap", bytes, 8, bytes, 1, "bytes a bit", bits);
    }
    return comparison.exitCode();
}
