// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkfilewizardfactory.h"

#include "modal.h"
#include "newfiledialog.h"

namespace MOLK {

QString MolkFileWizardFactory::id() const
{
    return "MB.Wizard.MOLK";
}

QString MolkFileWizardFactory::name() const
{
    return tr("MOLK Config File");
}

QString MolkFileWizardFactory::description() const
{
    return tr("Create a MOLK Config File.");
}

void MolkFileWizardFactory::runWizard(QWidget *parent, const QString &path)
{
    execAndDelete(new NewFileDialog(path, parent));
}

} // namespace MOLK
