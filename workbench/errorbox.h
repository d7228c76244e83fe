// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QWidget;

namespace Workbench {

/// Tells the user of a failure, in a box on \a parent that is titled "Error". \a text is shown as
/// it stands, since names in it may look like markup. Runs a nested event loop.
void showError(QWidget *parent, const QString &text);

} // namespace Workbench
