// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// The contents of every section called \a name in the 64-bit ELF file \a file; empty if the file
/// can't be read or has none.
QList<QByteArray> elfSections(const QString &file, const QByteArray &name);
