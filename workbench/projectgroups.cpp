// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectgroups.h"

#include "filekinds.h"

#include "project/edamproject.h"

#include <QCoreApplication>

namespace Workbench {

ProjectGroup groupOf(const TE::DesignFile &file)
{
    if (file.data.value("is_include_file").toBool())
        return IncludeGroup;
    const FileKind kind = fileKind(file.path);
    if (kind == FileKind::Netlist)
        return NetlistGroup;
    switch (file.type) {
    case Standin::VerilogKind:
        return VerilogGroup;
    case Standin::SystemVerilogKind:
        return SystemVerilogGroup;
    case Standin::VhdlKind:
        return VhdlGroup;
    default:
        break;
    }
    return kind == FileKind::Configuration ? ConfigurationGroup : OtherGroup;
}

static QString tr(const char *text)
{
    return QCoreApplication::translate("Workbench::ProjectPanel", text);
}

QString groupTitle(int group)
{
    switch (group) {
    case VerilogGroup:
        return tr("Verilog");
    case SystemVerilogGroup:
        return tr("SystemVerilog");
    case VhdlGroup:
        return tr("VHDL");
    case NetlistGroup:
        return tr("Netlists");
    case IncludeGroup:
        return tr("Include Files");
    case ConfigurationGroup:
        return tr("Configurations");
    default:
        return tr("Other Files");
    }
}

QString groupPicture(int group, const QString &path)
{
    switch (group) {
    case VerilogGroup:
        return filePicture(FileKind::Verilog);
    case SystemVerilogGroup:
        return filePicture(FileKind::SystemVerilog);
    case VhdlGroup:
        return filePicture(FileKind::Vhdl);
    default:
        return filePicture(fileKind(path));
    }
}

} // namespace Workbench
