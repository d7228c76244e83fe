// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/designgraph.h"

#include <QByteArray>

namespace Standin {

/// \a text, which GHDL's synthesis wrote, without the modules of \a graph that are empty and no
/// entity of \a entities.
HOST_EXPORT QByteArray withoutBlackBoxes(const QByteArray &text, const DesignGraph &graph,
                                         const DesignGraph &entities);

/// \a text, which GHDL's synthesis wrote, with each name that holds an extended identifier of VHDL
/// written as an escaped identifier of Verilog. GHDL itself leaves the backslashes where they are.
HOST_EXPORT QByteArray withEscapedNames(const QByteArray &text);

/// \a text, which GHDL's synthesis wrote, with each name that is a word of the Verilog language
/// written as an escaped identifier. GHDL itself writes VHDL's names as they are.
HOST_EXPORT QByteArray withEscapedKeywords(const QByteArray &text);

/// \a text, which GHDL's synthesis wrote, without the assignments of "unknown" by which GHDL says
/// that nothing drives a signal.
HOST_EXPORT QByteArray withoutUnknownValues(const QByteArray &text);

} // namespace Standin
