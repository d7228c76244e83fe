// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QTemporaryDir>
#include <QVector>

namespace Standin {

/// The private directory of one reading, in which tools run. Everything of the design stands there
/// under a plain name of ours, so that no name of the user's is ever an argument:
///
///   d0001, d0002 ...     links to the directories that hold sources
///   i0001, i0002 ...     links to the include directories
///   s0001.v ...          copies of the sources
///
/// A copy begins with a directive that makes tools take it for d0001/s0001.v, so that includes
/// relative to the source are found and messages can be led back to the real file.
class HOST_EXPORT DirectoryFarm
{
public:
    DirectoryFarm();

    bool isValid() const { return directory.isValid(); }
    QString path() const { return directory.path(); }
    QString filePath(const QString &name) const { return directory.filePath(name); }

    /// Announces the source \a path. \return its private name "d0001/s0001" + \a suffix, whose
    /// second half is where the copy belongs.
    QString addSource(const QString &path, const QString &suffix);

    /// Announces the copy of the included file \a path. \return as addSource(); it counts as what
    /// is included, though, and not as a source.
    QString addIncludedCopy(const QString &path);

    /// Links the include directory \a path. \return its private name; empty if \a path is no
    /// directory.
    QString addIncludeDirectory(const QString &path);

    bool write(const QString &name, const QByteArray &bytes) const;
    QByteArray read(const QString &name, qint64 longest) const;

    /// The beginning of what a tool has said: a design can make it say anything, at any length.
    QByteArray readLog(const QString &name) const;

    /// The real path of a private name, of the name of a copy, or of something below a private
    /// directory; null for names that aren't ours.
    QString realPath(const QString &name) const;

    /// True for the private name of a source's copy.
    bool isSource(const QString &name) const
    {
        return sources.contains(name) && !includedCopies.contains(name);
    }

    /// Real directories of sources, then those of includes, in the order of their links.
    QStringList searchedDirectories() const;

private:
    bool link(const QString &target, const QString &name) const;

    QTemporaryDir directory;
    QHash<QString, QString> sources; ///< Private name to real path.
    QSet<QString> includedCopies;
    QHash<QString, QString> copies;            ///< Name of the copy to real path.
    QHash<QString, QString> links;             ///< Private name of a directory to its real path.
    QHash<QString, QString> sourceDirectories; ///< Real path to private name.
    QStringList includeDirectories;
};

} // namespace Standin
