// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "rtlnetlisttreeview.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"

#include <QIcon>
#include <QSignalBlocker>
#include <QStringBuilder>
#include <QTreeWidgetItemIterator>

namespace MOLK {

static QString levelText(const FATHOM::Hierachy *level)
{
    if (!level->parent)
        return level->name();
    return level->name() % QLatin1Char('[') % level->module() % QLatin1Char(']');
}

RtlTreeItem::RtlTreeItem(FATHOM::Hierachy *level)
    : QTreeWidgetItem(RtlTreeItemType)
    , hierarchy(level)
{
}

RtlNetlistTreeView::RtlNetlistTreeView(QWidget *parent)
    : QTreeWidget(parent)
{
    setHeaderHidden(true);
    // A combo box asks for the place of every row before it opens, which each time adds up the
    // heights of the rows above unless they are all alike.
    setUniformRowHeights(true);
}

void RtlNetlistTreeView::setNetlist(FATHOM::RtlNetlist *design)
{
    netlist = design;
    clear();
    if (!netlist)
        return;
    addTopLevelItem(buildItem(netlist->top));
    expandToDepth(0);
}

// The icon is handed down since looking its file up costs more than all the rest of a row.
static RtlTreeItem *makeRow(FATHOM::Hierachy *level, const QIcon &icon)
{
    auto *row = new RtlTreeItem(level);
    row->setText(0, levelText(level));
    row->setIcon(0, icon);
    return row;
}

// Rows get their own children after they were added themselves: adding a row goes through all rows
// below it.
static void addLevelsBelow(RtlTreeItem *row, const QIcon &icon)
{
    const QList<FATHOM::Hierachy *> children = row->hierarchy->children();
    QList<QTreeWidgetItem *> rows;
    rows.reserve(children.size());
    for (FATHOM::Hierachy *child : children)
        rows.append(makeRow(child, icon));
    row->addChildren(rows);
    for (QTreeWidgetItem *child : qAsConst(rows))
        addLevelsBelow(static_cast<RtlTreeItem *>(child), icon);
}

RtlTreeItem *RtlNetlistTreeView::buildItem(FATHOM::Hierachy *level)
{
    const QIcon icon(":/netlist/image/module.png");
    RtlTreeItem *row = makeRow(level, icon);
    addLevelsBelow(row, icon);
    return row;
}

// With a layout due anyway the view only notes what is expanded.
void RtlNetlistTreeView::expandAll()
{
    const QSignalBlocker blocker(this);
    scheduleDelayedItemsLayout();
    for (QTreeWidgetItemIterator it(this, QTreeWidgetItemIterator::HasChildren); *it; ++it)
        (*it)->setExpanded(true);
}

} // namespace MOLK
