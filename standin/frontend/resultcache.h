// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/designgraph.h"
#include "frontend/frontend.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Standin {

class ToolBox;

/// A file and what it held when it was read.
struct FileState
{
    QString path;
    QByteArray hash;
};

/// What is kept of one reading without errors.
struct KeptReading
{
    ModuleLists lists;
    QStringList messages;
    QVector<FileState> dependencies; ///< Files read besides the sources.
    QStringList absentFiles;         ///< Files that must not exist for the reading to hold.
    Artifact artifact;               ///< No file if there was no top to elaborate.
};

/// Identifies a reading: everything that decides its result, but for the files that only the
/// reading itself finds.
HOST_EXPORT QByteArray readingKey(const DesignSources &sources, const FrontEnd &frontEnd,
                                  const ToolBox &tools);

/// The states of \a paths, in order.
HOST_EXPORT QVector<FileState> fileStates(const QStringList &paths, qint64 longest);

/// True if no dependency has changed and no absent file has appeared.
HOST_EXPORT bool isCurrent(const KeptReading &reading, qint64 longest);

/// Readings on disk, one file each, in a directory that only the user may change.
///
/// Files are written whole or not at all, and checked before they are used: what is damaged,
/// belongs to someone else or can be written by others doesn't count. When the directory outgrows
/// its bound, the files that were used least recently go.
class HOST_EXPORT ResultCache
{
public:
    /// \param directory is made when something is stored.
    /// \param bytes bound of all files together; 0 switches the cache off.
    ResultCache(const QString &directory, qint64 bytes);

    /// Looks for the reading \a key.
    ///
    /// \param artifactFile where the artifact goes if there is one; \a reading names it then.
    /// \return false if there is no such reading, or none that can be trusted.
    bool find(const QByteArray &key, const QString &artifactFile, KeptReading *reading) const;

    /// Stores \a reading. What can't be written, or is too long to be worth it, is not stored.
    void store(const QByteArray &key, const KeptReading &reading) const;

private:
    QString fileOf(const QByteArray &key) const;
    bool isDirectoryOurs() const;
    void removeOldest() const;

    QString directory;
    qint64 maximum;
};

} // namespace Standin
