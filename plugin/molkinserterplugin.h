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
    /// Hands the wizard to the host's object pool and registers the manager with the host.
    /// \return true in every case.
    bool initialize() override;

    /// Does nothing: no other plug-in is asked for anything.
    void extensions() override;

    /// Ends the manager; open views stay the host's.
    void shutdown() override;
};

} // namespace MOLK
