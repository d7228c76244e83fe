// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markupguard.h"

#include <QIODevice>

namespace MOLK {

/// Reads another device through a MarkupGuard. Where the guard stops the document, this device
/// ends.
class GuardedDevice : public QIODevice
{
public:
    /// \param readFrom an open device, which must outlive this one and stays its owner's.
    explicit GuardedDevice(QIODevice *readFrom);

    bool isSequential() const override;

    /// Why the document was stopped, as the end of a sentence; empty while it wasn't.
    QString fault() const { return guard.fault(); }

protected:
    qint64 readData(char *data, qint64 maximum) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    QIODevice *source;
    MarkupGuard guard;
};

} // namespace MOLK
