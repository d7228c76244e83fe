// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "player.h"
#include "stage.h"

#include "initialvalueline.h"
#include "molksignalselectdialog.h"
#include "plainset.h"
#include "probeportsoptionwidget.h"

#include <QApplication>
#include <QTest>

using namespace MOLK;

// The line that has the focus is about to lose it.
void Player::commitFocused()
{
    const QList<ProbePortsOptionWidget *> pages = stage->pages();
    for (int i = 0; i < pages.size() && i < view().pages.size(); ++i) {
        for (int port = 0; port < view().pages.at(i).lines.size(); ++port) {
            if (Stage::line(pages.at(i), port) == QApplication::focusWidget()
                && QApplication::focusWidget())
                commit(i, port);
        }
    }
}

void Player::commit(int committed, int port)
{
    const QString refused = view().pages[committed].lines[port].commit();
    if (refused.isNull())
        return;
    stage->modals.expectBox("Error",
                            "Value '" + refused + "' for Probe Out" + QString::number(port)
                                + " Initial Value exceeds the effective width.",
                            QMessageBox::Ok);
    view().touch();
}

static bool pressKey(QWidget *line, Plain::ValueLine *plain, int key, QChar typed)
{
    if (typed.isNull())
        QTest::keyClick(line, Qt::Key(key));
    else
        QTest::keyClick(line, typed.toLatin1());
    return plain->press(key, typed.isNull() ? QString() : QString(typed));
}

// Whether the line can lose the focus without a word.
static bool fits(Plain::ValueLine line)
{
    return line.commit().isNull();
}

void Player::typeValue(Dice &dice)
{
    QList<int> ports;
    for (int i = 0; i < page().lines.size(); ++i) {
        if (page().lines.at(i).enabled)
            ports.append(i);
    }
    if (ports.isEmpty())
        return tell("type no value");

    int port = dice.oneOf(ports);
    Stage::line(realPage(), port)->setFocus(Qt::MouseFocusReason);
    placeCursor(port, dice);
    const bool walksOnly = dice.oneIn(5);
    bool edited = !walksOnly && typeKeys(port, dice);
    if (walksOnly || dice.oneIn(3))
        edited |= walkThroughValues(&port, dice);
    if (port >= 0 && dice.oneIn(4)) {
        placeCursor(port, dice);
        edited |= typeKeys(port, dice);
    }
    if (edited)
        view().touch();

    // A save takes the text as it stands. What wouldn't fit is left to the change of focus.
    if (port < 0 || !dice.oneIn(5) || !fits(page().lines.at(port)) || !action.enabled)
        return;
    tell("trigger Save at once");
    expectSave(true);
    commit(view().current, port);
    stage->saveAction()->trigger();
}

void Player::placeCursor(int port, Dice &dice)
{
    InitialValueLine *line = Stage::line(realPage(), port);
    Plain::ValueLine &plain = page().lines[port];
    if (QApplication::focusWidget() != line)
        note("the line takes no focus");
    plain.cursor = dice.oneIn(8) ? dice.below(2) : dice.between(2, plain.text.size());
    line->setCursorPosition(plain.cursor);
    tell(QString("go to Probe Out%1 at %2").arg(port).arg(plain.cursor));
}

// \return whether the line let a key through.
bool Player::typeKeys(int port, Dice &dice)
{
    InitialValueLine *line = Stage::line(realPage(), port);
    Plain::ValueLine &plain = page().lines[port];
    bool edited = false;
    int keys = dice.between(1, 5);
    if (dice.oneIn(6)) {
        line->setSelection(2, plain.text.size());
        plain.selectDigits();
        const bool clears = dice.oneIn(2);
        edited |= pressKey(line, &plain, Qt::Key_Backspace, clears ? QChar() : QChar('7'));
    }
    for (; keys > 0; --keys) {
        if (dice.oneIn(4)) {
            const int key = dice.oneOf(
                QList<int>{Qt::Key_Left, Qt::Key_Right, Qt::Key_Backspace, Qt::Key_Delete});
            tell("key " + QString::number(key, 16));
            edited |= pressKey(line, &plain, key, QChar());
        } else {
            const QString characters = "0123456789ABCDEFabcdef01f8gz-";
            const QChar typed = characters.at(dice.below(characters.size()));
            tell(QString("key ") + typed);
            edited |= pressKey(line, &plain, 0, typed);
        }
    }
    return edited;
}

// The ports of the rows of the value tree that can be walked through, top to bottom; -1 for a row
// that has no line to take the focus.
static QList<int> rowsOfValues(const Plain::Page &page)
{
    QList<int> rows;
    for (int i = 0; i < page.lines.size(); ++i) {
        rows.append(page.lines.at(i).enabled ? i : -1);
        for (int j = 0; page.outsExpanded.at(i) && j < page.lines.at(i).labels.size(); ++j)
            rows.append(-1);
    }
    return rows;
}

// Up and Down in a line lead to the row above and below, whose line takes the focus. On a row
// without a line that can take it, the tree has it.
// \param port whose line has the focus, and which has it afterwards; -1 for the tree.
// \return whether a line let a key through.
bool Player::walkThroughValues(int *port, Dice &dice)
{
    const QList<int> rows = rowsOfValues(page());
    int row = rows.indexOf(*port);
    bool edited = false;
    for (int presses = dice.between(1, 4); presses > 0; --presses) {
        // A value that doesn't fit would be told of in the midst of the walk.
        if (*port >= 0 && !fits(page().lines.at(*port)))
            break;
        const bool down = dice.oneIn(2);
        tell(QLatin1String(down ? "Down" : "Up"));
        const int key = down ? Qt::Key_Down : Qt::Key_Up;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));
        if (*port >= 0 && !page().lines[*port].press(key, QString()))
            continue;
        edited |= *port >= 0;
        const int next = qBound(0, down ? row + 1 : row - 1, rows.size() - 1);
        if (next == row)
            continue;
        if (*port >= 0)
            commit(view().current, *port);
        row = next;
        *port = rows.at(row);
        const QWidget *focused = tree("treeValue");
        if (*port >= 0)
            focused = Stage::line(realPage(), *port);
        if (QApplication::focusWidget() != focused) {
            note("the focus hasn't followed the key");
            break;
        }
    }
    return edited;
}

void Player::toggleClock(Dice &)
{
    tell("toggle the user clock");
    page().useClock = !page().useClock;
    view().touch();
    Stage::press(realPage(), "checkUserClock");
}

void Player::typeClock(Dice &dice)
{
    if (!page().useClock)
        return tell("type no clock");
    auto *edit = realPage()->findChild<QLineEdit *>("lineEditUserClock");
    const QString name =
        dice.oneIn(4) ? QString() : dice.oneOf(Plain::designs().at(projectDesign).allNames());
    tell("type the clock \"" + name + '"');
    edit->setFocus();
    edit->selectAll();
    if (name.isEmpty())
        QTest::keyClick(edit, Qt::Key_Delete);
    else
        QTest::keyClicks(edit, name);
    if (!name.isEmpty() || !page().clock.isEmpty())
        view().touch();
    page().clock = name;
}

void Player::pickClock(Dice &dice)
{
    tell("pick the clock");
    if (!page().useClock)
        return;
    dialogType = 0;
    dialogIsBlind = false;
    dialogDesign = view().design;
    Plain::Items items;
    bool accepted = false;
    stage->modals.expectDialog<MolkSignalSelectDialog>(
        [&](MolkSignalSelectDialog *dialog) { accepted = pickSignals(dialog, &items, dice); });
    Stage::press(realPage(), "btnUserClock");
    const QString name = accepted ? Plain::oneName(items) : QString();
    if (name.isEmpty())
        return;
    page().clock = name;
    view().touch();
}
