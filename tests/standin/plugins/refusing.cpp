// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "news.h"

#include "addin/iplugin.h"

/// Can't be initialised, but has handed an object over by then.
class RefusingPlugin : public Addin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "MOLK.MolkInserterPlugin/1.0")
    Q_INTERFACES(Addin::IPlugin)

public:
    ~RefusingPlugin() override { tell("deleted refusing"); }

    bool initialize() override
    {
        addAutoReleasedObject(new Pooled("left over"));
        return false;
    }

    void extensions() override { tell("extensions refusing"); }
    void shutdown() override { tell("shutdown refusing"); }
};

#include "refusing.moc"
