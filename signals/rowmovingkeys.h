// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class QTreeWidget;

namespace MOLK {

/// Lets Alt+Up and Alt+Down move the selected top-level rows of a tree while it has the focus, for
/// those who have no mouse to drag them with.
class RowMovingKeys : public QObject
{
    Q_OBJECT

public:
    /// \param movedIn the tree, which owns this.
    explicit RowMovingKeys(QTreeWidget *movedIn);

private slots:
    void onUp();
    void onDown();

private:
    void addKey(int key, const char *slot);

    QTreeWidget *tree;
};

} // namespace MOLK
