// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "literalrows.h"
#include "signalitems.h"

#include "signaltree.h"
#include "signaltreewidget.h"

#include "testwidgetsmain.h"
#include "treelines.h"

#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalSpy>

using namespace MOLK;

class TestSignalTreeWidget : public QObject
{
    Q_OBJECT

private slots:
    void onlyTheLeftButtonSelects();
    void dropsLandBesideTheTarget_data();
    void dropsLandBesideTheTarget();
    void dropsOnEmptySpaceAppendCopies();
    void dropsOnEmptySpaceLeaveJustTheMovedRowsSelected();
    void dropsOnBitOrSelectedRowsChangeNothing_data();
    void dropsOnBitOrSelectedRowsChangeNothing();
    void selectedBitRowsDoNotMove();
    void movedRowsKeepTheirLookAndBits();
    void manyRowsMoveAsOneBlock();
};

namespace {

class Tree : public signalTreeWidget
{
public:
    Tree()
    {
        setDragDropMode(QAbstractItemView::InternalMove);
        setSelectionMode(QAbstractItemView::ExtendedSelection);
        setStyleSheet("QTreeWidget::item { height: 20px;}");
        resize(300, 400);
        show();
    }

    void select(const QStringList &texts)
    {
        clearSelection();
        for (const QString &text : texts)
            findItems(text, Qt::MatchExactly | Qt::MatchRecursive).first()->setSelected(true);
    }

    /// Drops at `place`. The event isn't accepted beforehand, as drops come to a view.
    void dropAt(const QPoint &place)
    {
        QMimeData nothing;
        QDropEvent event(place, Qt::MoveAction | Qt::CopyAction, &nothing, Qt::LeftButton,
                         Qt::NoModifier);
        event.ignore();
        dropEvent(&event);
        accepted = event.isAccepted();
        action = event.dropAction();
    }

    /// `offset` counts from the upper edge of the row that reads `text`.
    void dropOn(const QString &text, int offset)
    {
        QTreeWidgetItem *row = findItems(text, Qt::MatchExactly | Qt::MatchRecursive).first();
        dropAt(visualItemRect(row).topLeft() + QPoint(5, offset));
    }

    QStringList topLines() const
    {
        QStringList lines;
        for (int i = 0; i < topLevelItemCount(); ++i)
            lines.append(topLevelItem(i)->text(0));
        return lines;
    }

    bool accepted = false;
    Qt::DropAction action = Qt::IgnoreAction;
};

} // namespace

static QList<SignalItem> nets(const QStringList &names)
{
    QList<SignalItem> items;
    for (const QString &name : names)
        items.append(net(name));
    return items;
}

void TestSignalTreeWidget::onlyTheLeftButtonSelects()
{
    Tree tree;
    addSignalRows(&tree, nets({"a", "b"}), 0);
    const QPoint place = tree.visualItemRect(tree.topLevelItem(1)).center();
    for (Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        QMouseEvent press(QEvent::MouseButtonPress, place, button, button, Qt::NoModifier);
        QApplication::sendEvent(tree.viewport(), &press);
        QVERIFY(tree.selectedItems().isEmpty());
    }
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(tree.selectedItems().size(), 1);
}

void TestSignalTreeWidget::dropsLandBesideTheTarget_data()
{
    QTest::addColumn<QStringList>("moved");
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("upper-half") << QStringList{"e"} << "b" << 9
                                << QStringList{"a", "e", "b", "c", "d", "f"};
    QTest::newRow("exactly-half-goes-below")
        << QStringList{"e"} << "b" << 10 << QStringList{"a", "b", "e", "c", "d", "f"};
    QTest::newRow("lower-half") << QStringList{"a"} << "c" << 19
                                << QStringList{"b", "c", "a", "d", "e", "f"};
    QTest::newRow("upper-edge-of-the-first")
        << QStringList{"f"} << "a" << 0 << QStringList{"f", "a", "b", "c", "d", "e"};
    QTest::newRow("lower-half-of-the-last")
        << QStringList{"a", "c"} << "f" << 15 << QStringList{"b", "d", "e", "f", "a", "c"};
    QTest::newRow("three-apart-as-a-block")
        << QStringList{"f", "a", "c"} << "e" << 3 << QStringList{"b", "d", "a", "c", "f", "e"};
    QTest::newRow("to-where-it-stands")
        << QStringList{"b"} << "a" << 15 << QStringList{"a", "b", "c", "d", "e", "f"};
}

void TestSignalTreeWidget::dropsLandBesideTheTarget()
{
    QFETCH(QStringList, moved);
    QFETCH(QString, target);
    QFETCH(int, offset);
    QFETCH(QStringList, lines);
    Tree tree;
    addSignalRows(&tree, nets({"a", "b", "c", "d", "e", "f"}), 0);
    tree.select(moved);
    QSignalSpy dragged(&tree, SIGNAL(itemDragged()));
    tree.dropOn(target, offset);
    QCOMPARE(tree.topLines(), lines);
    QCOMPARE(dragged.count(), 1);
    // Unaccepted, so that the view removes nothing more.
    QVERIFY(!tree.accepted);
    QCOMPARE(tree.action, Qt::CopyAction);
}

void TestSignalTreeWidget::dropsOnEmptySpaceAppendCopies()
{
    Tree tree;
    addSignalRows(&tree, nets({"a", "b", "c"}), 0);
    tree.select({"c", "a"});
    QSignalSpy dragged(&tree, SIGNAL(itemDragged()));
    tree.dropAt(QPoint(20, 300));
    // The view takes the old rows away when the drag ends.
    QCOMPARE(tree.topLines(), QStringList({"a", "b", "c", "a", "c"}));
    QVERIFY(tree.accepted);
    QCOMPARE(tree.action, Qt::MoveAction);
    QCOMPARE(dragged.count(), 1);
}

void TestSignalTreeWidget::dropsOnEmptySpaceLeaveJustTheMovedRowsSelected()
{
    Tree tree;
    SignalItem gray = net("gray");
    gray.selectable = false;
    addSignalRows(&tree, {net("a"), bus("q", 2), gray, net("b"), bus("r", 2)}, 0);
    tree.expandAll();
    tree.selectAll();
    tree.findItems("r[1:0]", Qt::MatchExactly).first()->setSelected(false);
    tree.dropAt(QPoint(20, 350));
    QCOMPARE(tree.topLines(),
             QStringList({"a", "q[1:0]", "gray", "b", "r[1:0]", "a", "q[1:0]", "b"}));
    QStringList rows;
    for (const QItemSelectionRange &range : tree.selectionModel()->selection()) {
        QVERIFY(!range.parent().isValid());
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(tree.topLevelItem(row)->text(0));
    }
    rows.sort();
    QCOMPARE(rows, QStringList({"a", "b", "q[1:0]"}));
}

void TestSignalTreeWidget::dropsOnBitOrSelectedRowsChangeNothing_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("bit-row") << "q[1]";
    QTest::newRow("selected-row") << "a";
    QTest::newRow("other-selected-row") << "q[1:0]";
}

void TestSignalTreeWidget::dropsOnBitOrSelectedRowsChangeNothing()
{
    QFETCH(QString, target);
    Tree tree;
    addSignalRows(&tree, {net("a"), bus("q", 2), net("b")}, 0);
    tree.expandAll();
    tree.select({"a", "q[1:0]"});
    const QList<QTreeWidgetItem *> selected = tree.selectedItems();
    QSignalSpy dragged(&tree, SIGNAL(itemDragged()));
    tree.dropOn(target, 3);
    QCOMPARE(tree.topLines(), QStringList({"a", "q[1:0]", "b"}));
    QCOMPARE(tree.selectedItems(), selected);
    QVERIFY(tree.accepted);
    QCOMPARE(tree.action, Qt::IgnoreAction);
    QCOMPARE(dragged.count(), 0);
}

void TestSignalTreeWidget::selectedBitRowsDoNotMove()
{
    Tree tree;
    addSignalRows(&tree, {net("a"), bus("q", 2), net("b")}, 0);
    tree.expandAll();
    tree.select({"b", "q[1]"});
    tree.dropOn("a", 2);
    QCOMPARE(treeLines(tree.model()), QStringList({"b", "a", "q[1:0]", "  q[1]", "  q[0]"}));
}

void TestSignalTreeWidget::movedRowsKeepTheirLookAndBits()
{
    SignalItem item = bus("q", 3);
    item.alias = "the bus";
    item.found = false;
    item.members[0].selectable = false;
    item.members[1].found = false;
    item.members[2].alias = "lsb";
    Tree tree;
    addSignalRows(&tree, {item, net("a"), net("b")}, 0);
    const QStringList before = Literal::rowDump(tree.topLevelItem(0));
    tree.select({"the bus"});
    tree.dropOn("a", 15);
    QCOMPARE(tree.topLines(), QStringList({"a", "the bus", "b"}));
    QCOMPARE(Literal::rowDump(tree.topLevelItem(1)), before);
}

void TestSignalTreeWidget::manyRowsMoveAsOneBlock()
{
    Tree tree;
    QStringList names;
    for (int i = 0; i < 256; ++i)
        names.append(QString("n%1").arg(i));
    addSignalRows(&tree, nets(names), 0);
    QStringList odd;
    QStringList even;
    for (int i = 1; i < 256; ++i)
        (i % 2 ? odd : even).append(names.at(i));
    tree.select(odd);
    tree.dropOn("n0", 2);
    QCOMPARE(tree.topLines(), odd + QStringList("n0") + even);
}

MOLK_TEST_MAIN(TestSignalTreeWidget)

#include "tst_signaltreewidget.moc"
