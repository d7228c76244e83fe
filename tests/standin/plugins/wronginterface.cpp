// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "news.h"

#include "addin/iplugin.h"

/// Names another interface; nothing of it may run.
class WrongInterfacePlugin : public Addin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Other.Plugin/1.0")
    Q_INTERFACES(Addin::IPlugin)

public:
    bool initialize() override { return true; }
    void extensions() override {}
    void shutdown() override {}
};

static const bool loaded = qputenv("MOLK_TEST_WRONG_INTERFACE_LOADED", "1");

#include "wronginterface.moc"
