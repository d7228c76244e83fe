// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace Standin {

/// What a Host has been asked for, and what it was told to refuse.
class CallLog
{
public:
    /// Becomes the log that record() and isRefused() mean, until it is destroyed.
    CallLog();
    ~CallLog();

    Q_DISABLE_COPY_MOVE(CallLog)

    QStringList lines;
    bool recording = true;

    /// For each call's name the numbers of calls to refuse, counted from the next call, which is 1.
    QHash<QString, QList<int>> refusals;
};

/// Adds \a line, the name of a call and what it was called with, to the log of the living Host, if
/// there is one.
void record(const QString &line);

/// Whether the call \a name that is being made is to be refused. Each question counts as one call.
bool isRefused(const QString &name);

} // namespace Standin
