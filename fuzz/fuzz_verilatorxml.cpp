// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Any bytes may claim to be an elaborated design. What is read from them has to be a netlist in
// which every net is found by its name.

#include "netlist/verilatorxml.h"
#include "netlistfuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Standin::XmlReadOptions options;
    options.blackBoxFiles.append(QStringLiteral("stubs.v"));
    options.vhdlFiles.append(QStringLiteral("vhdl.v"));
    Standin::ModuleTable table;
    QString error;
    if (Standin::readVerilatorXml(fileWith(data, size), options, &table, &error))
        checkElaboration(std::move(table));
    else if (error.isEmpty())
        std::abort();
    return 0;
}
