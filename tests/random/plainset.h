// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "plainmodel.h"

namespace Plain {

/// Adds \a picked to \a list such that nothing stands twice, and no bit stands beside the whole bus
/// that holds it.
void addPicked(Items *list, const Items &picked);

/// The name that a caller gets who wants one name of \a list.
QString oneName(const Items &list);

/// Moves the rows \a moved, in rising order, next to the row \a target, or to the end if that is
/// -1.
void moveRows(Items *list, const QList<int> &moved, int target, bool below);

/// Moves each of the rows \a moved, in rising order, one place up or down; a row at the edge and
/// those right behind it stay.
void stepRows(Items *list, const QList<int> &moved, bool down);

} // namespace Plain
