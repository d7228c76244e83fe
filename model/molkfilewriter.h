// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markupguard.h"
#include "signalitem.h"

#include <QList>
#include <QString>
#include <QXmlStreamWriter>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace MOLK {

class MolkCore;
class ProbeIn;
class ProbeOut;

/// Writes one configuration document.
///
/// The text is gathered in memory a few ports at a time and encoded at once: the stream writer's
/// own way to a device encodes each word by itself, which takes most of its time.
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
    void writeAttribute(const QString &name, const QString &text);
    void passOn();

    QIODevice *device;
    MarkupGuard guard;
    QString text; // What xml wrote and passOn() hasn't passed on yet.
    QXmlStreamWriter xml;
    bool failed = false;

    // The words written once a signal, as the stream writer wants them.
    const QString netElement;
    const QString busElement;
    const QString bitElement;
    const QString signalElement;
    const QString nameAttribute;
};

} // namespace MOLK
