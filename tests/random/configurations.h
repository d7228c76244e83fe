// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dice.h"
#include "plainmodel.h"

/// A configuration as some user may have left it: mostly small, at times close to a limit of the
/// editor, with signals that the design may have or not.
Plain::Configuration randomConfiguration(Dice &dice);

/// Bytes that are no configuration.
QByteArray damagedText(Dice &dice);
