// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduledefinition.h"

#include "hostglobal.h"

#include <QString>

#include <vector>

namespace FATHOM {
class RtlNetlist;
}

namespace Standin {

/// What a front end delivers: every definition once, sealed, and which of them is the top.
struct ModuleTable
{
    std::vector<ModuleDefinition> definitions;
    int top = -1;

    /// An elaborated instance below the top is the primitive OD_JTAG.
    bool usesJtag = false;
};

/// What ModuleDefinition::sourceName() of a generate scope is. It is a reserved word in every
/// language read here, so that no module can have that name.
HOST_EXPORT QString generateScopeModule();

/// Builds the hierarchy below the top of \a table.
///
/// \param table is taken over by the netlist; all its definitions are sealed.
/// \param error receives what is wrong in case of failure; may be null.
/// \return a netlist that the caller owns; null if there is no top, a definition contains itself,
/// or
///         the design has more than 64 million nets and levels.
HOST_EXPORT FATHOM::RtlNetlist *elaborate(ModuleTable table, QString *error = nullptr);

} // namespace Standin
