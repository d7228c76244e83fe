// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLatin1String>

/// The keys of the design information map, which travels as a QMap<QString, QVariant> from
/// TE::DesignManager::getSourceFileInfo() through the plug-in to FATHOM::catchRtlModules().
///
/// Only Top, Files and Path are known to plug-ins; the others are between the project, which fills
/// the map, and the extraction, which reads it. A missing key means the same as an empty value, and
/// a value of another type than stated counts as missing.
namespace Standin {
namespace DesignInfo {

// Not every compiler can count a literal's characters for QLatin1String at compile time.
template<int size>
constexpr QLatin1String key(const char (&literal)[size])
{
    return QLatin1String(literal, size - 1);
}

/// QString: the top module that the user set; empty if none is set.
constexpr QLatin1String Top = key("Top");

/// QVariantList of QVariantMap: the source files in compile order, one map each. A project that
/// holds one ready netlist has exactly one entry, whose path ends in ".json".
constexpr QLatin1String Files = key("Files");

/// QStringList: absolute directories in which `include looks, in order.
constexpr QLatin1String IncludePath = key("IncludePath");

/// QVariantMap from macro name to value (QString; empty for a macro without a value): macros that
/// hold for all Verilog files.
constexpr QLatin1String Defines = key("Defines");

/// QVariantMap from name to value: parameters of the top module. The value is a bool or a number,
/// or a QString, which is taken as a Verilog number if it reads as one, else as a string.
constexpr QLatin1String Parameters = key("Parameters");

/// QVariantMap from name to value: generics of the top entity, values as for Parameters.
constexpr QLatin1String Generics = key("Generics");

/// QString: the language of all Verilog files that don't state one themselves: "1364-1995",
/// "1364-2001", "1364-2005", "1800-2005", "1800-2009", "1800-2012", "1800-2017", or the year alone
/// ("95", "2001"...), or with a word before it ("Verilog 2001", "SystemVerilog-2012"). Any other
/// text counts as not set: then SystemVerilog is tried first.
constexpr QLatin1String VerilogStandard = key("Verilog_Standard");

// The keys of an entry of Files.

/// QString: the file's absolute path. An entry without one is reported as an error.
constexpr QLatin1String Path = key("Path");

/// int: kind of file as in TE::DesignFile::type: 2 Verilog, 3 SystemVerilog, 4 VHDL. Without it the
/// file's suffix decides: ".sv", ".svh" SystemVerilog, ".vhd", ".vhdl" VHDL, ".json" a netlist
/// that Yosys wrote, anything else Verilog. A ".json" is a netlist whatever its type says.
constexpr QLatin1String Type = key("Type");

/// QString: the file's own language; for Verilog as VerilogStandard, for VHDL "87", "93", "2002",
/// "2008" (also with four digits or a word before); "2008" if empty.
constexpr QLatin1String Standard = key("Standard");

/// QString: the library that a VHDL file is compiled into; "work" if empty.
constexpr QLatin1String Library = key("Library");

// An entry may also hold Defines: macros that hold for this Verilog file alone.

} // namespace DesignInfo
} // namespace Standin
