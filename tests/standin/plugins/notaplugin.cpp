// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include <QtGlobal>

// A library like any other.
extern "C" Q_DECL_EXPORT int answer()
{
    return 42;
}
