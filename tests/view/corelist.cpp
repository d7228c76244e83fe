// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "corelist.h"

#include "molkcore.h"
#include "molkoptionwidget.h"
#include "privateaccess.h"
#include "treelines.h"
#include "viewbench.h"

#include <QDockWidget>
#include <QStackedWidget>
#include <QTreeWidget>

using namespace MOLK;

struct PageNetlist
{
    using Type = FATHOM::RtlNetlist *MolkOptionWidget::*;
    friend Type member(PageNetlist);
};
template struct PrivateAccess<PageNetlist, &MolkOptionWidget::netlist>;

QTreeWidget *coreTree(const MolkView *view)
{
    return child<QTreeWidget>(view, "treeWidget");
}

QStringList coreLines(const MolkView *view)
{
    return treeLines(coreTree(view)->model());
}

QPoint rowCenter(const QTreeWidget *tree, int row)
{
    return tree->visualItemRect(tree->topLevelItem(row)).center();
}

FATHOM::RtlNetlist *netlistOf(const MolkOptionWidget *page)
{
    return page->*member(PageNetlist());
}

int shownCore(MolkView *view)
{
    const auto *stack = child<QStackedWidget>(view, "stackedWidget");
    const auto *page = qobject_cast<MolkOptionWidget *>(stack->currentWidget());
    const QTreeWidget *tree = coreTree(view);
    const int id = page ? page->core->id : -1;
    const QString name = QString("molk_%1").arg(id);
    const bool agree = tree->currentItem() && tree->currentItem()->text(0) == name
        && tree->currentItem()->isSelected()
        && child<QDockWidget>(view, "dockWidget_2")->windowTitle() == name
        && documentOf(view)->optionWidgets.value(id) == page;
    return agree ? id : -1;
}
