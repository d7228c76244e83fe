// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "modalanswers.h"

#include <QMenu>
#include <QStringList>

/// Answers the windows and menus that an action is expected to raise, and writes down where they
/// differ from what was expected. It never fails the test itself, because a failing sequence is
/// played many times while it is shortened.
class ModalScript : public ModalAnswers
{
    Q_OBJECT

public:
    ModalScript();

    /// Expects a message box, answered with \a button. \a details is its detailed text.
    void expectBox(const QString &title, const QString &text, QMessageBox::StandardButton button,
                   const QString &details = QString());

    /// Expects a menu and runs \a act on it. A menu that \a act leaves open is dismissed.
    void expectMenu(const std::function<void(QMenu *)> &act);

    void note(const QString &fault) { faults.append(fault); }

    /// What has differed since the last call, windows that never came included.
    QStringList takeFaults();

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    bool asks(const QWidget *window) const override;
    void fault(const QString &text) override;

private:
    QStringList faults;
};
