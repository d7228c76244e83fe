// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPoint>
#include <QStringList>

class QTreeWidget;

namespace FATHOM {
class RtlNetlist;
}

namespace MOLK {
class MolkOptionWidget;
class MolkView;
} // namespace MOLK

/// The list of cores of \a view.
QTreeWidget *coreTree(const MOLK::MolkView *view);

/// The names in it.
QStringList coreLines(const MOLK::MolkView *view);

/// The middle of a row of \a tree, in its viewport.
QPoint rowCenter(const QTreeWidget *tree, int row);

/// The netlist that \a page searches; null if it has none.
FATHOM::RtlNetlist *netlistOf(const MOLK::MolkOptionWidget *page);

/// The core whose page, line and title are shown, or -1 if the three don't agree.
int shownCore(MOLK::MolkView *view);
