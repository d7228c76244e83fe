// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "valueconversion.h"

namespace MOLK {

// The prefix has two places, also where a text holds something else in them: the value line
// reserves them, and what is pasted there is no part of the number.
static const int prefixLength = 2;

static int digitValue(QChar digit)
{
    const ushort code = digit.unicode();
    if (code >= '0' && code <= '9')
        return code - '0';
    if (code >= 'A' && code <= 'F')
        return code - 'A' + 10;
    if (code >= 'a' && code <= 'f')
        return code - 'a' + 10;
    return 0;
}

QString stringHextoBinfor0x(QString text)
{
    const int digits = qMax(0, text.size() - prefixLength);
    QString bits(digits * 4, QLatin1Char('0'));
    QChar *bit = bits.data();
    for (int i = 0; i < digits; ++i) {
        const int value = digitValue(text.at(prefixLength + i));
        for (int weight = 8; weight > 0; weight /= 2)
            *bit++ = (value & weight) ? QLatin1Char('1') : QLatin1Char('0');
    }
    return bits;
}

QString stringBintoHex(QString bits)
{
    const int digits = (bits.size() + 3) / 4;
    const int padding = digits * 4 - bits.size();
    QString hex(digits, QLatin1Char('0'));
    QChar *digit = hex.data();
    int value = 0;
    for (int i = 0; i < bits.size(); ++i) {
        value = value * 2 + (bits.at(i) == QLatin1Char('1') ? 1 : 0);
        if ((i + padding) % 4 != 3)
            continue;
        *digit++ = QLatin1Char("0123456789ABCDEF"[value]);
        value = 0;
    }
    return hex;
}

} // namespace MOLK
