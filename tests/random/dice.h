// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

/// Random choices that come out equal for equal seeds, on every machine.
class Dice
{
public:
    explicit Dice(quint64 seed)
        : state(seed)
    {
    }

    quint64 number()
    {
        state += Q_UINT64_C(0x9E3779B97F4A7C15);
        quint64 mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * Q_UINT64_C(0xBF58476D1CE4E5B9);
        mixed = (mixed ^ (mixed >> 27)) * Q_UINT64_C(0x94D049BB133111EB);
        return mixed ^ (mixed >> 31);
    }

    /// 0 to \a end - 1; 0 if there is no such number.
    int below(int end) { return end < 2 ? 0 : int(number() % quint64(end)); }

    /// \a first to \a last.
    int between(int first, int last) { return first + below(last - first + 1); }

    bool oneIn(int chances) { return below(chances) == 0; }

    template<typename Value>
    Value oneOf(const QList<Value> &values)
    {
        return values.at(below(values.size()));
    }

private:
    quint64 state;
};
