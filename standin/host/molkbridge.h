// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QList>
#include <QString>

namespace Core {
class IView;
}

namespace DEV {
class DeviceArg;
}

namespace Standin {

/// The operations that the probe core plug-in exports for its host. They are looked up in the
/// loaded library: linking to it would load it before its metadata has been checked.
class HOST_EXPORT MolkBridge
{
public:
    /// Looks the operations up in the library \a file, whose plug-in has been loaded.
    ///
    /// \param error receives, in one sentence, what is missing; stays as it is on success.
    /// \return whether all are there; if not, the bridge stays as it was.
    bool resolve(const QString &file, QString *error);

    /// Whether resolve() has succeeded. The other operations do nothing otherwise.
    bool isReady() const;

    /// Forgets the operations. To be called before the plug-in is shut down.
    void reset();

    /// Opens a view of \a fileName, or brings it forward. The user has been told of a failure.
    void openMolkView(const QString &fileName, const DEV::DeviceArg &device) const;

    /// Closes the view of \a fileName as a user would.
    /// \return whether there was a view.
    bool closeMolkView(const QString &fileName) const;

    /// The plug-in's views in order of opening; owned by the document area.
    QList<Core::IView *> molkViews() const;

private:
    QFunctionPointer instanceOperation = nullptr;
    QFunctionPointer openOperation = nullptr;
    QFunctionPointer closeOperation = nullptr;
    QFunctionPointer viewsOperation = nullptr;
};

} // namespace Standin
