// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "dialogscript.h"

#include <QDialog>
#include <QMessageBox>
#include <QPointer>
#include <QTest>

DialogScript::DialogScript(const std::function<void(const QString &)> &onSurprise)
    : surprise(onSurprise)
{
}

void DialogScript::expect(const QString &name, const Answer &answer)
{
    steps.append({name, answer});
}

QString DialogScript::missing() const
{
    return steps.isEmpty() ? QString() : steps.constFirst().name;
}

static QString describe(const QWidget *window)
{
    const auto *box = qobject_cast<const QMessageBox *>(window);
    return QLatin1String(window->metaObject()->className()) + " \"" + window->windowTitle() + "\""
        + (box ? ": " + box->text() : QString());
}

// A window that stays open would hold up the session for ever.
void DialogScript::dismiss(QWidget *window, const QString &why)
{
    surprise(why + describe(window));
    if (auto *dialog = qobject_cast<QDialog *>(window))
        dialog->reject();
    else
        window->close();
}

void DialogScript::meet(QWidget *window)
{
    const bool known = !steps.isEmpty()
        && (window->objectName() == steps.constFirst().name
            || window->inherits(steps.constFirst().name.toLatin1().constData()));
    if (!known) {
        dismiss(window, "unexpected window: ");
        return;
    }

    const QPointer<QWidget> guarded = window;
    const Step step = steps.takeFirst();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window))
        surprise("the window doesn't become active: " + describe(window));
    step.answer(window);
    if (guarded && guarded->isVisible())
        dismiss(guarded, "still open: ");
}
