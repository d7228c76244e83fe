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
/// A group without files is left out, and a file that is switched off is gray. Several files may be
/// selected.
class ProjectPanel : public QTreeWidget
{
    Q_OBJECT

public:
    explicit ProjectPanel(QWidget *parent = nullptr);

    /// Shows \a project as it is now; null empties the tree. Groups that the user has folded stay
    /// folded, and the selected rows selected; if the current row goes, the next one follows it.
    /// The project isn't kept.
    void showProject(const Standin::EdamProject *project);

    /// The absolute paths of the selected files, in no order.
    QStringList selectedFiles() const;

    /// The name of the option whose row is the current one; empty if it is another row.
    QString currentOption() const;

signals:
    /// The user wants to open the file \a path, absolute.
    void fileActivated(const QString &path);

    /// The user wants to change the option \a name.
    void optionActivated(const QString &name);

private:
    void onItemActivated(QTreeWidgetItem *item);
};

} // namespace Workbench
