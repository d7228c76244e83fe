// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

/// A single net.
inline MOLK::SignalItem net(const QString &name)
{
    MOLK::SignalItem item;
    item.name = name;
    item.kind = 0;
    return item;
}

/// A bit, as it stands in a bus or alone.
inline MOLK::SignalItem bit(const QString &name)
{
    MOLK::SignalItem item = net(name);
    item.kind = 1;
    return item;
}

/// The bus `name[bits-1:0]` with its bits.
inline MOLK::SignalItem bus(const QString &name, int bits)
{
    MOLK::SignalItem item = bit(QString("%1[%2:0]").arg(name).arg(bits - 1));
    for (int k = bits - 1; k >= 0; --k)
        item.members.append(bit(QString("%1[%2]").arg(name).arg(k)));
    return item;
}

/// The names of \a items, a bus with its bits: `q[1:0]{q[1] q[0]}`.
inline QStringList itemNames(const QList<MOLK::SignalItem> &items)
{
    QStringList names;
    for (const MOLK::SignalItem &item : items) {
        const QStringList bits = itemNames(item.members);
        names.append(bits.isEmpty() ? item.name : item.name + "{" + bits.join(" ") + "}");
    }
    return names;
}
