// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

class QTreeWidget;

namespace MOLK {

/// Moves each selected top-level row of a tree one place up or down. A row at the edge stays, and
/// so do the selected rows right behind it, so that all of them keep their order. What is expanded,
/// selected or current stays so, and the current row is brought into view.
///
/// Nothing moves while a row below the top level is selected.
void moveSelectedRowsUp(QTreeWidget *tree);
void moveSelectedRowsDown(QTreeWidget *tree);

} // namespace MOLK
