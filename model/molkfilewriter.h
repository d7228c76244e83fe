// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markupguard.h"
#include "markupwriter.h"
#include "signalitem.h"

#include <QList>
#include <QString>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace MOLK {

class MolkCore;
class ProbeIn;
class ProbeOut;

/// Writes one configuration document.
///
/// The bytes are gathered in memory, and each part is looked at as a reader would look at it before
/// it goes to the device.
class MolkFileWriter
{
public:
    /// \param target an open device, which must outlive the writer and stays its owner's.
    explicit MolkFileWriter(QIODevice *target);

    /// Writes the whole document, once.
    ///
    /// \return false if the device took less than all of it, or if the document breaks a bound of
    ///         the format and couldn't be read again.
    bool write(const QList<MolkCore *> &cores);

private:
    Q_DISABLE_COPY(MolkFileWriter)

    void writeCore(const MolkCore &core, int position);
    void writePort(const ProbeIn &port, const ProbeOut *valued, int position);
    void writeSignals(const QList<SignalItem> &items, int nesting);
    void writeSignal(const SignalItem &item, int nesting);
    void writeText(QLatin1String name, const QString &text);
    void endElement();
    void passOn();

    QIODevice *device;
    MarkupGuard guard;
    MarkupWriter xml;
    bool failed = false;
};

} // namespace MOLK
