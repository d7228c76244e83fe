// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "player.h"
#include "stage.h"

#include "probeportsoptionwidget.h"

#include <QTest>

void Player::addPort(Dice &dice)
{
    const bool out = dice.oneIn(2);
    tell(QLatin1String(out ? "add a Probe Out" : "add a Probe In"));
    const int count = out ? page().core.outs.size() : page().core.ins.size();
    if (count >= 64) {
        stage->modals.expectBox(
            "Warning",
            QLatin1String(out ? "Support 64 Probe Outs at most." : "Support 64 Probe Ins at most."),
            QMessageBox::Ok);
    } else {
        if (out)
            page().addOut();
        else
            page().addIn();
        view().touch();
    }
    Stage::press(realPage(), QLatin1String(out ? "btnProbeOutAdd" : "btnProbeInAdd"));
}

static void toggle(QTreeWidgetItem *row)
{
    QTreeWidget *tree = row->treeWidget();
    tree->scrollToItem(row);
    const QRect rect = tree->visualItemRect(row);
    const QPoint branch(rect.left() - tree->indentation() / 2, rect.center().y());
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, branch);
}

static void selectNothing(QTreeWidget *tree)
{
    Stage::click(tree->topLevelItem(0));
    Stage::click(tree->topLevelItem(0), Qt::ControlModifier);
}

bool Player::expand(QTreeWidgetItem *row, bool *expanded)
{
    if (row->childCount() == 0)
        return false;
    if (!*expanded)
        toggle(row);
    *expanded = true;
    return true;
}

// A row below a Probe In as it is shown now, in sight.
QTreeWidgetItem *Player::pickShownRow(Dice &dice, int port, int *signal, int *bit)
{
    QTreeWidgetItem *row = tree("treeProbeIn")->topLevelItem(port);
    if (!expand(row, &page().insExpanded[port]))
        return nullptr;
    *signal = dice.below(page().shownIns.at(port).size());
    *bit = -1;
    row = row->child(*signal);
    const int bits = page().shownIns.at(port).at(*signal).members.size();
    if (!row || bits != row->childCount() || bits == 0 || dice.oneIn(2))
        return row;
    row->setExpanded(true);
    *bit = dice.below(bits);
    return row->child(*bit);
}

void Player::removeProbeIn(Dice &dice)
{
    const int port = dice.below(page().core.ins.size());
    QTreeWidgetItem *row = tree("treeProbeIn")->topLevelItem(port);
    selectNothing(row->treeWidget());

    int signal = -1;
    int bit = -1;
    bool selectable = true;
    const int what = dice.below(6);
    if (what == 0) {
        row = nullptr;
    } else if (what < 3) {
        row = pickShownRow(dice, port, &signal, &bit);
        if (row) {
            const Plain::Signal &item = page().shownIns.at(port).at(signal);
            selectable = item.selectable && (bit < 0 || item.members.at(bit).selectable);
        }
    }
    tell(QString("remove Probe In%1, signal %2, bit %3, selected %4")
             .arg(port)
             .arg(signal)
             .arg(bit)
             .arg(row != nullptr));
    if (row)
        Stage::click(row);

    if (page().core.ins.size() == 1) {
        stage->modals.expectBox("Warning", "Support 1 Probe In at least.", QMessageBox::Ok);
    } else {
        if (row && signal < 0)
            page().removeIn(port);
        else if (row && selectable)
            page().dropShownRow(port, signal, bit);
        view().touch();
    }
    Stage::press(realPage(), "btnProbeInRemove");
}

void Player::removeProbeOut(Dice &dice)
{
    const int port = dice.below(page().core.outs.size());
    QTreeWidgetItem *row = tree("treeProbeOut")->topLevelItem(port);
    selectNothing(row->treeWidget());

    int signal = -1;
    bool selected = !dice.oneIn(6);
    if (selected && dice.oneIn(4) && expand(row, &page().outsExpanded[port])) {
        signal = dice.below(row->childCount());
        row = row->child(signal);
        selected = page().core.outs.at(port).items.at(signal).selectable;
    }
    tell(QString("remove Probe Out%1, signal %2, selected %3").arg(port).arg(signal).arg(selected));
    if (selected)
        Stage::click(row);

    if (page().core.outs.size() == 1) {
        stage->modals.expectBox("Warning", "Support 1 Probe Out at least.", QMessageBox::Ok);
    } else if (!selected || signal < 0) {
        if (selected)
            page().removeOut(port);
        view().touch();
    }
    Stage::press(realPage(), "btnProbeOutRemove");
}

void Player::toggleExpansion(Dice &dice)
{
    const QString name = dice.oneOf(QList<QString>{"treeProbeIn", "treeProbeOut", "treeValue"});
    const int port = dice.below(tree(name)->topLevelItemCount());
    QTreeWidgetItem *row = tree(name)->topLevelItem(port);
    tell("fold or unfold row " + QString::number(port) + " of " + name);
    if (!row || row->childCount() == 0)
        return;
    bool &expanded = name == "treeProbeIn" ? page().insExpanded[port] : page().outsExpanded[port];
    expanded = !expanded;
    toggle(row);
}

static QList<int> placeOf(QTreeWidgetItem *row)
{
    if (row->parent())
        return {row->treeWidget()->indexOfTopLevelItem(row->parent()),
                row->parent()->indexOfChild(row)};
    return {row->treeWidget()->indexOfTopLevelItem(row), -1};
}

// A click in one of the paired trees selects the partner in the other.
void Player::clickPaired(Dice &dice)
{
    const bool inValues = dice.oneIn(2);
    QTreeWidget *clicked = tree(QLatin1String(inValues ? "treeValue" : "treeProbeOut"));
    QTreeWidget *other = tree(QLatin1String(inValues ? "treeProbeOut" : "treeValue"));
    const int port = dice.below(page().core.outs.size());
    QTreeWidgetItem *row = clicked->topLevelItem(port);
    bool selectable = true;
    if (dice.oneIn(2) && expand(row, &page().outsExpanded[port])) {
        const int signal = dice.below(row->childCount());
        row = row->child(signal);
        selectable = page().core.outs.at(port).items.at(signal).selectable;
    }
    tell(QString("click on a row of port %1 among the %2")
             .arg(port)
             .arg(QLatin1String(inValues ? "values" : "ports")));
    // A line that is enabled takes the click on its port's row, and gray rows take none.
    if ((inValues && !row->parent() && page().lines.at(port).enabled) || !selectable)
        return;
    Stage::click(row);
    const QList<QTreeWidgetItem *> partners = other->selectedItems();
    if (partners.size() != 1 || placeOf(partners.first()) != placeOf(row))
        note("the click isn't copied to the other tree");
}
