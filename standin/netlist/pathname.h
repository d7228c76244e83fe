// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

// How names stand in paths. Names are UTF-8.

namespace Standin {

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
