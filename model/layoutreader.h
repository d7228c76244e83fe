// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "linesource.h"
#include "ownedcores.h"
#include "signalitem.h"

#include <QLatin1String>
#include <QList>

namespace MOLK {

/// Reads configurations that look exactly as MolkFileWriter lays them out, line by line.
///
/// Nearly every file was written by the editor and read back unchanged, and knowing the layout
/// makes that several times as fast as taking the text for any XML. It accepts nothing that
/// MolkFileReader wouldn't, and reads the same from it. Where a document differs by as much as a
/// blank it gives up: whether such a document is a configuration it doesn't know.
class LayoutReader
{
public:
    /// \param source an open device, which must outlive the reader and stays its owner's.
    explicit LayoutReader(QIODevice *source);

    /// Reads the whole document, once. False where it gave up.
    bool read();

    /// Hands over the cores that were read; the caller owns them.
    QList<MolkCore *> takeCores() { return cores.take(); }

private:
    Q_DISABLE_COPY(LayoutReader)

    enum class Line { Element, End, Other };
    struct Bytes
    {
        const char *begin = nullptr;
        const char *end = nullptr;
    };

    bool readHeading();
    bool readCore();
    bool readPort(ProbeIn *port, ProbeOut *valued, QLatin1String element);
    bool readSignals(QList<SignalItem> *items, int nesting, QLatin1String parent);
    bool readSignal(SignalItem *item, int nesting);

    Line nextLine(int level, QLatin1String parent);
    bool take(QLatin1String word);
    bool takeAttribute(QLatin1String name, Bytes *value);
    bool takeText(QLatin1String name, QString *text);
    void takeNumber(QLatin1String name, int *number);
    void takeFlag(QLatin1String name, QLatin1String word, bool *flag);
    bool takeTagEnd(bool *isEmpty);

    LineSource lines;
    const char *at = nullptr; // What is left of the current line.
    const char *end = nullptr;
    bool failed = false; // An attribute isn't as it should be.
    OwnedCores cores;
};

} // namespace MOLK
