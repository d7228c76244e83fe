// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// Marks what the host exports. The host defines HOST_LIBRARY while it is built; a plug-in doesn't,
/// and its references stay open until the host loads it.
#if defined(HOST_LIBRARY)
#define HOST_EXPORT Q_DECL_EXPORT
#else
#define HOST_EXPORT Q_DECL_IMPORT
#endif
