// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QVariantMap>

#include <functional>

class QComboBox;
class QFormLayout;
class QLineEdit;

namespace Standin {
class EdamProject;
}

namespace Workbench {

class PathList;

/// Edits the options of a project: top module, device, Verilog standard, synthesis tool and include
/// path. The project isn't changed here; whoever runs the dialog stores changes().
class ProjectSettingsDialog : public QDialog
{
    Q_OBJECT

public:
    /// Answers the names of modules that may be the top, the likely ones first. Windows belong to
    /// \a parent; it may run a nested event loop.
    using FindModules = std::function<QStringList(QWidget *parent)>;

    /// \param project is read here and not kept.
    ProjectSettingsDialog(const Standin::EdamProject &project, const FindModules &findModules,
                          QWidget *parent);

    /// Puts the focus on the field of the option \a name, an unknown name on the first one.
    void focusOption(const QString &name);

    /// What is to be stored: the options whose values the user has changed, an invalid value for
    /// one that is to be unset.
    QVariantMap changes() const;

private slots:
    void onFindModules();

private:
    QWidget *makeTopRow(const QString &current);
    QComboBox *makeStandardBox(const QString &current);
    QComboBox *makeToolBox(const QString &current);
    QVariantMap values() const;

    QVariantMap before;
    FindModules find;
    QComboBox *top;
    QLineEdit *device;
    QComboBox *standard;
    QComboBox *tool;
    PathList *includePath;
};

} // namespace Workbench
