// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modalscript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPointer>

ModalScript::ModalScript()
{
    qApp->installEventFilter(this);
}

static QString describe(const QWidget *window)
{
    const auto *box = qobject_cast<const QMessageBox *>(window);
    QString text =
        QLatin1String(window->metaObject()->className()) + " \"" + window->windowTitle() + '"';
    if (box)
        text += " \"" + box->text() + "\" \"" + box->detailedText() + '"';
    return text;
}

void ModalScript::expectBox(const QString &title, const QString &text,
                            QMessageBox::StandardButton button, const QString &details)
{
    const QString what = "box \"" + title + "\" \"" + text + "\" \"" + details + '"';
    steps.append({what, [=](QWidget *window) {
                      auto *box = qobject_cast<QMessageBox *>(window);
                      if (!box || box->windowTitle() != title || box->text() != text
                          || box->detailedText() != details || !box->button(button))
                          return false;
                      box->button(button)->click();
                      return true;
                  }});
}

void ModalScript::expectMenu(const std::function<void(QMenu *)> &act)
{
    steps.append({"menu", [act](QWidget *window) {
                      QPointer<QMenu> menu = qobject_cast<QMenu *>(window);
                      if (!menu)
                          return false;
                      act(menu);
                      if (menu)
                          menu->close();
                      return true;
                  }});
}

QStringList ModalScript::takeFaults()
{
    QStringList all = faults;
    for (const Step &step : qAsConst(steps))
        all.append("this did not come: " + step.what);
    faults.clear();
    steps.clear();
    return all;
}

bool ModalScript::eventFilter(QObject *watched, QEvent *event)
{
    // Painting would take most of the time, and says nothing that is compared.
    if (event->type() == QEvent::UpdateRequest)
        return true;

    auto *window = qobject_cast<QWidget *>(watched);
    const bool asks = window && event->type() == QEvent::Show && window->isWindow()
        && (window->isModal() || qobject_cast<QMenu *>(window));
    if (asks) {
        QPointer<QWidget> guarded = window;
        QMetaObject::invokeMethod(
            this,
            [this, guarded] {
                if (guarded && guarded->isVisible())
                    answer(guarded);
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void ModalScript::answer(QWidget *window)
{
    if (steps.isEmpty()) {
        faults.append("this was not expected: " + describe(window));
    } else {
        const Step step = steps.takeFirst();
        if (step.answer(window))
            return;
        faults.append("wanted " + step.what + ", got " + describe(window));
    }
    if (auto *dialog = qobject_cast<QDialog *>(window))
        dialog->done(QDialog::Rejected);
    else
        window->close();
}
