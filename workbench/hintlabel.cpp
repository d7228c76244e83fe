// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "hintlabel.h"

#include <QEvent>

namespace Workbench {

HintLabel::HintLabel(const QString &text, QWidget *area)
    : QLabel(text, area)
{
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMargin(40);
    setEnabled(false);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(area->rect());
    area->installEventFilter(this);
}

bool HintLabel::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QLabel::eventFilter(watched, event);
}

} // namespace Workbench
