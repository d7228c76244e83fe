// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "menudriver.h"

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QTest>

MenuDriver::MenuDriver(std::function<void(QMenu *)> answerOnce)
    : answer(std::move(answerOnce))
{
}

MenuDriver::~MenuDriver()
{
    if (!answered)
        QTest::qFail("no menu came", __FILE__, __LINE__);
}

bool MenuDriver::asks(const QWidget *window) const
{
    return qobject_cast<const QMenu *>(window);
}

void MenuDriver::meet(QWidget *window)
{
    const QPointer<QWidget> menu = window;
    if (answered) {
        QTest::qFail("unexpected menu", __FILE__, __LINE__);
    } else {
        answered = true;
        answer(qobject_cast<QMenu *>(window));
    }
    if (menu)
        menu->close();
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
