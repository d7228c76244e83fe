// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "treepair.h"

#include "pagefixture.h"
#include "portrows.h"
#include "turnloop.h"
#include "valueconversion.h"

#include <QApplication>
#include <QTest>

using namespace MOLK;

TreePair::TreePair()
    : ours(new ValueTree(&window))
    , plain(new QTreeWidget(&window))
    , elsewhere(new QLineEdit(&window))
{
    window.resize(1000, 600);
    plain->move(500, 0);
    elsewhere->move(0, 560);
    elsewhere->setFocus();
    each([](QTreeWidget *tree) {
        tree->resize(230, 317);
        tree->setHeaderHidden(true);
        tree->setStyleSheet("QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }");
    });
}

void TreePair::each(const std::function<void(QTreeWidget *)> &act)
{
    act(ours);
    act(plain);
    turnLoop();
}

void TreePair::show()
{
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    turnLoop();
}

void TreePair::addPort(const QList<SignalItem> &items, const QString &bits)
{
    each([&](QTreeWidget *tree) {
        auto *row = new QTreeWidgetItem(PortRowType);
        tree->addTopLevelItem(row);
        auto *added = new InitialValueLine(tree->topLevelItemCount() - 1, nullptr, nullptr);
        tree->setItemWidget(row, 0, added);
    });
    setSignals(ours->topLevelItemCount() - 1, items, bits);
}

void TreePair::setSignals(int port, const QList<SignalItem> &items, const QString &bits)
{
    {
        const ValueTree::Batch batch(ours);
        QTreeWidgetItem *row = ours->topLevelItem(port);
        ours->releaseLabels(line(ours, port)->labels);
        qDeleteAll(row->takeChildren());
        line(ours, port)->labels.clear();
        QString left = bits;
        addValueRows(ours, row, items, left, line(ours, port), SignalRowType);
    }
    QTreeWidgetItem *row = plain->topLevelItem(port);
    qDeleteAll(row->takeChildren());
    line(plain, port)->labels.clear();
    QString left = bits;
    for (const SignalItem &item : items)
        addValueRow(plain, row, item, left, line(plain, port), SignalRowType);
    each([=](QTreeWidget *tree) {
        line(tree, port)->updateInputMask();
        line(tree, port)->setText("0x" + stringBintoHex(bits));
    });
}

void TreePair::removePort(int port)
{
    each([this, port](QTreeWidget *tree) {
        const QList<QLabel *> labels = line(tree, port)->labels;
        tree->setItemWidget(tree->topLevelItem(port), 0, nullptr);
        if (tree == ours)
            ours->releaseLabels(labels);
        qDeleteAll(tree->topLevelItem(port)->takeChildren());
        delete tree->takeTopLevelItem(port);
    });
}

InitialValueLine *TreePair::line(QTreeWidget *tree, int port)
{
    return qobject_cast<InitialValueLine *>(tree->itemWidget(tree->topLevelItem(port), 0));
}

QList<SignalItem> manySignals(int count)
{
    QList<SignalItem> items;
    for (int i = 0; i < count; ++i)
        items.append(i % 3 == 2 ? bus(QString("q%1").arg(i), 4) : net(QString("n%1").arg(i)));
    return items;
}
