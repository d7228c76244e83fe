// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QString>

namespace DEV {

/// The target device that comes with a request to open something. A value.
class HOST_EXPORT DeviceArg
{
public:
    explicit DeviceArg(const QString &device = QString());

    /// The device's name as the host's device list has it; may be empty.
    QString device() const;

private:
    QString name;
};

} // namespace DEV
