// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QTreeWidget>

namespace FATHOM {
class Hierachy;
class RtlNetlist;
} // namespace FATHOM

namespace MOLK {

/// Item type of a RtlTreeItem.
constexpr int RtlTreeItemType = 1003;

/// A row that stands for one level of the design.
class RtlTreeItem : public QTreeWidgetItem
{
public:
    explicit RtlTreeItem(FATHOM::Hierachy *level);

    /// The level; not owned, and valid as long as its netlist lives.
    FATHOM::Hierachy *hierarchy;
};

/// The hierarchy of the design as a tree, in which the user picks the level where a search starts.
///
/// Each level's row reads `name[module]`, the top's reads its bare name. currentItem() tells the
/// level that was picked.
class RtlNetlistTreeView : public QTreeWidget
{
public:
    explicit RtlNetlistTreeView(QWidget *parent);

    /// Shows the hierarchy of \a design in place of what was shown, with the levels right below the
    /// top in sight. A null \a design leaves the tree empty.
    void setNetlist(FATHOM::RtlNetlist *design);

    /// A new row for \a level with the rows of all levels below it. The caller owns it until it is
    /// placed in a tree.
    RtlTreeItem *buildItem(FATHOM::Hierachy *level);

    /// Opens all levels as QTreeView::expandAll() does, in time that grows with their number. Emits
    /// nothing.
    void expandAll();

private:
    FATHOM::RtlNetlist *netlist = nullptr;
};

} // namespace MOLK
