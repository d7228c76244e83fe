// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <QVector>

namespace Standin {
class EdamProject;
}

/// The options of a project that the workbench shows, as plain values.
namespace Workbench {

struct ProjectOption
{
    QString name;  ///< Under which the host knows it.
    QString title; ///< What the user reads.
};

/// The options in the order in which they are shown.
QVector<ProjectOption> projectOptions();

/// The values of the options in \a project, those that aren't set as invalid values.
QVariantMap optionValues(const Standin::EdamProject &project);

/// A value for reading: the elements of a list with commas between them, "not set" without a value.
QString optionText(const QVariant &value);

/// Those of \a after that aren't as in \a before. An empty text or list is the same as no value.
QVariantMap optionChanges(const QVariantMap &before, const QVariantMap &after);

/// The Verilog standards that can be chosen, oldest first: the host's names and titles.
QVector<ProjectOption> verilogStandards();

/// The synthesis tools that can be expected; any other name may stand in a project.
QStringList synthesisTools();

} // namespace Workbench
