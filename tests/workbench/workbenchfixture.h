// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "mainwindow.h"
#include "runtime.h"

#include <QAction>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

class QWidget;

namespace Core {
class IView;
}

/// A workbench with the real plug-in, with settings and a cache of its own, on a design that is
/// scripted. There is one in a process, since a plug-in can be loaded once.
class WorkbenchFixture
{
public:
    WorkbenchFixture();

    /// Starts it and shows its window. False if that fails; the cause is a warning.
    bool start();

    Workbench::MainWindow *window() { return runtime.window(); }
    Standin::DocumentArea *documents() { return runtime.services().documentArea(); }

    /// Writes the file \a name with the text \a content, and returns its path.
    QString makeFile(const QString &name, const QByteArray &content);

    /// Writes a configuration with one core, and returns its path.
    QString makeConfiguration(const QString &name);

    /// Writes a project of one Verilog file, its top module, and \a configurations.
    QString makeProject(const QString &name, const QStringList &configurations = QStringList());

    /// The action whose text is \a text, with the ampersands; null if there is none.
    QAction *action(const QString &text);

    /// The text of what saves.
    QString saveText();

    /// Adds a Probe In to the active view by its button.
    void modify();

    QString path(const QString &name) const { return dir.filePath(name); }

    /// Closes everything without a question.
    void reset();

private:
    QTemporaryDir dir;

public:
    Workbench::Runtime runtime;
};
