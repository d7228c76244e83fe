// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>

#include <cmath>

inline double brightness(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

/// How well two colours can be told apart, from 1 for equal ones to 21 for black and white. From 3
/// on a line or a symbol can be made out.
inline double contrast(const QColor &one, const QColor &other)
{
    const double a = brightness(one) + 0.05;
    const double b = brightness(other) + 0.05;
    return qMax(a, b) / qMin(a, b);
}
