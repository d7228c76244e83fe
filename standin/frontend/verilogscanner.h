// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/designgraph.h"

#include <QByteArray>

namespace Standin {

/// Finds modules and what they instantiate in preprocessed Verilog or SystemVerilog text.
///
/// It looks at the shape of statements alone, so it takes faulty text and text in dialects that no
/// parser takes, and it sees instances in generate branches that are never taken.
HOST_EXPORT DesignGraph scanVerilog(const QByteArray &preprocessed);

/// Finds entities and what their architectures instantiate in VHDL text, and adds them to \a graph.
/// The names are kept as the declaration spells them.
HOST_EXPORT void scanVhdl(const QByteArray &source, DesignGraph *graph);

} // namespace Standin
