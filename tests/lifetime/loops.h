// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "loopdriver.h"
#include "scene.h"

#include <QStringList>

/// A nested event loop of the plug-in.
struct LoopCase
{
    QString name;
    Configuration configuration;

    /// Where its innermost window comes behind others: how to go on from each of them.
    QList<LoopDriver::Step> way;

    /// Starts it; returns when it is over.
    std::function<void(Scene &, LoopDriver &)> run;

    /// How its window is answered; see answerLoop().
    QStringList answers = {"Ok"};

    /// The view isn't open yet when it starts. The host doesn't know it then, and can't do much to
    /// it.
    bool opensView = false;

    /// It reads the design, and news of the design is ignored meanwhile.
    bool readsDesign = false;

    /// It stands for something that forbids a save.
    bool forbidsSave = false;

    /// How many edits its own end may change.
    int mayChange = 0;

    /// Its own end may close the view, and with it drop all edits.
    bool mayEnd = false;
};

/// All of them, one by one.
QList<LoopCase> nestedLoops();

/// Those of the message about a value that doesn't fit.
QList<LoopCase> loopsOfValues();

/// Answers the innermost window of a loop: a menu by the entry \a answer, else as answerWindow().
void answerLoop(QWidget *window, const QString &answer);
