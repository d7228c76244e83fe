// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "mainwindow.h"

#include "errorbox.h"
#include "filekinds.h"
#include "hintlabel.h"
#include "messagespane.h"
#include "projectpanel.h"
#include "recentfiles.h"
#include "rowkeys.h"
#include "sourceview.h"

#include "host/host.h"
#include "host/molkbridge.h"
#include "project/edamproject.h"

#include "core/iwizardfactory.h"
#include "dev/devicearg.h"
#include "qutil/eventmanager.h"
#include "qutil/ievent.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QStatusBar>
#include <QUrl>

using Standin::EdamProject;

namespace Workbench {

// Everything after which the project's tree looks different.
static const char *const projectEvents[] = {
    "TE.File.Add",      "TE.File.Remove",   "TE.File.Change.Enable", "TE.File.Change.Type",
    "TE.File.Modified", "TE.Option.Change", "TE.Device.Change",
};

MainWindow::MainWindow(Standin::Host *services, const Standin::MolkBridge *plugin)
    : host(services)
    , bridge(plugin)
    , documents(services->documentArea())
    , hint(new HintLabel(tr("Open a configuration or a project, or drop files here."), documents))
    , projectPanel(new ProjectPanel(this))
    , messagesPane(new MessagesPane(this))
    , recentFiles(new RecentFiles("recent/files", this))
    , recentProjects(new RecentFiles("recent/projects", this))
    , projectLabel(new QLabel(this))
{
    setObjectName("workbench");
    setAcceptDrops(true);
    setCentralWidget(documents);
    makePanes();
    makeFileMenu();
    makeProjectMenu();
    makeOtherMenus();
    statusBar()->addPermanentWidget(projectLabel);

    connect(documents, &Standin::DocumentArea::viewActivated, this, &MainWindow::refreshTitle);
    connect(documents, &Standin::DocumentArea::viewTitleChanged, this, &MainWindow::refreshTitle);
    connect(projectPanel, &ProjectPanel::fileActivated, this,
            [this](const QString &path) { openPaths({path}); });
    connect(messagesPane, &MessagesPane::placeActivated, this, &MainWindow::showSource);

    new RowKeys(documents);
    for (const char *name : projectEvents)
        QUtil::EventManager::instance()->subscribe(this, QLatin1String(name));
    host->setMainWindow(this);
    host->setDesignLogHandler([this](const QStringList &log) { messagesPane->setDesignLog(log); });

    refreshProject();
    restoreLayout();
}

MainWindow::~MainWindow()
{
    // What dies below still tells its news, which has no window to go to any more.
    disconnect(documents, nullptr, this, nullptr);
    host->setDesignLogHandler(nullptr);
    QUtil::EventManager::instance()->unsubscribeAll(this);
    host->setMainWindow(nullptr);
}

MessagesPane *MainWindow::messages() const
{
    return messagesPane;
}

void MainWindow::openPaths(const QStringList &paths)
{
    QStringList sources;
    QStringList views;
    sources.reserve(paths.size());
    views.reserve(paths.size());
    for (const QString &path : paths) {
        const FileKind kind = fileKind(path);
        if (kind == FileKind::Project) {
            QStringList errors;
            if (!openProject(path, QString(), &errors) && !errors.isEmpty())
                reportProjectErrors(path, errors);
        } else if (isDesignFile(kind)) {
            sources.append(path);
        } else {
            views.append(path);
        }
    }

    if (host->project())
        views += sources;
    else if (!sources.isEmpty())
        openDesign(sources, QString());

    for (const QString &path : qAsConst(views)) {
        if (fileKind(path) == FileKind::Configuration)
            openConfiguration(path);
        else
            showSource(path, 0);
    }
}

static SourceView *sourceViewOf(const QList<Core::IView *> &views, const QString &path)
{
    for (Core::IView *candidate : views) {
        auto *source = qobject_cast<SourceView *>(candidate);
        if (source && source->file() == path)
            return source;
    }
    return nullptr;
}

void MainWindow::showSource(const QString &path, int line)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    SourceView *view = sourceViewOf(documents->views(), absolute);
    if (!view) {
        auto made = std::make_unique<SourceView>();
        QString error;
        if (!made->open(absolute, &error)) {
            showError(this, error);
            return;
        }
        view = made.release();
    }
    documents->showView(view);
    if (line > 0)
        view->showLine(line);
}

// A text that is gone, or has become unfit, stays as it was read.
void MainWindow::reloadSource(const QString &path)
{
    SourceView *view = sourceViewOf(documents->views(), path);
    if (!view)
        return;
    const int line = view->currentLine();
    QString error;
    if (view->open(path, &error))
        view->showLine(line);
}

void MainWindow::openConfiguration(const QString &path)
{
    if (!host->project())
        openProjectAround(path);

    const EdamProject *current = host->project();
    const QString device = current ? current->option("Device").toString() : QString();
    bridge->openMolkView(path, DEV::DeviceArg(device));
    if (QFileInfo(path).isFile())
        recentFiles->add(path);
    else
        recentFiles->remove(path);
}

bool MainWindow::closeViews()
{
    return documents->closeAllViews();
}

void MainWindow::refreshTitle()
{
    const Core::IView *view = documents->activeView();
    closeAction->setEnabled(view != nullptr);
    hint->setVisible(!view);
    hint->raise();

    QStringList parts;
    if (view)
        parts.append(view->windowTitle());
    if (const EdamProject *current = host->project())
        parts.append(current->name());
    parts.append(tr("Workbench"));
    setWindowTitle(parts.join(" - "));
}

// Many files may be added in one go, so the tree is built when the event loop turns.
void MainWindow::handleIEvent(const QUtil::IEvent *event)
{
    if (event->type() == "TE.File.Modified")
        reloadSource(event->get("file").toString());
    if (projectDirty)
        return;
    projectDirty = true;
    QMetaObject::invokeMethod(
        this, [this] { refreshProject(); }, Qt::QueuedConnection);
}

static QStringList configurationsOf(const EdamProject *project)
{
    QStringList paths;
    if (!project)
        return paths;
    const QList<TE::DesignFile> files = project->files();
    for (const TE::DesignFile &file : files) {
        if (fileKind(file.path) == FileKind::Configuration)
            paths.append(file.path);
    }
    return paths;
}

// A wizard doesn't say what it has made. What has come into the project meanwhile is opened.
void MainWindow::runWizard(Core::IWizardFactory *wizard)
{
    const QStringList before = configurationsOf(host->project());
    // Without a project there is no place that the file belongs to, and the wizard knows a better
    // one.
    const EdamProject *current = host->project();
    if (!current)
        statusBar()->showMessage(tr("Without a project a new file is made, but not opened."));
    wizard->runWizard(this, current ? current->directory() : QString());
    statusBar()->clearMessage();
    const QStringList after = configurationsOf(host->project());
    for (const QString &path : after) {
        if (!before.contains(path))
            openConfiguration(path);
    }
}

QString MainWindow::startDirectory() const
{
    const EdamProject *current = host->project();
    return current ? current->directory() : QDir::currentPath();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!leaveProject() || !closeViews()) {
        event->ignore();
        return;
    }
    storeLayout();
    QMainWindow::closeEvent(event);
}

static QStringList localFiles(const QMimeData *data)
{
    QStringList paths;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    return paths;
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!localFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    // Opening shows dialogs, and whoever drags waits for the end of this event.
    const QStringList paths = localFiles(event->mimeData());
    event->acceptProposedAction();
    QMetaObject::invokeMethod(
        this, [this, paths] { openPaths(paths); }, Qt::QueuedConnection);
}

} // namespace Workbench
