// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/modulefacts.h"
#include "netlist/moduletable.h"

namespace Standin {

/// What a module's names and place in the design say about its definition.
struct DefinitionTraits
{
    QString moduleName;
    bool isTop = false;
    bool isVhdl = false; ///< Names of a translation from VHDL are among its own.
};

/// Appends the definitions of a module, one for each generate scope that holds anything and one for
/// the module itself, to \a table.
///
/// \param definitionOf number of the definition of each module in the design; -1 for what has no
///        level of its own.
/// \return the number of the module's own definition.
int writeDefinitions(RawDesign *design, const RawModule &module, const ModuleFacts &facts,
                     const DefinitionTraits &traits, const QHash<quint32, int> &moduleByName,
                     const std::vector<int> &definitionOf, ModuleTable *table);

/// Whether a name was made up by Verilator or, in what was translated from VHDL, by GHDL.
bool isToolName(const QString &name, bool isVhdl);

} // namespace Standin
