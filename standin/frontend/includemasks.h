// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

namespace Standin {

class DirectoryFarm;

/// Puts private copies in the place of included files that hold what has to be masked,
/// translate_off regions above all, or that include such files. Other files are included from where
/// they are.
class HOST_EXPORT IncludeMasks
{
public:
    /// \param includePath directories in which included files are searched, behind that of the file
    ///        which includes them.
    /// \param longestFile files that are longer are left alone.
    /// \param privateFarm receives the copies; it must outlive the object.
    IncludeMasks(const QStringList &includePath, qint64 longestFile, DirectoryFarm &privateFarm);

    /// \a text, the text of a file in \a directory, with its directives leading to the copies. Line
    /// numbers stay as they are.
    QByteArray led(const QByteArray &text, const QString &directory);

private:
    QString resolve(const QString &name, const QString &directory) const;
    QByteArray copyOf(const QString &path);

    QStringList searched;
    qint64 longest;
    DirectoryFarm &farm;
    QHash<QString, QByteArray> copies; ///< By path; empty for files that need none.
    int depth = 0;
};

/// A Verilog source or included file without what only other tools understand, and without what
/// synthesis leaves out.
HOST_EXPORT QByteArray maskedVerilog(const QByteArray &source);

} // namespace Standin
