// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "menudriver.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QMenu>
#include <QPointer>
#include <QTest>

MenuDriver::MenuDriver(std::function<void(QMenu *)> answerOnce)
    : answer(std::move(answerOnce))
{
    qApp->installEventFilter(this);
}

MenuDriver::~MenuDriver()
{
    if (!answered)
        QTest::qFail("no menu came", __FILE__, __LINE__);
}

bool MenuDriver::eventFilter(QObject *watched, QEvent *event)
{
    QPointer<QMenu> menu = qobject_cast<QMenu *>(watched);
    if (event->type() == QEvent::Show && menu) {
        if (answered)
            QTest::qFail("unexpected menu", __FILE__, __LINE__);
        const bool first = !answered;
        answered = true;
        QMetaObject::invokeMethod(
            this,
            [this, menu, first] {
                if (menu && first)
                    answer(menu);
                if (menu)
                    menu->close();
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void chooseEntry(QMenu *menu, const QString &text)
{
    const QList<QAction *> actions = menu->actions();
    for (QAction *action : actions) {
        if (action->text() != text)
            continue;
        menu->setActiveAction(action);
        QTest::keyClick(menu, Qt::Key_Return);
        return;
    }
    QTest::qFail(qPrintable("no entry " + text), __FILE__, __LINE__);
}
