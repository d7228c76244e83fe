// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace MOLK {

/// Cuts what a device yields into lines that end in LF, with one buffer for all of them.
class LineSource
{
public:
    /// \param readFrom an open device, which must outlive this and stays its owner's.
    explicit LineSource(QIODevice *readFrom);

    /// Goes to the next line.
    ///
    /// \return false at the end, and before a line that has no LF, is longer than a piece of markup
    ///         may be, or lies beyond the largest size of a file.
    bool next();

    /// The current line without its LF. It holds until the next call of next().
    const char *begin() const { return buffer.constData() + lineBegin; }
    int size() const { return lineEnd - lineBegin; }

    /// Whether the current line is the last one.
    bool atEnd();

private:
    bool fill();

    QIODevice *device;
    QByteArray buffer;
    qint64 total = 0; // Bytes read so far.
    int filled = 0;   // Bytes of the buffer that were read.
    int lineBegin = 0;
    int lineEnd = -1;
};

} // namespace MOLK
