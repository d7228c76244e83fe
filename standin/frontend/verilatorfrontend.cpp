// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilatorfrontend.h"

#include "frontend/toolbox.h"
#include "frontend/verilatorreading.h"
#include "netlist/verilatorxml.h"

#include <algorithm>

namespace Standin {

QString VerilatorFrontEnd::name() const
{
    return "Verilator";
}

bool VerilatorFrontEnd::accepts(const DesignSources &sources) const
{
    return !sources.has(SourceFile::YosysNetlist);
}

QByteArray VerilatorFrontEnd::identity(const DesignSources &sources, const ToolBox &tools) const
{
    QByteArray identity = toolIdentity(tools.verilator());
    if (sources.has(SourceFile::Vhdl))
        identity += '\0' + toolIdentity(tools.ghdl());
    return identity;
}

std::unique_ptr<Reading> VerilatorFrontEnd::read(const DesignSources &sources, ToolBox &tools,
                                                 Progress &progress) const
{
    return std::make_unique<VerilatorReading>(sources, tools, progress);
}

bool VerilatorFrontEnd::load(const Artifact &artifact, ModuleTable *table, QString *error) const
{
    XmlReadOptions options;
    options.blackBoxFiles = QStringList(VerilatorReading::stubFile());
    options.vhdlFiles = artifact.vhdlFiles;
    options.sourceNames = artifact.sourceNames;
    return readVerilatorXml(artifact.file, options, table, error);
}

} // namespace Standin
