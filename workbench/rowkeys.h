// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>

class QAbstractItemView;

namespace Workbench {

/// Lets Return and F2 do with the current row of a tree or list what a double click does, in views
/// of plug-ins that know the mouse alone. Rows that the view itself edits or activates at Return
/// aren't many; a double click is what stands for it there too.
///
/// Lists that drop down, and views in other windows than the one of the area, such as dialogs, keep
/// their own keys.
class RowKeys : public QObject
{
    Q_OBJECT

public:
    /// \param documents whatever lies in it is served; it owns this.
    explicit RowKeys(QWidget *documents);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *area;
};

} // namespace Workbench
