// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "guardeddevice.h"

#include <cstring>

namespace MOLK {

// Whether the bracket before a line end closes a tag, so that what follows up to the next tag only
// lays the document out. Behind a comment it may belong to a text that the comment stands in.
static bool closesTag(const char *begin, const char *lineEnd)
{
    return lineEnd - begin >= 2 && lineEnd[-1] == '>' && lineEnd[-2] != '-' && lineEnd[-2] != '?';
}

static const char *behindBlanks(const char *at, const char *end)
{
    while (at != end && (*at == ' ' || *at == '\n'))
        ++at;
    return at;
}

// Drops indentation in place and returns how many bytes are left. What the piece's ends cut in two
// stays, which the reader takes as well.
static qint64 dropIndentation(char *data, qint64 size)
{
    const char *const end = data + size;
    const char *from = data;
    char *to = data;
    const char *at = data;
    while (const void *const found = std::memchr(at, '\n', std::size_t(end - at))) {
        const char *const lineEnd = static_cast<const char *>(found);
        at = behindBlanks(lineEnd, end);
        if (at == end)
            break;
        if (*at != '<' || !closesTag(from, lineEnd))
            continue;
        std::memmove(to, from, std::size_t(lineEnd - from));
        to += lineEnd - from;
        from = at;
    }
    std::memmove(to, from, std::size_t(end - from));
    return to + (end - from) - data;
}

GuardedDevice::GuardedDevice(QIODevice *readFrom, Indentation layout)
    : source(readFrom)
    , indentation(layout)
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
    if (accepted <= 0)
        return -1;
    return indentation == Indentation::Kept ? accepted : dropIndentation(data, accepted);
}

qint64 GuardedDevice::writeData(const char *, qint64)
{
    return -1;
}

} // namespace MOLK
