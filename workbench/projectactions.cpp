// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectactions.h"

#include "errorbox.h"
#include "projectpanel.h"
#include "projectsettingsdialog.h"

#include "designinfo.h"
#include "host/host.h"

#include "fathom/extraction.h"

#include <QAction>
#include <QActionGroup>
#include <QFileDialog>
#include <QMenu>
#include <QPointer>

using Standin::EdamProject;

namespace Workbench {

ProjectActions::ProjectActions(Standin::Host *services, ProjectPanel *tree, QWidget *dialogParent)
    : QObject(dialogParent)
    , host(services)
    , panel(tree)
    , window(dialogParent)
    , kindMenu(new QMenu(tr("File &Kind"), dialogParent))
    , kinds(new QActionGroup(this))
{
    open = make(tr("&Open"), tr("Open the selected files"), QKeySequence(), SLOT(onOpen()));
    add = make(tr("&Add Files..."), tr("Add files to the project"), Qt::Key_Insert, SLOT(onAdd()));
    remove = make(tr("&Remove from Project"),
                  tr("Take the selected files out of the project; the files themselves stay"),
                  Qt::Key_Delete, SLOT(onRemove()));
    use = make(tr("Use in &Design"), tr("Whether the selected files take part in the design"),
               Qt::Key_Space, SLOT(onUse(bool)));
    use->setCheckable(true);
    makeKinds();
    up = make(tr("Move &Up"), tr("Compile the selected files earlier"), Qt::ALT + Qt::Key_Up,
              SLOT(onUp()));
    down = make(tr("Move Do&wn"), tr("Compile the selected files later"), Qt::ALT + Qt::Key_Down,
                SLOT(onDown()));
    top = make(tr("&Top Module..."), tr("Set the module that the design begins with"),
               Qt::CTRL + Qt::Key_T, SLOT(onTopModule()));
    top->setShortcutContext(Qt::WindowShortcut);
    settings =
        make(tr("&Settings..."), tr("Set device, language, synthesis tool and include directories"),
             Qt::Key_F2, SLOT(onSettings()));

    panel->addActions({open, add, remove, use, kindMenu->menuAction(), up, down, top, settings});
    panel->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(panel, SIGNAL(itemSelectionChanged()), this, SLOT(refresh()));
    connect(panel, SIGNAL(optionActivated(QString)), this, SLOT(editSettings(QString)));
    refresh();
}

QAction *ProjectActions::make(const QString &text, const QString &toolTip, const QKeySequence &key,
                              const char *slot)
{
    auto *action = new QAction(text, this);
    action->setToolTip(toolTip);
    action->setStatusTip(toolTip);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action,
            QByteArray(slot).endsWith("(bool)") ? SIGNAL(triggered(bool)) : SIGNAL(triggered()),
            this, slot);
    return action;
}

void ProjectActions::makeKinds()
{
    const QVector<QPair<int, QString>> entries{{Standin::VerilogKind, tr("&Verilog")},
                                               {Standin::SystemVerilogKind, tr("&SystemVerilog")},
                                               {Standin::VhdlKind, tr("V&HDL")},
                                               {Standin::OtherKind, tr("&Other")}};
    for (const auto &entry : entries) {
        QAction *action = kindMenu->addAction(entry.second);
        action->setCheckable(true);
        action->setData(entry.first);
        kinds->addAction(action);
    }
    kindMenu->addSeparator();
    include =
        make(tr("&Include File"), tr("Compile the selected files only where others include them"),
             QKeySequence(), SLOT(onInclude(bool)));
    include->setCheckable(true);
    kindMenu->addAction(include);
    kindMenu->setToolTipsVisible(true);
    kindMenu->menuAction()->setStatusTip(tr("The language of the selected files"));
    connect(kinds, SIGNAL(triggered(QAction *)), this, SLOT(onKind(QAction *)));
}

void ProjectActions::fillMenu(QMenu *menu) const
{
    menu->addActions({add, remove});
    menu->addSeparator();
    menu->addActions({use, kindMenu->menuAction(), up, down});
    menu->addSeparator();
    menu->addActions({top, settings});
    menu->setToolTipsVisible(true);
}

void ProjectActions::refresh()
{
    const EdamProject *project = host->project();
    selection =
        project ? describeSelection(project->files(), panel->selectedFiles()) : FileSelection();

    for (QAction *action : {add, top, settings})
        action->setEnabled(project != nullptr);
    for (QAction *action : {open, remove, use, kindMenu->menuAction(), include})
        action->setEnabled(!selection.paths.isEmpty());
    up->setEnabled(!selection.above.isEmpty());
    down->setEnabled(!selection.below.isEmpty());

    use->setChecked(selection.enabled == Qt::Checked);
    include->setChecked(selection.include == Qt::Checked);
    const auto entries = kinds->actions();
    kinds->setExclusive(false);
    for (QAction *action : entries)
        action->setChecked(action->data().toInt() == selection.kind);
    kinds->setExclusive(true);
}

// A check mark that the project doesn't follow goes back to what is so.
void ProjectActions::tell(bool done, const QString &error)
{
    const QPointer<ProjectActions> guarded = this;
    if (!done)
        showError(window, error);
    if (guarded)
        refresh();
}

void ProjectActions::onOpen()
{
    const QStringList paths = selection.paths;
    for (const QString &path : paths)
        emit panel->fileActivated(path);
}

void ProjectActions::onAdd()
{
    const QPointer<ProjectActions> guarded = this;
    const QStringList paths = QFileDialog::getOpenFileNames(
        window, tr("Add Files"), host->project()->directory(),
        tr("Sources and configurations (*.v *.vh *.sv *.svh *.vhd *.vhdl *.json *.molk);;"
           "All files (*)"));
    if (!guarded || !host->project() || paths.isEmpty())
        return;
    QString error;
    tell(host->project()->addFiles(paths, &error), error);
}

void ProjectActions::onRemove()
{
    QString error;
    tell(host->project()->removeFiles(selection.paths, &error), error);
}

void ProjectActions::onUse(bool on)
{
    QString error;
    tell(host->project()->setFilesEnabled(selection.paths, on, &error), error);
}

void ProjectActions::onKind(QAction *action)
{
    QString error;
    const auto kind = Standin::FileKind(action->data().toInt());
    tell(host->project()->setFilesKind(selection.paths, kind, &error), error);
}

void ProjectActions::onInclude(bool on)
{
    QString error;
    tell(host->project()->setIncludeFiles(selection.paths, on, &error), error);
}

void ProjectActions::onUp()
{
    QString error;
    tell(host->project()->moveFiles(selection.paths, selection.above, EdamProject::Before, &error),
         error);
}

void ProjectActions::onDown()
{
    QString error;
    tell(host->project()->moveFiles(selection.paths, selection.below, EdamProject::After, &error),
         error);
}

void ProjectActions::onTopModule()
{
    editSettings("TopModule");
}

void ProjectActions::onSettings()
{
    editSettings(panel->currentOption());
}

// The design is read without a top module, so that all modules are met.
QStringList ProjectActions::findModules(QWidget *parent)
{
    if (!host->project())
        return QStringList();
    QMap<QString, QVariant> info = host->project()->designInfo();
    info.remove(Standin::DesignInfo::Top);
    QStringList tops;
    QStringList modules;
    QStringList messages;
    FATHOM::catchRtlModules(tops, modules, messages, info, parent);
    QStringList names = tops + modules;
    names.removeDuplicates();
    return names;
}

void ProjectActions::editSettings(const QString &option)
{
    if (!host->project())
        return;
    const QPointer<ProjectActions> guarded = this;
    QPointer<ProjectSettingsDialog> dialog = new ProjectSettingsDialog(
        *host->project(),
        [guarded](QWidget *parent) {
            return guarded ? guarded->findModules(parent) : QStringList();
        },
        window);
    dialog->focusOption(option);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    const QVariantMap changes = dialog ? dialog->changes() : QVariantMap();
    delete dialog;
    if (!accepted || !guarded || !host->project())
        return;
    QString error;
    tell(host->project()->setOptions(changes, &error), error);
}

} // namespace Workbench
