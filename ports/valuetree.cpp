// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "valuetree.h"

#include "bitlabel.h"

#include <QAbstractItemDelegate>

namespace MOLK {

ValueTree::Batch::Batch(ValueTree *valueTree)
    : tree(valueTree)
{
    ++tree->batches;

    // With a layout pending, the base class leaves the geometry of single rows alone.
    tree->scheduleDelayedItemsLayout();
}

ValueTree::Batch::~Batch()
{
    --tree->batches;
}

ValueTree::ValueTree(QWidget *parent)
    : QTreeWidget(parent)
{
    setUniformRowHeights(true);
}

void ValueTree::releaseLabels(QTreeWidgetItem *row)
{
    // Removing the rows would go through all widgets of the tree for each row.
    for (int i = 0; i < row->childCount(); ++i) {
        QWidget *label = itemWidget(row->child(i), 0);
        if (!label)
            continue;
        removeItemWidget(row->child(i), 0);
        if (!label->isHidden())
            label->hide();
    }
}

void ValueTree::rowsInserted(const QModelIndex &parent, int start, int end)
{
    ++batches;
    QTreeWidget::rowsInserted(parent, start, end);
    --batches;
    scheduleDelayedItemsLayout();
}

void ValueTree::updateEditorGeometries()
{
    if (batches > 0)
        return;
    ++batches;
    executeDelayedItemsLayout();
    placeLines();
    placeLabels();
    --batches;
}

void ValueTree::scrollContentsBy(int dx, int dy)
{
    // Up and down, the base class would move each of all the widgets.
    QTreeWidget::scrollContentsBy(dx, 0);
    if (dy == 0)
        return;
    viewport()->update();
    updateEditorGeometries();
}

void ValueTree::placeLines()
{
    RowPlace known;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        const QModelIndex index = model()->index(i, 0);
        if (QWidget *line = indexWidget(index))
            place(line, index, &known);
    }
}

void ValueTree::placeLabels()
{
    RowPlace known;
    QVector<QPointer<QWidget>> labelsInView;
    const int bottom = viewport()->height();
    for (QModelIndex index = indexAt(QPoint(viewport()->width() / 2, 0));
         index.isValid() && visualRect(index).top() < bottom; index = indexBelow(index)) {
        QWidget *label = index.parent().isValid() ? indexWidget(index) : nullptr;
        if (!label)
            continue;
        if (auto *bits = dynamic_cast<BitLabel *>(label))
            bits->prepare();
        place(label, index, &known);
        labelsInView.append(label);
    }
    for (const QPointer<QWidget> &label : qAsConst(shownLabels))
        if (label && !labelsInView.contains(label))
            label->hide();
    shownLabels = labelsInView;
}

void ValueTree::place(QWidget *widget, const QModelIndex &index, RowPlace *known)
{
    const QRect row = visualRect(index);
    if (!row.isValid())
        return;
    if (row.size() != known->rowSize) {
        QStyleOptionViewItem option = viewOptions();
        option.rect = row;
        itemDelegate(index)->updateEditorGeometry(widget, option, index);
        *known = {row.size(), widget->geometry().translated(-row.topLeft())};
    } else {
        widget->setGeometry(known->rect.translated(row.topLeft()));
    }
    widget->show();
}

} // namespace MOLK
