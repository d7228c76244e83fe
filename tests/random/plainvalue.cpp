// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "plainvalue.h"

namespace Plain {

static const QString hexDigits = "0123456789ABCDEF";

static QString bitsOf(const QString &display)
{
    QString bits;
    for (QChar digit : display.mid(2)) {
        const int value = qMax(0, hexDigits.indexOf(digit.toUpper()));
        for (int bit = 8; bit > 0; bit /= 2)
            bits += QLatin1Char(value & bit ? '1' : '0');
    }
    return bits;
}

static QString digitsOf(QString bits)
{
    while (bits.size() % 4 != 0)
        bits.prepend('0');
    QString text;
    for (int i = 0; i < bits.size(); i += 4) {
        int value = 0;
        for (QChar bit : bits.mid(i, 4))
            value = value * 2 + (bit == '1');
        text += hexDigits.at(value);
    }
    return text;
}

// A text without the prefix loses two characters or all of them: the mask keeps two places for the
// prefix, whatever stands there.
static QString wellFormed(const QString &stored)
{
    QString text = "0x";
    for (QChar digit : stored.mid(2)) {
        if (hexDigits.contains(digit.toUpper()))
            text += digit.toUpper();
    }
    return text;
}

ValueLine::ValueLine(const Port &port)
{
    setDigits(widthOf(port.items));
    setText(wellFormed(port.value));
    refresh(port.items);
}

int ValueLine::bitCount() const
{
    return labels.join(QString()).size();
}

// The text always fills the line: what is too long is cut off at the right, and 0 fills the rest.
void ValueLine::setText(const QString &newText)
{
    text = newText.left(2 + digits).leftJustified(2 + digits, '0');
    cursor = qMin(newText.size(), text.size());
    selectedFrom = -1;
}

void ValueLine::setDigits(int bits)
{
    digits = qMax(1, (bits + 3) / 4);
    setText(text);
}

void ValueLine::refresh(const Items &items)
{
    QString bits = bitsOf(text);
    int kept = bitCount();
    const int width = widthOf(items);
    enabled = width != 0;
    if (kept == 0)
        kept = qMin(width, bits.size());
    bits = bits.right(kept);
    bits = bits.leftJustified(width, '0', true);

    setText(bits.isEmpty() ? "0x0" : "0x" + digitsOf(bits));
    labels.clear();
    for (const Signal &item : items) {
        labels.append(bits.left(item.width()));
        bits.remove(0, item.width());
    }
    setDigits(width);
}

QString ValueLine::commit()
{
    const QString refused = text.mid(2);
    QString bits = bitsOf(text);
    while (bits.startsWith('0'))
        bits.remove(0, 1);
    const bool fits = bits.size() <= bitCount();
    if (fits) {
        bits = bits.rightJustified(bitCount(), '0');
        for (QString &label : labels) {
            const int length = label.size();
            label = bits.left(length);
            bits.remove(0, length);
        }
    }
    setText("0x" + digitsOf(labels.join(QString())));
    return fits ? QString() : refused;
}

void ValueLine::blank(int first, int last)
{
    for (int i = first; i < last; ++i)
        text[i] = '0';
}

void ValueLine::selectDigits()
{
    selectedFrom = 2;
    cursor = text.size();
}

bool ValueLine::press(int key, const QString &typed)
{
    if (selectedFrom == 2) {
        const bool removes = key == Qt::Key_Backspace || key == Qt::Key_Delete || !typed.isEmpty();
        if (!removes)
            return false;
        blank(2, text.size());
        cursor = 2;
        selectedFrom = -1;
        if (!typed.isEmpty())
            press(0, typed);
        return true;
    }
    if (cursor < 2) {
        if (key != Qt::Key_Left && key != Qt::Key_Right)
            return false;
        cursor = key == Qt::Key_Left ? qMax(0, cursor - 1) : cursor + 1;
        return true;
    }
    if (cursor == 2 && key == Qt::Key_Backspace)
        return false;

    switch (key) {
    case Qt::Key_Left:
        --cursor;
        break;
    case Qt::Key_Right:
        cursor = qMin(cursor + 1, text.size());
        break;
    case Qt::Key_Backspace:
        --cursor;
        blank(cursor, cursor + 1);
        break;
    case Qt::Key_Delete:
        if (cursor < text.size())
            blank(cursor, cursor + 1);
        break;
    default:
        if (cursor < text.size() && hexDigits.contains(typed.toUpper()) && !typed.isEmpty())
            text[cursor++] = typed.toUpper().at(0);
    }
    return true;
}

} // namespace Plain
