// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "rowmovingkeys.h"

#include "rowmoving.h"

#include <QShortcut>
#include <QTreeWidget>

namespace MOLK {

RowMovingKeys::RowMovingKeys(QTreeWidget *movedIn)
    : QObject(movedIn)
    , tree(movedIn)
{
    addKey(Qt::ALT + Qt::Key_Up, SLOT(onUp()));
    addKey(Qt::ALT + Qt::Key_Down, SLOT(onDown()));
}

void RowMovingKeys::onUp()
{
    moveSelectedRowsUp(tree);
}

void RowMovingKeys::onDown()
{
    moveSelectedRowsDown(tree);
}

void RowMovingKeys::addKey(int key, const char *slot)
{
    auto *shortcut = new QShortcut(QKeySequence(key), tree);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, SIGNAL(activated()), this, slot);
}

} // namespace MOLK
