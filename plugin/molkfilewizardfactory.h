// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "core/ifilewizardfactory.h"

namespace MOLK {

/// The host's wizard for new `.molk` files.
class MolkFileWizardFactory : public Core::IFileWizardFactory
{
    Q_OBJECT

public:
    QString id() const override;
    QString name() const override;
    QString description() const override;

    /// Lets the user make a file, which isn't opened.
    void runWizard(QWidget *parent, const QString &path) override;
};

} // namespace MOLK
