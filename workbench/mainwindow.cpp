// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "mainwindow.h"

#include "filekinds.h"
#include "hintlabel.h"
#include "messagespane.h"
#include "projectpanel.h"
#include "recentfiles.h"
#include "sourceview.h"

#include "host/host.h"
#include "host/molkbridge.h"
#include "project/edamproject.h"

#include "core/iwizardfactory.h"
#include "dev/devicearg.h"
#include "qutil/eventmanager.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <QUrl>

using Standin::EdamProject;

namespace Workbench {

// Everything after which the project's tree looks different.
static const char *const projectEvents[] = {
    "TE.File.Add",         "TE.File.Remove",   "TE.File.Change.Enable",
    "TE.File.Change.Type", "TE.Option.Change", "TE.Device.Change",
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
    makeOtherMenus();
    statusBar()->addPermanentWidget(projectLabel);

    connect(documents, &Standin::DocumentArea::viewActivated, this, &MainWindow::refreshTitle);
    connect(documents, &Standin::DocumentArea::viewTitleChanged, this, &MainWindow::refreshTitle);
    connect(projectPanel, &ProjectPanel::fileActivated, this,
            [this](const QString &path) { openPaths({path}); });
    connect(messagesPane, &MessagesPane::placeActivated, this, &MainWindow::showSource);

    for (const char *name : projectEvents)
        QUtil::EventManager::instance()->subscribe(this, QLatin1String(name));
    host->setMainWindow(this);
    host->setDesignLogHandler([this](const QStringList &log) { messagesPane->setDesignLog(log); });

    refreshTitle();
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

bool MainWindow::openProject(const QString &path, const QString &top, QStringList *errors)
{
    QStringList warnings;
    std::unique_ptr<EdamProject> next = EdamProject::open(path, errors, &warnings);
    if (!next || !closeViews())
        return false;
    if (!top.isEmpty())
        next->overrideTop(top);

    takeProject(std::move(next));
    for (const QString &warning : qAsConst(warnings))
        messagesPane->appendLine("WARNING: " + warning);
    recentProjects->add(path);
    return true;
}

bool MainWindow::openDesign(const QStringList &files, const QString &top)
{
    if (!closeViews())
        return false;
    takeProject(EdamProject::adHoc(files, top));
    return true;
}

bool MainWindow::closeProject()
{
    if (!closeViews())
        return false;
    takeProject(nullptr);
    return true;
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

void MainWindow::showSource(const QString &path, int line)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    SourceView *view = nullptr;
    const QList<Core::IView *> views = documents->views();
    for (Core::IView *candidate : views) {
        auto *source = qobject_cast<SourceView *>(candidate);
        if (source && source->file() == absolute)
            view = source;
    }

    if (!view) {
        auto made = std::make_unique<SourceView>();
        QString error;
        if (!made->open(absolute, &error)) {
            QMessageBox::critical(this, tr("Error"), error);
            return;
        }
        view = made.release();
    }
    documents->showView(view);
    if (line > 0)
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

// A configuration can't be edited without its design. So without a project the one beside it that
// names it is opened first.
void MainWindow::openProjectAround(const QString &configuration)
{
    const QDir directory = QFileInfo(configuration).absoluteDir();
    const QStringList names = directory.entryList({"*.eda.yml", "*.eda.yaml"}, QDir::Files);
    const QString path = QFileInfo(configuration).absoluteFilePath();
    for (const QString &name : names) {
        QStringList errors;
        std::unique_ptr<EdamProject> candidate =
            EdamProject::open(directory.filePath(name), &errors);
        if (!candidate || candidate->file(path).path.isEmpty())
            continue;
        messagesPane->appendLine(tr("Opened the project %1, which holds %2.")
                                     .arg(name, QFileInfo(configuration).fileName()));
        recentProjects->add(candidate->path());
        takeProject(std::move(candidate));
        return;
    }
}

void MainWindow::reportProjectErrors(const QString &path, const QStringList &errors)
{
    for (const QString &error : errors)
        messagesPane->appendLine("ERROR: " + error);

    QMessageBox box(QMessageBox::Critical, tr("Error"),
                    tr("The project %1 can not be opened.").arg(QDir::toNativeSeparators(path)),
                    QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(errors.mid(0, 5).join('\n'));
    if (errors.size() > 5)
        box.setDetailedText(errors.join('\n'));
    box.exec();
}

bool MainWindow::closeViews()
{
    return documents->closeAllViews();
}

void MainWindow::takeProject(std::unique_ptr<EdamProject> next)
{
    host->setProject(std::move(next));
    messagesPane->setDesignLog(QStringList());
    refreshProject();
}

void MainWindow::refreshProject()
{
    const EdamProject *current = host->project();
    projectDirty = false;
    projectPanel->showProject(current);
    closeProjectAction->setEnabled(current != nullptr);
    refreshTitle();

    if (!current) {
        projectLabel->setText(tr("No project"));
        return;
    }
    const QString top = current->top();
    projectLabel->setText(top.isEmpty() ? tr("%1, no top module set").arg(current->name())
                                        : tr("%1, top module %2").arg(current->name(), top));
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
    Q_UNUSED(event)
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
    wizard->runWizard(this, startDirectory());
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
    if (!closeViews()) {
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
