// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "newfiletest.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace MOLK;

bool RecordingProject::addFile(const QString &path)
{
    added.append(path);
    if (onAdd)
        onAdd();
    return true;
}

NewFileTest::NewFileTest() = default;

NewFileTest::~NewFileTest() = default;

void NewFileTest::init()
{
    host = std::make_unique<Standin::Host>();
    dir = std::make_unique<QTemporaryDir>();
    project = RecordingProject();
}

void NewFileTest::cleanup()
{
    delete dialog;
    dir.reset();
    host->setCurrentProject(nullptr);
    host.reset();
}

void NewFileTest::openProject()
{
    host->setCurrentProject(&project);
}

void NewFileTest::openDialog()
{
    openDialog(dir->path());
}

void NewFileTest::openDialog(const QString &path)
{
    delete dialog;
    dialog = new NewFileDialog(path, nullptr);
}

void NewFileTest::fill(const QString &name)
{
    child<QLineEdit>("editName")->setText(name);
}

void NewFileTest::fill(const QString &name, const QString &directory)
{
    fill(name);
    child<QLineEdit>("editCreateIn")->setText(directory);
}

void NewFileTest::pressOk()
{
    child<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Ok)->click();
}

QString NewFileTest::info() const
{
    return child<QLabel>("labelInfo")->text();
}
