// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "news.h"

#include "addin/iplugin.h"

class SecondPlugin : public Addin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "MOLK.MolkInserterPlugin/1.0")
    Q_INTERFACES(Addin::IPlugin)

public:
    bool initialize() override
    {
        tell("initialize second");
        return true;
    }

    void extensions() override { tell("extensions second"); }
    void shutdown() override { tell("shutdown second"); }
};

#include "second.moc"
