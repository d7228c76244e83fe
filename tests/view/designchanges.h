// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "host/event.h"

#include <QString>

/// What a banner asks when the design's files, or its top module, have changed.
QString filesText();
QString topText();

/// An event for each of the two.
Standin::Event filesChanged();
Standin::Event topChanged();
