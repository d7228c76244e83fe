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
    // Less than a text, but to be read: what is disabled is hardly there in light colours.
    QPalette faint = palette();
    QColor colour = faint.color(QPalette::WindowText);
    colour.setAlphaF(0.6);
    faint.setColor(QPalette::WindowText, colour);
    setPalette(faint);
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
