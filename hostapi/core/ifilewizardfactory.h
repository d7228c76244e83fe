// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "core/iwizardfactory.h"

namespace Core {

/// A wizard that makes a file.
class HOST_EXPORT IFileWizardFactory : public IWizardFactory
{
    Q_OBJECT

public:
    explicit IFileWizardFactory(QObject *parent = nullptr);
    ~IFileWizardFactory() override;
};

} // namespace Core
