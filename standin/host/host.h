// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "host/design.h"
#include "host/documentarea.h"
#include "host/event.h"
#include "host/eventbus.h"
#include "host/objectpool.h"
#include "host/pluginmanager.h"
#include "host/scriptedextraction.h"
#include "hostglobal.h"

#include "core/viewmanager.h"

#include <QStringList>

#include <functional>
#include <memory>

class QAction;
class QWidget;

namespace Core {
class IProject;
}

namespace Standin {

class EdamProject;
class Extraction;
struct ExtractionOptions;

/// An open host: all services that plug-ins ask for, brought up by constructing it and taken down
/// by destroying it. There is at most one at a time; it needs a QApplication.
///
/// It is the host of an application and the double of tests in one: its answers can be scripted,
/// and it writes down every call that is made to it.
///
/// Taking down goes in this order: views leave (viewClosed() is sent, close events aren't), what
/// they left to the event loop is deleted, the plug-ins are shut down and their objects released,
/// and the project closes.
class HOST_EXPORT Host
{
public:
    Host();
    ~Host();

    Q_DISABLE_COPY_MOVE(Host)

    /// The living host; null without one.
    static Host *instance();

    /// Takes everything down that the destructor would; calls() still answers afterwards.
    void shutDown();

    /// All calls so far, one line each: the operation's name, then what it was called with, as in
    /// "registerAction Core.Action.Save MOLK.MolkViewManager.Context", "subscribe TE.File.Add" or
    /// "showView a.molk". Views stand with their window titles, booleans as "on" and "off". What
    /// the host tells the plug-ins stands there too: "viewActiveted a.molk", "viewClosed a.molk",
    /// "send TE.File.Add file=/a.v".
    QStringList calls() const;

    /// The calls of the operations \a names alone, in order.
    QStringList callsOf(const QStringList &names) const;

    void clearCalls();

    /// An application that runs for long turns the recording off.
    void setRecording(bool on);

    /// Refuses one call of \a name: the \a nth from now, counted from 1. "registerAction",
    /// "closeView" and "addFile" answer false then, "catchRtlModules" logs an error, and
    /// "catchRtlNetsWithProgressDialog" delivers null.
    void refuse(const QString &name, int nth = 1);

    /// Sends events to the plug-ins: `host.events().send(Event("TE.Device.Change"))`.
    EventBus &events();

    /// The document area. It is made on the first call, and belongs to the host until it is given a
    /// parent.
    DocumentArea *documentArea();

    /// The window that Core::ViewManager::dialogParent() answers; without one it is the document
    /// area.
    void setMainWindow(QWidget *window);

    /// What setMainWindow() was given; null if that has been destroyed.
    QWidget *mainWindow() const;

    /// The action that \a id, such as "Core.Action.Save", stands for now: the one registered in the
    /// innermost active context. Active are the contexts of the focused widget and of its parents,
    /// then those of the active view and of its parents. Null if there is none.
    QAction *activeAction(const QString &id) const;

    /// An action for menus that shows and triggers what activeAction() answers at any time; the
    /// same object for each call, owned by the host. Its own text and tool tip, which the caller
    /// sets, are shown while there is no such action or it has no text.
    QAction *proxyAction(const QString &id);

    /// Answers of the net extraction.
    ScriptedExtraction &extraction();

    /// The net extraction that answers what isn't scripted. It is made on the first call, with the
    /// options that it has by default.
    Extraction &realExtraction();

    /// Replaces realExtraction() by one that runs with \a options.
    void setExtractionOptions(const ExtractionOptions &options);

    /// Calls \a handler, until another one or null is set, with the log of each call of the net
    /// extraction, while that call still runs. An empty log of the nets isn't worth a call.
    void setDesignLogHandler(const std::function<void(const QStringList &log)> &handler);

    /// \internal Hands \a log to the handler.
    void reportDesignLog(const QStringList &log) const;

    /// Answers of the design and flow services.
    Design &design();

    /// Serves a small design with the top module \a top to every reader: one source file, no
    /// messages, and the netlists that \a make makes.
    void serveDesign(const QString &top, const ScriptedExtraction::MakeNetlist &make);

    /// The loaded plug-ins.
    PluginManager &plugins();

    /// What the plug-ins have handed to the host.
    ObjectPool &objects();

    /// Opens \a project, which answers the design services and watches its sources from here on;
    /// null closes the open one. The host owns it.
    void setProject(std::unique_ptr<EdamProject> project);

    /// The open project; null without one.
    EdamProject *project() const;

    /// Makes a test's own \a project, which isn't owned, what
    /// Core::ProjectManager::currentProject() answers; null makes it the open project again.
    void setCurrentProject(Core::IProject *project);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Standin
