// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "player.h"

#include <functional>

/// Shortens \a steps by leaving steps out as long as \a fails holds: at first halves, then smaller
/// and smaller pieces. At most \a tries sequences are tried.
QList<Step> shortest(QList<Step> steps, const std::function<bool(const QList<Step> &)> &fails,
                     int tries);
