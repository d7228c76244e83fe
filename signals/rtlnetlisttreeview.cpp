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

// Rows get their own children after they were added themselves: adding a row goes through all rows
// below it.
static void addLevelsBelow(RtlTreeItem *row)
{
    const QList<FATHOM::Hierachy *> children = row->hierarchy->children();
    QList<QTreeWidgetItem *> rows;
    rows.reserve(children.size());
    for (FATHOM::Hierachy *child : children)
        rows.append(new RtlTreeItem(child));
    row->addChildren(rows);
    for (QTreeWidgetItem *child : qAsConst(rows))
        addLevelsBelow(static_cast<RtlTreeItem *>(child));
}

// The icon is handed down since looking its file up costs more than all the rest of a row.
static void describe(QTreeWidgetItem *row, const QVariant &icon)
{
    row->setText(0, levelText(static_cast<RtlTreeItem *>(row)->hierarchy));
    row->setData(0, Qt::DecorationRole, icon);
    for (int k = 0; k < row->childCount(); ++k)
        describe(row->child(k), icon);
}

// All rows are made before any is described, so that they lie close together in memory: laying the
// tree out goes through rows and not through what they show.
RtlTreeItem *RtlNetlistTreeView::buildItem(FATHOM::Hierachy *level)
{
    auto *row = new RtlTreeItem(level);
    addLevelsBelow(row);
    describe(row, QIcon(":/netlist/image/module.png"));
    return row;
}

// With a layout due anyway the view only notes what is expanded. It is laid out here and not when
// the combo box opens: the box asks for every row's place first.
void RtlNetlistTreeView::expandAll()
{
    const QSignalBlocker blocker(this);
    scheduleDelayedItemsLayout();
    for (QTreeWidgetItemIterator it(this, QTreeWidgetItemIterator::HasChildren); *it; ++it)
        (*it)->setExpanded(true);
    doItemsLayout();
}

} // namespace MOLK
