// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Plain readings of the value conversions, a digit at a time, to compare the real ones with.
namespace ValueReference {

inline QString hexToBits(const QString &text)
{
    QString bits;
    for (const QChar digit : text.mid(2)) {
        const int value = QString("0123456789ABCDEF").indexOf(digit, 0, Qt::CaseInsensitive);
        bits += QString::number(qMax(0, value), 2).rightJustified(4, QLatin1Char('0'));
    }
    return bits;
}

inline QString bitsToHex(const QString &bits)
{
    QString padded = bits;
    while (padded.size() % 4 != 0)
        padded.prepend(QLatin1Char('0'));
    QString hex;
    for (int i = 0; i < padded.size(); i += 4) {
        int value = 0;
        for (int j = 0; j < 4; ++j)
            value += padded.mid(i + j, 1) == "1" ? 8 >> j : 0;
        hex += QString::number(value, 16).toUpper();
    }
    return hex;
}

} // namespace ValueReference
