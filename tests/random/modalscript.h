// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QList>
#include <QMenu>
#include <QMessageBox>
#include <QObject>
#include <QStringList>

#include <functional>

/// Answers the windows and menus that an action is expected to raise, and writes down where they
/// differ from what was expected. It never fails the test itself, because a failing sequence is
/// played many times while it is shortened.
class ModalScript : public QObject
{
    Q_OBJECT

public:
    ModalScript();

    /// Expects a message box, answered with \a button. \a details is its detailed text.
    void expectBox(const QString &title, const QString &text, QMessageBox::StandardButton button,
                   const QString &details = QString());

    /// Expects a dialog of the type \a Dialog and runs \a act on it, which closes it.
    template<typename Dialog>
    void expectDialog(std::function<void(Dialog *)> act)
    {
        steps.append({QLatin1String(Dialog::staticMetaObject.className()), [act](QWidget *window) {
                          auto *dialog = qobject_cast<Dialog *>(window);
                          if (dialog)
                              act(dialog);
                          return dialog != nullptr;
                      }});
    }

    /// Expects a menu and runs \a act on it. A menu that \a act leaves open is dismissed.
    void expectMenu(const std::function<void(QMenu *)> &act);

    void note(const QString &fault) { faults.append(fault); }

    /// What has differed since the last call, windows that never came included.
    QStringList takeFaults();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Step
    {
        QString what;
        std::function<bool(QWidget *)> answer;
    };

    void answer(QWidget *window);

    QList<Step> steps;
    QStringList faults;
};
