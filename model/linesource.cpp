// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "linesource.h"

#include "molkformat.h"

#include <QIODevice>

#include <cstring>

namespace MOLK {

static const int firstBufferSize = 256 * 1024;

LineSource::LineSource(QIODevice *readFrom)
    : device(readFrom)
    , buffer(firstBufferSize, Qt::Uninitialized)
{
}

bool LineSource::next()
{
    lineBegin = lineEnd + 1;
    int searched = lineBegin;
    for (;;) {
        const char *const at = buffer.constData() + searched;
        const void *const found = std::memchr(at, '\n', std::size_t(filled - searched));
        if (found) {
            lineEnd = int(static_cast<const char *>(found) - buffer.constData());
            return true;
        }
        const int unfinished = filled - lineBegin;
        if (!fill())
            return false;
        searched = lineBegin + unfinished;
    }
}

bool LineSource::atEnd()
{
    return lineEnd + 1 == filled && !fill();
}

// Reads more behind the bytes from lineBegin on, which move to the front of the buffer.
bool LineSource::fill()
{
    const int kept = filled - lineBegin;
    if (kept > Format::maximumPieceSize)
        return false;
    char *const data = buffer.data();
    std::memmove(data, data + lineBegin, std::size_t(kept));
    lineEnd -= lineBegin;
    lineBegin = 0;
    filled = kept;
    if (filled == buffer.size())
        buffer.resize(2 * buffer.size());

    const qint64 size = device->read(buffer.data() + filled, buffer.size() - filled);
    if (size <= 0)
        return false;
    total += size;
    filled += int(size);
    return total <= Format::maximumFileSize;
}

} // namespace MOLK
