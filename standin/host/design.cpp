// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/design.h"

#include "host/calllog.h"
#include "project/edamproject.h"

#include "te/taskengine.h"

#include <QRegularExpression>

static Standin::Design *currentDesign = nullptr;

// Without a host the services stand all the same, and answer as without a project.
static Standin::Design *livingDesign()
{
    if (!currentDesign) {
        static auto *nobodys = new Standin::Design;
        currentDesign = nobodys;
    }
    return currentDesign;
}

namespace TE {

TaskEngine *TaskEngine::instance()
{
    static TaskEngine engine;
    return &engine;
}

DesignManager *TaskEngine::designManager() const
{
    return livingDesign();
}

FlowManager *TaskEngine::flowManager() const
{
    return livingDesign();
}

} // namespace TE

namespace Standin {

Design::Design()
{
    currentDesign = this;
}

Design::~Design()
{
    currentDesign = nullptr;
}

QMap<QString, QVariant> Design::getSourceFileInfo() const
{
    record("getSourceFileInfo");
    if (hasSourceFileInfo || !project)
        return sourceFileInfo;
    return project->designInfo();
}

QVariant Design::getOptionValue(const QString &name) const
{
    record("getOptionValue " + name);
    if (options.contains(name) || !project)
        return options.value(name);
    return project->option(name);
}

QString Design::workingDir() const
{
    record("workingDir");
    if (!directory.isNull() || !project)
        return directory;
    return project->directory();
}

TE::DesignFile Design::getFileInfo(const QString &path) const
{
    record("getFileInfo " + path);
    if (files.contains(path) || !project)
        return files.value(path);
    return project->file(path);
}

QString Design::resultFile(const QString &kind)
{
    record("resultFile " + kind);
    if (results.contains(kind) || !project)
        return results.value(kind);

    // The names of projects may hold what file names can't, such as the colons of library paths.
    QString base = project->name();
    static const QRegularExpression unusual("[^A-Za-z0-9_.-]");
    base.replace(unusual, "_");
    return project->directory() + "/results/" + base + "." + kind.section('.', -1);
}

void Design::setProject(const EdamProject *openProject)
{
    project = openProject;
}

void Design::setSourceFileInfo(const QMap<QString, QVariant> &info)
{
    hasSourceFileInfo = true;
    sourceFileInfo = info;
}

void Design::setSourceFiles(const QStringList &paths, const QString &top)
{
    QVariantList entries;
    for (const QString &path : paths)
        entries.append(QVariantMap{{"Path", path}});

    QVariantMap info{{"Files", entries}};
    if (!top.isNull())
        info.insert("Top", top);
    setSourceFileInfo(info);
}

void Design::setOptionValue(const QString &name, const QVariant &value)
{
    options.insert(name, value);
}

void Design::setWorkingDir(const QString &dir)
{
    directory = dir;
}

void Design::setFileInfo(const TE::DesignFile &file)
{
    files.insert(file.path, file);
}

void Design::setResultFile(const QString &kind, const QString &path)
{
    results.insert(kind, path);
}

void Design::clearAnswers()
{
    hasSourceFileInfo = false;
    sourceFileInfo.clear();
    options.clear();
    directory = QString();
    files.clear();
    results.clear();
}

} // namespace Standin
