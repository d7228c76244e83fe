// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Source texts of any kind go through everything that reads or changes them, ahead of the tools and
// after they found fault. What keeps places in the text must keep them, since messages are led back
// by them.

#include "frontend/designgraph.h"
#include "frontend/designrepair.h"
#include "frontend/includemasks.h"
#include "frontend/sourceplaces.h"
#include "frontend/verificationcode.h"
#include "frontend/verilogdialect.h"
#include "frontend/verilogitems.h"
#include "frontend/verilogpreprocessor.h"
#include "frontend/verilogscanner.h"
#include "frontend/verilogtext.h"

#include <cstdint>
#include <cstdlib>

using namespace Standin;

static void require(bool holds)
{
    if (!holds)
        std::abort();
}

// Ahead of the preprocessor.
static void checkSource(const QByteArray &source)
{
    const int lines = source.count('\n');
    for (const QByteArray &masked :
         {maskForeignDirectives(source), maskVhdlPragmas(source), stripComments(source)})
        require(masked.count('\n') == lines);
    // A region that the text leaves open is ended behind it.
    for (const QByteArray &masked : {maskVerilogPragmas(source), maskedVerilog(source)}) {
        const int more = masked.count('\n') - lines;
        require(more == 0 || (more == 2 && masked.endsWith("\n`endif\n")));
    }

    int behind = 0;
    const QVector<IncludeDirective> directives = includeDirectives(source);
    for (const IncludeDirective &directive : directives) {
        require(directive.begin >= behind && directive.end >= directive.begin
                && directive.end <= source.size());
        require(QString::fromUtf8(source.mid(directive.begin, directive.end - directive.begin))
                == directive.name);
        behind = directive.end;
    }
}

// Units and their items follow one another.
static void checkUnits(const QByteArray &text)
{
    const VerilogTokens tokens(text);
    const std::vector<VerilogUnit> units = verilogUnits(tokens);
    for (const VerilogUnit &unit : units) {
        require(unit.name < tokens.count());
        int behind = unit.name < 0 ? 0 : unit.begin;
        for (const VerilogItem &item : unit.items) {
            require(item.begin >= behind && item.end >= item.begin && item.end <= tokens.count());
            behind = item.end;
        }
    }
}

static void checkPlaces(const QByteArray &text)
{
    const SourcePlaces places(text);
    quint32 behind = 0;
    for (const SourcePlaces::Stretch &stretch : places.stretches()) {
        require(stretch.begin >= behind && stretch.end <= quint32(text.size()));
        behind = stretch.begin;
        const QVector<quint32> found = places.offsets(stretch.file, stretch.line);
        for (const quint32 offset : found)
            require(offset < quint32(text.size()) && places.stretchAt(offset));
        require(stretch.begin >= stretch.end || found.contains(stretch.begin));
    }
}

// Errors all over the text; the same for the same text.
static QVector<ToolMessage> errorsIn(const QByteArray &text)
{
    const SourcePlaces places(text);
    const auto &stretches = places.stretches();
    QVector<ToolMessage> errors;
    quint32 dice = quint32(text.size());
    for (int i = 0; i < 4; ++i) {
        dice = dice * 1664525 + 1013904223 + uchar(text.at(int(dice % quint32(text.size()))));
        const SourcePlaces::Stretch &stretch = stretches[(dice >> 4) % stretches.size()];
        ToolMessage error;
        error.isError = true;
        error.file = stretch.file;
        error.line = stretch.line + int((dice >> 8) % 64);
        error.column = int((dice >> 14) % 32);
        if ((dice & 4) != 0)
            error.code = "PINNOTFOUND";
        static const char *const texts[] = {"Can't find 'q'", "syntax error, unexpected q",
                                            "Pin is not an in/out/inout/interface: 'q'"};
        error.text = QLatin1String(texts[(dice >> 19) % 3]);
        errors.append(error);
    }
    return errors;
}

// Blanks may stand for what was taken out, a plain value or type for what was mended, and
// separators may have come behind lines. Everything else is where it was.
static void checkRemains(const QByteArray &before, const QByteArray &after)
{
    const QList<QByteArray> linesBefore = before.split('\n');
    const QList<QByteArray> linesAfter = after.split('\n');
    require(linesAfter.size() >= linesBefore.size());
    // The last line has no end, so more may stand behind it.
    for (int i = 0; i + 1 < linesBefore.size(); ++i) {
        const QByteArray &was = linesBefore.at(i);
        const QByteArray &now = linesAfter.at(i);
        require(now.size() >= was.size());
        for (int at = 0; at < now.size(); ++at) {
            const char c = now.at(at);
            const bool isOwn =
                at < was.size() && (c == was.at(at) || QByteArray("1bit").contains(c));
            // A separator moves the blanks that the line ends in.
            const bool isBehind =
                QByteArray(";,\t\v\f\r").contains(c) && was.mid(at).trimmed().isEmpty();
            require(isOwn || c == ' ' || isBehind);
        }
    }
}

// What is found faulty goes or is mended; the rest stays where it was.
static void checkRepair(const QByteArray &text, const QByteArray &top)
{
    DesignRepair repair(text, top);
    repair.endModules({"s0001.v"});
    const QByteArray whole = repair.text();
    require(whole.size() >= text.size());
    const QVector<ToolMessage> errors = errorsIn(whole);
    for (int round = 0; round < 9; ++round) {
        QVector<DesignRepair::Concern> concerns;
        repair.takeOut(errors, &concerns);
        require(concerns.size() == errors.size());
    }
    repair.takeOutInstances(scanVerilog(repair.text()).closingCircles());
    repair.gut({top}, top.size() % 2 == 0);
    require(repair.text().size() >= whole.size());
    checkRemains(whole, repair.text());
}

// Behind the preprocessor.
static void checkPreprocessed(const QByteArray &text)
{
    require(withoutVerificationCode(text).size() == text.size());
    require(inPlainDialect(text).count('\n') == text.count('\n'));
    checkUnits(text);
    checkPlaces(text);

    const QByteArray ordered = withPackagesFirst(text);
    checkPlaces(ordered);
    const DesignGraph graph = scanVerilog(text);
    graph.closingCircles();
    QByteArray top;
    for (const QString &name : graph.tops()) {
        top = name.toUtf8();
        moduleLists(graph, name);
        hollowModule(graph, top);
        QVector<InterfacePort> ports;
        const QByteArray closed = withoutInterfacePorts(text, top, &ports);
        require(closed.count('\n') == text.count('\n'));
        require(closed == text || !ports.isEmpty());
    }
    checkRepair(text, top);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray source(reinterpret_cast<const char *>(data), int(size));
    checkSource(source);
    checkPreprocessed("`line 1 \"s0001.v\" 0\n" + stripComments(maskedVerilog(source)));

    DesignGraph both = scanVerilog(stripComments(maskedVerilog(source)));
    scanVhdl(maskVhdlPragmas(source), &both);
    for (const QString &top : both.tops())
        moduleLists(both, top);
    stubModules(both);
    return 0;
}
