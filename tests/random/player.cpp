// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "player.h"

#include "comparison.h"
#include "configurations.h"
#include "stage.h"
#include "turnloop.h"

#include "probeportsoptionwidget.h"

#include <QFile>

const QList<Player::Kind> Player::kinds = {
    {&Player::switchCore, 6},    {&Player::coreMenu, 6},       {&Player::addPort, 8},
    {&Player::removeProbeIn, 6}, {&Player::removeProbeOut, 6}, {&Player::toggleExpansion, 5},
    {&Player::clickPaired, 4},   {&Player::typeValue, 16},     {&Player::toggleClock, 3},
    {&Player::typeClock, 3},     {&Player::pickClock, 2},      {&Player::editPort, 22},
    {&Player::save, 9},          {&Player::closeAndReopen, 3}, {&Player::bringForward, 1},
    {&Player::chooseTool, 2},    {&Player::changeFile, 6},     {&Player::sendEvent, 4},
    {&Player::answerBanner, 9},  {&Player::switchView, 6},     {&Player::glanceAtAnotherKind, 1},
};

Player::Player(Stage *realStage, quint64 sessionSeed)
    : stage(realStage)
    , seed(sessionSeed)
{
    const int count = Dice(seed + 2).between(1, Stage::MostDocuments);
    for (int i = 0; i < count; ++i)
        documents.append({Plain::View(stage->path(i)), Plain::Disk()});
}

QList<Step> Player::randomSteps(Dice &dice, int count)
{
    QList<int> wheel;
    for (int kind = 0; kind < kinds.size(); ++kind) {
        for (int i = 0; i < kinds.at(kind).weight; ++i)
            wheel.append(kind);
    }
    QList<Step> steps;
    for (int i = 0; i < count; ++i)
        steps.append({dice.oneOf(wheel), dice.number()});
    return steps;
}

QString Player::play(const QList<Step> &steps)
{
    begin();
    QString fault = check();
    for (int i = 0; i < steps.size() && fault.isEmpty(); ++i) {
        told.append("");
        if (!view().isOpen)
            open();
        settle();
        Dice dice(steps.at(i).seed);
        (this->*kinds.at(steps.at(i).action).play)(dice);
        fault = check();
    }
    return fault;
}

void Player::begin()
{
    stage->clear();
    stage->modals.takeFaults();
    Dice dice(seed);
    projectDesign = dice.below(3);
    told = QStringList("");
    for (int i = documents.size() - 1; i >= 0; --i) {
        turnTo(i);
        writeFile(Plain::Disk::Readable, false, dice);
        open();
    }
}

void Player::tell(const QString &text)
{
    told.last() += text + "; ";
}

void Player::note(const QString &fault)
{
    stage->modals.note(fault);
}

void Player::compareRows(const QString &what, const QStringList &wanted, const QStringList &got)
{
    const QString fault = difference(wanted, got);
    if (!fault.isEmpty())
        note(what + ' ' + fault);
}

// Ends what the step has left open and looks at everything.
QString Player::check()
{
    settle();
    const QStringList faults = stage->modals.takeFaults();
    if (!faults.isEmpty())
        return faults.join("\n");
    return difference(linesOf(documents, action), linesOf(stage, documents.size()));
}

void Player::settle()
{
    if (view().isOpen && stage->view())
        commitFocused();
    stage->restFocus();
    turnLoop();
}

MOLK::ProbePortsOptionWidget *Player::realPage()
{
    return stage->pages().at(view().current);
}

QTreeWidget *Player::tree(const QString &name)
{
    return realPage()->findChild<QTreeWidget *>(name);
}
