// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// What the workbench does with files, decided by their names alone.
namespace Workbench {

enum class FileKind {
    Unknown,       ///< Opened as text.
    Verilog,       ///< Also headers.
    SystemVerilog, ///< Also headers.
    Vhdl,
    Netlist,       ///< A ready netlist in Yosys' JSON form.
    Project,       ///< An EDAM file.
    Configuration, ///< Opened by the plug-in.
};

/// The kind of the file \a path, by its suffix in either case.
FileKind fileKind(const QString &path);

/// Whether files of this kind make up a design.
bool isDesignFile(FileKind kind);

/// The picture that stands for \a kind, a path into the resources.
QString filePicture(FileKind kind);

} // namespace Workbench
