// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

namespace Workbench {

/// A hint in the middle of an empty \a area, on top of what is in it. It takes no room and no
/// mouse.
class HintLabel : public QLabel
{
    Q_OBJECT

public:
    HintLabel(const QString &text, QWidget *area);

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace Workbench
