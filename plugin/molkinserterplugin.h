// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "addin/iplugin.h"

namespace MOLK {

/// What the host loads: brings the wizard and the view manager up, and takes the manager down.
class MolkInserterPlugin : public Addin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "MOLK.MolkInserterPlugin/1.0")
    Q_INTERFACES(Addin::IPlugin)

public:
    /// Always true.
    bool initialize() override;
    void extensions() override;
    void shutdown() override;
};

} // namespace MOLK
