// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QStringList>

#include <memory>

namespace FATHOM {
class RtlNetlist;
}

/// A netlist as lines, levels indented by two blanks: "top (module)", then ". net" for each single
/// net and "= bus[7:0]" for each bus, then the levels below. " -in" and " -out" tell that it may
/// not be watched, or driven; behind a bus whose bits differ, digits of flags stand for the bits.
QStringList netlistLines(const FATHOM::RtlNetlist &netlist);

/// Every full name that the netlist hands out, bits included.
QStringList allFullNames(const FATHOM::RtlNetlist &netlist);

/// Names of nets and bits that findNet() doesn't find, or finds as another, and names that stand
/// twice. Empty in a netlist that is as it should be.
QStringList namesNotFound(const FATHOM::RtlNetlist &netlist);

/// Elaborates \a source, whose top module is `top`, with Verilator, and reads the result. Modules
/// in \a stubs are black boxes. Fails the running test, and returns null, if that's impossible.
std::unique_ptr<FATHOM::RtlNetlist> elaborated(const QByteArray &source,
                                               const QByteArray &stubs = QByteArray());

/// As elaborated(), for a file below tests/data/rtl.
std::unique_ptr<FATHOM::RtlNetlist> elaboratedFile(const QString &name,
                                                   const QByteArray &stubs = QByteArray());
