// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>

namespace Standin {

/// Takes what stands between translate_off and translate_on out of a Verilog source, as synthesis
/// does: the comments become `ifdef of a macro that nobody defines, and `endif. A region left open
/// ends with the text. Line numbers stay as they are.
///
/// A pragma inside a macro definition is left alone, since a directive can't stand there.
HOST_EXPORT QByteArray maskVerilogPragmas(const QByteArray &source);

/// Takes out of a Verilog source what only the tool that it was made for understands: protected
/// regions, which are encrypted, and libraries named by `uselib. Line numbers stay as they are.
HOST_EXPORT QByteArray maskForeignDirectives(const QByteArray &source);

/// As maskVerilogPragmas() for VHDL, where the region is blanked.
HOST_EXPORT QByteArray maskVhdlPragmas(const QByteArray &source);

/// Takes all comments out of preprocessed text. Only comments that mean something to some tool are
/// left by then, and no such meaning is wanted. Line numbers stay as they are.
HOST_EXPORT QByteArray stripComments(const QByteArray &preprocessed);

/// 1 if the text of a comment, without its delimiters, switches translation off, 2 if it switches
/// it on, else 0.
HOST_EXPORT int translatePragma(const char *begin, const char *end);

} // namespace Standin
