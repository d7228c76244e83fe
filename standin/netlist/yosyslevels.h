// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduletable.h"
#include "netlist/yosysfacts.h"

namespace Standin {

/// Appends the definitions of a module to \a table: its own, and one for each level that its names
/// tell of, which are generate scopes, interfaces, and instances that were flattened.
///
/// \param definitionOf number of the definition of each module in the design; -1 for black boxes.
/// \return the number of the module's own definition.
int writeYosysDefinitions(const YosysDesign &design, const YosysModule &module,
                          const YosysFacts &facts, const std::vector<int> &definitionOf,
                          ModuleTable *table);

} // namespace Standin
