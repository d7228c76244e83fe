// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Source texts of any kind go through everything that reads them before a tool does.

#include "frontend/designgraph.h"
#include "frontend/verificationcode.h"
#include "frontend/verilogscanner.h"
#include "frontend/verilogtext.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), int(size));
    const QByteArray stripped = Standin::stripComments(Standin::maskVerilogPragmas(text));
    Standin::DesignGraph graph = Standin::scanVerilog(stripped);
    Standin::scanVhdl(Standin::maskVhdlPragmas(text), &graph);
    for (const QString &top : graph.tops())
        Standin::moduleLists(graph, top);
    Standin::stubModules(graph);

    // Places in messages depend on this.
    if (Standin::stripComments(text).count('\n') != text.count('\n'))
        std::abort();
    if (Standin::withoutVerificationCode(stripped).size() != stripped.size())
        std::abort();
    return 0;
}
