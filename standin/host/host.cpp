// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/host.h"

#include "frontend/extraction.h"
#include "host/actionservice.h"
#include "host/calllog.h"
#include "host/viewservice.h"

#include "project/edamproject.h"

#include "core/projectmanager.h"

#include <QCoreApplication>
#include <QEvent>

static Standin::Host *currentHost = nullptr;
static Core::IProject *testProject = nullptr;

namespace Core {

IProject *ProjectManager::currentProject()
{
    Standin::record("currentProject");
    if (testProject || !currentHost)
        return testProject;
    return currentHost->project();
}

} // namespace Core

namespace Standin {

// In the order of construction; what is below may use what is above.
struct Host::Private
{
    CallLog log;
    ViewService views;
    ActionService actions{&views};
    Design design;
    ScriptedExtraction extraction;
    std::unique_ptr<Extraction> realExtraction;
    std::function<void(const QStringList &)> designLogHandler;
    std::unique_ptr<EdamProject> project;
    PluginManager plugins;
    bool down = false;
};

Host::Host()
    : d(new Private)
{
    Q_ASSERT(!currentHost);
    currentHost = this;
}

Host::~Host()
{
    shutDown();
    d.reset();
    currentHost = nullptr;
}

Host *Host::instance()
{
    return currentHost;
}

void Host::shutDown()
{
    if (d->down)
        return;
    d->down = true;

    if (DocumentArea *area = d->views.existingArea())
        area->dropAllViews();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    d->plugins.unloadAll();
    testProject = nullptr;
    setProject(nullptr);
}

QStringList Host::calls() const
{
    return d->log.lines;
}

QStringList Host::callsOf(const QStringList &names) const
{
    QStringList found;
    for (const QString &line : qAsConst(d->log.lines)) {
        if (names.contains(line.section(' ', 0, 0)))
            found.append(line);
    }
    return found;
}

void Host::clearCalls()
{
    d->log.lines.clear();
}

void Host::setRecording(bool on)
{
    d->log.recording = on;
}

void Host::refuse(const QString &name, int nth)
{
    d->log.refusals[name].append(nth);
}

EventBus &Host::events()
{
    return *EventBus::instance();
}

DocumentArea *Host::documentArea()
{
    return d->views.area();
}

void Host::setMainWindow(QWidget *window)
{
    d->views.mainWindow = window;
}

QWidget *Host::mainWindow() const
{
    return d->views.mainWindow;
}

QAction *Host::activeAction(const QString &id) const
{
    return d->actions.activeAction(id);
}

QAction *Host::proxyAction(const QString &id)
{
    return d->actions.proxyAction(id);
}

ScriptedExtraction &Host::extraction()
{
    return d->extraction;
}

Design &Host::design()
{
    return d->design;
}

Extraction &Host::realExtraction()
{
    if (!d->realExtraction)
        d->realExtraction = std::make_unique<Extraction>();
    return *d->realExtraction;
}

void Host::setExtractionOptions(const ExtractionOptions &options)
{
    d->realExtraction = std::make_unique<Extraction>(options);
}

void Host::setDesignLogHandler(const std::function<void(const QStringList &log)> &handler)
{
    d->designLogHandler = handler;
}

void Host::reportDesignLog(const QStringList &log) const
{
    if (d->designLogHandler)
        d->designLogHandler(log);
}

void Host::serveDesign(const QString &top, const ScriptedExtraction::MakeNetlist &make)
{
    d->design.setSourceFiles({"/design/" + top + ".v"}, top);
    d->extraction.serveTop(top, make);
}

PluginManager &Host::plugins()
{
    return d->plugins;
}

ObjectPool &Host::objects()
{
    return *ObjectPool::instance();
}

void Host::setProject(std::unique_ptr<EdamProject> project)
{
    d->design.setProject(project.get());
    d->project = std::move(project);
    if (d->project)
        d->project->watchSources();
}

EdamProject *Host::project() const
{
    return d->project.get();
}

void Host::setCurrentProject(Core::IProject *project)
{
    testProject = project;
}

} // namespace Standin
