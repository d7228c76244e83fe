// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "newfiledialog.h"

#include "core/iproject.h"
#include "host/host.h"

#include <QObject>
#include <QPointer>
#include <QTemporaryDir>

#include <functional>
#include <memory>

/// A project that writes down what is added to it.
class RecordingProject : public Core::IProject
{
public:
    bool addFile(const QString &path) override;

    QStringList added;
    std::function<void()> onAdd;
};

/// Base of the tests of the dialog for new files: each test function has a host, an empty
/// directory, and the dialog that it opens.
class NewFileTest : public QObject
{
    Q_OBJECT

protected:
    NewFileTest();
    ~NewFileTest() override;

    /// Opens the project.
    void openProject();

    /// Makes the dialog on the empty directory, or on \a path.
    void openDialog();
    void openDialog(const QString &path);

    /// Types \a name, and \a directory in place of the one that is offered.
    void fill(const QString &name);
    void fill(const QString &name, const QString &directory);

    void pressOk();

    /// The message in red.
    QString info() const;

    template<typename Type>
    Type *child(const QString &name) const
    {
        return dialog->findChild<Type *>(name);
    }

    std::unique_ptr<Standin::Host> host;
    std::unique_ptr<QTemporaryDir> dir;
    RecordingProject project;
    QPointer<MOLK::NewFileDialog> dialog;

private slots:
    void init();
    void cleanup();
};
