// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "bitlabel.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QToolTip>

namespace MOLK {

BitLabel::BitLabel(const QString &bits)
{
    // Setting a text makes an accessible interface, by the name of the label's class, and keeps it
    // with a connection to the label, although nobody asks for it. Without a class none is found;
    // it is made when somebody does ask.
    withoutClass = !QAccessible::isActive();
    setText(bits);
    withoutClass = false;

    // A label that isn't in view has no place in the tree; with one, its end would repaint it.
    resize(0, 0);
}

const QMetaObject *BitLabel::metaObject() const
{
    return withoutClass ? nullptr : QLabel::metaObject();
}

void BitLabel::prepare()
{
    if (prepared)
        return;
    prepared = true;

    // The event itself and not ensurePolished(): that was called before, when it had no effect, and
    // would think that all is done.
    QEvent polish(QEvent::Polish);
    QCoreApplication::sendEvent(this, &polish);
}

bool BitLabel::event(QEvent *event)
{
    if (!prepared) {
        switch (event->type()) {
        case QEvent::ParentChange:
        case QEvent::StyleChange:
        case QEvent::Polish:
        case QEvent::PolishRequest:
            return true;
        default:
            break;
        }
    }
    if (event->type() == QEvent::ToolTip && sizeHint().width() > width()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void BitLabel::setVisible(bool visible)
{
    if (visible && !prepared) {
        // Without these a window that is shown later would show all labels that lie in it.
        setAttribute(Qt::WA_WState_Hidden);
        setAttribute(Qt::WA_WState_ExplicitShowHide);
        return;
    }
    QLabel::setVisible(visible);
}

} // namespace MOLK
