// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogscript.h"

#include <QDir>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

namespace Workbench {

class MainWindow;
class Runtime;

/// What a scripted session plays on: the application, the dialogs it opens, the comparisons, and
/// the first difference that was found. After that comparisons and pictures do nothing.
class Stage
{
public:
    Stage(Runtime *application, const QString &folder);

    /// Runs \a step unless there is a difference already, then prints \a title and how it went.
    void run(const QString &title, const std::function<void()> &step);

    bool failed() const { return !problem.isEmpty(); }
    /// Notes the first difference, and stores a picture of the window in front as "failure.png".
    void fail(const QString &text);

    /// Compares lists line by line; \a what says what they are.
    void same(const QString &what, const QStringList &actual, const QStringList &expected);
    void same(const QString &what, const QString &actual, const QString &expected);
    void check(const QString &what, bool condition);

    /// The child of \a parent named \a name, at any depth. A missing one is a difference; a child
    /// that does nothing comes back then, so that a step can run to its end.
    template<typename Widget = QWidget>
    Widget *find(QWidget *parent, const QString &name)
    {
        auto *found = parent ? parent->findChild<Widget *>(name) : nullptr;
        if (found)
            return found;
        fail("there is no " + name);
        auto *substitute = new Widget(window);
        substitute->hide();
        return substitute;
    }

    /// The texts of the tree \a name below \a parent, indented; of topRows() without what is below
    /// the first level.
    QStringList rows(QWidget *parent, const QString &name);
    QStringList topRows(QWidget *parent, const QString &name);

    /// Closes the list of completions that typing may have opened.
    void closePopup();

    /// Stores a picture of \a widget as "<name>.png". Documents show it under this name.
    void takePicture(QWidget *widget, const QString &name);

    Runtime *runtime;
    QWidget *window;
    QDir directory;
    DialogScript dialogs;

private:
    QString problem;
    int steps = 0;
};

} // namespace Workbench
