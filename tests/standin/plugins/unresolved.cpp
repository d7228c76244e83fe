// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "news.h"

#include "addin/iplugin.h"

// The host has no such symbol. A variable, since functions are looked up when they are called.
extern Q_DECL_IMPORT int molkTestSymbolThatNobodyHas;

class UnresolvedPlugin : public Addin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "MOLK.MolkInserterPlugin/1.0")
    Q_INTERFACES(Addin::IPlugin)

public:
    bool initialize() override { return molkTestSymbolThatNobodyHas != 0; }
    void extensions() override {}
    void shutdown() override {}
};

#include "unresolved.moc"
