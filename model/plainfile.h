// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QFile;
QT_END_NAMESPACE

namespace MOLK {

/// Tells whether the system can have a file of that name at all: it isn't empty and holds no NUL.
bool isUsableFileName(const QString &fileName);

/// Opens \a file for reading if its name leads to a regular file that holds something and isn't too
/// large to be a configuration. Neither a pipe nor a device is waited for or read.
///
/// \return why it wasn't opened, as the end of a sentence; empty if \a file is open now.
QString openPlainFile(QFile *file);

} // namespace MOLK
