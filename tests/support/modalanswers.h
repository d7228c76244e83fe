// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "windowwatch.h"

#include <QList>
#include <QMessageBox>
#include <QString>

#include <functional>

/// Answers the windows that stop the program until they are answered, in the order in which they
/// are expected. What differs is handed to fault().
class ModalAnswers : public WindowWatch
{
    Q_OBJECT

public:
    /// Expects a dialog of the type \a Dialog and runs \a act on it. A dialog that \a act leaves
    /// open stays open, so the last step of \a act is what closes it.
    template<typename Dialog>
    void expectDialog(std::function<void(Dialog *)> act)
    {
        expect(QLatin1String(Dialog::staticMetaObject.className()), [act](QWidget *window) {
            auto *dialog = qobject_cast<Dialog *>(window);
            if (dialog)
                act(dialog);
            return dialog != nullptr;
        });
    }

protected:
    ModalAnswers();

    /// Expects a window that \a answer knows. \a answer returns false if it is another one.
    void expect(const QString &what, const std::function<bool(QWidget *)> &answer);

    /// Expects a message box for which \a fits holds, and answers it with \a button.
    void expectBox(const QString &what, const std::function<bool(const QMessageBox *)> &fits,
                   QMessageBox::StandardButton button);

    /// What was expected and hasn't come, which is expected no longer.
    QStringList takeMissing();

    bool hasSteps() const { return !steps.isEmpty(); }

    bool asks(const QWidget *window) const override { return isQuestion(window); }

    void meet(QWidget *window) override;

    /// Whether the test has failed already, so that a window that is left open is closed: what
    /// should have closed it may not have been reached.
    virtual bool hasFailed() const { return false; }

    /// Takes note of a difference.
    virtual void fault(const QString &text) = 0;

private:
    struct Step
    {
        QString what;
        std::function<bool(QWidget *)> answer;
    };

    QList<Step> steps;
};
