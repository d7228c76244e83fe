// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduletable.h"

#include "hostglobal.h"

#include <QString>
#include <QStringList>

namespace Standin {

struct JsonReadOptions
{
    /// Module to start from, by its source name; if empty, the file's own top: the module with the
    /// attribute "top", else the only one that no other instantiates.
    QString top;
};

/// What can be chosen from in a Yosys JSON netlist. Names are those of the source, in file order.
struct JsonModules
{
    QStringList topModules; ///< As JsonReadOptions::top says; several if the file leaves it open.
    QStringList modules;    ///< With and below the top, or all if none is given; no black boxes.
};

/// Lists the modules of a netlist that `write_json` of Yosys has written after `proc`.
///
/// \param top source name of the module to start from, or empty. If the file has no such module,
///        both lists are empty.
/// \return false if the file can't be read or isn't such a file; then \a error says why.
HOST_EXPORT bool listYosysModules(const QString &file, const QString &top, JsonModules *modules,
                                  QString *error);

/// Reads such a netlist. Flattened ones get their levels back from the names that Yosys kept.
///
/// Left out are names that the tool hides or made up, what is declared in functions, and memories.
/// Flags follow docs/net-flags.md.
///
/// \param table receives the definitions, sealed, and the top; unchanged in case of failure.
/// \param error receives in case of failure what is wrong, as "file:line:column: text" where a
///        place is known, else as "file: text".
/// \return false if the file can't be read, is no such file, or has no such top. The user hasn't
///         been told.
HOST_EXPORT bool readYosysJson(const QString &file, const JsonReadOptions &options,
                               ModuleTable *table, QString *error);

} // namespace Standin
