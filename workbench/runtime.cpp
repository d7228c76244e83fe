// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "runtime.h"

#include "mainwindow.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace Workbench {

static const char pluginInterface[] = "MOLK.MolkInserterPlugin/1.0";
static const char pluginName[] = "libMolkInserterPlugin.so";

QString findPlugin()
{
    const QDir here(QCoreApplication::applicationDirPath());
    for (const char *folder : {"../plugin", "../lib/molk", MOLK_PLUGIN_FROM_BIN}) {
        const QFileInfo file(here, QLatin1String(folder) + "/" + QLatin1String(pluginName));
        if (file.isFile())
            return file.canonicalFilePath();
    }
    return QString();
}

Runtime::Runtime()
{
    // The log of calls is for tests; this one may run for days.
    host.setRecording(false);
}

Runtime::~Runtime()
{
    // The window shows what the plug-in makes, so it outlives the plug-in.
    host.shutDown();
    bridge.reset();
    mainWindow.reset();
}

bool Runtime::loadPlugin(const QString &file, QString *error)
{
    const QString path = file.isEmpty() ? findPlugin() : file;
    if (path.isEmpty()) {
        *error = "The plug-in " + QLatin1String(pluginName)
            + " is neither in the build tree nor installed; name it with --plug-in.";
        return false;
    }
    if (!host.plugins().load(path, pluginInterface, error))
        return false;
    host.plugins().startExtensions();
    return bridge.resolve(path, error);
}

bool Runtime::openDesign(const CommandLine &line, QString *error)
{
    const QStringList files = line.designFiles + line.documents;
    for (const QString &path : files) {
        if (!QFileInfo(path).isFile()) {
            *error = path + ": No such file.";
            return false;
        }
    }
    if (!line.designFiles.isEmpty())
        return mainWindow->openDesign(line.designFiles, line.top);
    if (line.project.isEmpty())
        return true;

    QStringList errors;
    if (mainWindow->openProject(line.project, line.top, &errors))
        return true;
    *error = errors.join('\n');
    return false;
}

bool Runtime::start(const CommandLine &line, QString *error)
{
    if (!loadPlugin(line.plugin, error))
        return false;
    mainWindow.reset(new MainWindow(&host, &bridge));
    return openDesign(line, error);
}

} // namespace Workbench
