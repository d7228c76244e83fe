// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "appearance.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QToolTip>

namespace Workbench {

namespace {

bool isLineOnDarkList(const QStyleOption *option, const QWidget *widget)
{
    const QWidget *list = widget ? widget->parentWidget() : nullptr;
    return list && list->backgroundRole() == QPalette::Base
        && option->palette.color(QPalette::Base).lightness() < 128
        && (option->state & QStyle::State_Enabled);
}

class WorkbenchStyle : public QProxyStyle
{
public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        if (element == PE_IndicatorTabClose)
            drawTabClose(option, painter);
        else if (element == PE_FrameLineEdit && isLineOnDarkList(option, widget))
            drawBrightFrame(option, painter, widget);
        else
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

private:
    static void drawTabClose(const QStyleOption *option, QPainter *painter);
    void drawBrightFrame(const QStyleOption *option, QPainter *painter,
                         const QWidget *widget) const;
};

// A cross, on a disc while the mouse is over it.
void WorkbenchStyle::drawTabClose(const QStyleOption *option, QPainter *painter)
{
    const bool isHot = option->state & State_MouseOver;
    const QPalette &palette = option->palette;
    const qreal side = qMin(option->rect.width(), option->rect.height());
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(option->rect).center());

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (isHot) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(palette.color(QPalette::Highlight));
        painter->drawEllipse(square.adjusted(1, 1, -1, -1));
    }
    const QPalette::ColorRole role = isHot ? QPalette::HighlightedText : QPalette::WindowText;
    painter->setPen(QPen(palette.color(role), side / 10, Qt::SolidLine, Qt::RoundCap));
    const qreal margin = side * 0.32;
    const QRectF cross = square.adjusted(margin, margin, -margin, -margin);
    painter->drawLine(cross.topLeft(), cross.bottomRight());
    painter->drawLine(cross.topRight(), cross.bottomLeft());
    painter->restore();
}

// The style takes the colour of the frame from that of the window: a shade that is darker still,
// and can't be seen on a list.
void WorkbenchStyle::drawBrightFrame(const QStyleOption *option, QPainter *painter,
                                     const QWidget *widget) const
{
    QStyleOption bright(*option);
    bright.palette.setColor(QPalette::Window, option->palette.color(QPalette::PlaceholderText));
    QProxyStyle::drawPrimitive(PE_FrameLineEdit, &bright, painter, widget);
}

} // namespace

void initStyle()
{
    QApplication::setStyle(new WorkbenchStyle);
}

void useDarkColours()
{
    const QColor window(0x3b, 0x3e, 0x43);
    const QColor base(0x20, 0x22, 0x26);
    const QColor text(0xe4, 0xe6, 0xe9);
    const QColor faint(0x95, 0x99, 0x9f);
    const QColor accent(0x3d, 0x8b, 0xd8);

    QPalette palette(QColor(0x4a, 0x4e, 0x55), window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x2a, 0x2d, 0x32));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3d, 0x42));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Link, accent.lighter(130));
    palette.setColor(QPalette::LinkVisited, accent.lighter(115));
    palette.setColor(QPalette::Highlight, accent.darker(120));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x4a, 0x4d, 0x52));

    QApplication::setStyle(new WorkbenchStyle("Fusion"));
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

} // namespace Workbench
