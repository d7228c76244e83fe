// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>

namespace Standin {

/// Joins the lines of the argument list of each macro definition in a Verilog source: the
/// preprocessor takes a line's end in it for a part of the argument's name. The line numbers of
/// what stands behind the list stay as they are.
HOST_EXPORT QByteArray withJoinedArguments(const QByteArray &source);

} // namespace Standin
