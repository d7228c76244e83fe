// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace MOLK {

/// The arithmetic of initial values.
///
/// A value has three forms. Its display form is "0x" and hexadecimal digits of upper case, as many
/// as its bits need and one at least. Its bits are a string of `0` and `1`, most significant first,
/// which the digits fill up at the left to whole digits. Its signals are consecutive pieces of the
/// bits, the first signal having the leftmost.

/// The number of digits in the display form of a value of \a bitCount bits: never less than 1.
int digitCount(int bitCount);

/// The input mask for the display form of a value of \a bitCount bits. It reserves two places for
/// the prefix, turns digits into upper case and shows 0 for a digit that isn't there.
QString valueMask(int bitCount);

/// The number of bits from the highest set bit of \a bits down; 0 if none is set.
int effectiveWidth(const QString &bits);

/// Makes \a bits exactly \a width bits long without changing the number they stand for: adds or
/// drops zeros at the left. \a width must not be below their effectiveWidth().
QString fittedBits(const QString &bits, int width);

/// The bits of a port whose signals have changed, where each bit keeps its place from the left.
///
/// \param bits the bits of the display form; filling bits of the top digit may stand ahead.
/// \param kept how many of them, from the right, belong to the port so far.
/// \param width the width of the port now, 0 or more.
/// \return \a width bits: the \a kept ones from the left, with zeros behind if they are too few.
QString resizedBits(const QString &bits, int kept, int width);

/// The next piece of a value that is being split up.
///
/// \param bits bits of a value.
/// \param position where the piece begins; moved behind it.
/// \param width length of the piece.
/// \return \a width bits. Zeros if \a bits holds too few from \a position on; \a position is then
///         at the end, so that what follows gets zeros too.
QString takeBits(const QString &bits, int &position, int width);

/// Whether a key may go through to a line that shows a display form, so that the prefix stays.
///
/// \param selectionStart first selected position, counted from 0; -1 without a selection.
/// \param textSelected whether there is a selection.
/// \param cursor the cursor's position, counted from 0.
/// \param key the key of the event, a Qt::Key.
bool keySparesPrefix(int selectionStart, bool textSelected, int cursor, int key);

} // namespace MOLK
