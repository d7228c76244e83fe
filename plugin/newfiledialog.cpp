// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "newfiledialog.h"

#include "ui_newfiledialog.h"

#include "modal.h"

#include "core/iproject.h"
#include "core/projectmanager.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QPointer>
#include <QXmlStreamWriter>

namespace MOLK {

NewFileDialog::NewFileDialog(const QString &path, QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::NewFileDialog)
{
    ui->setupUi(this);
    ui->labelInfo->setStyleSheet("QLabel { color: red }");
    ui->editCreateIn->setText(QDir::toNativeSeparators(path.isEmpty() ? QDir::homePath() : path));
    ui->checkBoxAddToCurrent->setEnabled(Core::ProjectManager::currentProject() != nullptr);
    ui->checkBoxAddToCurrent->setChecked(Core::ProjectManager::currentProject() != nullptr);
    connect(ui->btnBrowse, SIGNAL(clicked()), this, SLOT(onBrowse()));
}

NewFileDialog::~NewFileDialog()
{
    delete ui;
}

void NewFileDialog::onBrowse()
{
    // What QFileDialog::getExistingDirectory does, but for a dialog that may go with its parent.
    auto *chooser = new QFileDialog(this, tr("Select Directory"), ui->editCreateIn->text());
    chooser->setFileMode(QFileDialog::Directory);
    chooser->setOption(QFileDialog::ShowDirsOnly);
    connect(chooser, SIGNAL(fileSelected(QString)), ui->editCreateIn, SLOT(setText(QString)));
    execAndDelete(chooser);
}

void NewFileDialog::accept()
{
    const QString name = ui->editName->text();
    const QString dir = ui->editCreateIn->text();
    const QString path = QDir::cleanPath((dir + "/" + name + ".molk").trimmed());
    if (!checkInput(name, dir, path) || !createFile(path))
        return;

    const QPointer<NewFileDialog> guard(this);
    if (ui->checkBoxAddToCurrent->isChecked()) {
        // The project may have been closed since the box was ticked.
        if (Core::IProject *project = Core::ProjectManager::currentProject())
            project->addFile(path);
    }
    if (guard)
        QDialog::accept();
}

void NewFileDialog::showInfo(const QString &text)
{
    ui->labelInfo->setText(text);
    // A long path takes several lines. The inner layouts know of them only once they are activated.
    layout()->activate();
    const int height = layout()->totalHeightForWidth(width());
    if (height > this->height())
        resize(width(), height);
}

bool NewFileDialog::checkInput(const QString &name, const QString &dir, const QString &path)
{
    if (name.isEmpty()) {
        showInfo(tr("Please enter a name."));
        return false;
    }
    if (dir.isEmpty()) {
        showInfo(tr("Please enter a path."));
        return false;
    }
    if (!QDir(dir).exists() && !QDir().mkpath(dir)) {
        showInfo(tr("Cannot make the path %1.").arg(dir));
        return false;
    }
    if (QFile::exists(path)) {
        showInfo(tr("File %1 already exists.").arg(path));
        return false;
    }
    return true;
}

bool NewFileDialog::createFile(const QString &path)
{
    QFile file(path);
    // NewOnly: a file that came up since the check, or a dangling link, isn't written through.
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        showMessage(this, QMessageBox::Critical, "Error",
                    QString("Can not create file %1\n%2")
                        .arg(QDir::toNativeSeparators(path), file.errorString()));
        return false;
    }
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement("MOLK_CONFIG");
    xml.writeTextElement("Version", "1.0");
    xml.writeEndElement();
    xml.writeEndDocument();
    return true;
}

} // namespace MOLK
