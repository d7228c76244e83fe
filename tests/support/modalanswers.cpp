// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modalanswers.h"

#include <QAbstractButton>
#include <QPointer>

static QString describe(const QWidget *window)
{
    QString text =
        QLatin1String(window->metaObject()->className()) + " \"" + window->windowTitle() + '"';
    if (const auto *box = qobject_cast<const QMessageBox *>(window))
        text += " \"" + box->text() + "\" \"" + box->detailedText() + '"';
    return text;
}

ModalAnswers::ModalAnswers() = default;

void ModalAnswers::expect(const QString &what, const std::function<bool(QWidget *)> &answer)
{
    steps.append({what, answer});
}

void ModalAnswers::expectBox(const QString &what,
                             const std::function<bool(const QMessageBox *)> &fits,
                             QMessageBox::StandardButton button)
{
    expect(what, [fits, button](QWidget *window) {
        const auto *box = qobject_cast<QMessageBox *>(window);
        if (!box || !fits(box) || !box->button(button))
            return false;
        box->button(button)->click();
        return true;
    });
}

QStringList ModalAnswers::takeMissing()
{
    QStringList missing;
    for (const Step &step : qAsConst(steps))
        missing.append(step.what);
    steps.clear();
    return missing;
}

void ModalAnswers::meet(QWidget *window)
{
    if (steps.isEmpty()) {
        fault("unexpected window: " + describe(window));
    } else {
        const Step step = steps.takeFirst();
        const QPointer<QWidget> guard(window);
        if (!step.answer(window))
            fault("wanted " + step.what + ", got " + describe(window));
        else if (!guard || !guard->isVisible() || !hasFailed())
            return;
    }

    // The window only has to go, so that the test can end.
    if (auto *dialog = qobject_cast<QDialog *>(window))
        dialog->done(QDialog::Rejected);
    else
        window->close();
}
