// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modalscript.h"

#include <QEvent>
#include <QPointer>

ModalScript::ModalScript() = default;

void ModalScript::expectBox(const QString &title, const QString &text,
                            QMessageBox::StandardButton button, const QString &details)
{
    const auto fits = [=](const QMessageBox *box) {
        return box->windowTitle() == title && box->text() == text && box->detailedText() == details;
    };
    ModalAnswers::expectBox("box \"" + title + "\" \"" + text + "\" \"" + details + '"', fits,
                            button);
}

void ModalScript::expectMenu(const std::function<void(QMenu *)> &act)
{
    expect("menu", [act](QWidget *window) {
        QPointer<QMenu> menu = qobject_cast<QMenu *>(window);
        if (!menu)
            return false;
        act(menu);
        if (menu)
            menu->close();
        return true;
    });
}

QStringList ModalScript::takeFaults()
{
    QStringList all = faults;
    const QStringList missing = takeMissing();
    for (const QString &what : missing)
        all.append("this did not come: " + what);
    faults.clear();
    return all;
}

bool ModalScript::eventFilter(QObject *watched, QEvent *event)
{
    // Painting would take most of the time, and says nothing that is compared.
    return event->type() == QEvent::UpdateRequest || ModalAnswers::eventFilter(watched, event);
}

bool ModalScript::asks(const QWidget *window) const
{
    return ModalAnswers::asks(window) || qobject_cast<const QMenu *>(window);
}

void ModalScript::fault(const QString &text)
{
    faults.append(text);
}
