// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

namespace Workbench {

/// Makes the pictures of the workbench, and those that plug-ins expect of their host, known to the
/// resource system. Call it once before anything is shown.
void initPictures();

} // namespace Workbench
