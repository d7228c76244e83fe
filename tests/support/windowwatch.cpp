// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "windowwatch.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QProgressDialog>

WindowWatch::WindowWatch()
{
    qApp->installEventFilter(this);
}

WindowWatch::~WindowWatch() = default;

bool WindowWatch::eventFilter(QObject *watched, QEvent *event)
{
    auto *window = qobject_cast<QWidget *>(watched);
    if (event->type() == QEvent::Show && window && window->isWindow() && asks(window)) {
        const QPointer<QWidget> guarded = window;
        QMetaObject::invokeMethod(
            this,
            [this, guarded] {
                if (guarded && guarded->isVisible())
                    meet(guarded);
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

bool isQuestion(const QWidget *window)
{
    return window->isModal() && !qobject_cast<const QProgressDialog *>(window);
}
