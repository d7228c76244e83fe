// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/pluginmanager.h"

#include "host/calllog.h"
#include "host/objectpool.h"

#include "addin/iplugin.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>
#include <QSet>

namespace Standin {

// Libraries whose plug-in has been taken down in this process.
static QSet<QString> &spentLibraries()
{
    static QSet<QString> paths;
    return paths;
}

// Reads the metadata block alone. \return why the file can't be used; empty if it can.
static QString metadataFault(const QPluginLoader &loader, const QString &iid)
{
    const QJsonObject metadata = loader.metaData();
    if (metadata.isEmpty())
        return "it is no plug-in of this version of Qt.";

    const QString found = metadata.value("IID").toString();
    if (found != iid)
        return "its interface is \"" + found + "\", not \"" + iid + "\".";
    return QString();
}

static QString className(const Addin::IPlugin *plugin)
{
    return QLatin1String(plugin->metaObject()->className());
}

static void destroy(QPluginLoader *loader, Addin::IPlugin *plugin)
{
    ObjectPool::instance()->release(plugin);

    // What was left to the event loop is deleted while its plug-in object is there.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    spentLibraries().insert(loader->fileName());
    loader->setLoadHints(QLibrary::PreventUnloadHint);
    loader->unload();
}

PluginManager::PluginManager() = default;

PluginManager::~PluginManager()
{
    unloadAll();
}

Addin::IPlugin *PluginManager::load(const QString &file, const QString &iid, QString *error)
{
    const auto fail = [&file, error](const QString &why) {
        *error = "Cannot load the plug-in " + QDir::toNativeSeparators(file) + ": " + why;
        return nullptr;
    };

    const QFileInfo info(file);
    if (!info.isFile())
        return fail("there is no such file.");
    const QString path = info.canonicalFilePath();
    if (spentLibraries().contains(path))
        return fail("it has been shut down in this process before.");
    for (const Loaded &other : loaded) {
        if (other.loader->fileName() == path)
            return fail("it is loaded already.");
    }

    auto loader = std::make_unique<QPluginLoader>(path);
    const QString fault = metadataFault(*loader, iid);
    if (!fault.isEmpty())
        return fail(fault);

    QObject *instance = loader->instance();
    if (!instance)
        return fail(loader->errorString());
    auto *plugin = qobject_cast<Addin::IPlugin *>(instance);
    if (!plugin) {
        loader->unload();
        return fail("it does not implement the interface \"" ADDIN_IPLUGIN_IID "\".");
    }

    record("initialize " + className(plugin));
    if (!plugin->initialize()) {
        destroy(loader.get(), plugin);
        return fail("it could not be initialised.");
    }
    loaded.push_back({std::move(loader), plugin, false});
    return plugin;
}

void PluginManager::startExtensions()
{
    for (Loaded &entry : loaded) {
        if (entry.extended)
            continue;
        entry.extended = true;
        record("extensions " + className(entry.plugin));
        entry.plugin->extensions();
    }
}

QList<Addin::IPlugin *> PluginManager::plugins() const
{
    QList<Addin::IPlugin *> all;
    for (const Loaded &entry : loaded)
        all.append(entry.plugin);
    return all;
}

void PluginManager::unloadAll()
{
    while (!loaded.empty()) {
        const Loaded entry = std::move(loaded.back());
        loaded.pop_back();
        record("shutdown " + className(entry.plugin));
        entry.plugin->shutdown();
        destroy(entry.loader.get(), entry.plugin);
    }
}

} // namespace Standin
