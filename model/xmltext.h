// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringRef>

#include <array>

namespace MOLK {

/// The bytes that stand for themselves in an attribute of a configuration file, indexed by the
/// byte: printable ASCII other than markup and backslash. Nearly all names hold nothing else.
constexpr std::array<bool, 256> plainBytes = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte < 0x7F; ++byte)
        plain[byte] = byte != '<' && byte != '>' && byte != '&' && byte != '"' && byte != '\\';
    return plain;
}();

/// Spells \a text with characters that XML can hold.
///
/// A code unit that XML can't hold (most control characters, U+FFFE, U+FFFF, half a surrogate pair)
/// becomes a backslash, `u` and four upper-case hexadecimal digits. A backslash stays as it is
/// unless what follows would read as such an escape; then it is escaped itself.
///
/// \return a text that unescapedText() turns back into \a text; \a text itself in nearly all cases.
QString escapedText(const QString &text);

/// Spells \a text as it stands between the quotes of an attribute: as escapedText() does, and with
/// references in place of markup, tab and line ends.
QString escapedAttribute(const QString &text);

/// Turns back what escapedText() did. Takes escapes of any code unit, with digits of upper case
/// only.
QString unescapedText(const QStringRef &text);

/// Reads what escapedAttribute() spelt, from the bytes between the quotes.
///
/// \param text receives what is read; left alone on failure.
/// \return false for anything that escapedAttribute() wouldn't write, and for a text that is longer
///         than the format allows. Whether such bytes are a text all the same isn't said.
bool readAttribute(const char *begin, const char *end, QString *text);

/// Reads a number that is spelt as the writer spells it, without blanks, a plus sign or leading
/// zeros. \a number is left alone on failure.
bool parseNumber(const QStringRef &text, int *number);

} // namespace MOLK
