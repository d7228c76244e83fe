// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "namehash.h"

#include <QHash>

#include <utility>

/// Two different names that have one hash in this process. Among so many names there are dozens of
/// such pairs, whatever the process has mixed in; null names if there should be none at all.
inline std::pair<QString, QString> meetingNames()
{
    QHash<uint, int> numbers;
    const auto name = [](int number) {
        return "top/net_" + QString::number(number);
    };
    for (int number = 0; number < 1000000; ++number) {
        const uint hash = MOLK::nameHash(name(number));
        const auto met = numbers.constFind(hash);
        if (met != numbers.constEnd())
            return {name(*met), name(number)};
        numbers.insert(hash, number);
    }
    return {};
}
