// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "valuetree.h"

#include "bitlabel.h"

#include <QAbstractItemDelegate>
#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>

namespace MOLK {

// As long as a view port can be panned by touch, each event of each widget in it is searched for
// the beginning of a gesture. Labels that come and go by the thousand do without that.
static void suspendPanning(QWidget *viewport)
{
    viewport->ungrabGesture(Qt::PanGesture);
}

static void resumePanning(QWidget *viewport)
{
    viewport->grabGesture(Qt::PanGesture);
}

ValueTree::Batch::Batch(ValueTree *valueTree)
    : tree(valueTree)
{
    ++tree->batches;

    // With a layout pending, the base class leaves the geometry of single rows alone.
    tree->scheduleDelayedItemsLayout();
    suspendPanning(tree->viewport());
}

ValueTree::Batch::~Batch()
{
    resumePanning(tree->viewport());
    tree->endBatch();
}

namespace {

// Deletes labels when the event loop turns, all in one event.
class LabelBin : public QObject
{
public:
    LabelBin(const QList<QLabel *> &released, QAbstractScrollArea *tree)
        : QObject(tree)
        , viewport(tree->viewport())
    {
        labels.reserve(released.size());
        for (QLabel *label : released)
            labels.append(label);
        deleteLater();
    }

    ~LabelBin() override
    {
        if (viewport)
            suspendPanning(viewport);
        for (const QPointer<QLabel> &label : qAsConst(labels))
            delete label;
        if (viewport)
            resumePanning(viewport);
    }

private:
    QPointer<QWidget> viewport;
    QVector<QPointer<QLabel>> labels;
};

} // namespace

ValueTree::ValueTree(QWidget *parent)
    : QTreeWidget(parent)
{
    setUniformRowHeights(true);
}

ValueTree::~ValueTree()
{
    suspendPanning(viewport());

    // A line takes its labels along, so that it must go ahead of them; one whose row is gone
    // already may still wait for the event loop.
    qDeleteAll(viewport()->findChildren<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly));
}

void ValueTree::expandSoon(QTreeWidgetItem *row)
{
    if (!row || row->isExpanded())
        return;
    scheduleDelayedItemsLayout();
    expandItem(row);
}

void ValueTree::setLabels(QTreeWidgetItem *row, int first, const QList<QLabel *> &labels)
{
    linesAreBelow = true;
    const QModelIndex parent = indexFromItem(row);
    for (int i = 0; i < labels.size(); ++i) {
        // Each look-up of a widget makes a persistent index, unless there is one already.
        const QPersistentModelIndex index = model()->index(first + i, 0, parent);
        setIndexWidget(index, labels.at(i));
    }
}

void ValueTree::releaseLabels(const QList<QLabel *> &labels)
{
    // Removing the rows would go through all widgets of the tree for each row, and
    // removeItemWidget() would look each label up by its row three times.
    for (QLabel *label : labels) {
        editorDestroyed(label);
        label->removeEventFilter(this);
        if (!label->isHidden())
            label->hide();
    }
    new LabelBin(labels, this);
}

bool ValueTree::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ChildAdded:
    case QEvent::ChildRemoved:
        // Nothing in the tree asks for these, and each label that comes or goes sends one through
        // all who might.
        return true;
    case QEvent::WindowBlocked:
    case QEvent::WindowUnblocked:
        // A dialog that opens or closes sends one through all widgets of the windows beside it. A
        // label out of view has no input that could be blocked.
        sendToWidgetsInUse(event);
        return true;
    default:
        return QTreeWidget::viewportEvent(event);
    }
}

void ValueTree::sendToWidgetsInUse(QEvent *event)
{
    for (int i = 0; i < topLevelItemCount(); ++i)
        if (QWidget *line = itemWidget(topLevelItem(i), 0))
            QCoreApplication::sendEvent(line, event);
    const QVector<QPointer<QWidget>> labels = shownLabels;
    for (const QPointer<QWidget> &label : labels)
        if (label)
            QCoreApplication::sendEvent(label, event);
}

void ValueTree::endBatch()
{
    if (--batches == 0 && linesAreBelow)
        raiseLines();
}

void ValueTree::raiseLines()
{
    // Painting a widget goes over all that lie above it. In tens of thousands of hidden labels that
    // takes most of the time, so what is shown lies on top of them.
    linesAreBelow = false;
    for (int i = 0; i < topLevelItemCount(); ++i)
        if (QWidget *line = itemWidget(topLevelItem(i), 0))
            line->raise();
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
    QRect row = visualRect(model()->index(0, 0));
    for (int i = 0; i < topLevelItemCount(); ++i) {
        const QModelIndex index = model()->index(i, 0);

        // All rows are of one height, and asking for a place searches all rows for it.
        if (QWidget *line = indexWidget(index)) {
            place(line, index, row, &known);
            if (line->isHidden())
                line->show();
        }
        const int rows = 1 + (isExpanded(index) ? model()->rowCount(index) : 0);
        row.translate(0, rows * row.height());
    }
}

void ValueTree::placeLabels()
{
    RowPlace known;
    QVector<QPointer<QWidget>> labelsInView;
    const int bottom = viewport()->height();
    for (QModelIndex index = indexAt(QPoint(viewport()->width() / 2, 0)); index.isValid();
         index = indexBelow(index)) {
        const QRect row = visualRect(index);
        if (row.top() >= bottom)
            break;
        QWidget *label = index.parent().isValid() ? indexWidget(index) : nullptr;
        if (!label)
            continue;
        if (auto *bits = dynamic_cast<BitLabel *>(label))
            bits->prepare();
        place(label, index, row, &known);
        if (label->isHidden()) {
            label->show();
            label->raise();
        }
        labelsInView.append(label);
    }
    for (const QPointer<QWidget> &label : qAsConst(shownLabels)) {
        if (!label || labelsInView.contains(label))
            continue;
        label->hide();
        label->lower();
    }
    shownLabels = labelsInView;
}

void ValueTree::place(QWidget *widget, const QModelIndex &index, const QRect &row, RowPlace *known)
{
    if (!row.isValid())
        return;
    if (row.size() != known->rowSize) {
        QStyleOptionViewItem option = viewOptions();
        option.rect = row;
        itemDelegate(index)->updateEditorGeometry(widget, option, index);
        *known = {row.size(), widget->geometry().translated(-row.topLeft())};
        return;
    }
    const QRect place = known->rect.translated(row.topLeft());
    if (widget->geometry() != place)
        widget->setGeometry(place);
}

} // namespace MOLK
