// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QTreeWidget>

namespace MOLK {

/// The tree of a port's signals, whose order the user changes by dragging top-level rows. The bits
/// of a bus stay where they are.
///
/// It has to be in the drag and drop mode `QAbstractItemView::InternalMove`. A row that was moved
/// is a new object, the clone of the old one.
class signalTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit signalTreeWidget(QWidget *parent = nullptr);

signals:
    /// The rows have a new order. The old rows may not be deleted yet: after a drop on empty space
    /// the view does that when the drag ends.
    void itemDragged();

protected:
    /// Only the left button selects rows and starts drags.
    void mousePressEvent(QMouseEvent *event) override;

    /// A drag starts only from a top-level row.
    void mouseMoveEvent(QMouseEvent *event) override;

    void dragMoveEvent(QDragMoveEvent *event) override;

    /// Moves the selected top-level rows as one block, in their order: above the row below the
    /// mouse if its upper half is hit, else below it, or to the end if there is none. A drop on a
    /// selected row or on a bit row changes nothing.
    void dropEvent(QDropEvent *event) override;

private:
    void moveToEnd(const QList<QTreeWidgetItem *> &moved);
    void moveBeside(QTreeWidgetItem *target, const QPoint &position,
                    const QList<QTreeWidgetItem *> &moved);
    void selectExactly(const QList<QTreeWidgetItem *> &rows);
};

} // namespace MOLK
