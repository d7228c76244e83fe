// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstring>

// Where the smallest parts of Verilog text end. Each function takes where the part begins and where
// the text ends, and returns what follows the part: the end of the text if nothing closes it. They
// stand in the innermost loops over whole designs, so they are inline.

namespace Standin {

inline bool isVerilogBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Where the line ends that \a at stands in: at its newline.
inline const char *lineEnd(const char *at, const char *end)
{
    const void *found = std::memchr(at, '\n', size_t(end - at));
    return found ? static_cast<const char *>(found) : end;
}

/// End of the string literal that begins at \a at; the end of the line at the latest.
inline const char *stringEnd(const char *at, const char *end)
{
    for (++at; at < end && *at != '\n'; ++at) {
        if (*at == '"')
            return at + 1;
        if (*at == '\\' && at + 1 < end)
            ++at;
    }
    return at;
}

/// End of the escaped identifier that begins at \a at with a backslash.
inline const char *escapedEnd(const char *at, const char *end)
{
    return std::find_if(at, end, isVerilogBlank);
}

inline bool startsComment(const char *at, const char *end)
{
    return *at == '/' && at + 1 < end && (at[1] == '/' || at[1] == '*');
}

/// End of the comment that begins at \a at; of one to the end of the line its newline.
inline const char *commentEnd(const char *at, const char *end)
{
    if (at[1] == '/')
        return lineEnd(at, end);
    for (at += 2; at + 1 < end; ++at) {
        if (*at == '*' && at[1] == '/')
            return at + 2;
    }
    return end;
}

} // namespace Standin
