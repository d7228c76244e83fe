// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Any text in, by code units: both conversions must equal their plain reading.

#include "valueconversion.h"
#include "valuereference.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // As UTF-8 for the digits that people type, as raw code units for everything else.
    const QString typed = QString::fromUtf8(reinterpret_cast<const char *>(data), int(size));
    QString raw;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        raw += QChar(ushort(data[i] | data[i + 1] << 8));

    for (const QString &text : {typed, raw}) {
        if (MOLK::stringHextoBinfor0x(text) != ValueReference::hexToBits(text))
            std::abort();
        if (MOLK::stringBintoHex(text) != ValueReference::bitsToHex(text))
            std::abort();
    }
    return 0;
}
