// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// What a view of a configuration shows, and what a configuration file holds, as lines of text that
/// can be compared.
namespace Workbench {

/// Everything that the page of the current core in \a view shows: the rows of both port trees, the
/// initial values with their bits, and the user clock.
QStringList pageState(QWidget *view);

/// Everything that the file \a path holds: cores, ports, signals with the number of their bits,
/// values and clocks. One line with the reason if it can't be read.
QStringList fileState(const QString &path);

} // namespace Workbench
