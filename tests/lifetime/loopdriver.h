// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "windowwatch.h"

#include <QList>
#include <QPointer>
#include <QWidget>

#include <functional>

/// Goes from one nested event loop into the next until it is where a test wants something to
/// happen, lets it happen there, and finds the way out again. It meets modal windows and menus.
class LoopDriver : public WindowWatch
{
    Q_OBJECT

public:
    using Act = std::function<void()>;
    using Step = std::function<void(LoopDriver &driver, QWidget *window)>;
    using Answer = std::function<void(QWidget *window)>;

    /// Windows on the way, in the order in which they come: each step leads on to the next one or
    /// calls reach(). A null step takes the window for the one to act in.
    void setWay(const QList<Step> &steps) { way = steps; }

    /// What is to happen, and how the innermost window is answered after it, if it is still there.
    void setAct(const Act &what, const Answer &answerAfter);

    /// Lets it happen now, in the loop that calls this. Windows met before are on the way.
    void reach();

    /// Whether the loop was reached.
    bool isReached() const { return reached; }

protected:
    bool asks(const QWidget *window) const override;
    void meet(QWidget *window) override;

private:
    void leave();

    QList<Step> way;
    Act act;
    Answer answer;
    QList<QPointer<QWidget>> entered;
    bool reached = false;
};

/// Ends \a window: a box by the button \a button, which is "Ok", "Cancel" or "Discard", or by Ok if
/// it has no such button; any other dialog by accepting it for "Ok" and rejecting it else.
void answerWindow(QWidget *window, const QString &button);
