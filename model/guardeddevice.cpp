// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "guardeddevice.h"

namespace MOLK {

GuardedDevice::GuardedDevice(QIODevice *readFrom)
    : source(readFrom)
{
    open(QIODevice::ReadOnly);
}

bool GuardedDevice::isSequential() const
{
    return true;
}

qint64 GuardedDevice::readData(char *data, qint64 maximum)
{
    // A device is asked for nothing now and then, to see whether it has an error.
    if (maximum <= 0)
        return 0;
    const qint64 size = source->read(data, maximum);
    if (size <= 0) {
        guard.finish();
        return -1;
    }
    const qint64 accepted = guard.accept(data, size);
    return accepted > 0 ? accepted : -1;
}

qint64 GuardedDevice::writeData(const char *, qint64)
{
    return -1;
}

} // namespace MOLK
