// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkinserterplugin.h"

#include "molkfilewizardfactory.h"
#include "molkviewmanager.h"

namespace MOLK {

bool MolkInserterPlugin::initialize()
{
    addAutoReleasedObject(new MolkFileWizardFactory);
    MolkViewManager::instance()->initialize();
    return true;
}

void MolkInserterPlugin::extensions() {}

void MolkInserterPlugin::shutdown()
{
    MolkViewManager::instance()->deinit();
}

} // namespace MOLK

// The metadata block is part of this file, so that it gets this file's compile options.
#include "moc_molkinserterplugin.cpp"
