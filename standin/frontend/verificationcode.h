// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>

namespace Standin {

/// Blanks what only checks a design and makes no nets: concurrent assertions, properties,
/// sequences, covergroups with their instances, checkers, clocking blocks, configurations and
/// `let`. Line numbers stay as they are.
///
/// Words that an older language allows as names are left alone, since they lack what has to follow.
HOST_EXPORT QByteArray withoutVerificationCode(const QByteArray &preprocessed);

} // namespace Standin
