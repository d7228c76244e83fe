// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "fileselection.h"

#include "projectgroups.h"

#include <QSet>

#include <algorithm>

namespace Workbench {

static Qt::CheckState stateOf(int yes, int all)
{
    if (yes == 0)
        return Qt::Unchecked;
    return yes == all ? Qt::Checked : Qt::PartiallyChecked;
}

// The files between which the selected ones stand in their group.
static void findNeighbours(const QList<TE::DesignFile> &files, const QSet<QString> &selected,
                           ProjectGroup group, FileSelection *selection)
{
    bool passed = false;
    for (const TE::DesignFile &file : files) {
        if (groupOf(file) != group)
            continue;
        if (selected.contains(file.path)) {
            passed = true;
            selection->below.clear();
        } else if (!passed) {
            selection->above = file.path;
        } else if (selection->below.isEmpty()) {
            selection->below = file.path;
        }
    }
}

FileSelection describeSelection(const QList<TE::DesignFile> &files, const QStringList &selected)
{
    const QSet<QString> wanted(selected.cbegin(), selected.cend());
    FileSelection selection;
    QSet<int> kinds;
    QSet<int> groups;
    int enabled = 0;
    int includes = 0;
    for (const TE::DesignFile &file : files) {
        if (!wanted.contains(file.path))
            continue;
        selection.paths.append(file.path);
        kinds.insert(file.type);
        groups.insert(groupOf(file));
        enabled += file.enable ? 1 : 0;
        includes += file.data.value("is_include_file").toBool() ? 1 : 0;
    }

    const int count = selection.paths.size();
    selection.paths.removeDuplicates();
    selection.kind = kinds.size() == 1 ? *kinds.cbegin() : 0;
    selection.enabled = stateOf(enabled, count);
    selection.include = stateOf(includes, count);
    if (groups.size() == 1)
        findNeighbours(files, wanted, ProjectGroup(*groups.cbegin()), &selection);
    return selection;
}

} // namespace Workbench
