// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "utf8check.h"

#include <cstring>

namespace MOLK {

// Nearly all text is ASCII: eight bytes at a time are passed over.
static const char *skipAscii(const char *at, const char *end)
{
    while (end - at >= 8) {
        quint64 bytes = 0;
        std::memcpy(&bytes, at, sizeof bytes);
        if (bytes & Q_UINT64_C(0x8080808080808080))
            break;
        at += 8;
    }
    while (at != end && uchar(*at) < 0x80)
        ++at;
    return at;
}

const char *Utf8Check::firstInvalid(const char *at, const char *end)
{
    while (at != end) {
        if (pending == 0) {
            at = skipAscii(at, end);
            if (at == end)
                return end;
        }
        if (!accept(uchar(*at)))
            return at;
        ++at;
    }
    return end;
}

bool Utf8Check::accept(uchar byte)
{
    if (pending > 0) {
        if (byte < low || byte > high)
            return false;
        --pending;
        low = 0x80;
        high = 0xBF;
        return true;
    }
    if (byte < 0xC2 || byte > 0xF4)
        return byte < 0x80;
    pending = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
    if (byte == 0xE0)
        low = 0xA0;
    else if (byte == 0xED)
        high = 0x9F;
    else if (byte == 0xF0)
        low = 0x90;
    else if (byte == 0xF4)
        high = 0x8F;
    return true;
}

} // namespace MOLK
