// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "asciitext.h"

namespace MOLK {

// The compiler turns the first loop into one that takes eight characters at once.
bool isAscii(const QChar *text, int size)
{
    ushort all = 0;
    int i = 0;
    for (; i + 8 <= size; i += 8) {
        ushort block = 0;
        for (int k = 0; k < 8; ++k)
            block |= text[i + k].unicode();
        all |= block;
    }
    for (; i < size; ++i)
        all |= text[i].unicode();
    return all < 128;
}

} // namespace MOLK
