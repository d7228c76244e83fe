// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QList>
#include <QString>

#include <memory>
#include <vector>

class QPluginLoader;

namespace Addin {
class IPlugin;
}

namespace Standin {

/// Loads plug-in libraries and takes them through their life: initialize(), extensions(),
/// shutdown(), then their objects in the pool are released and the plug-in object is deleted.
///
/// The code of a library stays in memory until the process ends, even after that: meta-types and
/// objects that wait for their deletion may still lead into it. So a library that has been shut
/// down, whose static data is used up, can't be loaded a second time in the same process.
class HOST_EXPORT PluginManager
{
public:
    PluginManager();

    /// Does unloadAll().
    ~PluginManager();

    Q_DISABLE_COPY_MOVE(PluginManager)

    /// Loads the library \a file and initialises its plug-in.
    ///
    /// Nothing of the library runs before its metadata block, which is read from the file, has been
    /// found to name the interface \a iid.
    ///
    /// \param error receives, in one sentence that names the file, why it can't be used; stays as
    /// it
    ///        is on success.
    /// \return the plug-in, which the manager owns; null on failure, and nothing remains of the
    ///         plug-in then but its code.
    Addin::IPlugin *load(const QString &file, const QString &iid, QString *error);

    /// Calls extensions() on each plug-in that hasn't had the call, in the order of loading. To be
    /// called when all have been loaded.
    void startExtensions();

    /// The plug-ins in the order of loading.
    QList<Addin::IPlugin *> plugins() const;

    /// Takes all plug-ins down, the last loaded first. The views must have gone before.
    void unloadAll();

private:
    struct Loaded
    {
        std::unique_ptr<QPluginLoader> loader;
        Addin::IPlugin *plugin = nullptr;
        bool extended = false;
    };

    std::vector<Loaded> loaded;
};

} // namespace Standin
