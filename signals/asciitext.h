// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace MOLK {

/// Whether all of the \a size characters from \a text on are ASCII characters.
bool isAscii(const QChar *text, int size);

} // namespace MOLK
