// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QVector>

namespace Standin {

/// Rewrites what is legal but what front ends don't take, where that changes no net: drive and
/// charge strengths go, and so do the conditions of events; instances of primitives get a name if
/// they have none and lose their delay; and what only checks the design goes as with
/// withoutVerificationCode(). Line numbers stay as they are.
HOST_EXPORT QByteArray inPlainDialect(const QByteArray &preprocessed);

/// Moves packages ahead of what uses them, where that isn't the order in which the text has them.
/// Places lead back to the same files and lines.
HOST_EXPORT QByteArray withPackagesFirst(const QByteArray &preprocessed);

/// A port of interface type that was taken out of a module.
struct InterfacePort
{
    QByteArray name;
    quint32 offset; ///< Where it stood in the text.
};

/// Makes interfaces of its own of the ports of the module \a top that have the type of an interface
/// declared in the text. A top module has nobody who would connect them. Offsets and line numbers
/// stay as they are up to the end of the module's first line.
///
/// \param ports receives the ports that were there.
HOST_EXPORT QByteArray withoutInterfacePorts(const QByteArray &preprocessed, const QByteArray &top,
                                             QVector<InterfacePort> *ports);

} // namespace Standin
