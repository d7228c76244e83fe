// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "filekinds.h"

#include <QFileInfo>

namespace Workbench {

FileKind fileKind(const QString &path)
{
    const QString name = QFileInfo(path).fileName().toLower();
    static const struct
    {
        const char *suffix;
        FileKind kind;
    } kinds[] = {
        {".v", FileKind::Verilog},          {".vh", FileKind::Verilog},
        {".sv", FileKind::SystemVerilog},   {".svh", FileKind::SystemVerilog},
        {".vhd", FileKind::Vhdl},           {".vhdl", FileKind::Vhdl},
        {".json", FileKind::Netlist},       {".eda.yml", FileKind::Project},
        {".eda.yaml", FileKind::Project},   {".edam", FileKind::Project},
        {".molk", FileKind::Configuration},
    };
    for (const auto &entry : kinds) {
        if (name.endsWith(QLatin1String(entry.suffix)))
            return entry.kind;
    }
    return FileKind::Unknown;
}

bool isDesignFile(FileKind kind)
{
    return kind == FileKind::Verilog || kind == FileKind::SystemVerilog || kind == FileKind::Vhdl
        || kind == FileKind::Netlist;
}

QString filePicture(FileKind kind)
{
    switch (kind) {
    case FileKind::Verilog:
        return QStringLiteral(":/workbench/file-verilog.png");
    case FileKind::SystemVerilog:
        return QStringLiteral(":/workbench/file-systemverilog.png");
    case FileKind::Vhdl:
        return QStringLiteral(":/workbench/file-vhdl.png");
    case FileKind::Project:
        return QStringLiteral(":/workbench/project.png");
    case FileKind::Configuration:
        return QStringLiteral(":/workbench/file-molk.png");
    case FileKind::Netlist:
    case FileKind::Unknown:
        break;
    }
    return QStringLiteral(":/workbench/file-other.png");
}

} // namespace Workbench
