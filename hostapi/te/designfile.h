// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

namespace TE {

/// The host's record of one project file.
struct DesignFile
{
    QString path; ///< Absolute; empty in the record of a file that isn't in the project.

    /// Kind of file. 2, 3 and 4 are the kinds that hold RTL: Verilog, SystemVerilog and VHDL.
    int type = 0;

    bool enable = false;          ///< The file takes part in the design.
    QMap<QString, QVariant> data; ///< Whatever else the host knows of the file.
};

} // namespace TE
