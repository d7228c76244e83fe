// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "player.h"

#include "comparison.h"
#include "plainset.h"
#include "stage.h"

#include "molksignalselectdialog.h"
#include "molkview.h"
#include "probedialog.h"
#include "probeportsoptionwidget.h"
#include "signaltreewidget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <algorithm>

using namespace MOLK;

static void answer(const QDialog *dialog, QDialogButtonBox::StandardButton button)
{
    dialog->findChild<QDialogButtonBox *>("buttonBox")->button(button)->click();
}

void Player::editPort(Dice &dice)
{
    dialogType = dice.below(2);
    const bool out = dialogType == 1;
    const int port = dice.below(out ? page().core.outs.size() : page().core.ins.size());
    QTreeWidgetItem *row =
        tree(QLatin1String(out ? "treeProbeOut" : "treeProbeIn"))->topLevelItem(port);
    Plain::Items items = out ? page().core.outs.at(port).items : page().core.ins.at(port).items;
    tell(QString("edit Probe %1%2").arg(QLatin1String(out ? "Out" : "In")).arg(port));
    if (dice.oneIn(4)) {
        int signal = 0;
        int bit = -1;
        if (!out)
            row = pickShownRow(dice, port, &signal, &bit);
        else if (expand(row, &page().outsExpanded[port]))
            row = row->child(0);
        if (!row)
            return;
        tell("from a row below");
    }
    bool accepted = false;
    dialogIsBlind = false;
    dialogDesign = view().design;
    stage->modals.expectDialog<ProbeDialog>([&](ProbeDialog *dialog) {
        if (dialog->windowTitle() != QLatin1String(out ? "Probe Out Port" : "Probe In Port"))
            note("the dialog has the title " + dialog->windowTitle());
        accepted = editItems(dialog, &items, dice);
    });
    Stage::doubleClick(row);
    if (!accepted)
        return;
    if (out)
        page().setOut(port, items);
    else
        page().setIn(port, items);
    view().touch();
}

bool Player::editItems(ProbeDialog *dialog, Plain::Items *items, Dice &dice)
{
    auto *rows = dialog->findChild<signalTreeWidget *>("treeWidget");
    for (int rounds = dice.between(0, 3); rounds > 0; --rounds) {
        const int what = dice.below(12);
        if (what == 0) {
            if (!readDesignUnderDialog(dice))
                return false;
        } else if (what < 6) {
            if (!addInDialog(dialog, items, dice))
                return false;
        } else if (what < 8) {
            removeInDialog(dialog, items, dice);
        } else if (what < 11) {
            dragInDialog(dialog, items, dice);
        } else {
            pressKeysInDialog(dialog, items, dice);
        }
        compareRows("in the port's dialog", rowLines(*items), rowLines(rows));
    }

    if (dice.oneIn(6)) {
        tell("Cancel");
        answer(dialog, QDialogButtonBox::Cancel);
        return false;
    }
    tell("OK");
    const bool fits = Plain::widthOf(*items) <= 256;
    if (!fits)
        stage->modals.expectBox("Warning", "Support 256 signals at most.", QMessageBox::Ok);
    answer(dialog, QDialogButtonBox::Ok);
    if (fits)
        return true;
    if (!dialog->isVisible())
        note("the refused dialog has closed");
    answer(dialog, QDialogButtonBox::Cancel);
    return false;
}

// \return whether the dialog still stands.
bool Player::addInDialog(ProbeDialog *dialog, Plain::Items *items, Dice &dice)
{
    Plain::Items picked;
    bool accepted = false;
    stage->modals.expectDialog<MolkSignalSelectDialog>(
        [&](MolkSignalSelectDialog *search) { accepted = pickSignals(search, &picked, dice); });
    Stage::press(dialog, "btnAdd");
    if (accepted)
        Plain::addPicked(items, picked);
    return dialog->isVisible();
}

static QList<int> selectableRows(const Plain::Items &items, int most)
{
    QList<int> rows;
    for (int i = 0; i < qMin(most, items.size()); ++i) {
        if (items.at(i).selectable)
            rows.append(i);
    }
    return rows;
}

// Clicks some of the rows and returns them in their order; the last click is on \a last.
static QList<int> clickSome(QTreeWidget *tree, QList<int> rows, int *last, Dice &dice)
{
    QList<int> chosen;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    for (int count = dice.between(1, qMin(3, rows.size())); count > 0; --count) {
        *last = rows.takeAt(dice.below(rows.size()));
        Stage::click(tree->topLevelItem(*last), modifiers);
        modifiers = Qt::ControlModifier;
        chosen.append(*last);
    }
    std::sort(chosen.begin(), chosen.end());
    return chosen;
}

void Player::removeInDialog(ProbeDialog *dialog, Plain::Items *items, Dice &dice)
{
    const QList<int> rows = selectableRows(*items, items->size());
    if (rows.isEmpty())
        return tell("remove nothing");
    auto *tree = dialog->findChild<QTreeWidget *>("treeWidget");
    const auto *button = dialog->findChild<QAbstractButton *>("btnRemove");
    int last = 0;
    const QList<int> chosen = clickSome(tree, rows, &last, dice);
    if (!button->isEnabled())
        note("rows are selected and can't be removed");

    // A bit can't be removed by itself.
    QTreeWidgetItem *lastRow = tree->topLevelItem(last);
    if (dice.oneIn(4) && lastRow->childCount() > 0
        && (lastRow->child(0)->flags() & Qt::ItemIsSelectable)) {
        tell("select a bit");
        lastRow->setExpanded(true);
        Stage::click(lastRow->child(0), Qt::ControlModifier);
        if (button->isEnabled())
            note("a bit is selected and can be removed");
        lastRow->setExpanded(false);
        return;
    }
    for (int i = chosen.size() - 1; i >= 0; --i)
        items->removeAt(chosen.at(i));
    tell("remove " + QString::number(chosen.size()) + " rows");
    Stage::press(dialog, "btnRemove");
}

// Drags through the window system and the view's own machinery. The third move starts the drag and
// with it a nested event loop, in which the timers go on.
static bool drag(QTreeWidget *tree, const QPoint &from, const QPoint &to)
{
    QWindow *window = tree->window()->windowHandle();
    const QPoint start = tree->viewport()->mapTo(tree->window(), from);
    const QPoint goal = tree->viewport()->mapTo(tree->window(), to);
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, start);
    QTest::mouseMove(window, start + QPoint(1, 0));
    bool released = false;
    QTimer::singleShot(0, tree, [=] { QTest::mouseMove(window, goal - QPoint(0, 1)); });
    QTimer::singleShot(0, tree, [=] { QTest::mouseMove(window, goal); });
    QTimer::singleShot(0, tree, [&released, window, goal] {
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, goal);
        released = true;
    });
    QTest::mouseMove(window, start + QPoint(QApplication::startDragDistance() + 2, 0));
    const QDeadlineTimer limit(5000);
    while (!released && !limit.hasExpired())
        QCoreApplication::processEvents();
    return released;
}

void Player::dragInDialog(ProbeDialog *dialog, Plain::Items *items, Dice &dice)
{
    const int inSight = 12;
    const QList<int> rows = selectableRows(*items, inSight);
    if (rows.isEmpty())
        return tell("drag nothing");
    auto *tree = dialog->findChild<QTreeWidget *>("treeWidget");
    tree->collapseAll();
    tree->scrollToTop();
    int last = 0;
    const QList<int> chosen = clickSome(tree, rows, &last, dice);
    int target = dice.oneIn(4) ? -1 : dice.below(qMin(inSight, items->size()));
    if (items->size() > inSight && target < 0)
        target = 0;
    const bool below = dice.oneIn(2);
    const QRect rect = tree->visualItemRect(tree->topLevelItem(qMax(0, target)));
    const QPoint to = target < 0 ? QPoint(20, tree->viewport()->height() - 5)
                                 : rect.topLeft() + QPoint(10, below ? 15 : 5);
    QStringList names;
    for (int row : chosen)
        names.append(QString::number(row));
    tell("drag rows " + names.join(',') + " to " + QString::number(target)
         + QLatin1String(below ? " below" : " above"));

    if (!drag(tree, tree->visualItemRect(tree->topLevelItem(last)).center(), to))
        note("the drag hasn't ended");
    Plain::moveRows(items, chosen, target, below);
}

void Player::pressKeysInDialog(ProbeDialog *dialog, Plain::Items *items, Dice &dice)
{
    const QList<int> rows = selectableRows(*items, items->size());
    if (rows.isEmpty())
        return tell("move nothing by keys");
    auto *tree = dialog->findChild<QTreeWidget *>("treeWidget");
    int last = 0;
    const QList<int> chosen = clickSome(tree, rows, &last, dice);
    const bool down = dice.oneIn(2);
    QStringList names;
    for (int row : chosen)
        names.append(QString::number(row));
    tell("move rows " + names.join(',') + QLatin1String(down ? " down" : " up"));
    // The platform makes no window the active one by itself.
    QApplication::setActiveWindow(dialog);
    tree->setFocus();
    QTest::keyClick(tree, down ? Qt::Key_Down : Qt::Key_Up, Qt::AltModifier);
    Plain::stepRows(items, chosen, down);
}

// The design is read anew while dialogs stand: those of a Probe Out close, those of a Probe In stay
// and know no design any more.
// \return whether the dialog still stands.
bool Player::readDesignUnderDialog(Dice &dice)
{
    projectDesign = dice.below(Plain::designs().size());
    tell("read design " + QString::number(projectDesign) + " under the dialog");
    prepareRead(0);
    if (!stage->view()->readRtlNetlist())
        note("the design was refused");
    view().takeDesign(projectDesign);
    dialogIsBlind = true;
    return dialogType == 0;
}
