// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "loopdriver.h"

#include "retirement.h"

#include <QAbstractButton>
#include <QDialog>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

void LoopDriver::setAct(const Act &what, const Answer &answerAfter)
{
    act = what;
    answer = answerAfter;
}

bool LoopDriver::asks(const QWidget *window) const
{
    return window->isModal() || qobject_cast<const QMenu *>(window);
}

void LoopDriver::meet(QWidget *window)
{
    // What comes once the place was reached belongs to the act, or to what follows from it.
    if (reached || way.isEmpty()) {
        answerWindow(window, "Ok");
        return;
    }
    entered.append(window);
    const Step step = way.takeFirst();
    if (step)
        step(*this, window);
    else
        reach();
}

void LoopDriver::reach()
{
    reached = true;
    act();
    // The loop that was reached goes on in between, so that what was left to it is done.
    QTimer::singleShot(0, this, [this] { leave(); });
}

void LoopDriver::leave()
{
    // A window whose view is gone is about to go by itself.
    if (!entered.isEmpty() && !MOLK::isRetired(entered.last()) && entered.last()->isVisible())
        answer(entered.last());
    while (!entered.isEmpty()) {
        const QPointer<QWidget> window = entered.takeLast();
        if (!MOLK::isRetired(window) && window->isVisible())
            answerWindow(window, "Cancel");
    }
}

static QAbstractButton *buttonOf(const QMessageBox *box, const QString &name)
{
    const QList<std::pair<QString, QMessageBox::StandardButton>> known = {
        {"Ok", QMessageBox::Ok},
        {"Cancel", QMessageBox::Cancel},
        {"Discard", QMessageBox::Discard},
    };
    for (const auto &[text, button] : known) {
        if (text == name && box->button(button))
            return box->button(button);
    }
    return box->button(QMessageBox::Ok);
}

void answerWindow(QWidget *window, const QString &button)
{
    if (auto *box = qobject_cast<QMessageBox *>(window))
        buttonOf(box, button)->click();
    else if (auto *dialog = qobject_cast<QDialog *>(window))
        QMetaObject::invokeMethod(dialog, button == "Ok" ? "accept" : "reject",
                                  Qt::DirectConnection);
    else
        window->close();
}
