// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "bitlabel.h"
#include "pagefixture.h"
#include "portrows.h"
#include "testwidgetsmain.h"
#include "valueconversion.h"
#include "valuetree.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>

using namespace MOLK;

namespace {

// A tree of initial values, and a plain QTreeWidget that went through the same row by row. Whatever
// is done to one is done to the other, and then they have to look the same.
class TreePair
{
public:
    TreePair()
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
            tree->setStyleSheet(
                "QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }");
            tree->setUniformRowHeights(true);
        });
    }

    void each(const std::function<void(QTreeWidget *)> &act)
    {
        act(ours);
        act(plain);
        turnLoop();
    }

    void show()
    {
        window.show();
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        turnLoop();
    }

    void addPort(const QList<SignalItem> &items, const QString &bits)
    {
        each([&](QTreeWidget *tree) {
            auto *row = new QTreeWidgetItem(PortRowType);
            tree->addTopLevelItem(row);
            auto *line = new InitialValueLine(tree->topLevelItemCount() - 1, nullptr, nullptr);
            tree->setItemWidget(row, 0, line);
        });
        setSignals(ours->topLevelItemCount() - 1, items, bits);
    }

    void setSignals(int port, const QList<SignalItem> &items, const QString &bits)
    {
        {
            const ValueTree::Batch batch(ours);
            QTreeWidgetItem *row = ours->topLevelItem(port);
            ours->releaseLabels(row);
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

    void removePort(int port)
    {
        each([this, port](QTreeWidget *tree) {
            tree->setItemWidget(tree->topLevelItem(port), 0, nullptr);
            if (tree == ours)
                ours->releaseLabels(ours->topLevelItem(port));
            qDeleteAll(tree->topLevelItem(port)->takeChildren());
            delete tree->takeTopLevelItem(port);
        });
    }

    static InitialValueLine *line(QTreeWidget *tree, int port)
    {
        return qobject_cast<InitialValueLine *>(tree->itemWidget(tree->topLevelItem(port), 0));
    }

    QWidget window;
    ValueTree *ours;
    QTreeWidget *plain;
    QLineEdit *elsewhere;
};

QList<SignalItem> manySignals(int count)
{
    QList<SignalItem> items;
    for (int i = 0; i < count; ++i)
        items.append(i % 3 == 2 ? bus(QString("q%1").arg(i), 4) : net(QString("n%1").arg(i)));
    return items;
}

// Counts what a tree asks of its delegate: the height of a row for each layout, and the place of
// widgets.
class CountingDelegate : public QStyledItemDelegate
{
public:
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        ++calls;
        return QStyledItemDelegate::sizeHint(option, index);
    }

    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override
    {
        ++calls;
        QStyledItemDelegate::updateEditorGeometry(editor, option, index);
    }

    mutable int calls = 0;
};

class EventCounter : public QObject
{
public:
    EventCounter() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *) override
    {
        ++events;
        return false;
    }

    int events = 0;
};

} // namespace

class tst_ValueTree : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void looksAsAPlainTree_data();
    void looksAsAPlainTree();
    void answersAsAPlainTree();
    void labelsAreWidgetsOfTheirRows();
    void labelsOutOfViewAreHidden();
    void linesAreNeverHidden();
    void rowsReadTheirPlaceAtOnce();
    void releasedLabelsGoAsRemovedOnes();
    void scrollingAFocusedLineAwayDoesntCommit();
    void labelInAnotherTreeIsShown();
    void labelTakesFontsAndPalettesBeforeItIsShown();
    void bitsThatDontFitAreAToolTip();
    void refreshCostsGrowWithThePage_data();
    void refreshCostsGrowWithThePage();
};

void tst_ValueTree::initTestCase()
{
    QApplication::setCursorFlashTime(0);
}

void tst_ValueTree::looksAsAPlainTree_data()
{
    QTest::addColumn<bool>("builtShown");
    QTest::newRow("built-shown") << true;
    QTest::newRow("built-before-showing") << false;
}

static void compareLooks(const TreePair &pair, const char *state)
{
    const QImage ours = pair.ours->grab().toImage();
    const QImage plain = pair.plain->grab().toImage();
    QVERIFY2(ours == plain, state);
    QVERIFY2(pair.ours->verticalScrollBar()->maximum() == pair.plain->verticalScrollBar()->maximum()
                 && pair.ours->verticalScrollBar()->value()
                     == pair.plain->verticalScrollBar()->value(),
             state);
}

void tst_ValueTree::looksAsAPlainTree()
{
    QFETCH(bool, builtShown);
    TreePair pair;
    if (builtShown)
        pair.show();
    pair.addPort(manySignals(9), "101101110100101");
    pair.addPort({}, "");
    pair.addPort(manySignals(30), QString("10").repeated(30));
    pair.addPort(manySignals(4), "1111111");
    if (!builtShown)
        pair.show();

    // A plain tree is laid out between the removal of rows and the coming of new ones, which moves
    // it away from its end.
    const auto toTheEnd = [&] {
        pair.each([](QTreeWidget *t) { t->scrollToBottom(); });
    };
    const QVector<QPair<const char *, std::function<void()>>> steps = {
        {"folded",
         [] {
         }},
        {"one-unfolded",
         [&] {
             pair.each([](QTreeWidget *t) { t->expandItem(t->topLevelItem(0)); });
         }},
        {"all-unfolded",
         [&] {
             pair.each([](QTreeWidget *t) { t->expandAll(); });
         }},
        {"scrolled-a-row",
         [&] {
             pair.each([](QTreeWidget *t) { t->verticalScrollBar()->setValue(1); });
         }},
        {"scrolled-more",
         [&] {
             pair.each([](QTreeWidget *t) { t->verticalScrollBar()->setValue(7); });
         }},
        {"scrolled-to-the-end", toTheEnd},
        {"refreshed-at-the-end",
         [&] {
             pair.setSignals(2, manySignals(30), QString("01").repeated(30));
             toTheEnd();
         }},
        {"shrunk-at-the-end",
         [&] {
             pair.setSignals(2, manySignals(3), "010101");
             toTheEnd();
         }},
        {"grown-again",
         [&] {
             pair.setSignals(2, manySignals(40), QString("1").repeated(80));
             toTheEnd();
         }},
        {"scrolled-back",
         [&] {
             pair.each([](QTreeWidget *t) { t->verticalScrollBar()->setValue(0); });
         }},
        {"taller",
         [&] {
             pair.each([](QTreeWidget *t) { t->resize(230, 500); });
         }},
        {"wider",
         [&] {
             pair.each([](QTreeWidget *t) { t->resize(400, 500); });
         }},
        {"smaller",
         [&] {
             pair.each([](QTreeWidget *t) { t->resize(120, 90); });
         }},
        {"as-before",
         [&] {
             pair.each([](QTreeWidget *t) { t->resize(230, 317); });
         }},
        {"port-selected",
         [&] {
             pair.each([](QTreeWidget *t) { t->topLevelItem(1)->setSelected(true); });
         }},
        {"signal-selected",
         [&] {
             pair.each([](QTreeWidget *t) { t->topLevelItem(0)->child(3)->setSelected(true); });
         }},
        {"current-out-of-view",
         [&] {
             pair.each([](QTreeWidget *t) { t->setCurrentItem(t->topLevelItem(2)->child(35)); });
         }},
        {"text-of-labels-changed",
         [&] {
             pair.each([](QTreeWidget *t) {
                 for (QLabel *label : TreePair::line(t, 2)->labels)
                     label->setText("0");
             });
         }},
        {"disabled",
         [&] {
             pair.each([](QTreeWidget *t) { t->setEnabled(false); });
         }},
        {"scrolled-while-disabled",
         [&] {
             pair.each([](QTreeWidget *t) { t->verticalScrollBar()->setValue(12); });
         }},
        {"enabled",
         [&] {
             pair.each([](QTreeWidget *t) { t->setEnabled(true); });
         }},
        {"larger-font",
         [&] {
             pair.each([](QTreeWidget *t) {
                 QFont font = t->font();
                 font.setBold(true);
                 font.setPointSize(font.pointSize() + 2);
                 t->setFont(font);
             });
         }},
        {"scrolled-in-that-font",
         [&] {
             pair.each([](QTreeWidget *t) { t->verticalScrollBar()->setValue(30); });
         }},
        {"dark",
         [&] {
             pair.each([](QTreeWidget *t) {
                 QPalette palette(QColor(40, 40, 44), QColor(30, 30, 34));
                 t->setPalette(palette);
             });
         }},
        {"scrolled-in-the-dark",
         [&] {
             pair.each([](QTreeWidget *t) { t->verticalScrollBar()->setValue(3); });
         }},
        {"from-right-to-left",
         [&] {
             pair.each([](QTreeWidget *t) { t->setLayoutDirection(Qt::RightToLeft); });
         }},
        {"scrolled-from-right-to-left",
         [&] {
             pair.each([](QTreeWidget *t) { t->verticalScrollBar()->setValue(9); });
         }},
        {"hidden-and-shown",
         [&] {
             pair.each([](QTreeWidget *t) { t->hide(); });
             pair.each([](QTreeWidget *t) { t->show(); });
         }},
        {"refreshed-while-hidden",
         [&] {
             pair.each([](QTreeWidget *t) { t->hide(); });
             pair.setSignals(0, manySignals(12), QString("110").repeated(20));
             pair.each([](QTreeWidget *t) { t->show(); });
         }},
        {"port-added",
         [&] {
             pair.addPort(manySignals(5), "11001100");
         }},
        {"port-removed",
         [&] {
             pair.removePort(0);
         }},
        {"one-folded",
         [&] {
             pair.each([](QTreeWidget *t) { t->collapseItem(t->topLevelItem(1)); });
         }},
        {"all-folded",
         [&] {
             pair.each([](QTreeWidget *t) { t->collapseAll(); });
         }},
        {"unfolded-again",
         [&] {
             pair.each([](QTreeWidget *t) { t->expandAll(); });
         }},
    };
    for (const auto &step : steps) {
        step.second();
        compareLooks(pair, step.first);
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_ValueTree::answersAsAPlainTree()
{
    TreePair pair;
    pair.show();
    pair.addPort(manySignals(5), "10110111");
    pair.addPort(manySignals(20), QString("1").repeated(60));
    pair.each([](QTreeWidget *tree) { tree->expandAll(); });

    QCOMPARE(pair.ours->metaObject()->className(), "QTreeWidget");
    for (int i = 0; i < 2; ++i) {
        for (int j = 0; j < pair.ours->topLevelItem(i)->childCount(); ++j) {
            QTreeWidgetItem *ours = pair.ours->topLevelItem(i)->child(j);
            QTreeWidgetItem *plain = pair.plain->topLevelItem(i)->child(j);
            QCOMPARE(ours->type(), plain->type());
            QCOMPARE(ours->flags(), plain->flags());
            QCOMPARE(ours->columnCount(), plain->columnCount());
            QCOMPARE(ours->data(0, Qt::DisplayRole), plain->data(0, Qt::DisplayRole));
            QCOMPARE(ours->data(0, Qt::UserRole), plain->data(0, Qt::UserRole));
            QCOMPARE(pair.ours->visualItemRect(ours), pair.plain->visualItemRect(plain));

            const auto *label = qobject_cast<QLabel *>(pair.ours->itemWidget(ours, 0));
            const auto *plainLabel = qobject_cast<QLabel *>(pair.plain->itemWidget(plain, 0));
            QCOMPARE(label->metaObject()->className(), plainLabel->metaObject()->className());
            QCOMPARE(label->text(), plainLabel->text());
            QCOMPARE(label->minimumSize(), plainLabel->minimumSize());
            QCOMPARE(label->maximumSize(), plainLabel->maximumSize());
            QCOMPARE(label->parentWidget(), pair.ours->viewport());
            QCOMPARE(label->focusPolicy(), plainLabel->focusPolicy());
            if (!label->isHidden()) {
                QCOMPARE(label->geometry(), plainLabel->geometry());
                QCOMPARE(label->font(), plainLabel->font());
                QCOMPARE(label->palette(), plainLabel->palette());
            }
        }
    }
}

void tst_ValueTree::labelsAreWidgetsOfTheirRows()
{
    TreePair pair;
    pair.addPort(manySignals(300), QString("1").repeated(600));
    pair.show();
    const QList<QLabel *> labels = TreePair::line(pair.ours, 0)->labels;
    QCOMPARE(labels.size(), 300);
    for (int i = 0; i < labels.size(); ++i)
        QCOMPARE(pair.ours->itemWidget(pair.ours->topLevelItem(0)->child(i), 0), labels.at(i));
}

void tst_ValueTree::labelsOutOfViewAreHidden()
{
    TreePair pair;
    pair.addPort(manySignals(100), QString("1").repeated(200));
    pair.show();
    const QList<QLabel *> labels = TreePair::line(pair.ours, 0)->labels;
    const auto visibleLabels = [&] {
        int count = 0;
        for (const QLabel *label : labels)
            count += label->isVisible();
        return count;
    };
    QCOMPARE(visibleLabels(), 0);
    pair.ours->expandAll();
    turnLoop();
    QVERIFY(labels.at(0)->isVisible());
    QVERIFY(visibleLabels() < 20);
    pair.ours->verticalScrollBar()->setValue(50);
    QVERIFY(!labels.at(0)->isVisible());
    QVERIFY(labels.at(49)->isVisible());
    QVERIFY(visibleLabels() < 20);
    pair.ours->collapseAll();
    QCOMPARE(visibleLabels(), 0);
}

void tst_ValueTree::linesAreNeverHidden()
{
    TreePair pair;
    for (int i = 0; i < 60; ++i)
        pair.addPort(manySignals(2), "11");
    pair.show();
    for (const int position : {0, 20, 50, 10}) {
        pair.each([=](QTreeWidget *tree) { tree->verticalScrollBar()->setValue(position); });
        for (int i = 0; i < 60; ++i) {
            QVERIFY(TreePair::line(pair.ours, i)->isVisible());
            QCOMPARE(TreePair::line(pair.ours, i)->geometry(),
                     TreePair::line(pair.plain, i)->geometry());
        }
    }
}

void tst_ValueTree::rowsReadTheirPlaceAtOnce()
{
    TreePair pair;
    pair.addPort(manySignals(3), "11111");
    pair.show();
    pair.ours->expandAll();
    auto *row = new QTreeWidgetItem(PortRowType);
    pair.ours->addTopLevelItem(row);
    QCOMPARE(pair.ours->visualItemRect(row).top(), 80);
    pair.ours->insertTopLevelItem(0, new QTreeWidgetItem(PortRowType));
    QCOMPARE(pair.ours->visualItemRect(row).top(), 100);
}

void tst_ValueTree::releasedLabelsGoAsRemovedOnes()
{
    TreePair pair;
    pair.addPort(manySignals(2), "11");
    pair.show();
    pair.ours->expandAll();
    turnLoop();
    QTreeWidgetItem *row = pair.ours->topLevelItem(0);
    InitialValueLine *line = TreePair::line(pair.ours, 0);
    const QPointer<QLabel> label = line->labels.first();
    QVERIFY(label->isVisible());
    runInLoop([&] {
        pair.ours->releaseLabels(row);
        QVERIFY(!pair.ours->itemWidget(row->child(0), 0));
        QVERIFY(label);
        QVERIFY(!label->isVisible());
        QCOMPARE(label->text(), QString("1"));
        line->labels.clear();
    });
    turnLoop();
    QVERIFY(!label);

    // Rows without labels are let through.
    pair.ours->releaseLabels(row);
}

void tst_ValueTree::scrollingAFocusedLineAwayDoesntCommit()
{
    PageFixture fixture(makeCore({{}}, {manySignals(100), manySignals(3)}));
    fixture.show();
    fixture.treeProbeOut->expandAll();
    turnLoop();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    line->setText("0x0" + QString(line->displayText().size() - 3, 'F'));
    const QString typed = line->displayText();
    fixture.treeValue->verticalScrollBar()->setValue(60);
    turnLoop();
    QVERIFY(line->hasFocus());
    QCOMPARE(line->displayText(), typed);
    QVERIFY(!fixture.bits(0).contains('1'));
}

void tst_ValueTree::labelInAnotherTreeIsShown()
{
    QTreeWidget tree;
    auto *row = new QTreeWidgetItem(PortRowType);
    tree.addTopLevelItem(row);
    QString bits = "1";
    addValueRow(&tree, row, net("a"), bits, nullptr, SignalRowType);
    tree.expandAll();
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QVERIFY(tree.itemWidget(row->child(0), 0)->isVisible());
}

void tst_ValueTree::labelTakesFontsAndPalettesBeforeItIsShown()
{
    QWidget window;
    auto *label = new BitLabel("101");
    QLabel plain("101");
    label->setParent(&window);
    plain.setParent(&window);
    label->setVisible(true);
    window.setStyleSheet("QLabel { color: red; font-size: 20px; }");
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!label->isVisible());
    label->prepare();
    label->show();
    plain.show();
    QVERIFY(label->isVisible());
    QCOMPARE(label->sizeHint(), plain.sizeHint());
    QCOMPARE(label->font(), plain.font());
    QCOMPARE(label->palette().color(QPalette::WindowText), QColor(Qt::red));
    label->prepare();
    QVERIFY(label->isVisible());
}

static bool showsToolTip(QWidget *widget)
{
    QToolTip::hideText();
    QHelpEvent event(QEvent::ToolTip, widget->rect().center(),
                     widget->mapToGlobal(widget->rect().center()));
    QCoreApplication::sendEvent(widget, &event);
    return QToolTip::isVisible();
}

void tst_ValueTree::bitsThatDontFitAreAToolTip()
{
    const QString wide = QString("10").repeated(64);
    PageFixture fixture(makeCore({{}}, {{bus("top/q", 128), net("top/a")}}));
    fixture.show();
    fixture.treeProbeOut->expandAll();
    turnLoop();
    fixture.line(0)->labels.at(0)->setText(wide);
    QVERIFY(!showsToolTip(fixture.line(0)->labels.at(1)));
    QVERIFY(showsToolTip(fixture.line(0)->labels.at(0)));
    QCOMPARE(QToolTip::text(), wide);
    QToolTip::hideText();
}

void tst_ValueTree::refreshCostsGrowWithThePage_data()
{
    QTest::addColumn<bool>("expanded");
    QTest::newRow("folded") << false;
    QTest::newRow("unfolded") << true;
}

struct Costs
{
    int delegateCalls;
    int events;
};

static Costs refreshCosts(int ports, bool expanded)
{
    constexpr int SignalsOfAPort = 40;
    PageFixture fixture(
        makeCore({{}}, QVector<QList<SignalItem>>(ports, manySignals(SignalsOfAPort)).toList()));
    CountingDelegate delegate;
    fixture.treeProbeOut->setItemDelegate(&delegate);
    fixture.treeValue->setItemDelegate(&delegate);
    fixture.show();
    if (expanded)
        fixture.treeProbeOut->expandAll();
    turnLoop();

    delegate.calls = 0;
    EventCounter counter;
    runInLoop([&] { fixture.page->refreshProbeOutSignals(); });
    turnLoop();
    return {delegate.calls, counter.events};
}

void tst_ValueTree::refreshCostsGrowWithThePage()
{
    QFETCH(bool, expanded);
    const Costs small = refreshCosts(8, expanded);
    const Costs middle = refreshCosts(16, expanded);
    const Costs large = refreshCosts(32, expanded);

    // Whatever the number of rows, they are laid out a few times, and what is painted is what is in
    // view.
    QVERIFY(small.delegateCalls > 0);
    QVERIFY2(large.delegateCalls <= small.delegateCalls + 2 * 24,
             qPrintable(QString("%1 %2").arg(small.delegateCalls).arg(large.delegateCalls)));
    QVERIFY2(
        large.events - middle.events <= 2.1 * (middle.events - small.events),
        qPrintable(QString("%1 %2 %3").arg(small.events).arg(middle.events).arg(large.events)));
}

MOLK_TEST_MAIN(tst_ValueTree)

#include "tst_valuetree.moc"
