// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QString>

namespace TE {

/// The host's implementation flow, as far as plug-ins ask for its results.
class HOST_EXPORT FlowManager
{
public:
    virtual ~FlowManager();

    /// The path of the result file \a kind, such as "RES.netlist". It is where the flow puts the
    /// file, whether or not the file exists yet; empty without a project.
    virtual QString resultFile(const QString &kind) = 0;
};

} // namespace TE
