// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "te/designfile.h"

#include <QList>
#include <QStringList>

namespace Workbench {

/// What the files that a user has selected in a project have in common, as far as the menus need to
/// know.
struct FileSelection
{
    QStringList paths; ///< In the project's order, each once.
    int kind = 0;      ///< Their kind as in TE::DesignFile::type; 0 if there are several kinds.
    Qt::CheckState enabled = Qt::Unchecked;
    Qt::CheckState include = Qt::Unchecked;

    QString above; ///< The file that they can be moved before, by one row; empty if there is none.
    QString below; ///< The file that they can be moved after, likewise.
};

/// Looks at the files \a selected, absolute paths, of the project with the files \a files. Rows are
/// those of the group in which files are shown, so files of several groups can't be moved together.
FileSelection describeSelection(const QList<TE::DesignFile> &files, const QStringList &selected);

} // namespace Workbench
