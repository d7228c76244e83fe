// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "guardeddevice.h"
#include "ownedcores.h"
#include "signalitem.h"

#include <QList>
#include <QString>
#include <QXmlStreamReader>

namespace MOLK {

/// Reads one configuration document. Anything that the format doesn't know is an error: what is
/// skipped when reading would be lost at the next save.
class MolkFileReader
{
public:
    /// \param source an open device, which must outlive the reader and stays its owner's.
    explicit MolkFileReader(QIODevice *source);

    /// Reads the whole document, once.
    ///
    /// \return true if it is a configuration from its first byte to its last.
    bool read();

    /// Hands over the cores that were read; the caller owns them.
    QList<MolkCore *> takeCores() { return cores.take(); }

    /// What is wrong and where, as in `line 3, column 17: unknown element "x" in "core"`; empty
    /// while nothing is.
    QString error() const;

private:
    Q_DISABLE_COPY(MolkFileReader)

    void readDocument();
    void readVersion();
    void readCore();
    void readPort(ProbeIn *port, ProbeOut *valued, QLatin1String element);
    void readSignals(QList<SignalItem> *items, int nesting, QLatin1String parent);
    void readSignalAttributes(SignalItem *item, QLatin1String element);
    QString readText(const QXmlStreamAttribute &attribute);
    void readNumber(const QXmlStreamAttribute &attribute, int *number);
    void readFlag(const QXmlStreamAttribute &attribute, bool *flag);

    bool nextChild(QLatin1String parent);
    void refuseAttributes(QLatin1String element);
    void failAtElement(QLatin1String parent);
    void failAtAttribute(const QXmlStreamAttribute &attribute, QLatin1String element);
    void fail(const QString &cause);

    GuardedDevice guarded;
    QXmlStreamReader xml;
    OwnedCores cores;
};

/// Reads the configuration that \a source holds: as fast as it goes if it looks as the writer lays
/// it out, and otherwise as any XML.
///
/// \param source an open device that can go back to its start.
/// \param cores the result, which the caller owns; left alone on failure.
/// \return what is wrong and where; empty on success.
QString readDocument(QIODevice *source, QList<MolkCore *> *cores);

} // namespace MOLK
