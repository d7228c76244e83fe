// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QIcon>
#include <QObject>
#include <QString>

class QWidget;

namespace Core {

/// One entry of the host's dialog for new things. The host finds factories in its object pool.
///
/// The order of the virtual operations is part of the interface.
class HOST_EXPORT IWizardFactory : public QObject
{
    Q_OBJECT

public:
    explicit IWizardFactory(QObject *parent = nullptr);
    ~IWizardFactory() override;

    /// Identifier of the wizard, unique in the host.
    virtual QString id() const = 0;

    /// What the user reads in the list of wizards.
    virtual QString name() const = 0;

    /// One sentence about what the wizard makes.
    virtual QString description() const = 0;

    /// Picture beside the name; the host's own picture for files unless overridden.
    virtual QIcon icon() const;

    /// Runs the wizard; returns when the user has finished or cancelled it.
    /// \param parent parent of the wizard's windows.
    /// \param path directory to offer for what is made; may be empty.
    virtual void runWizard(QWidget *parent, const QString &path) = 0;
};

} // namespace Core
