// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

namespace MOLK {

/// Follows text in UTF-8 over several pieces and finds the first byte that isn't UTF-8: overlong
/// forms, halves of surrogate pairs and codes above U+10FFFF count as wrong.
///
/// The XML parser finds such bytes too, but no longer knows where they stood.
class Utf8Check
{
public:
    /// The first wrong byte of the next piece, its end if all is right.
    const char *firstInvalid(const char *at, const char *end);

    /// False while the text so far ends in the middle of a character.
    bool isComplete() const { return pending == 0; }

private:
    bool accept(uchar byte);

    int pending = 0;  // Bytes that the current character still needs.
    uchar low = 0x80; // The range of the next of them, narrower behind some first bytes.
    uchar high = 0xBF;
};

} // namespace MOLK
