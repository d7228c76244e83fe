// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <QWidget>

class QListWidget;
class QPushButton;

namespace Workbench {

/// An ordered list of directories that is edited in place:
///
///     PathList
///       QListWidget "paths"      F2 or a double click changes a line
///       "Add...", "Remove", "Up", "Down"   also Insert, Delete, Alt+Up and Alt+Down in the list
class PathList : public QWidget
{
    Q_OBJECT

public:
    /// \param directory of the project, absolute: where the choice of a directory begins, and what
    ///        relative lines are relative to.
    explicit PathList(const QString &directory, QWidget *parent = nullptr);

    /// The lines from top to bottom, without empty ones.
    QStringList paths() const;
    void setPaths(const QStringList &paths);

private slots:
    void onAdd();
    void onRemove();
    void onUp();
    void onDown();
    void refreshButtons();

private:
    QPushButton *addButton(const QString &text, const QString &toolTip, const QKeySequence &key,
                           const char *slot);
    void move(int distance);
    void append(const QString &path);

    QString projectDirectory;
    QListWidget *list;
    QPushButton *remove;
    QPushButton *up;
    QPushButton *down;
};

} // namespace Workbench
