// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QObject>
#include <QString>

#include <functional>

namespace Standin {

/// What one reading of a design tells its observers, and how they stop it. It lives as long as the
/// reading and knows no widgets.
class HOST_EXPORT Progress : public QObject
{
    Q_OBJECT

public:
    explicit Progress(QObject *parent = nullptr);
    ~Progress() override;

    bool isCancelled() const { return stopped; }

    /// Says what is being done from now on, as a short sentence without a period.
    void enterStage(const QString &text);

signals:
    void stageChanged(const QString &text);

    /// Comes once, on the first cancel().
    void cancelled();

public slots:
    void cancel();

private:
    bool stopped = false;
};

/// Runs \a work in a thread of its own while the caller's event loop turns, and returns when it has
/// ended. \a work can't be stopped, so it has to end by itself soon, and must not touch QObjects of
/// the caller's thread.
HOST_EXPORT void runBeside(const std::function<void()> &work);

} // namespace Standin
