// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// Marks the classes that the plug-in library exports for its host.
#if defined(MOLK_LIBRARY)
#define MOLK_EXPORT Q_DECL_EXPORT
#else
#define MOLK_EXPORT Q_DECL_IMPORT
#endif
