// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The menus, tool bar and panes of the main window.

#include "mainwindow.h"

#include "messagespane.h"
#include "projectactions.h"
#include "projectpanel.h"
#include "recentfiles.h"
#include "version.h"

#include "host/documentarea.h"
#include "host/host.h"

#include "core/ifilewizardfactory.h"
#include "core/iview.h"

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
    saveProjectAction =
        addFileAction(tr("Save Project &As..."), QString(), Qt::CTRL + Qt::SHIFT + Qt::Key_S);
    for (QAction *action : {closeProjectAction, saveProjectAction})
        action->setEnabled(false);

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
    recentMenu = menu->addMenu(tr("Open Recen&t"));
    menu->addSeparator();
    menu->addAction(save);
    menu->addAction(saveProjectAction);
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
    connect(saveProjectAction, &QAction::triggered, this, &MainWindow::onSaveProjectAs);
    connect(quit, &QAction::triggered, this, &MainWindow::close);
    connect(recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
}

void MainWindow::makeProjectMenu()
{
    projectActions = new ProjectActions(host, projectPanel, this);
    QMenu *menu = menuBar()->addMenu(tr("&Project"));
    menu->setObjectName("projectMenu");
    projectActions->fillMenu(menu);
}

void MainWindow::makeOtherMenus()
{
    QMenu *view = menuBar()->addMenu(tr("&View"));
    addViewActions(view);
    view->addSeparator();
    const QVector<QPair<QAction *, QString>> toggles{
        {findChild<QDockWidget *>("projectDock")->toggleViewAction(), tr("&Project")},
        {findChild<QDockWidget *>("messagesDock")->toggleViewAction(), tr("&Messages")},
        {findChild<QToolBar *>("toolBar")->toggleViewAction(), tr("&Tool Bar")}};
    for (const auto &toggle : toggles) {
        toggle.first->setText(toggle.second);
        view->addAction(toggle.first);
    }

    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About Workbench"), this, &MainWindow::onAbout);
    help->addAction(tr("About &Qt"), qApp, &QApplication::aboutQt);
}

// Each pane is one stop of the keys that go around, whatever is inside of it.
void MainWindow::goToPane(int distance)
{
    const QVector<QWidget *> panes{projectPanel, documents, messagesPane};
    int at = 1;
    for (int i = 0; i < panes.size(); ++i) {
        if (panes.at(i)->isAncestorOf(focusWidget()) || panes.at(i) == focusWidget())
            at = i;
    }
    for (int step = 1; step <= panes.size(); ++step) {
        QWidget *pane = panes.at((at + step * distance + panes.size() * 2) % panes.size());
        if (!pane->isVisible())
            continue;
        QWidget *goal = pane == messagesPane ? messagesPane->currentWidget() : pane;
        if (pane == documents && documents->activeView())
            goal = documents->activeView();
        // Where the user has been there before.
        if (QWidget *last = goal->focusWidget())
            goal = last;
        goal->setFocus(Qt::OtherFocusReason);
        return;
    }
}

void MainWindow::goToDocument(int distance)
{
    const QList<Core::IView *> views = documents->views();
    const int at = views.indexOf(documents->activeView());
    if (at >= 0)
        documents->showView(views.at((at + distance + views.size()) % views.size()));
}

void MainWindow::addViewActions(QMenu *menu)
{
    const struct
    {
        QString text;
        QKeySequence key;
        void (MainWindow::*go)(int distance);
        int distance;
    } entries[] = {
        {tr("&Next Document"), Qt::CTRL + Qt::Key_PageDown, &MainWindow::goToDocument, 1},
        {tr("Pre&vious Document"), Qt::CTRL + Qt::Key_PageUp, &MainWindow::goToDocument, -1},
        {tr("Ne&xt Pane"), Qt::Key_F6, &MainWindow::goToPane, 1},
        {tr("Previous Pan&e"), Qt::SHIFT + Qt::Key_F6, &MainWindow::goToPane, -1},
    };
    for (const auto &entry : entries) {
        QAction *action =
            menu->addAction(entry.text, this, [this, go = entry.go, distance = entry.distance] {
                (this->*go)(distance);
            });
        action->setShortcut(entry.key);
    }
}

void MainWindow::refreshWizards()
{
    newMenu->clear();
    const auto wizards = host->objects().objects<Core::IWizardFactory>();
    for (Core::IWizardFactory *wizard : wizards) {
        const QString text = "&" + wizard->name().replace("&", "&&") + "...";
        QAction *action =
            newMenu->addAction(wizard->icon(), text, wizard, [this, wizard] { runWizard(wizard); });
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
    const QStringList paths =
        QFileDialog::getOpenFileNames(this, tr("Open"), startDirectory(),
                                      tr("Configurations and designs (*.molk *.eda.yml *.eda.yaml "
                                         "*.edam *.v *.vh *.sv *.svh *.vhd "
                                         "*.vhdl *.json);;"
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
    const QSize room = screen()->availableSize();
    resize(QSize(1280, 820).boundedTo(room));
    // A small screen, or one at twice the scale, has no height to spare for an empty list.
    if (room.height() < 560)
        findChild<QDockWidget *>("messagesDock")->hide();
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
