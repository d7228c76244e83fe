// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

#include <QRandomGenerator>

/// Makes random signals out of few names, so that buses, bits and nets meet often, under names that
/// differ in case too.
class RandomItems
{
public:
    explicit RandomItems(quint32 seed)
        : random(seed)
    {
    }

    int below(int limit) { return int(random.bounded(limit)); }
    bool oneIn(int n) { return below(n) == 0; }

    QString bitName() { return QString("%1[%2]").arg(QChar("aAbc"[below(4)])).arg(below(4)); }

    QString anyName()
    {
        switch (below(4)) {
        case 0:
            return QString("%1[3:0]").arg(QChar("aAbc"[below(4)]));
        case 1:
            return QString("n%1").arg(below(5));
        case 2:
            return QString("");
        default:
            return bitName();
        }
    }

    MOLK::SignalItem bit()
    {
        MOLK::SignalItem item;
        item.name = bitName();
        item.selectable = !oneIn(4);
        item.found = !oneIn(8);
        item.kind = 1;
        if (oneIn(8))
            item.alias = "alias of " + item.name;
        return item;
    }

    MOLK::SignalItem item()
    {
        MOLK::SignalItem item = bit();
        item.name = anyName();
        item.kind = below(3) - (oneIn(4) ? 1 : 0);
        const int members = oneIn(2) ? 0 : below(5);
        for (int k = 0; k < members; ++k)
            item.members.append(bit());
        return item;
    }

    QList<MOLK::SignalItem> items(int most)
    {
        QList<MOLK::SignalItem> list;
        const int count = below(most + 1);
        for (int i = 0; i < count; ++i)
            list.append(item());
        return list;
    }

private:
    QRandomGenerator random;
};
