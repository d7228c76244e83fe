// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QString>

#include <functional>

/// Answers the windows that stop the program until they are answered, in the order in which they
/// are expected. What differs is handed to fault().
///
/// It acts on a window's Show event, queued into the nested event loop that shows it. So nothing
/// is polled, nothing sleeps, and dialogs that open further dialogs nest.
class ModalAnswers : public QObject
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

    bool eventFilter(QObject *watched, QEvent *event) override;

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

    /// Whether \a window, which is being shown, is one that must be answered.
    virtual bool asks(const QWidget *window) const;

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

    void answer(QWidget *window);

    QList<Step> steps;
};
