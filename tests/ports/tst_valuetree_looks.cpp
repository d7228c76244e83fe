// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testwidgetsmain.h"
#include "treepair.h"

#include <QLabel>
#include <QScrollBar>

using namespace MOLK;

class tst_ValueTreeLooks : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void looksAsAPlainTree_data();
    void looksAsAPlainTree();
    void answersAsAPlainTree();
};

void tst_ValueTreeLooks::initTestCase()
{
    QApplication::setCursorFlashTime(0);
}

void tst_ValueTreeLooks::looksAsAPlainTree_data()
{
    QTest::addColumn<bool>("builtShown");
    QTest::newRow("built-shown") << true;
    QTest::newRow("built-before-showing") << false;
}

namespace {

// A state of both trees, reached from the one before it.
struct State
{
    const char *name;
    std::function<void(TreePair &)> reach;
};

using States = QVector<State>;

std::function<void(TreePair &)> onEach(const std::function<void(QTreeWidget *)> &act)
{
    return [act](TreePair &pair) {
        pair.each(act);
    };
}

std::function<void(TreePair &)> scrolledTo(int position)
{
    return onEach([position](QTreeWidget *t) { t->verticalScrollBar()->setValue(position); });
}

std::function<void(TreePair &)> resizedTo(int width, int height)
{
    return onEach([width, height](QTreeWidget *t) { t->resize(width, height); });
}

// A plain tree is laid out between the removal of rows and the coming of new ones, which moves it
// away from its end.
std::function<void(TreePair &)> changedAtTheEnd(int signalCount, const QString &bits)
{
    return [signalCount, bits](TreePair &pair) {
        pair.setSignals(2, manySignals(signalCount), bits);
        pair.each([](QTreeWidget *t) { t->scrollToBottom(); });
    };
}

const States whileRowsChange = {
    {"folded", onEach([](QTreeWidget *) {})},
    {"one-unfolded", onEach([](QTreeWidget *t) { t->expandItem(t->topLevelItem(0)); })},
    {"all-unfolded", onEach([](QTreeWidget *t) { t->expandAll(); })},
    {"scrolled-a-row", scrolledTo(1)},
    {"scrolled-more", scrolledTo(7)},
    {"scrolled-to-the-end", onEach([](QTreeWidget *t) { t->scrollToBottom(); })},
    {"refreshed-at-the-end", changedAtTheEnd(30, QString("01").repeated(30))},
    {"shrunk-at-the-end", changedAtTheEnd(3, "010101")},
    {"grown-again", changedAtTheEnd(40, QString("1").repeated(80))},
    {"scrolled-back", scrolledTo(0)},
};

const States whileTheTreeChanges = {
    {"taller", resizedTo(230, 500)},
    {"wider", resizedTo(400, 500)},
    {"smaller", resizedTo(120, 90)},
    {"as-before", resizedTo(230, 317)},
    {"port-selected", onEach([](QTreeWidget *t) { t->topLevelItem(1)->setSelected(true); })},
    {"signal-selected",
     onEach([](QTreeWidget *t) { t->topLevelItem(0)->child(3)->setSelected(true); })},
    {"current-out-of-view",
     onEach([](QTreeWidget *t) { t->setCurrentItem(t->topLevelItem(2)->child(35)); })},
    {"text-of-labels-changed", onEach([](QTreeWidget *t) {
         for (QLabel *label : TreePair::line(t, 2)->labels)
             label->setText("0");
     })},
    {"disabled", onEach([](QTreeWidget *t) { t->setEnabled(false); })},
    {"scrolled-while-disabled", scrolledTo(12)},
    {"enabled", onEach([](QTreeWidget *t) { t->setEnabled(true); })},
};

const States whileTheLookChanges = {
    {"larger-font", onEach([](QTreeWidget *t) {
         QFont font = t->font();
         font.setBold(true);
         font.setPointSize(font.pointSize() + 2);
         t->setFont(font);
     })},
    {"scrolled-in-that-font", scrolledTo(30)},
    {"dark", onEach([](QTreeWidget *t) {
         t->setPalette(QPalette(QColor(40, 40, 44), QColor(30, 30, 34)));
     })},
    {"scrolled-in-the-dark", scrolledTo(3)},
    {"from-right-to-left", onEach([](QTreeWidget *t) { t->setLayoutDirection(Qt::RightToLeft); })},
    {"scrolled-from-right-to-left", scrolledTo(9)},
};

const States whilePortsChange = {
    {"hidden-and-shown",
     [](TreePair &pair) {
         pair.each([](QTreeWidget *t) { t->hide(); });
         pair.each([](QTreeWidget *t) { t->show(); });
     }},
    {"refreshed-while-hidden",
     [](TreePair &pair) {
         pair.each([](QTreeWidget *t) { t->hide(); });
         pair.setSignals(0, manySignals(12), QString("110").repeated(20));
         pair.each([](QTreeWidget *t) { t->show(); });
     }},
    {"port-added",
     [](TreePair &pair) {
         pair.addPort(manySignals(5), "11001100");
     }},
    {"port-removed",
     [](TreePair &pair) {
         pair.removePort(0);
     }},
    {"one-folded", onEach([](QTreeWidget *t) { t->collapseItem(t->topLevelItem(1)); })},
    {"all-folded", onEach([](QTreeWidget *t) { t->collapseAll(); })},
    {"unfolded-again", onEach([](QTreeWidget *t) { t->expandAll(); })},
};

} // namespace

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

void tst_ValueTreeLooks::looksAsAPlainTree()
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

    for (const States &states :
         {whileRowsChange, whileTheTreeChanges, whileTheLookChanges, whilePortsChange}) {
        for (const State &state : states) {
            state.reach(pair);
            compareLooks(pair, state.name);
            if (QTest::currentTestFailed())
                return;
        }
    }
}

void tst_ValueTreeLooks::answersAsAPlainTree()
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

MOLK_TEST_MAIN(tst_ValueTreeLooks)

#include "tst_valuetree_looks.moc"
