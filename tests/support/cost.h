// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <functional>

/// What some work takes of the system: the same on a slow machine or a busy one, where time is not.
struct Cost
{
    qint64 readBytes;     ///< Read from files, each time that they are.
    qint64 peakKibibytes; ///< Memory at the peak, above what was in use before.
};

/// Runs \a work and takes stock. The running test fails if the system can't tell. What \a work does
/// for the first time in a process may count too, so a bound needs some room.
Cost costOf(const std::function<void()> &work);
