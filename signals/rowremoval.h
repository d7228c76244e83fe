// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>

class QTreeWidget;

namespace MOLK {

/// Deletes the top-level rows at \a rows, which are positions in rising order, in time that grows
/// with the size of the tree. What is expanded, selected or current among the other rows stays so;
/// if the current row goes, the row above it becomes current, or else the row below.
void removeTopLevelRows(QTreeWidget *tree, const QVector<int> &rows);

/// Deletes those of the selected rows that stand at top level; selected rows below them stay unless
/// the row above them goes.
void removeSelectedRows(QTreeWidget *tree);

} // namespace MOLK
