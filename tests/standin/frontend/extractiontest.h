// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "designinfo.h"
#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"
#include "frontend/extraction.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

/// A Verilog source with one module that nothing instantiates.
constexpr char oneTop[] = "module leaf(input a, output b); assign b = a; endmodule\n"
                          "module top(input x, output [3:0] y);\n"
                          "leaf u(.a(x), .b(y[0])); endmodule\n";

/// A tool that goes on until it is stopped.
constexpr char slowTool[] = "#!/bin/sh\nsleep 60\n";

/// What one call of catchModules() said.
struct ModulesAnswer
{
    QStringList topModules;
    QStringList modules;
    QStringList messages;

    QStringList errors() const { return messages.filter(QRegExp("^ERROR")); }

    /// The messages but for what depends on the machine: that it doesn't confine GHDL.
    QStringList ofTheDesign() const
    {
        return messages.filter(QRegExp("^(?!WARNING: bubblewrap )"));
    }
};

/// Describes a design and has it read, with a cache of its own.
class ExtractionTest
{
public:
    explicit ExtractionTest(const Standin::ExtractionOptions &wanted = Standin::ExtractionOptions())
        : options(wanted)
    {
        options.cacheDirectory = directory.filePath("cache");
        restart();
    }

    /// Goes on with a new extraction, as another process would.
    void restart() { extraction = std::make_unique<Standin::Extraction>(options); }

    static QString data(const QString &name) { return QString(MOLK_TESTS_DIR "/data/rtl/") + name; }

    QString path(const QString &name) const { return directory.filePath(name); }

    /// Writes a file of the test's own. \return its path.
    QString write(const QString &name, const QByteArray &text) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            return QString();
        return path(name);
    }

    /// Options with \a script for a tool.
    Standin::ExtractionOptions optionsWithTool(const QByteArray &script) const
    {
        Standin::ExtractionOptions withTool;
        withTool.verilator = write("tool", script);
        QFile::setPermissions(withTool.verilator, QFile::ReadOwner | QFile::ExeOwner);
        return withTool;
    }

    void add(const QString &file, const QVariantMap &more = QVariantMap())
    {
        QVariantMap entry = more;
        entry.insert(Standin::DesignInfo::Path, file);
        files.append(entry);
    }

    void addData(const QStringList &names)
    {
        for (const QString &name : names)
            add(data(name));
    }

    ModulesAnswer modules(const QString &top = QString())
    {
        info.insert(Standin::DesignInfo::Files, files);
        info.insert(Standin::DesignInfo::Top, top);
        ModulesAnswer answer;
        extraction->catchModules(answer.topModules, answer.modules, answer.messages, info, nullptr);
        return answer;
    }

    std::unique_ptr<FATHOM::RtlNetlist> netlist(QStringList *log = nullptr)
    {
        FATHOM::RtlNetlist *delivered = nullptr;
        QStringList ignored;
        extraction->catchNets(&delivered, log ? *log : ignored, nullptr);
        return std::unique_ptr<FATHOM::RtlNetlist>(delivered);
    }

    QTemporaryDir directory;
    Standin::ExtractionOptions options;
    QMap<QString, QVariant> info;
    QVariantList files;
    std::unique_ptr<Standin::Extraction> extraction;
};

/// The levels of a netlist, one line each: path, blank, module.
inline void levelLines(const FATHOM::Hierachy *level, const QString &above, QStringList *lines)
{
    const QString path = above.isEmpty() ? level->name() : above + '/' + level->name();
    lines->append(path + ' ' + level->module());
    for (const FATHOM::Hierachy *child : level->children())
        levelLines(child, path, lines);
}

inline QStringList levelLines(const FATHOM::RtlNetlist &netlist)
{
    QStringList lines;
    levelLines(netlist.top, QString(), &lines);
    return lines;
}

/// Full path names of all nets, then of all buses.
inline QStringList netLines(const FATHOM::RtlNetlist &netlist)
{
    QStringList lines;
    for (const FATHOM::RtlNet *net : netlist.top->singleNetsIncludeSub())
        lines.append(net->fullPathName());
    for (const FATHOM::RtlNetBus *bus : netlist.top->netbusesIncludeSub())
        lines.append(bus->fullBusName());
    return lines;
}

/// What of \a wanted isn't among \a lines.
inline QStringList missing(const QStringList &lines, const QStringList &wanted)
{
    QStringList lacking;
    for (const QString &line : wanted) {
        if (!lines.contains(line))
            lacking.append(line);
    }
    return lacking;
}
