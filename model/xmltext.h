// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringRef>

namespace MOLK {

/// Spells \a text with characters that XML can hold.
///
/// A code unit that XML can't hold (most control characters, U+FFFE, U+FFFF, half a surrogate pair)
/// becomes a backslash, `u` and four upper-case hexadecimal digits. A backslash stays as it is
/// unless what follows would read as such an escape; then it is escaped itself.
///
/// \return a text that unescapedText() turns back into \a text; \a text itself in nearly all cases.
QString escapedText(const QString &text);

/// Turns back what escapedText() did. Takes escapes of any code unit, with digits of upper case
/// only.
QString unescapedText(const QStringRef &text);

} // namespace MOLK
