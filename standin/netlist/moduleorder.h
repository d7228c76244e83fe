// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <vector>

namespace Standin {

/// Puts the modules of a design in order, each behind those that it instantiates.
///
/// \param top number of the module to start from.
/// \param count number of modules.
/// \param child number of the module of a module's n-th instance; -1 if it is no module of the
///        design, and -2 behind the last instance.
/// \param looping receives a module that contains itself, or -1.
/// \return the modules in use, the top last.
std::vector<int> modulesFromBelow(int top, std::size_t count,
                                  const std::function<int(int, std::size_t)> &child, int *looping);

} // namespace Standin
