// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// The name \a number of 2^20 that are all alike to qHash() without a seed: "Aa" and "BB" have one
/// hash under its multiplication by 31, and so has every mixture of them. Whoever writes files can
/// make such names.
inline QString alikeName(int number)
{
    QString name;
    for (int bit = 0; bit < 20; ++bit)
        name += QLatin1String(number >> bit & 1 ? "Aa" : "BB");
    return name;
}
