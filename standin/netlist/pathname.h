// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

// How names stand in paths. Names are UTF-8.

namespace Standin {

/// The text of a name, whole: QString::fromUtf8() would leave out a byte order mark at the start,
/// and of an array what stands behind a NUL. Damaged files have both in names.
///
/// \param length in bytes, 0 or more.
QString textOfName(const char *name, int length);

inline QString textOfName(const QByteArray &name)
{
    return textOfName(name.constData(), name.size());
}

/// Whether \a name can't stand in a path as it is, whatever stands beside it: it holds a slash or a
/// blank, or begins with a backslash.
bool needsEscape(const QByteArray &name);

/// The form of an escaped identifier: a backslash, \a name with each blank doubled, and a blank.
QByteArray escapedName(const QByteArray &name);

/// Takes `q[-3]` apart into `q` and -3.
///
/// \return false if \a name doesn't end in an index that is written as numbers are: no sign but a
///         minus, no leading zero, within 32 bits.
bool splitIndex(const QByteArray &name, QByteArray *base, qint32 *index);

/// Where the first step of a path ends: the position of its slash, or the size of \a path if it
/// has but one step.
int stepEnd(const QByteArray &path, int begin);

} // namespace Standin
