// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "initialvalue.h"

#include <QtGlobal>

namespace MOLK {

constexpr int PrefixLength = 2;

int digitCount(int bitCount)
{
    return qMax(1, (bitCount + 3) / 4);
}

QString valueMask(int bitCount)
{
    return QString("NN>%1;0").arg(QString(digitCount(bitCount), 'H'));
}

int effectiveWidth(const QString &bits)
{
    const int highest = bits.indexOf('1');
    return highest < 0 ? 0 : bits.size() - highest;
}

QString fittedBits(const QString &bits, int width)
{
    return bits.right(width).rightJustified(width, '0');
}

QString resizedBits(const QString &bits, int kept, int width)
{
    return bits.right(kept).left(width).leftJustified(width, '0');
}

QString takeBits(const QString &bits, int &position, int width)
{
    const int begin = position;
    if (bits.size() - begin < width) {
        position = bits.size();
        return QString(width, '0');
    }
    position = begin + width;
    return bits.mid(begin, width);
}

bool keySparesPrefix(int selectionStart, bool textSelected, int cursor, int key)
{
    // Whatever is selected goes with the next edit, so that it is the place of the selection and
    // not the cursor's that counts. A backspace without a selection takes what stands ahead of it.
    const int place = selectionStart < 0 ? cursor : selectionStart;
    if (place < PrefixLength)
        return key == Qt::Key_Left || key == Qt::Key_Right;
    if (place == PrefixLength && key == Qt::Key_Backspace)
        return textSelected;
    return true;
}

} // namespace MOLK
