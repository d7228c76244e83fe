// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointer>
#include <QTreeWidget>
#include <QVector>

class QLabel;

namespace MOLK {

/// The tree of initial values: a line on each top-level row, a label on each row below.
///
/// It behaves as a QTreeWidget, its class name included, but bears tens of thousands of rows with
/// labels. Where the base class lays all rows out for each row that comes in, and places and shows
/// all widgets whether they are in view or not, this one lays out once, and places the lines and
/// only those labels that are in view; the others are hidden. Lines are never hidden for being out
/// of view: one of them may have the focus, and would commit its value. What a window tells all its
/// widgets when a dialog opens or closes goes to the lines and to the labels in view alone.
///
/// All rows are as high as the first one, and none may be hidden.
class ValueTree : public QTreeWidget
{
public:
    explicit ValueTree(QWidget *parent = nullptr);
    ~ValueTree() override;

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

    /// As expandItem(), but the rows are laid out later, once for all that are unfolded until then:
    /// when the event loop turns, at a call of updateEditorGeometries(), or when somebody asks for
    /// the place of a row.
    ///
    /// \param row nothing happens if it is null.
    void expandSoon(QTreeWidgetItem *row);

    /// Makes each of \a labels the widget of a row below \a row, from its child \a first on in
    /// order. There must be as many rows, without widgets so far.
    void setLabels(QTreeWidgetItem *row, int first, const QList<QLabel *> &labels);

    /// Lets go of labels that are the widgets of rows, as the removal of those rows would: they are
    /// hidden at once and deleted when the event loop turns. It makes the removal itself cheap.
    void releaseLabels(const QList<QLabel *> &labels);

protected:
    bool viewportEvent(QEvent *event) override;
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

    void sendToWidgetsInUse(QEvent *event);
    void endBatch();
    void raiseLines();
    void placeLines();
    void placeLabels();
    void place(QWidget *widget, const QModelIndex &index, const QRect &row, RowPlace *known);

    int batches = 0;
    bool linesAreBelow = false;
    QVector<QPointer<QWidget>> shownLabels;
};

} // namespace MOLK
