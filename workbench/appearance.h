// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

namespace Workbench {

/// Keeps the desktop's style and palette, and draws in the palette's colours what Qt's styles take
/// from pictures for light backgrounds: the button that closes a tab. Call it with a QApplication.
void initStyle();

/// Gives the application a dark palette, whatever the desktop says, and the style that honours it.
/// It changes no style sheet; call it after initStyle().
void useDarkColours();

} // namespace Workbench
