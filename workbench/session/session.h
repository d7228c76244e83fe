// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "stage.h"

#include <QStringList>

#include <functional>

namespace Core {
class IView;
}

namespace Workbench {

/// One editing session on the example project, played with mouse and keys: a new file by the
/// wizard, ports, nets from all three kinds of search, order, a value, the user clock, save, close,
/// and open again.
///
/// It works on a copy of the example, so that nothing of the repository changes.
class Session
{
public:
    /// \param application started, with its window shown, without a project.
    /// \param folder receives a copy of the example, the file that is written, and the pictures;
    ///        made if needed.
    Session(Runtime *application, const QString &folder);

    /// Plays all steps up to the first difference between what comes out and what should. Prints a
    /// line for each step, and what differs.
    /// \return whether there was no difference.
    bool play();

private:
    using Act = std::function<void(QWidget *dialog)>;

    // The steps.
    void copyExample();
    void openProject();
    void makeFile();
    void addPorts();
    void pickBuses();
    void pickByWildcard();
    void pickByExpression();
    void changeOrder();
    void setValue();
    void pickUserClock();
    void save();
    void closeAndOpenAgain();

    // What steps are made of.
    void editPort(const QString &treeName, int port, const Act &edit);
    void searchNets(QWidget *button, const Act &act);
    void lookFor(QWidget *dialog, const char *mode, const QString &pattern);
    void take(QWidget *dialog, const QStringList &names);
    void addAll(QWidget *dialog, const QString &pattern);
    void accept(QWidget *dialog);

    QString pathOf(const QString &name) const;
    Core::IView *view() const;
    QString tabText() const;
    QStringList signalRows(const QString &treeName, int port);

    Stage stage;
};

} // namespace Workbench
