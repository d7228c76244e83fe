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
    for (int i = 0; i < pages.size() && i < view.pages.size(); ++i) {
        for (int port = 0; port < view.pages.at(i).lines.size(); ++port) {
            if (Stage::line(pages.at(i), port) == QApplication::focusWidget()
                && QApplication::focusWidget())
                commit(i, port);
        }
    }
}

void Player::commit(int committed, int port)
{
    const QString refused = view.pages[committed].lines[port].commit();
    if (refused.isNull())
        return;
    stage->modals.expectBox("Error",
                            "Value '" + refused + "' for Probe Out" + QString::number(port)
                                + " Initial Value exceeds the effective width.",
                            QMessageBox::Ok);
    view.touch();
}

static bool pressKey(QWidget *line, Plain::ValueLine *plain, int key, QChar typed)
{
    if (typed.isNull())
        QTest::keyClick(line, Qt::Key(key));
    else
        QTest::keyClick(line, typed.toLatin1());
    return plain->press(key, typed.isNull() ? QString() : QString(typed));
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

    const int port = dice.oneOf(ports);
    InitialValueLine *line = Stage::line(realPage(), port);
    Plain::ValueLine &plain = page().lines[port];
    line->setFocus(Qt::MouseFocusReason);
    if (QApplication::focusWidget() != line)
        return note("the line takes no focus");
    plain.cursor = dice.oneIn(8) ? dice.below(2) : dice.between(2, plain.text.size());
    line->setCursorPosition(plain.cursor);
    tell(QString("type into Probe Out%1 at %2").arg(port).arg(plain.cursor));
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
    if (edited)
        view.touch();

    // A save takes the text as it stands. What wouldn't fit is left to the change of focus.
    Plain::ValueLine trial = plain;
    if (!dice.oneIn(5) || !trial.commit().isNull() || !view.save.enabled)
        return;
    tell("trigger Save at once");
    expectSave(true);
    commit(view.current, port);
    stage->saveAction()->trigger();
}

void Player::toggleClock(Dice &)
{
    tell("toggle the user clock");
    page().useClock = !page().useClock;
    view.touch();
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
        view.touch();
    page().clock = name;
}

void Player::pickClock(Dice &dice)
{
    tell("pick the clock");
    if (!page().useClock)
        return;
    dialogType = 0;
    dialogIsBlind = false;
    dialogDesign = view.design;
    Plain::Items items;
    bool accepted = false;
    stage->modals.expectDialog<MolkSignalSelectDialog>(
        [&](MolkSignalSelectDialog *dialog) { accepted = pickSignals(dialog, &items, dice); });
    Stage::press(realPage(), "btnUserClock");
    const QString name = accepted ? Plain::oneName(items) : QString();
    if (name.isEmpty())
        return;
    page().clock = name;
    view.touch();
}
