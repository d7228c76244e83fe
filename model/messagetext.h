// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringRef>

namespace MOLK {

/// Makes \a text fit for a line of a message to the user: of at most \a length characters, `...` in
/// place of the rest, without line ends or other control characters, and with a look-alike of the
/// bracket that would make a message box take it for markup.
QString messageText(const QStringRef &text, int length);

/// A word of a file, or its name, between quotes, fit for a message and not too long for it.
QString quotedWord(const QStringRef &word);

} // namespace MOLK
