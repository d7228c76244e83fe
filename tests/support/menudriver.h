// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "windowwatch.h"

#include <functional>

class QMenu;

/// Answers the one menu that a test expects, from inside the menu's event loop, and fails the
/// running test if it never comes.
class MenuDriver : public WindowWatch
{
    Q_OBJECT

public:
    /// \param answer is run once the menu is shown. A menu that it leaves open is dismissed.
    explicit MenuDriver(std::function<void(QMenu *)> answer);
    ~MenuDriver() override;

protected:
    bool asks(const QWidget *window) const override;
    void meet(QWidget *window) override;

private:
    std::function<void(QMenu *)> answer;
    bool answered = false;
};

/// Chooses the entry \a text of \a menu by the keyboard.
void chooseEntry(QMenu *menu, const QString &text);
