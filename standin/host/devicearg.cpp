// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "dev/devicearg.h"

namespace DEV {

DeviceArg::DeviceArg(const QString &device)
    : name(device)
{
}

QString DeviceArg::device() const
{
    return name;
}

} // namespace DEV
