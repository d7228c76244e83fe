// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "sourcetext.h"

#include <QFontDatabase>
#include <QPaintEvent>
#include <QPainter>
#include <QTextBlock>

namespace Workbench {

namespace {

class NumberStrip : public QWidget
{
public:
    explicit NumberStrip(SourceText *owner)
        : QWidget(owner)
        , text(owner)
    {
    }

    QSize sizeHint() const override { return QSize(text->numbersWidth(), 0); }

protected:
    void paintEvent(QPaintEvent *event) override { text->paintNumbers(event); }

private:
    SourceText *text;
};

} // namespace

SourceText::SourceText(QWidget *parent)
    : QPlainTextEdit(parent)
    , numbers(new NumberStrip(this))
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFrameShape(QFrame::NoFrame);
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    setFont(fixed);
    setTabStopDistance(QFontMetricsF(fixed).horizontalAdvance(' ') * 4);

    connect(this, &QPlainTextEdit::blockCountChanged, this, &SourceText::placeNumbers);
    connect(this, &QPlainTextEdit::updateRequest, this, &SourceText::scrollNumbers);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &SourceText::markCurrentLine);
    placeNumbers();
    markCurrentLine();
}

int SourceText::numbersWidth() const
{
    const int digits = QString::number(qMax(1, blockCount())).size();
    return fontMetrics().horizontalAdvance('9') * (digits + 2);
}

void SourceText::paintNumbers(QPaintEvent *event)
{
    QPainter painter(numbers);
    painter.fillRect(event->rect(), palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));

    const int right = numbers->width() - fontMetrics().horizontalAdvance('9');
    QTextBlock block = firstVisibleBlock();
    qreal top = blockBoundingGeometry(block).translated(contentOffset()).top();
    while (block.isValid() && top <= event->rect().bottom()) {
        const qreal height = blockBoundingRect(block).height();
        if (top + height >= event->rect().top()) {
            painter.drawText(QRectF(0, top, right, height), Qt::AlignRight | Qt::AlignVCenter,
                             QString::number(block.blockNumber() + 1));
        }
        top += height;
        block = block.next();
    }
}

void SourceText::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    placeNumbers();
}

void SourceText::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        markCurrentLine();
}

void SourceText::placeNumbers()
{
    const int width = numbersWidth();
    setViewportMargins(width, 0, 0, 0);
    const QRect area = contentsRect();
    numbers->setGeometry(area.left(), area.top(), width, area.height());
}

void SourceText::scrollNumbers(const QRect &area, int dy)
{
    if (dy)
        numbers->scroll(0, dy);
    else
        numbers->update(0, area.y(), numbers->width(), area.height());
}

void SourceText::markCurrentLine()
{
    QTextEdit::ExtraSelection mark;
    mark.cursor = textCursor();
    mark.cursor.clearSelection();
    mark.format.setBackground(palette().color(QPalette::AlternateBase));
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    setExtraSelections({mark});
}

} // namespace Workbench
