// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

namespace Workbench {

/// Gives the application a dark palette, whatever the desktop says, and the style that honours it.
/// It changes no style sheet; call it with a QApplication.
void useDarkColours();

} // namespace Workbench
