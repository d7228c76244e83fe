// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "project/edamcontents.h"

#include <QFileInfo>
#include <QHash>

namespace Standin {

FileKind kindOfType(const QString &fileType)
{
    if (fileType.startsWith("verilogSource") || fileType.startsWith("yosysNetlist"))
        return VerilogKind;
    if (fileType.startsWith("systemVerilogSource"))
        return SystemVerilogKind;
    if (fileType.startsWith("vhdlSource"))
        return VhdlKind;
    return OtherKind;
}

QString fileTypeOf(const QString &path)
{
    static const QHash<QString, QString> types{
        {"v", "verilogSource"},         {"vh", "verilogSource"}, {"sv", "systemVerilogSource"},
        {"svh", "systemVerilogSource"}, {"vhd", "vhdlSource"},   {"vhdl", "vhdlSource"},
        {"json", "yosysNetlist"},
    };
    return types.value(QFileInfo(path).suffix().toLower(), "user");
}

bool isIncludeName(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == "vh" || suffix == "svh";
}

} // namespace Standin
