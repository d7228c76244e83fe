// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markupguard.h"

#include <QIODevice>

namespace MOLK {

/// What becomes of the line ends and blanks that only lay a document out.
enum class Indentation {
    Kept,   ///< The parser counts lines and columns as they are in the file.
    Dropped ///< The parser has a fifth less to do, but can't tell places.
};

/// Reads another device through a MarkupGuard. Where the guard stops the document, this device
/// ends.
class GuardedDevice : public QIODevice
{
public:
    /// \param readFrom an open device, which must outlive this one and stays its owner's.
    GuardedDevice(QIODevice *readFrom, Indentation layout);

    bool isSequential() const override;

    /// Why the document was stopped, as the end of a sentence; empty while it wasn't.
    QString fault() const { return guard.fault(); }

protected:
    qint64 readData(char *data, qint64 maximum) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    QIODevice *source;
    Indentation indentation;
    MarkupGuard guard;
};

} // namespace MOLK
