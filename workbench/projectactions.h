// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "fileselection.h"

#include "project/edamproject.h"

#include <QObject>

class QAction;
class QActionGroup;
class QKeySequence;
class QMenu;
class QWidget;

namespace Standin {
class Host;
}

namespace Workbench {

class ProjectPanel;

/// What a user can do to the open project: an entry each in the menu "Project" and in the context
/// menu of the project's tree, with keys that hold while the tree has the focus.
///
///     "Add Files..."  Insert            "Use in Design"  Space      "Top Module..."  Ctrl+T,
///     anywhere "Remove from Project"  Delete     "File Kind"                 "Settings..."    F2
///     "Move Up", "Move Down"  Alt+Up, Alt+Down
///
/// Each is stored in the project at once. A failure is told, and nothing has changed then.
class ProjectActions : public QObject
{
    Q_OBJECT

public:
    /// \param services and \param tree outlive this; dialogs belong to \param dialogParent.
    ProjectActions(Standin::Host *services, ProjectPanel *tree, QWidget *dialogParent);

    /// Puts the entries into \a menu.
    void fillMenu(QMenu *menu) const;

public slots:
    /// Enables what applies to the project and to the rows that are selected now.
    void refresh();

    /// Lets the user change the settings, beginning with the option \a option.
    void editSettings(const QString &option);

private slots:
    void onAdd();
    void onRemove();
    void onUse(bool on);
    void onKind(QAction *action);
    void onInclude(bool on);
    void onUp();
    void onDown();
    void onTopModule();
    void onSettings();
    void onOpen();

private:
    QAction *make(const QString &text, const QString &toolTip, const QKeySequence &key,
                  const char *slot);
    void makeKinds();
    void tell(bool done, const QString &error);
    QStringList findModules(QWidget *parent);

    Standin::Host *host;
    ProjectPanel *panel;
    QWidget *window;
    FileSelection selection;

    QAction *open;
    QAction *add;
    QAction *remove;
    QAction *use;
    QMenu *kindMenu;
    QActionGroup *kinds;
    QAction *include;
    QAction *up;
    QAction *down;
    QAction *top;
    QAction *settings;
};

} // namespace Workbench
