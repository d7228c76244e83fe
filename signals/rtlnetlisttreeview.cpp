// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "rtlnetlisttreeview.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"

#include <QIcon>

namespace MOLK {

static QString levelText(const FATHOM::Hierachy *level)
{
    return level->parent ? level->name() + "[" + level->module() + "]" : level->name();
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
static RtlTreeItem *buildLevel(FATHOM::Hierachy *level, const QIcon &icon)
{
    auto *item = new RtlTreeItem(level);
    item->setText(0, levelText(level));
    item->setIcon(0, icon);
    const QList<FATHOM::Hierachy *> children = level->children();
    QList<QTreeWidgetItem *> rows;
    rows.reserve(children.size());
    for (FATHOM::Hierachy *child : children)
        rows.append(buildLevel(child, icon));
    item->addChildren(rows);
    return item;
}

RtlTreeItem *RtlNetlistTreeView::buildItem(FATHOM::Hierachy *level)
{
    return buildLevel(level, QIcon(":/netlist/image/module.png"));
}

} // namespace MOLK
