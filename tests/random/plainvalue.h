// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "plainmodel.h"

namespace Plain {

/// The initial value of a Probe Out as the user meets it: a text of fixed length with a cursor in
/// it, and the same value as bits, cut up by signal.
class ValueLine
{
public:
    /// The line of a port that has just been added.
    ValueLine() = default;

    /// The line of a port that comes from a file.
    explicit ValueLine(const Port &port);

    /// The signals of some port may have changed; those of this one are \a items now.
    void refresh(const Items &items);

    /// The line lost the focus.
    /// \return the digits that don't fit and were refused; null if they fit.
    QString commit();

    /// One key at the cursor, as Qt::Key or as the character of \a typed.
    /// \return whether the line let it through.
    bool press(int key, const QString &typed);

    void selectDigits();

    QString text = "0x0";
    bool enabled = true;
    QStringList labels;
    int cursor = 2;

private:
    void setText(const QString &newText);
    void setDigits(int bits);
    int bitCount() const;
    void blank(int first, int last);

    int digits = 1;
    int selectedFrom = -1;
};

} // namespace Plain
