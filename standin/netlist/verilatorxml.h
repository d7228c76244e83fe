// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduletable.h"

#include "hostglobal.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace Standin {

/// How the files of an elaborated design are to be understood. Files are named as the XML names
/// them in its table of files.
struct XmlReadOptions
{
    /// Files whose modules stand in for ones that the sources don't have. Their instances are black
    /// boxes: no levels, and pins of which nothing is known.
    QStringList blackBoxFiles;

    /// Files that were made from VHDL. Module names are compared without case there, and signals
    /// that only the translation needed stay out.
    QStringList vhdlFiles;

    /// Source names of modules whose name in the XML was made up by the translation: XML name to
    /// source name. Others have the name that the XML gives as their original one. What has an
    /// entry is in the sources, so it is no black box even if it is empty.
    QHash<QString, QString> sourceNames;
};

/// Reads the elaborated design that `verilator --xml-only -O0` has written.
///
/// Left out are parameters, genvars, loop indices, what is declared in functions and processes,
/// memories (unpacked arrays of more than 64 elements), what has no bits (real, string, event,
/// class), and names that the tool made up. Flags follow docs/net-flags.md.
///
/// \param file path of the XML file.
/// \param table receives the definitions, sealed, and the top; unchanged in case of failure.
/// \param error receives in case of failure what is wrong, as "file:line:column: text" where a
///        place is known.
/// \return false if the file can't be read, isn't well-formed or whole, or isn't such a file. The
///         user hasn't been told.
HOST_EXPORT bool readVerilatorXml(const QString &file, const XmlReadOptions &options,
                                  ModuleTable *table, QString *error);

} // namespace Standin
