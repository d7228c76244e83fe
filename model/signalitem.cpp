// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "signalitem.h"

namespace MOLK {

QVariant signalToVariant(const SignalItem &item)
{
    return QVariant::fromValue(item);
}

SignalItem signalFromVariant(const QVariant &variant)
{
    return variant.value<SignalItem>();
}

} // namespace MOLK
