// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

namespace MOLK {

/// Hashes a name that comes out of a file or a design.
///
/// Tables of such names use this in place of qHash(): anybody can write down thousands of names
/// that are alike to qHash(), whatever its seed, and with them turn each look-up into a walk over
/// all names. Here each process mixes in random numbers of its own by multiplication, so nobody who
/// can't see them can tell which names meet.
///
/// \return a number whose lowest bits are as good as any; another one in the next run.
uint nameHash(QStringView name);

} // namespace MOLK
