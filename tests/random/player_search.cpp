// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "player.h"

#include "comparison.h"
#include "plainset.h"
#include "stage.h"

#include "molksignalselectdialog.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidgetItemIterator>

#include <algorithm>
#include <climits>

using namespace MOLK;

static void setChecked(const QWidget *dialog, const QString &name, bool checked)
{
    if (dialog->findChild<QAbstractButton *>(name)->isChecked() != checked)
        Stage::press(dialog, name);
}

static QString randomPattern(Dice &dice, Plain::Syntax syntax)
{
    switch (dice.below(4)) {
    case 0:
        return QString();
    case 1: {
        const QString name = dice.oneOf(dice.oneOf(Plain::designs()).allNames());
        return syntax == Plain::Syntax::Normal ? name.mid(dice.below(name.size()), 5) : name;
    }
    default:
        break;
    }
    switch (syntax) {
    case Plain::Syntax::Normal:
        return dice.oneOf(QList<QString>{"q", "CLK", "u0/", ".", "*", "[", "nothing", "Top"});
    case Plain::Syntax::Wildcard:
        return dice.oneOf(QList<QString>{"*q*", "*/clk", "top/?lk", "*\\[7:0\\]", "top/u?/*",
                                         "*[kt]", "clk", "*q\\**"});
    case Plain::Syntax::Expression:
        break;
    }
    return dice.oneOf(QList<QString>{".*q.*", "top/[a-z]+", ".*\\[[0-9]+:0\\]", "(top|none)/.*",
                                     "clk", "*", "(", "top/u0/.*", "top/.lk"});
}

// Opens "Search In" and clicks on a level.
static bool pickLevel(const MolkSignalSelectDialog *dialog, const QString &text)
{
    auto *box = dialog->findChild<QComboBox *>("comboBoxSearchIn");
    auto *levels = qobject_cast<QTreeWidget *>(box->view());
    const QList<QTreeWidgetItem *> rows =
        levels->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    if (rows.size() != 1)
        return false;
    box->showPopup();
    levels->scrollToItem(rows.first());
    const QPoint place = levels->visualItemRect(rows.first()).center();
    QTest::mouseMove(levels->viewport(), place);
    // A popup that has just come up takes no click that may belong to the press before.
    QTest::keyClick(levels, Qt::Key_Shift);
    levels->setCurrentItem(rows.first());
    QTest::keyClick(levels, Qt::Key_Return);
    if (levels->isVisible())
        box->hidePopup();
    return box->currentText() == text;
}

Plain::Search Player::fillSearch(MolkSignalSelectDialog *dialog, Dice &dice)
{
    Plain::Search search;
    search.syntax = Plain::Syntax(dice.below(3));
    search.pattern = randomPattern(dice, search.syntax);
    search.caseSensitive = dice.oneIn(2);
    search.advanced = dice.oneIn(2);
    auto *edit = dialog->findChild<QLineEdit *>("lineEditName");
    edit->clear();
    QTest::keyClicks(edit, search.pattern);
    static const QStringList radios = {"radioButtonNormal", "radioButtonWildcard",
                                       "radioButtonRegularExpression"};
    setChecked(dialog, radios.at(int(search.syntax)), true);
    setChecked(dialog, "checkBoxCaseSensitive", search.caseSensitive);
    setChecked(dialog, "checkBoxAdvancedFilter", search.advanced);
    if (dialog->findChild<QWidget *>("widget_4")->isVisible() != search.advanced)
        note("the advanced filter is shown at the wrong time");
    if (!search.advanced)
        return search;
    search.subentries = dice.oneIn(2);
    search.hierarchyView = dice.oneIn(2);
    setChecked(dialog, "checkBoxIncludeSubentries", search.subentries);
    setChecked(dialog, "checkBoxHierarchyView", search.hierarchyView);
    return search;
}

static QString foundLine(const QString &text, const QString &tip, int depth, bool gray,
                         bool selectable)
{
    QString line = QString(depth * 2, QLatin1Char(' ')) + '"' + text + "\" tip \"" + tip + '"';
    if (gray)
        line += " gray";
    return line + QLatin1String(selectable ? " selectable" : "");
}

static QStringList foundLines(const QList<Plain::Found> &results)
{
    QStringList lines;
    for (const Plain::Found &row : results) {
        lines.append(foundLine(row.text, row.isModule ? QString() : row.text, row.depth,
                               !row.isModule && !row.selectable, row.selectable));
    }
    return lines;
}

static QStringList foundLines(QTreeWidget *tree)
{
    QStringList lines;
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        int depth = 0;
        for (const QTreeWidgetItem *parent = (*it)->parent(); parent; parent = parent->parent())
            ++depth;
        lines.append(foundLine((*it)->text(0), (*it)->toolTip(0), depth,
                               (*it)->foreground(0).color() == QColor(Qt::gray),
                               (*it)->flags() & Qt::ItemIsSelectable));
    }
    return lines;
}

static QString describe(const Plain::Search &search)
{
    static const QStringList syntaxes = {"normal", "wildcard", "expression"};
    QString text = "search \"" + search.pattern + "\" " + syntaxes.at(int(search.syntax));
    if (search.caseSensitive)
        text += " case";
    if (search.advanced)
        text += " at level " + QString::number(search.level);
    if (search.subentries)
        text += " subentries";
    return search.hierarchyView ? text + " hierarchy" : text;
}

// \return whether the dialog was accepted.
bool Player::pickSignals(MolkSignalSelectDialog *dialog, Plain::Items *items, Dice &dice)
{
    const Plain::Design &design = Plain::designs().at(dialogDesign);
    auto *results = dialog->findChild<QTreeWidget *>("treeWidget");
    auto *selected = dialog->findChild<QTreeWidget *>("treeWidgetAddSignal");
    int level = 0;
    for (int rounds = dice.between(1, 2); rounds > 0; --rounds) {
        Plain::Search search = fillSearch(dialog, dice);
        if (search.advanced && !dialogIsBlind && dice.oneIn(2)) {
            level = dice.below(design.levels.size());
            if (!pickLevel(dialog, Plain::levelText(design, level)))
                note("the level can't be chosen");
        }
        search.level = search.advanced ? level : 0;
        tell(describe(search));
        if (dice.oneIn(3))
            QTest::keyClick(dialog->findChild<QLineEdit *>("lineEditName"), Qt::Key_Return);
        else
            Stage::press(dialog, "pushButtonSearch");
        const QList<Plain::Found> found =
            dialogIsBlind ? QList<Plain::Found>() : Plain::search(design, search, dialogType);
        compareRows("in the results", foundLines(found), foundLines(results));
        moveResults(dialog, found, items, dice);
        compareRows("in the selected list", rowLines(*items), rowLines(selected));
        removeSelected(dialog, items, dice);
        compareRows("in the selected list", rowLines(*items), rowLines(selected));
    }

    const bool accepted = !dice.oneIn(7);
    tell(QLatin1String(accepted ? "take them" : "take none"));
    dialog->findChild<QDialogButtonBox *>("buttonBox")
        ->button(accepted ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel)
        ->click();
    return accepted;
}

void Player::moveResults(MolkSignalSelectDialog *dialog, const QList<Plain::Found> &results,
                         Plain::Items *items, Dice &dice)
{
    QList<int> all;
    QList<int> selectable;
    // The bits of a disabled bus are disabled with it.
    int disabledFrom = INT_MAX;
    for (int i = 0; i < results.size(); ++i) {
        const Plain::Found &row = results.at(i);
        all.append(i);
        if (row.depth <= disabledFrom)
            disabledFrom = row.selectable || row.isModule ? INT_MAX : row.depth;
        if (row.selectable && row.depth <= disabledFrom)
            selectable.append(i);
    }
    if (dice.oneIn(6)) {
        tell("add all");
        Stage::press(dialog, "btnAddAll");
        Plain::addPicked(items, Plain::picked(results, all));
        return;
    }

    auto *tree = dialog->findChild<QTreeWidget *>("treeWidget");
    QList<QTreeWidgetItem *> rows;
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        rows.append(*it);
    if (rows.size() != results.size())
        return;
    tree->expandAll();
    QList<int> chosen;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    const int wanted = dice.between(1, 6);
    while (!selectable.isEmpty() && chosen.size() < wanted) {
        chosen.append(selectable.takeAt(dice.below(selectable.size())));
        Stage::click(rows.at(chosen.last()), modifiers);
        modifiers = Qt::ControlModifier;
    }
    std::sort(chosen.begin(), chosen.end());
    const Plain::Items picked = Plain::picked(results, chosen);
    QStringList names;
    for (const Plain::Signal &item : picked)
        names.append(item.name);
    tell("add " + names.join(' '));
    Stage::press(dialog, "btnAdd");
    Plain::addPicked(items, picked);
}

void Player::removeSelected(MolkSignalSelectDialog *dialog, Plain::Items *items, Dice &dice)
{
    if (dice.oneIn(12)) {
        tell("remove all from the selected");
        Stage::press(dialog, "btnDelAll");
        items->clear();
        return;
    }
    QList<int> rows;
    for (int i = 0; i < items->size(); ++i) {
        if (items->at(i).selectable)
            rows.append(i);
    }
    if (!dice.oneIn(4) || rows.isEmpty())
        return;
    const int row = dice.oneOf(rows);
    tell("remove " + items->at(row).name + " from the selected");
    Stage::click(dialog->findChild<QTreeWidget *>("treeWidgetAddSignal")->topLevelItem(row));
    Stage::press(dialog, "btnDel");
    items->removeAt(row);
}
