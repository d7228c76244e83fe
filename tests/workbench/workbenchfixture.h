// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "mainwindow.h"
#include "runtime.h"

#include <QAction>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

class QTreeWidgetItem;
class QWidget;

namespace Core {
class IView;
}

namespace Workbench {
class ProjectPanel;
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

    /// Opens a project of the sources "chip.v" and "spare.v", the file "notes.txt" and the
    /// configuration "a.molk", and that configuration, unmodified. False if that fails.
    bool openChip();

    /// Makes the configuration \a name with one core, and opens it, in the project of makeProject()
    /// if none is open. Null if that fails.
    Core::IView *openExample(const QString &name = "a.molk");

    /// What the project file of openChip() holds.
    QByteArray projectText();

    /// The tree of the project.
    Workbench::ProjectPanel *panel();

    /// The row of the project's tree with the text \a text. A missing one fails the test.
    QTreeWidgetItem *row(const QString &text);

    /// Makes the window the active one, as a window manager does when a dialog has closed.
    void activate();

    /// Clicks the row with the text \a text, which gets the focus into the tree.
    void clickRow(const QString &text, Qt::KeyboardModifiers modifiers = {});

    /// Presses and releases a key in the window, as the keyboard does.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});

    /// Walks through the menus by their marked letters: "PKH" is Alt+P, K, H.
    void menu(const QByteArray &letters);

    /// The questions at the top of the active view, from left to right.
    QStringList banners();

    /// Answers the one question at the top of the active view by the button "btnA" or "btnB".
    void answerBanner(const QString &button);

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
