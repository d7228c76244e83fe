// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "shrinker.h"

QList<Step> shortest(QList<Step> steps, const std::function<bool(const QList<Step> &)> &fails,
                     int tries)
{
    int piece = qMax(1, steps.size() / 2);
    for (;;) {
        bool shorter = false;
        for (int start = 0; start < steps.size() && tries > 0;) {
            const QList<Step> rest = steps.mid(0, start) + steps.mid(start + piece);
            --tries;
            if (fails(rest)) {
                steps = rest;
                shorter = true;
            } else {
                start += piece;
            }
        }
        if (tries == 0 || (piece == 1 && !shorter))
            return steps;
        if (!shorter)
            piece = qMax(1, piece / 2);
    }
}
