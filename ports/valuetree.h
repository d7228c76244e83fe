// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointer>
#include <QTreeWidget>
#include <QVector>

namespace MOLK {

/// The tree of initial values: a line on each top-level row, a label on each row below.
///
/// It behaves as a QTreeWidget, its class name included, but bears tens of thousands of rows with
/// labels. Where the base class lays all rows out for each row that comes in, and places and shows
/// all widgets whether they are in view or not, this one lays out once, and places the lines and
/// only those labels that are in view; the others are hidden. Lines are never hidden for being out
/// of view: one of them may have the focus, and would commit its value.
///
/// All rows are as high as the first one.
class ValueTree : public QTreeWidget
{
public:
    explicit ValueTree(QWidget *parent = nullptr);

    /// While it lives, rows and labels come and go without anything being laid out. Afterwards all
    /// is laid out once.
    class Batch
    {
    public:
        explicit Batch(ValueTree *valueTree);
        ~Batch();
        Q_DISABLE_COPY(Batch)

    private:
        ValueTree *tree;
    };

    /// Lets go of the labels on the rows below \a row, as the removal of those rows would: they are
    /// hidden at once and deleted when the event loop turns. It makes the removal itself cheap.
    void releaseLabels(QTreeWidgetItem *row);

protected:
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void updateEditorGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // The rectangle that a widget takes of its row, seen from the corner of the row. It is the same
    // for all rows of one size, and asking the style for it is what costs most.
    struct RowPlace
    {
        QSize rowSize;
        QRect rect;
    };

    void placeLines();
    void placeLabels();
    void place(QWidget *widget, const QModelIndex &index, RowPlace *known);

    int batches = 0;
    QVector<QPointer<QWidget>> shownLabels;
};

} // namespace MOLK
