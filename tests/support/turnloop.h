// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

/// Hands out what waits in the event loop, late deletions included.
void turnLoop();
