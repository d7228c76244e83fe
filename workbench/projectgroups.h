// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "te/designfile.h"

#include <QString>

namespace Workbench {

/// The groups in which the files of a project are shown, in the order of their showing.
enum ProjectGroup {
    ConfigurationGroup,
    VerilogGroup,
    SystemVerilogGroup,
    VhdlGroup,
    NetlistGroup,
    IncludeGroup,
    OtherGroup,
    GroupCount
};

/// The group of \a file. The project's word on a file's kind counts, not the file's suffix, except
/// where the project has no word for it.
ProjectGroup groupOf(const TE::DesignFile &file);

/// What stands above the files of \a group.
QString groupTitle(int group);

/// The picture of the file \a path in \a group, a path into the resources.
QString groupPicture(int group, const QString &path);

} // namespace Workbench
