// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <string_view>

namespace Standin {

/// Checks that a JSON text is whole: each object, list and string ends, in the right order, and
/// nothing but blanks stands behind the first value. A parser that reads on demand looks no further
/// than it is asked to, and sees none of that in what it passes over.
///
/// \return null if the text is whole, or has no brackets at all; else what is wrong, as
///         "line:column: text", both counted from 1.
QString faultOfJsonBrackets(std::string_view text);

/// Where the character \a offset of \a text stands: "line:column", both counted from 1.
QString placeInText(std::string_view text, std::size_t offset);

} // namespace Standin
