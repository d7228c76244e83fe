// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>

namespace Standin {

/// Rewrites what is legal but what front ends don't take, where that changes no net: drive and
/// charge strengths go, and so do the conditions of events; instances of primitives get a name if
/// they have none and lose their delay; and what only checks the design goes as with
/// withoutVerificationCode(). Line numbers stay as they are.
HOST_EXPORT QByteArray inPlainDialect(const QByteArray &preprocessed);

/// Moves packages ahead of what uses them, where that isn't the order in which the text has them.
/// Places lead back to the same files and lines.
HOST_EXPORT QByteArray withPackagesFirst(const QByteArray &preprocessed);

} // namespace Standin
