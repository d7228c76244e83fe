// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "pagefixture.h"
#include "portrows.h"
#include "signaldisplay.h"
#include "testwidgetsmain.h"
#include "treelines.h"

#include <QLabel>

using namespace MOLK;

class tst_PortRows : public QObject
{
    Q_OBJECT

private slots:
    void probeInBusGetsARowForEachBit();
    void probeOutBusStaysOneRow();
    void onlySignalRowsCarryTheirSignal();
    void aliasIsShownInItalics();
    void rowsTellWhatMayBeChosen_data();
    void rowsTellWhatMayBeChosen();
    void bitsOfAProbeInTellForThemselves();
    void withoutAParentNothingHappens();
    void valueRowTakesItsBitsFromTheFront();
    void valueRowFillsUpWithZeros();
    void valueRowWithoutALineStillShowsItsBits();
};

static QTreeWidgetItem *addPortRow(QTreeWidget *tree)
{
    auto *row = new QTreeWidgetItem(PortRowType);
    tree->addTopLevelItem(row);
    return row;
}

void tst_PortRows::probeInBusGetsARowForEachBit()
{
    QTreeWidget tree;
    QTreeWidgetItem *port = addPortRow(&tree);
    addProbeInSignalRow(port, net("top/a"), SignalRowType);
    addProbeInSignalRow(port, bus("top/q", 3), SignalRowType);

    QCOMPARE(treeLines(tree.model()),
             QStringList(
                 {"", "  top/a", "  top/q[2:0]", "    top/q[2]", "    top/q[1]", "    top/q[0]"}));
    QCOMPARE(port->child(1)->type(), 1002);
    QCOMPARE(port->child(1)->child(2)->type(), 1002);
    QCOMPARE(port->child(1)->toolTip(0), QString("top/q[2:0]"));
    QCOMPARE(port->child(1)->child(0)->toolTip(0), QString("top/q[2]"));
}

void tst_PortRows::probeOutBusStaysOneRow()
{
    QTreeWidget tree;
    QTreeWidgetItem *port = addPortRow(&tree);
    addProbeOutSignalRow(port, net("top/a"), SignalRowType);
    addProbeOutSignalRow(port, bus("top/q", 3), SignalRowType);

    QCOMPARE(treeLines(tree.model()), QStringList({"", "  top/a", "  top/q[2:0]"}));
    QCOMPARE(port->child(1)->type(), 1002);
    QCOMPARE(signalOfRow(port->child(1)).members.size(), 3);
}

void tst_PortRows::onlySignalRowsCarryTheirSignal()
{
    QTreeWidget tree;
    QTreeWidgetItem *port = addPortRow(&tree);
    addProbeInSignalRow(port, bus("top/q", 2), SignalRowType);

    const QVariant carried = port->child(0)->data(0, Qt::UserRole);
    QCOMPARE(QByteArray(carried.typeName()), QByteArray("MOLK::SignalItem"));
    QCOMPARE(signalFromVariant(carried).name, QString("top/q[1:0]"));
    QVERIFY(!port->child(0)->child(0)->data(0, Qt::UserRole).isValid());
    QVERIFY(!port->data(0, Qt::UserRole).isValid());
}

void tst_PortRows::aliasIsShownInItalics()
{
    SignalItem item = bus("top/q", 2);
    item.alias = "state";
    item.members[1].alias = "ready";
    QTreeWidget tree;
    QTreeWidgetItem *port = addPortRow(&tree);
    addProbeInSignalRow(port, item, SignalRowType);
    addProbeOutSignalRow(port, item, SignalRowType);

    QCOMPARE(treeLines(tree.model()),
             QStringList({"", "  state", "    top/q[1]", "    ready", "  state"}));
    QVERIFY(port->child(0)->font(0).italic());
    QVERIFY(!port->child(0)->child(0)->font(0).italic());
    QVERIFY(port->child(0)->child(1)->font(0).italic());
    QVERIFY(port->child(1)->font(0).italic());
    QCOMPARE(port->child(1)->toolTip(0), QString("state"));
}

void tst_PortRows::rowsTellWhatMayBeChosen_data()
{
    QTest::addColumn<bool>("selectable");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QColor>("color");

    const QColor text = QApplication::palette().color(QPalette::WindowText);
    QTest::newRow("may-be-chosen") << true << true << text;
    QTest::newRow("not-found") << true << false << QColor(Qt::red);
    QTest::newRow("may-not-be-chosen") << false << true << QColor(Qt::gray);
    QTest::newRow("may-not-be-chosen-nor-found") << false << false << QColor(Qt::gray);
}

void tst_PortRows::rowsTellWhatMayBeChosen()
{
    QFETCH(bool, selectable);
    QFETCH(bool, found);
    QFETCH(QColor, color);

    SignalItem item = net("top/a");
    item.selectable = selectable;
    item.found = found;
    QTreeWidget tree;
    QTreeWidgetItem *port = addPortRow(&tree);
    addProbeInSignalRow(port, item, SignalRowType);
    addProbeOutSignalRow(port, item, SignalRowType);

    for (int i = 0; i < 2; ++i) {
        const QTreeWidgetItem *row = port->child(i);
        QCOMPARE(row->foreground(0).color(), color);
        QCOMPARE(bool(row->flags() & Qt::ItemIsSelectable), selectable);
        QCOMPARE(bool(row->flags() & Qt::ItemIsEnabled), selectable);
    }
}

void tst_PortRows::bitsOfAProbeInTellForThemselves()
{
    SignalItem item = bus("top/q", 3);
    item.members[0].selectable = false;
    item.members[2].found = false;
    QTreeWidget tree;
    QTreeWidgetItem *port = addPortRow(&tree);
    addProbeInSignalRow(port, item, SignalRowType);

    const QTreeWidgetItem *row = port->child(0);
    QVERIFY(row->flags() & Qt::ItemIsEnabled);
    QCOMPARE(row->child(0)->foreground(0).color(), QColor(Qt::gray));
    QVERIFY(!(row->child(0)->flags() & Qt::ItemIsSelectable));
    QVERIFY(row->child(1)->flags() & Qt::ItemIsSelectable);
    QCOMPARE(row->child(2)->foreground(0).color(), QColor(Qt::red));
}

void tst_PortRows::withoutAParentNothingHappens()
{
    QTreeWidget tree;
    QString bits = "101";
    InitialValueLine line(0, nullptr, nullptr);
    addProbeInSignalRow(nullptr, net("top/a"), SignalRowType);
    addProbeOutSignalRow(nullptr, net("top/a"), SignalRowType);
    addValueRow(&tree, nullptr, net("top/a"), bits, &line, SignalRowType);

    QCOMPARE(bits, QString("101"));
    QVERIFY(line.labels.isEmpty());
    QVERIFY(treeLines(tree.model()).isEmpty());
}

void tst_PortRows::valueRowTakesItsBitsFromTheFront()
{
    QTreeWidget tree;
    QTreeWidgetItem *port = addPortRow(&tree);
    auto *line = new InitialValueLine(0, nullptr, nullptr);
    tree.setItemWidget(port, 0, line);
    QString bits = "11010";
    addValueRow(&tree, port, bus("top/q", 3), bits, line, SignalRowType);
    QCOMPARE(bits, QString("10"));
    addValueRow(&tree, port, net("top/a"), bits, line, SignalRowType);
    QCOMPARE(bits, QString("0"));

    QCOMPARE(line->bitString(), QString("1101"));
    for (int i = 0; i < 2; ++i) {
        const QTreeWidgetItem *row = port->child(i);
        QCOMPARE(row->type(), 1002);
        QCOMPARE(row->text(0), QString());
        QVERIFY(!row->data(0, Qt::UserRole).isValid());
        QCOMPARE(tree.itemWidget(port->child(i), 0), line->labels.at(i));
        QCOMPARE(line->labels.at(i)->metaObject()->className(), "QLabel");
        QCOMPARE(line->labels.at(i)->height(), 20);
    }
}

void tst_PortRows::valueRowFillsUpWithZeros()
{
    QTreeWidget tree;
    QTreeWidgetItem *port = addPortRow(&tree);
    auto *line = new InitialValueLine(0, nullptr, nullptr);
    tree.setItemWidget(port, 0, line);
    QString bits = "11";
    addValueRow(&tree, port, bus("top/q", 3), bits, line, SignalRowType);

    QCOMPARE(line->bitString(), QString("000"));
    QVERIFY(bits.isEmpty());
}

void tst_PortRows::valueRowWithoutALineStillShowsItsBits()
{
    QTreeWidget tree;
    QTreeWidgetItem *port = addPortRow(&tree);
    QString bits = "1";
    addValueRow(&tree, port, net("top/a"), bits, nullptr, SignalRowType);

    const auto *label = qobject_cast<QLabel *>(tree.itemWidget(port->child(0), 0));
    QVERIFY(label);
    QCOMPARE(label->text(), QString("1"));
}

MOLK_TEST_MAIN(tst_PortRows)

#include "tst_portrows.moc"
