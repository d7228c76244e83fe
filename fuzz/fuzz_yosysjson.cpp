// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Any bytes may claim to be a netlist of Yosys. What is read from them has to be a netlist in which
// every net is found by its name.

#include "netlist/yosysjson.h"
#include "netlistfuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString file = fileWith(data, size);
    Standin::JsonModules modules;
    Standin::ModuleTable table;
    QString error;
    if (!Standin::listYosysModules(file, QString(), &modules, &error)) {
        if (error.isEmpty())
            std::abort();
        return 0;
    }
    Standin::JsonReadOptions options;
    options.top = modules.topModules.value(0);
    if (Standin::readYosysJson(file, options, &table, &error))
        checkElaboration(std::move(table));
    return 0;
}
