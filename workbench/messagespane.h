// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "logline.h"

#include <QTabWidget>

class QPlainTextEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace Workbench {

/// What the workbench and the extraction have to say: a tab with the problems of the last reading
/// of the design, and a tab with everything that was said.
///
///   MessagesPane
///     "Problems (n)"  QTreeWidget "problems": Description, File, Line
///     "Log"           QPlainTextEdit "log"
class MessagesPane : public QTabWidget
{
    Q_OBJECT

public:
    explicit MessagesPane(QWidget *parent = nullptr);

    /// Takes \a lines as the log of a new reading of the design: the problems of the reading before
    /// go, and the errors and warnings among \a lines take their place. An error brings the tab
    /// with the problems forward.
    void setDesignLog(const QStringList &lines);

    /// Adds a line of the workbench's own to the log.
    void appendLine(const QString &text);

    int problemCount() const;

signals:
    /// The user wants to see the place of a problem. \a line is 0 if only the file is known.
    void placeActivated(const QString &file, int line);

private:
    void onItemActivated(QTreeWidgetItem *item);

    QTreeWidget *problems;
    QPlainTextEdit *log;
};

} // namespace Workbench
