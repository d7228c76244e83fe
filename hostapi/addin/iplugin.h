// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QObject>

namespace Addin {

/// Base of every plug-in object that a host takes from a plug-in library.
///
/// The host calls initialize(), extensions() and shutdown() once each, in this order, on the user
/// interface thread. The order of the virtual operations is part of the interface.
class HOST_EXPORT IPlugin : public QObject
{
    Q_OBJECT

public:
    IPlugin();

    /// Releases what addAutoReleasedObject() was given, newest first.
    ~IPlugin() override;

    /// Brings the plug-in up.
    /// \return false if the plug-in can't be used; the host then calls nothing more on it.
    virtual bool initialize() = 0;

    /// Called when all plug-ins of the host have been initialised.
    virtual void extensions() = 0;

    /// Takes the plug-in down. The host calls nothing on the plug-in after it.
    virtual void shutdown() = 0;

protected:
    /// Hands \a object to the host's object pool, where other parts of the host find it by its
    /// type. The host owns it from here on and deletes it when the plug-in goes.
    void addAutoReleasedObject(QObject *object);
};

} // namespace Addin

#define ADDIN_IPLUGIN_IID "Addin.IPlugin/1.0"

Q_DECLARE_INTERFACE(Addin::IPlugin, ADDIN_IPLUGIN_IID)
