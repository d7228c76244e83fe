// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "signalitems.h"

#include "probedialog.h"
#include "probein.h"
#include "signaltree.h"
#include "signaltreewidget.h"

#include "testwidgetsmain.h"
#include "treelines.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QWindow>

using namespace MOLK;

/// Drags rows with the mouse, through the drag machinery of the view and of Qt.
class TestSignalTreeWidgetDrag : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aRowIsMovedToTheEnd();
    void aRowIsMovedOverAnother_data();
    void aRowIsMovedOverAnother();
    void aBlockIsMovedToTheEndWithoutLosses();
    void selectedBitsOfOtherBusesStay();
    void bitRowsCannotBeDragged();
    void excludedRowsCannotBeDragged();
    void otherButtonsDragNothing();
    void aDropOnABitRowChangesNothing();
    void theNewOrderReachesThePortOnOk();
    void theNewOrderIsLostOnCancel();
};

// The offscreen platform drops drags; this one runs them, without a display either.
static const bool platformIsSet = qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");

namespace {

class Tree : public signalTreeWidget
{
public:
    explicit Tree(const QList<SignalItem> &items)
    {
        setDragDropMode(QAbstractItemView::InternalMove);
        setSelectionMode(QAbstractItemView::ExtendedSelection);
        setStyleSheet("QTreeWidget::item { height: 20px;}");
        addSignalRows(this, items, 0);
        expandAll();
        resize(300, 400);
        show();
    }
};

} // namespace

static QTreeWidgetItem *rowOf(const QTreeWidget *tree, const QString &text)
{
    return tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive).first();
}

static QPoint inWindow(const QTreeWidget *tree, const QPoint &place)
{
    return tree->viewport()->mapTo(tree->window(), place);
}

// Drags from the row that reads `from` to `to` in the viewport. The second move starts the drag and
// with it a nested event loop, in which the timers go on. Each is one of its own, since a timer
// doesn't fire again while its own slot runs.
static void drag(QTreeWidget *tree, const QString &from, const QPoint &to,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                 Qt::MouseButton button = Qt::LeftButton)
{
    QWindow *window = tree->window()->windowHandle();
    const QPoint start = inWindow(tree, tree->visualItemRect(rowOf(tree, from)).center());
    const QPoint goal = inWindow(tree, to);
    QTest::mousePress(window, button, modifiers, start);
    QTest::mouseMove(window, start + QPoint(1, 0));
    bool released = false;
    QTimer::singleShot(0, [=] { QTest::mouseMove(window, goal - QPoint(0, 1)); });
    QTimer::singleShot(0, [=] { QTest::mouseMove(window, goal); });
    QTimer::singleShot(0, [&, button] {
        QTest::mouseRelease(window, button, Qt::NoModifier, goal);
        released = true;
    });
    QTest::mouseMove(window, start + QPoint(QApplication::startDragDistance() + 2, 0));
    QTRY_VERIFY(released);
}

static QPoint onRow(const QTreeWidget *tree, const QString &text, int offset)
{
    return tree->visualItemRect(rowOf(tree, text)).topLeft() + QPoint(10, offset);
}

static const QPoint emptySpace(20, 330);

void TestSignalTreeWidgetDrag::initTestCase()
{
    QVERIFY(platformIsSet);
    QCOMPARE(QGuiApplication::platformName(), QString("minimal"));
}

void TestSignalTreeWidgetDrag::aRowIsMovedToTheEnd()
{
    Tree tree({net("a"), bus("q", 2), net("b")});
    QSignalSpy dragged(&tree, SIGNAL(itemDragged()));
    drag(&tree, "a", emptySpace);
    QCOMPARE(treeLines(tree.model()), QStringList({"q[1:0]", "  q[1]", "  q[0]", "b", "a"}));
    QCOMPARE(dragged.count(), 1);

    drag(&tree, "q[1:0]", emptySpace);
    QCOMPARE(treeLines(tree.model()), QStringList({"b", "a", "q[1:0]", "  q[1]", "  q[0]"}));
}

void TestSignalTreeWidgetDrag::aRowIsMovedOverAnother_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("upper-half") << 4 << QStringList{"c", "a", "b", "d"};
    QTest::newRow("lower-half") << 16 << QStringList{"a", "c", "b", "d"};
}

void TestSignalTreeWidgetDrag::aRowIsMovedOverAnother()
{
    QFETCH(int, offset);
    QFETCH(QStringList, lines);
    Tree tree({net("a"), net("b"), net("c"), net("d")});
    drag(&tree, "c", onRow(&tree, "a", offset));
    QCOMPARE(treeLines(tree.model()), lines);
}

// The selection is one range from B to D with the excluded row inside it.
void TestSignalTreeWidgetDrag::aBlockIsMovedToTheEndWithoutLosses()
{
    SignalItem gray = net("gray");
    gray.selectable = false;
    Tree tree({net("a"), bus("q", 3), gray, net("d"), net("e")});
    const auto click = [&tree](const QString &text, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, modifiers,
                          tree.visualItemRect(rowOf(&tree, text)).center());
    };
    click("q[2:0]", Qt::NoModifier);
    click("d", Qt::ShiftModifier);
    drag(&tree, "d", emptySpace);
    QCOMPARE(treeLines(tree.model()),
             QStringList({"a", "gray", "e", "q[2:0]", "  q[2]", "  q[1]", "  q[0]", "d"}));
}

void TestSignalTreeWidgetDrag::selectedBitsOfOtherBusesStay()
{
    Tree tree({net("a"), bus("q", 3), net("b")});
    rowOf(&tree, "q[1]")->setSelected(true);
    rowOf(&tree, "a")->setSelected(true);
    tree.setCurrentItem(rowOf(&tree, "a"), 0, QItemSelectionModel::NoUpdate);
    drag(&tree, "a", emptySpace);
    QCOMPARE(treeLines(tree.model()),
             QStringList({"q[2:0]", "  q[2]", "  q[1]", "  q[0]", "b", "a"}));
}

void TestSignalTreeWidgetDrag::bitRowsCannotBeDragged()
{
    Tree tree({net("a"), bus("q", 2), net("b")});
    const QStringList before = treeLines(tree.model());
    QSignalSpy dragged(&tree, SIGNAL(itemDragged()));
    drag(&tree, "q[1]", emptySpace);
    QCOMPARE(treeLines(tree.model()), before);
    drag(&tree, "q[0]", onRow(&tree, "a", 3));
    QCOMPARE(treeLines(tree.model()), before);
    QCOMPARE(dragged.count(), 0);
}

void TestSignalTreeWidgetDrag::excludedRowsCannotBeDragged()
{
    SignalItem gray = net("gray");
    gray.selectable = false;
    Tree tree({gray, net("a"), net("b")});
    drag(&tree, "gray", emptySpace);
    QCOMPARE(treeLines(tree.model()), QStringList({"gray", "a", "b"}));
}

void TestSignalTreeWidgetDrag::otherButtonsDragNothing()
{
    Tree tree({net("a"), net("b")});
    for (Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        drag(&tree, "a", emptySpace, Qt::NoModifier, button);
        QCOMPARE(treeLines(tree.model()), QStringList({"a", "b"}));
    }
}

void TestSignalTreeWidgetDrag::aDropOnABitRowChangesNothing()
{
    Tree tree({net("a"), bus("q", 2), net("b")});
    const QStringList before = treeLines(tree.model());
    drag(&tree, "a", onRow(&tree, "q[0]", 5));
    QCOMPARE(treeLines(tree.model()), before);
    drag(&tree, "b", onRow(&tree, "b", 15));
    QCOMPARE(treeLines(tree.model()), before);
}

static void dragAndPress(ProbeIn *port, QDialogButtonBox::StandardButton button)
{
    ProbeDialog dialog(port, nullptr, 0, nullptr);
    dialog.show();
    auto *tree = dialog.findChild<QTreeWidget *>("treeWidget");
    drag(tree, "c", onRow(tree, "a", 3));
    drag(tree, "b", QPoint(20, 250));
    QTest::mouseClick(dialog.findChild<QDialogButtonBox *>("buttonBox")->button(button),
                      Qt::LeftButton);
}

void TestSignalTreeWidgetDrag::theNewOrderReachesThePortOnOk()
{
    ProbeIn port(0);
    port.setSignalNet({net("a"), net("b"), bus("q", 2), net("c")});
    dragAndPress(&port, QDialogButtonBox::Ok);
    QCOMPARE(itemNames(port.getSignalNet()), QStringList({"c", "a", "q[1:0]{q[1] q[0]}", "b"}));
}

void TestSignalTreeWidgetDrag::theNewOrderIsLostOnCancel()
{
    ProbeIn port(0);
    port.setSignalNet({net("a"), net("b"), net("c")});
    dragAndPress(&port, QDialogButtonBox::Cancel);
    QCOMPARE(itemNames(port.getSignalNet()), QStringList({"a", "b", "c"}));
}

MOLK_TEST_MAIN(TestSignalTreeWidgetDrag)

#include "tst_signaltreewidget_drag.moc"
