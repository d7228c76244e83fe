// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class QWidget;

/// Meets windows as they are shown, while it lives.
///
/// It acts on a window's Show event, queued into the event loop that shows it. So nothing is
/// polled, nothing sleeps, and what one window leads to can be met in turn.
class WindowWatch : public QObject
{
    Q_OBJECT

public:
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    WindowWatch();
    ~WindowWatch() override;

    /// Whether \a window, which is being shown, is one to meet.
    virtual bool asks(const QWidget *window) const = 0;

    /// Called in the loop that shows \a window, unless it has gone again by then.
    virtual void meet(QWidget *window) = 0;
};

/// Whether \a window stops the program until the user has answered it. A progress dialog goes by
/// itself, and asks nothing.
bool isQuestion(const QWidget *window);
