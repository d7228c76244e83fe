// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// How the main window opens, shows and leaves the project.

#include "mainwindow.h"

#include "errorbox.h"
#include "messagespane.h"
#include "projectactions.h"
#include "projectpanel.h"
#include "recentfiles.h"

#include "host/documentarea.h"
#include "host/host.h"
#include "project/edamproject.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>

using Standin::EdamProject;

namespace Workbench {

bool MainWindow::openProject(const QString &path, const QString &top, QStringList *errors)
{
    QStringList warnings;
    std::unique_ptr<EdamProject> next = EdamProject::open(path, errors, &warnings);
    if (!next || !leaveProject() || !closeViews())
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
    if (!leaveProject() || !closeViews())
        return false;
    takeProject(EdamProject::adHoc(files, top));
    messagesPane->appendLine(tr("The project of these files is kept in memory; File, Save Project "
                                "As writes it to a file."));
    return true;
}

bool MainWindow::closeProject()
{
    if (!leaveProject() || !closeViews())
        return false;
    takeProject(nullptr);
    return true;
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

bool MainWindow::saveProjectAs(const QString &path)
{
    EdamProject *current = host->project();
    QString error;
    if (!current || !current->saveAs(path, &error)) {
        if (current)
            showError(this, error);
        return false;
    }
    recentProjects->add(path);
    refreshProject();
    return true;
}

bool MainWindow::onSaveProjectAs()
{
    const EdamProject *current = host->project();
    if (!current)
        return false;

    // The dialog looks for a file that is in the way after it has added the suffix.
    QPointer<QFileDialog> dialog = new QFileDialog(
        this, tr("Save Project As"), current->directory(), tr("Projects (*.eda.yml)"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix("eda.yml");
    const QString name = current->path().isEmpty() ? current->name() + ".eda.yml"
                                                   : QFileInfo(current->path()).fileName();
    dialog->selectFile(name.section(':', -1));
    const bool accepted = dialog->exec() == QDialog::Accepted;
    const QString path = dialog ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return accepted && !path.isEmpty() && saveProjectAs(path);
}

// What is in memory alone would be lost with the project.
bool MainWindow::leaveProject()
{
    const EdamProject *current = host->project();
    if (!current || !current->hasUnsavedChanges())
        return true;

    QMessageBox box(QMessageBox::Question, tr("Save Project"),
                    tr("The project %1 is kept in memory alone.\n"
                       "Do you want to save its changes?")
                        .arg(current->name()),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    if (answer == QMessageBox::Save)
        return onSaveProjectAs();
    return answer == QMessageBox::Discard;
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
    saveProjectAction->setEnabled(current != nullptr);
    projectActions->refresh();
    refreshTitle();

    if (!current) {
        projectLabel->setText(tr("No project"));
        return;
    }
    const QString top = current->top();
    QString text = top.isEmpty() ? tr("%1, no top module set").arg(current->name())
                                 : tr("%1, top module %2").arg(current->name(), top);
    if (current->path().isEmpty())
        text += tr(", kept in memory");
    projectLabel->setText(text);
}

} // namespace Workbench
