// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

namespace MOLK {

class MolkCore;

/// Tells whether \a fileName is a configuration file that readMOLKConfigFromXml() reads.
///
/// It parses the whole file, so that a damaged or half-written one is told from a good one. False
/// for anything that isn't a regular file; such a name is never waited for. Tells the user nothing.
bool checkMOLKFile(const QString &fileName);

/// Reads a configuration file.
///
/// \param fileName path of a regular file of at most 256 MiB.
/// \param ok set to true on success and left alone on failure; may be null.
/// \param errorMessage on failure the reason with line and column in a form fit for the user, left
///        alone on success; may be null. The user has been told nothing.
/// \return the cores in the file's order, which the caller owns; an empty list for a file without
///         cores and on failure. `id` and `number` are as stored, which need not equal positions. A
///         core that has no port of a direction in the file gets one, numbered 0.
QList<MolkCore *> readMOLKConfigFromXml(const QString &fileName, bool *ok, QString *errorMessage);

/// Writes \a cores, which stay the caller's, in place of what \a fileName holds.
///
/// The same cores always give the same bytes. The old file stays whole until the new one is
/// complete; its permissions are kept, and a symbolic link is followed.
///
/// \return false if the file can't be written or couldn't be read again, with the old file
///         untouched. The user has been told nothing.
bool writeMOLKConfigToXml(const QList<MolkCore *> &cores, const QString &fileName);

} // namespace MOLK
