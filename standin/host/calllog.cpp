// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/calllog.h"

namespace Standin {

static CallLog *current = nullptr;

CallLog::CallLog()
{
    current = this;
}

CallLog::~CallLog()
{
    current = nullptr;
}

void record(const QString &line)
{
    if (current && current->recording)
        current->lines.append(line);
}

bool isRefused(const QString &name)
{
    if (!current)
        return false;

    const auto pending = current->refusals.find(name);
    if (pending == current->refusals.end())
        return false;

    for (int &countdown : *pending)
        --countdown;
    const bool refused = pending->removeAll(0) > 0;
    if (pending->isEmpty())
        current->refusals.erase(pending);
    return refused;
}

} // namespace Standin
