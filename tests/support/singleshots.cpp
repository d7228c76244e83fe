// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "singleshots.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QTimerEvent>

using TimerInfo = QAbstractEventDispatcher::TimerInfo;

// A single shot is an object of the event dispatcher's that waits for one timer event.
static QList<QPair<QObject *, TimerInfo>> waiting()
{
    auto *dispatcher = QAbstractEventDispatcher::instance();
    QList<QPair<QObject *, TimerInfo>> all;
    const QList<QObject *> children = dispatcher->children();
    for (QObject *child : children) {
        if (qstrcmp(child->metaObject()->className(), "QSingleShotTimer") != 0)
            continue;
        const QList<TimerInfo> timers = dispatcher->registeredTimers(child);
        if (!timers.isEmpty())
            all.append({child, timers.first()});
    }
    return all;
}

QList<int> singleShots()
{
    QList<int> intervals;
    const auto all = waiting();
    for (const auto &shot : all)
        intervals.append(shot.second.interval);
    return intervals;
}

void fireSingleShots(int milliseconds)
{
    const auto all = waiting();
    for (const auto &shot : all) {
        if (shot.second.interval != milliseconds)
            continue;
        QTimerEvent due(shot.second.timerId);
        QCoreApplication::sendEvent(shot.first, &due);
    }
}
