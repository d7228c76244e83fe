// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "menudriver.h"
#include "player.h"
#include "stage.h"

#include <QApplication>
#include <QContextMenuEvent>

void Player::switchCore(Dice &dice)
{
    const int core = dice.below(view().pages.size());
    tell("click on core " + QString::number(core));
    QTreeWidgetItem *row = stage->coreTree()->topLevelItem(core);
    if (dice.oneIn(5))
        Stage::doubleClick(row);
    else
        Stage::click(row);
    view().current = core;
}

void Player::coreMenu(Dice &dice)
{
    QTreeWidget *cores = stage->coreTree();
    int row = dice.oneIn(6) ? -1 : dice.below(view().pages.size());
    QPoint place(10, cores->viewport()->height() - 2);
    if (row < 0 && cores->itemAt(place))
        row = 0;
    if (row >= 0) {
        cores->scrollToItem(cores->topLevelItem(row));
        place = cores->visualItemRect(cores->topLevelItem(row)).center();
    }
    const int choice = row < 0 ? dice.below(2) : dice.below(5);
    static const QStringList names = {"dismiss", "Add", "Add", "Remove", "Remove"};
    tell("menu of cores at row " + QString::number(row) + ", " + names.at(choice));

    stage->modals.expectMenu([=](QMenu *menu) {
        const QList<QAction *> entries = menu->actions();
        if (entries.size() != 2 || entries.at(0)->text() != "Add"
            || entries.at(1)->text() != "Remove" || !entries.at(0)->isEnabled()
            || entries.at(1)->isEnabled() != (row >= 0)) {
            note("the menu of cores is wrong");
            return;
        }
        if (choice > 0)
            chooseEntry(menu, names.at(choice));
    });
    if (choice > 2)
        chooseRemove(row, dice);
    else if (choice > 0)
        chooseAdd();

    QContextMenuEvent event(QContextMenuEvent::Mouse, place, cores->viewport()->mapToGlobal(place));
    QApplication::sendEvent(cores->viewport(), &event);
}

void Player::chooseAdd()
{
    if (view().pages.size() >= 16) {
        stage->modals.expectBox("Warning", "Support 16 MOLKs at most.", QMessageBox::Ok);
        return;
    }
    view().addCore();
    view().current = view().pages.size() - 1;
}

void Player::chooseRemove(int row, Dice &dice)
{
    if (view().pages.size() == 1) {
        stage->modals.expectBox("Remove MOLK", "The only MOLK can not be removed.",
                                QMessageBox::Ok);
    } else {
        const bool sure = !dice.oneIn(4);
        stage->modals.expectBox("Remove MOLk",
                                "Do you want to remove MOLK " + QString::number(row) + " ?",
                                sure ? QMessageBox::Ok : QMessageBox::Cancel);
        if (sure)
            view().removeCore(row);
    }
    view().current = 0;
}
