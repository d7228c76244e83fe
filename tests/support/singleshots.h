// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>

/// The times, in milliseconds, of all single shots that are on their way in this thread.
QList<int> singleShots();

/// Ends the waiting of all single shots of \a milliseconds: they fire now.
void fireSingleShots(int milliseconds);
