// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "player.h"
#include "stage.h"

#include "molkview.h"
#include "molkviewmanager.h"

#include "dev/devicearg.h"

#include <QAction>

using namespace MOLK;

// Opens what lies on disk; a file that isn't readable is told of first and then made readable.
void Player::open()
{
    tell("open " + view().baseName());
    Dice dice(seed + 1);
    if (disk().kind != Plain::Disk::Readable) {
        stage->modals.expectBox("Error", stage->path() + " open file failed.", QMessageBox::Ok);
        MolkViewManager::openMolkView(stage->path(), DEV::DeviceArg("OD-500"));
        writeFile(Plain::Disk::Readable, false, dice);
    }
    prepareRead(0);
    const bool changes = dice.oneIn(4);
    if (changes)
        changeTopDuringRead();
    MolkViewManager::openMolkView(stage->path(), DEV::DeviceArg("OD-500"));
    view().open(disk().content, projectDesign);
    // Every view hears of it, also the one that isn't ready.
    if (changes)
        hearTopChange();
    activate(worked);
}

void Player::chooseTool(Dice &dice)
{
    tool = dice.oneOf(QList<QString>{"", "", "OndrelSynthesis", "Synplify", "other"});
    tell("choose the synthesis tool \"" + tool + '"');
    stage->host.design().setOptionValue("Synthesize_tool", tool);
}

// What a save will ask and do.
bool Player::expectSave(bool gated)
{
    if (gated && tool == "Synplify") {
        stage->modals.expectBox("Error",
                                "For RTL Design, MOLK is only available for OndrelSynthesis. "
                                "Please change Synthesis Tool to OndrelSynthesis in "
                                "Configurations.",
                                QMessageBox::Ok);
        return false;
    }
    const QString report = view().check();
    if (!report.isEmpty()) {
        stage->modals.expectBox("Error", "Your settings contain some errors.             ",
                                QMessageBox::Ok, report);
        return false;
    }
    const Plain::Configuration content = view().coresToWrite();
    if (disk().kind == Plain::Disk::Directory) {
        stage->modals.expectBox("Error", "Can not save to " + stage->path(), QMessageBox::Ok);
        return false;
    }
    disk() = {Plain::Disk::Readable, content, Plain::fileText(content)};
    view().saved();
    view().watched = true;
    return true;
}

void Player::save(Dice &dice)
{
    if (dice.oneIn(5)) {
        const int before = worked;
        turnTo(anyOpen(dice));
        tell("save " + view().baseName() + " whatever the state");
        const bool done = expectSave(true);
        if (stage->view()->save() != done)
            note("the save tells the wrong result");
        turnTo(before);
        return;
    }
    tell("trigger Save");
    if (!action.enabled)
        return;
    expectSave(true);
    stage->saveAction()->trigger();
}

// The view that is worked on is opened again by the next step, another one when it is turned to.
void Player::closeAndReopen(Dice &dice)
{
    const int before = worked;
    turnTo(dice.oneIn(3) ? anyOpen(dice) : worked);
    closeView(dice);
    turnTo(before);
}

void Player::closeView(Dice &dice)
{
    tell("close " + view().baseName());
    bool closes = true;
    if (view().modified) {
        const auto answer = dice.oneOf(QList<QMessageBox::StandardButton>{
            QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Discard, QMessageBox::Cancel});
        tell("answer " + QString::number(answer));
        stage->modals.expectBox("Save", "Save changes to \"" + stage->path() + "\" ?", answer);
        closes = answer == QMessageBox::Ok ? expectSave(false) : answer == QMessageBox::Discard;
    }
    MolkViewManager::closeMolkView(stage->path());
    if (!closes)
        return;
    view().close();
    followHost();
}
