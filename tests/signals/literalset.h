// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

#include <QStringList>

/// The plainest possible reading of how picked signals are split, and of how they reach a tree
/// (literalrows.h): slow, and easy to check by eye. What the library does is compared with it.
namespace Literal {

using MOLK::SignalItem;

bool busContains(SignalItem bus, SignalItem bit);
void mergeBusItem(QList<SignalItem> &buses, SignalItem item);
void partitionSignals(QList<SignalItem> picked, QList<SignalItem> &buses,
                      QList<SignalItem> &singles);

/// All fields of an item in one line, members included.
QString itemDump(const SignalItem &item);
QStringList itemsDump(const QList<SignalItem> &items);

} // namespace Literal
