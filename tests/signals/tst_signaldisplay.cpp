// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "literalrows.h"
#include "randomitems.h"
#include "signalitems.h"

#include "signaldisplay.h"

#include "testwidgetsmain.h"

#include <QPalette>
#include <QScopedPointer>
#include <QSignalSpy>
#include <QTreeWidget>

Q_DECLARE_METATYPE(QTreeWidgetItem *)

using namespace MOLK;

class TestSignalDisplay : public QObject
{
    Q_OBJECT

private slots:
    void textToolTipAndFontFollowTheAlias();
    void colorAndFlagsFollowTheState_data();
    void colorAndFlagsFollowTheState();
    void bitRowsHaveTheirOwnLookAndCarryNothing();
    void bitsOfAnExcludedBusAreDisabled();
    void bitRowsCanBeLeftOut();
    void namedRowsReadTheGivenNamesAndCarryTheirSignals();
    void rowsReadAsIfFilledThroughSetters();
    void settersWorkOnRowsAndTouchNothingElse();
    void aSetterOfARowInATreeTellsOfOneChange();
    void clonesKeepEverything();
    void foundSignalsFollowThePalette();
    void signalsAreReadBackFromAnyRow();
};

void TestSignalDisplay::textToolTipAndFontFollowTheAlias()
{
    SignalItem item = net("top/a");
    const QScopedPointer<QTreeWidgetItem> plain(makeSignalRow(item, 0));
    QCOMPARE(plain->text(0), QString("top/a"));
    QCOMPARE(plain->toolTip(0), QString("top/a"));
    QVERIFY(!plain->data(0, Qt::FontRole).isValid());

    item.alias = "first";
    const QScopedPointer<QTreeWidgetItem> aliased(makeSignalRow(item, 0));
    QCOMPARE(aliased->text(0), QString("first"));
    QCOMPARE(aliased->toolTip(0), QString("first"));
    QCOMPARE(aliased->font(0).style(), QFont::StyleItalic);
}

void TestSignalDisplay::colorAndFlagsFollowTheState_data()
{
    QTest::addColumn<bool>("selectable");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<bool>("flagged");
    const QColor text = QApplication::palette().color(QPalette::WindowText);
    QTest::newRow("may-be-chosen") << true << true << text << true;
    QTest::newRow("not-found") << true << false << QColor(Qt::red) << true;
    QTest::newRow("excluded") << false << true << QColor(Qt::gray) << false;
    QTest::newRow("excluded-and-not-found") << false << false << QColor(Qt::gray) << false;
}

void TestSignalDisplay::colorAndFlagsFollowTheState()
{
    QFETCH(bool, selectable);
    QFETCH(bool, found);
    QFETCH(QColor, color);
    QFETCH(bool, flagged);

    SignalItem item = net("top/a");
    item.selectable = selectable;
    item.found = found;
    const QScopedPointer<QTreeWidgetItem> row(makeSignalRow(item, 0));
    QCOMPARE(row->foreground(0).color(), color);
    QCOMPARE(bool(row->flags() & Qt::ItemIsSelectable), flagged);
    QCOMPARE(bool(row->flags() & Qt::ItemIsEnabled), flagged);
}

void TestSignalDisplay::bitRowsHaveTheirOwnLookAndCarryNothing()
{
    SignalItem item = bus("top/q", 3);
    item.members[0].alias = "msb";
    item.members[1].selectable = false;
    item.members[2].found = false;
    const QScopedPointer<QTreeWidgetItem> row(makeSignalRow(item, 1002));
    QCOMPARE(row->type(), 1002);
    QCOMPARE(row->childCount(), 3);
    QCOMPARE(row->child(0)->type(), 1002);
    QCOMPARE(row->child(0)->text(0), QString("msb"));
    QCOMPARE(row->child(0)->font(0).style(), QFont::StyleItalic);
    QCOMPARE(row->child(1)->text(0), QString("top/q[1]"));
    QCOMPARE(row->child(1)->foreground(0).color(), QColor(Qt::gray));
    QVERIFY(row->child(1)->isDisabled());
    QCOMPARE(row->child(2)->foreground(0).color(), QColor(Qt::red));
    QVERIFY(!row->isDisabled());
    for (int k = 0; k < 3; ++k)
        QVERIFY(!row->child(k)->data(0, Qt::UserRole).isValid());
}

void TestSignalDisplay::bitsOfAnExcludedBusAreDisabled()
{
    SignalItem item = bus("top/q", 2);
    item.selectable = false;
    QTreeWidget tree;
    tree.addTopLevelItem(makeSignalRow(item, 0));
    const QTreeWidgetItem *bit = tree.topLevelItem(0)->child(0);
    QVERIFY(bit->isDisabled());
    QVERIFY(bit->flags() & Qt::ItemIsSelectable);
    QCOMPARE(bit->foreground(0).color(), QApplication::palette().color(QPalette::WindowText));
}

void TestSignalDisplay::bitRowsCanBeLeftOut()
{
    const QScopedPointer<QTreeWidgetItem> row(makeSignalRow(bus("q", 2), 0, BitRows::None));
    QCOMPARE(row->childCount(), 0);
    QCOMPARE(signalOfRow(row.data()).members.size(), 2);
}

void TestSignalDisplay::namedRowsReadTheGivenNamesAndCarryTheirSignals()
{
    SignalItem item = bus("top/q", 2);
    item.alias = "shown in italics, but not read";
    const QScopedPointer<QTreeWidgetItem> row(
        makeNamedSignalRow(item, {"q[1:0]", "q[1]", "q[0]"}, 0));
    QCOMPARE(row->text(0), QString("q[1:0]"));
    QCOMPARE(row->toolTip(0), QString("q[1:0]"));
    QCOMPARE(row->font(0).style(), QFont::StyleItalic);
    QCOMPARE(row->child(1)->text(0), QString("q[0]"));
    QCOMPARE(signalOfRow(row.data()).name, QString("top/q[1:0]"));
    QCOMPARE(signalOfRow(row->child(1)).name, QString("top/q[0]"));
}

void TestSignalDisplay::rowsReadAsIfFilledThroughSetters()
{
    RandomItems random(20230401);
    for (int round = 0; round < 500; ++round) {
        const QList<SignalItem> items = random.items(8);
        QTreeWidget expected;
        QTreeWidget tree;
        auto *expectedParent = new QTreeWidgetItem(&expected, 7);
        auto *parent = new QTreeWidgetItem(7);
        QList<QTreeWidgetItem *> rows{parent};
        for (const SignalItem &item : items) {
            QStringList names{"short"};
            for (const SignalItem &bit : item.members)
                names.append("bit " + bit.name);
            Literal::addNamedSignalRow(expectedParent, item, names, 3);
            parent->addChild(makeNamedSignalRow(item, names, 3));
            Literal::addSignalRow(&expected, item, 5);
            rows.append(makeSignalRow(item, 5));
        }
        tree.addTopLevelItems(rows);
        QCOMPARE(Literal::treeDump(&tree), Literal::treeDump(&expected));
    }
}

void TestSignalDisplay::settersWorkOnRowsAndTouchNothingElse()
{
    SignalItem item = bus("top/q", 2);
    item.alias = "bus";
    item.found = false;

    for (int role : {int(Qt::DisplayRole), int(Qt::EditRole), int(Qt::ToolTipRole),
                     int(Qt::ForegroundRole), int(Qt::UserRole), int(Qt::DecorationRole)}) {
        QTreeWidget expected;
        Literal::addSignalRow(&expected, item, 0);
        QTreeWidget tree;
        tree.addTopLevelItem(makeSignalRow(item, 0));

        QVariant value = "new text";
        if (role == Qt::ForegroundRole)
            value = QBrush(Qt::green);
        if (role == Qt::UserRole)
            value = signalToVariant(net("other"));
        for (QTreeWidget *each : {&expected, &tree}) {
            each->topLevelItem(0)->setData(0, role, value);
            each->topLevelItem(0)->child(1)->setData(0, role, value);
        }
        QCOMPARE(Literal::treeDump(&tree), Literal::treeDump(&expected));
        QCOMPARE(signalOfRow(tree.topLevelItem(0)).name,
                 signalOfRow(expected.topLevelItem(0)).name);
    }
}

void TestSignalDisplay::aSetterOfARowInATreeTellsOfOneChange()
{
    qRegisterMetaType<QTreeWidgetItem *>("QTreeWidgetItem*");
    QTreeWidget tree;
    tree.addTopLevelItem(makeSignalRow(net("a"), 0));
    QSignalSpy changed(&tree, SIGNAL(itemChanged(QTreeWidgetItem *, int)));
    tree.topLevelItem(0)->setText(0, "b");
    QCOMPARE(changed.count(), 1);
    tree.topLevelItem(0)->setText(0, "b");
    QCOMPARE(changed.count(), 1);
}

void TestSignalDisplay::clonesKeepEverything()
{
    RandomItems random(20230402);
    for (int round = 0; round < 200; ++round) {
        SignalItem item = random.item();
        item.selectable = true;
        QTreeWidget tree;
        tree.addTopLevelItem(makeSignalRow(item, 0));
        if (random.oneIn(3))
            tree.topLevelItem(0)->setText(0, "set");
        tree.addTopLevelItem(tree.topLevelItem(0)->clone());
        QCOMPARE(Literal::rowDump(tree.topLevelItem(1)), Literal::rowDump(tree.topLevelItem(0)));
    }
}

void TestSignalDisplay::foundSignalsFollowThePalette()
{
    const QScopedPointer<QTreeWidgetItem> row(makeSignalRow(net("a"), 0));
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::WindowText, QColor(1, 2, 3));
    QApplication::setPalette(dark);
    QCOMPARE(row->foreground(0).color(), QColor(1, 2, 3));
    QApplication::setPalette(before);
}

void TestSignalDisplay::signalsAreReadBackFromAnyRow()
{
    QTreeWidgetItem foreign;
    QVERIFY(!carriesSignal(&foreign));
    QCOMPARE(Literal::itemDump(signalOfRow(&foreign)), Literal::itemDump(SignalItem()));
    foreign.setData(0, Qt::UserRole, "a text");
    QVERIFY(!carriesSignal(&foreign));
    QCOMPARE(signalOfRow(&foreign).kind, -1);
    foreign.setData(0, Qt::UserRole, signalToVariant(net("top/a")));
    QVERIFY(carriesSignal(&foreign));
    QCOMPARE(signalOfRow(&foreign).name, QString("top/a"));

    const QScopedPointer<QTreeWidgetItem> row(makeSignalRow(bus("q", 2), 0));
    QVERIFY(carriesSignal(row.data()));
    QVERIFY(!carriesSignal(row->child(0)));
    QCOMPARE(signalOfRow(row->child(0)).name, QString(""));
}

MOLK_TEST_MAIN(TestSignalDisplay)

#include "tst_signaldisplay.moc"
