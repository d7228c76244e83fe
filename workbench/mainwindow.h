// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qutil/ieventhandler.h"

#include <QMainWindow>

#include <memory>

class QLabel;
class QMenu;

namespace Core {
class IWizardFactory;
}

namespace Standin {
class DocumentArea;
class EdamProject;
class Host;
class MolkBridge;
} // namespace Standin

namespace Workbench {

class HintLabel;
class MessagesPane;
class ProjectActions;
class ProjectPanel;
class RecentFiles;

/// The window of the workbench: the host's document area in the middle, the open project at the
/// left, messages below.
///
/// What it opens as a project becomes the host's. Closing the window closes all views, each of
/// which may ask and refuse.
class MainWindow : public QMainWindow, private QUtil::IEventHandler
{
    Q_OBJECT

public:
    /// \param services the host; it and \a plugin have to outlive the window.
    /// \param plugin the way to the plug-in that opens configurations.
    MainWindow(Standin::Host *services, const Standin::MolkBridge *plugin);
    ~MainWindow() override;

    /// Opens the EDAM file \a path in place of the project that is open, whose views are closed.
    ///
    /// \param top used as top module in place of the project's, as long as the project is open;
    ///        empty to use the project's.
    /// \param errors receives, a line each, why it can't be opened. Empty if the user has refused
    ///        to close a view.
    /// \return whether it is open now. On failure nothing has changed, but some views may be
    ///         closed.
    bool openProject(const QString &path, const QString &top, QStringList *errors);

    /// As openProject(), with a project made of the source files \a files.
    bool openDesign(const QStringList &files, const QString &top);

    /// Closes the views and the project.
    /// \return whether it is closed; false if a view has refused, or if the user wants to keep what
    ///         is in memory alone.
    bool closeProject();

    /// Writes the project to the file \a path, an EDAM file, which is its own from then on. The
    /// user is told of a failure.
    bool saveProjectAs(const QString &path);

    /// Opens files of any kind as a user expects: a project as project; source files as a project
    /// of their own if none is open, else as text; configurations by the plug-in; anything else as
    /// text. The user is told of what can't be opened.
    void openPaths(const QStringList &paths);

    /// Opens \a path read-only as text, at \a line, counted from 1; 0 leaves the place as it is.
    /// The user is told if it can't be shown.
    void showSource(const QString &path, int line);

    MessagesPane *messages() const;

public slots:
    /// Fills the menu of new things with the wizards in the host's object pool.
    void refreshWizards();

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private slots:
    void onOpen();
    void onOpenProject();
    bool onSaveProjectAs();
    void onAbout();
    void refreshTitle();

private:
    void handleIEvent(const QUtil::IEvent *event) override;

    void makePanes();
    void makeFileMenu();
    void makeProjectMenu();
    void makeOtherMenus();
    void addViewActions(QMenu *menu);
    QAction *addFileAction(const QString &text, const QString &picture,
                           const QKeySequence &shortcut);
    void fillRecentMenu();
    void restoreLayout();
    void storeLayout() const;

    void goToPane(int distance);
    void goToDocument(int distance);
    bool closeViews();
    bool leaveProject();
    void takeProject(std::unique_ptr<Standin::EdamProject> next);
    void refreshProject();
    void reloadSource(const QString &path);
    void runWizard(Core::IWizardFactory *wizard);
    void openConfiguration(const QString &path);
    void openProjectAround(const QString &configuration);
    void reportProjectErrors(const QString &path, const QStringList &errors);
    QString startDirectory() const;

    Standin::Host *host;
    const Standin::MolkBridge *bridge;
    Standin::DocumentArea *documents;
    HintLabel *hint;
    ProjectPanel *projectPanel;
    MessagesPane *messagesPane;
    RecentFiles *recentFiles;
    RecentFiles *recentProjects;
    QMenu *newMenu = nullptr;
    QMenu *recentMenu = nullptr;
    QAction *closeAction = nullptr;
    QAction *closeProjectAction = nullptr;
    QAction *saveProjectAction = nullptr;
    ProjectActions *projectActions = nullptr;
    QLabel *projectLabel;
    bool projectDirty = false;
};

} // namespace Workbench
