// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QTreeWidget>

namespace Standin {
class EdamProject;
}

namespace Workbench {

/// The open project as a tree:
///
///     project name
///       Configurations
///       Verilog, SystemVerilog, VHDL, Netlists      the design's files, in compile order
///       Include Files
///       Other Files
///       Options                    top module, device and what else is set, as "name: value"
///
/// A group without files is left out, and a file that is switched off is gray.
class ProjectPanel : public QTreeWidget
{
    Q_OBJECT

public:
    explicit ProjectPanel(QWidget *parent = nullptr);

    /// Shows \a project as it is now; null empties the tree. Groups that the user has folded stay
    /// folded. The project isn't kept.
    void showProject(const Standin::EdamProject *project);

signals:
    /// The user wants to open the file \a path, absolute.
    void fileActivated(const QString &path);

private:
    void onItemActivated(QTreeWidgetItem *item);
};

} // namespace Workbench
