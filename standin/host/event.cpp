// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/event.h"

namespace Standin {

Event::Event(const QString &eventName, const QVariantMap &eventValues)
    : name(eventName)
    , values(eventValues)
{
}

Event::~Event() = default;

QString Event::type() const
{
    return name;
}

QVariant Event::get(const QString &key) const
{
    return values.value(key);
}

QString Event::toString() const
{
    QString line = name;
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        line += " " + value.key() + "=" + value->toString();
    return line;
}

} // namespace Standin
