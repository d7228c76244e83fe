// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace MOLK {

/// Converts a hexadecimal literal into its bits. Works on any text; nothing is ever refused.
///
/// \param text two characters of prefix, whatever they are ("0x" by convention), then hexadecimal
///        digits of either case. A character that is no hexadecimal digit counts as 0.
/// \return four characters `0` or `1` a digit, most significant first; empty if \a text holds no
///         digit behind the prefix.
QString stringHextoBinfor0x(QString text);

/// Converts bits into hexadecimal digits. Works on any text; nothing is ever refused.
///
/// \param bits characters `0` and `1`, most significant first. Any other character counts as 0. A
///        length that is no multiple of four counts as zero-extended at the left.
/// \return (n + 3) / 4 upper-case digits for n bits, without prefix and with leading zeros kept;
///         empty if \a bits is empty.
QString stringBintoHex(QString bits);

} // namespace MOLK
