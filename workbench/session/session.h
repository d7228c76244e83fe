// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "stage.h"

#include <QStringList>

#include <functional>

class QTreeWidgetItem;

namespace Core {
class IView;
}

namespace Workbench {

/// One editing session on the example project, played with mouse and keys: a new file by the
/// wizard, ports, nets from all three kinds of search, order, a value, a refused save, the user
/// clock, save, close, and open again; then what else the documents show: the settings of the
/// project, changes from outside, a search by levels, and rows with marks.
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
    void refuseSave();
    void pickUserClock();
    void save();
    void closeAndOpenAgain();
    void showSettings();
    void changeOutside();
    void searchHierarchy();
    void showMarks();

    // What steps are made of.
    void editPort(const QString &treeName, int port, const Act &edit);
    void searchNets(QWidget *button, const Act &act);
    void lookFor(QWidget *dialog, const char *mode, const QString &pattern);
    void take(QWidget *dialog, const QStringList &names);
    void addAll(QWidget *dialog, const QString &pattern);
    void accept(QWidget *dialog);
    void cancel(QWidget *dialog);
    void press(QWidget *dialog, int button);
    void chooseFile(QWidget *dialog, const QString &path);
    QTreeWidgetItem *projectRow(const QString &text);
    QList<QWidget *> questions() const;

    QString pathOf(const QString &name) const;
    Core::IView *view() const;
    QString tabText() const;
    QStringList signalRows(const QString &treeName, int port);

    Stage stage;
};

} // namespace Workbench
