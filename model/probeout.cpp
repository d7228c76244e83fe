// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "probeout.h"

#include <utility>

namespace MOLK {

ProbeOut::ProbeOut(int portNumber)
    : ProbeIn(portNumber)
    , value("0x0")
{
}

QString ProbeOut::getValue() const
{
    return value;
}

void ProbeOut::setValue(QString text)
{
    value = std::move(text);
}

} // namespace MOLK
