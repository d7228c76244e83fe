// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The menus, tool bar and panes of the main window.

#include "mainwindow.h"

#include "messagespane.h"
#include "projectpanel.h"
#include "recentfiles.h"
#include "version.h"

#include "host/host.h"

#include "core/ifilewizardfactory.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QSettings>
#include <QToolBar>

namespace Workbench {

static QIcon picture(const QString &name)
{
    return QIcon(":/workbench/" + name + ".png");
}

void MainWindow::makePanes()
{
    auto *projectDock = new QDockWidget(tr("Project"), this);
    projectDock->setObjectName("projectDock");
    projectDock->setWidget(projectPanel);
    addDockWidget(Qt::LeftDockWidgetArea, projectDock);

    auto *messagesDock = new QDockWidget(tr("Messages"), this);
    messagesDock->setObjectName("messagesDock");
    messagesDock->setWidget(messagesPane);
    addDockWidget(Qt::BottomDockWidgetArea, messagesDock);

    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    resizeDocks({projectDock}, {290}, Qt::Horizontal);
    resizeDocks({messagesDock}, {150}, Qt::Vertical);
}

QAction *MainWindow::addFileAction(const QString &text, const QString &pictureName,
                                   const QKeySequence &shortcut)
{
    auto *action = new QAction(text, this);
    if (!pictureName.isEmpty())
        action->setIcon(picture(pictureName));
    action->setShortcut(shortcut);
    return action;
}

void MainWindow::makeFileMenu()
{
    QAction *open = addFileAction(tr("&Open..."), "open", QKeySequence::Open);
    QAction *openProjectAction =
        addFileAction(tr("Open &Project..."), "project", Qt::CTRL + Qt::SHIFT + Qt::Key_O);
    QAction *quit = addFileAction(tr("&Quit"), QString(), Qt::CTRL + Qt::Key_Q);
    closeAction = addFileAction(tr("&Close"), "close", Qt::CTRL + Qt::Key_W);
    closeProjectAction = addFileAction(tr("Close P&roject"), QString(), QKeySequence());
    closeProjectAction->setEnabled(false);

    // Whatever saves the active view stands behind this one.
    QAction *save = host->proxyAction("Core.Action.Save");
    save->setText(tr("&Save"));
    save->setToolTip(tr("Save"));
    save->setIcon(picture("save"));
    save->setShortcut(QKeySequence::Save);

    QMenu *menu = menuBar()->addMenu(tr("&File"));
    newMenu = menu->addMenu(picture("new"), tr("&New"));
    menu->addAction(open);
    menu->addAction(openProjectAction);
    recentMenu = menu->addMenu(tr("Open Re&cent"));
    menu->addSeparator();
    menu->addAction(save);
    menu->addSeparator();
    menu->addAction(closeAction);
    menu->addAction(closeProjectAction);
    menu->addSeparator();
    menu->addAction(quit);
    newMenu->setObjectName("newMenu");
    recentMenu->setObjectName("recentMenu");
    refreshWizards();

    QToolBar *bar = addToolBar(tr("Tool Bar"));
    bar->setObjectName("toolBar");
    bar->setMovable(false);
    bar->addAction(open);
    bar->addAction(openProjectAction);
    bar->addAction(save);

    connect(open, &QAction::triggered, this, &MainWindow::onOpen);
    connect(openProjectAction, &QAction::triggered, this, &MainWindow::onOpenProject);
    connect(closeAction, &QAction::triggered, this,
            [this] { documents->closeView(documents->activeView()); });
    connect(closeProjectAction, &QAction::triggered, this, &MainWindow::closeProject);
    connect(quit, &QAction::triggered, this, &MainWindow::close);
    connect(recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
}

void MainWindow::makeOtherMenus()
{
    QMenu *view = menuBar()->addMenu(tr("&View"));
    for (const char *name : {"projectDock", "messagesDock"})
        view->addAction(findChild<QDockWidget *>(QLatin1String(name))->toggleViewAction());
    view->addAction(findChild<QToolBar *>("toolBar")->toggleViewAction());

    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About Workbench"), this, &MainWindow::onAbout);
    help->addAction(tr("About &Qt"), qApp, &QApplication::aboutQt);
}

void MainWindow::refreshWizards()
{
    newMenu->clear();
    const auto wizards = host->objects().objects<Core::IWizardFactory>();
    for (Core::IWizardFactory *wizard : wizards) {
        QAction *action = newMenu->addAction(wizard->icon(), wizard->name() + "...", wizard,
                                             [this, wizard] { runWizard(wizard); });
        action->setObjectName(wizard->id());
        action->setStatusTip(wizard->description());
        if (wizard == wizards.first())
            action->setShortcut(QKeySequence::New);
    }
    newMenu->setEnabled(!wizards.isEmpty());
}

void MainWindow::fillRecentMenu()
{
    recentMenu->clear();
    for (RecentFiles *recent : {recentProjects, recentFiles}) {
        const QStringList paths = recent->paths();
        for (const QString &path : paths) {
            // An ampersand in a menu's text marks the next letter.
            QString text = QDir::toNativeSeparators(path);
            text.replace('&', "&&");
            recentMenu->addAction(text, this, [this, path] { openPaths({path}); });
        }
        recentMenu->addSeparator();
    }
    QAction *clear = recentMenu->addAction(tr("&Clear List"), this, [this] {
        recentProjects->clear();
        recentFiles->clear();
    });
    clear->setEnabled(recentMenu->actions().size() > 3);
}

void MainWindow::onOpen()
{
    const QStringList paths = QFileDialog::getOpenFileNames(
        this, tr("Open"), startDirectory(),
        tr("Configurations and designs (*.molk *.eda.yml *.v *.vh *.sv *.svh *.vhd *.vhdl *.json);;"
           "Configurations (*.molk);;All files (*)"));
    if (!paths.isEmpty())
        openPaths(paths);
}

void MainWindow::onOpenProject()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Project"), startDirectory(),
                                                      tr("Projects (*.eda.yml *.eda.yaml *.edam)"));
    if (!path.isEmpty())
        openPaths({path});
}

void MainWindow::onAbout()
{
    QMessageBox::about(this, tr("About Workbench"),
                       tr("<h3>Workbench %1</h3>"
                          "<p>Edits virtual probe cores against an RTL design.</p>"
                          "<p>It is an open stand-in for the design environment that the plug-in "
                          "is made for. MIT license.</p>")
                           .arg(QLatin1String(MOLK_VERSION)));
}

void MainWindow::restoreLayout()
{
    resize(QSize(1280, 820).boundedTo(screen()->availableSize()));
    const QSettings settings;
    restoreGeometry(settings.value("window/geometry").toByteArray());
    restoreState(settings.value("window/state").toByteArray());
}

void MainWindow::storeLayout() const
{
    QSettings settings;
    settings.setValue("window/geometry", saveGeometry());
    settings.setValue("window/state", saveState());
}

} // namespace Workbench
