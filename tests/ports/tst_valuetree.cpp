// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "bitlabel.h"
#include "pagefixture.h"
#include "portrows.h"
#include "testwidgetsmain.h"
#include "treepair.h"
#include "turnloop.h"

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QHelpEvent>
#include <QLabel>
#include <QScrollBar>
#include <QToolTip>

using namespace MOLK;

class tst_ValueTree : public QObject
{
    Q_OBJECT

private slots:
    void labelsAreWidgetsOfTheirRows();
    void labelsOutOfViewAreHidden();
    void linesAreNeverHidden();
    void rowsReadTheirPlaceAtOnce();
    void whatIsShownLiesOnTopOfHiddenLabels();
    void releasedLabelsGoAsRemovedOnes();
    void releasedLabelsMayGoAheadOfTheLoop();
    void scrollingAFocusedLineAwayDoesntCommit();
    void labelInAnotherTreeIsShown();
    void labelTakesFontsAndPalettesBeforeItIsShown();
    void labelIsAccessible();
    void bitsThatDontFitAreAToolTip();
    void linesAndLabelsInViewHearOfDialogs();
    void twoFingersScrollAfterLabelsWereReplaced();
};

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

void tst_ValueTree::whatIsShownLiesOnTopOfHiddenLabels()
{
    TreePair pair;
    pair.addPort(manySignals(60), QString("1").repeated(120));
    pair.addPort(manySignals(60), QString("1").repeated(120));
    pair.show();
    pair.ours->expandAll();
    for (const int position : {0, 40, 5, 6, 7, 0}) {
        if (position > 5)
            pair.setSignals(0, manySignals(60), QString("0").repeated(120));
        pair.ours->verticalScrollBar()->setValue(position);
        bool above = false;
        for (QObject *child : pair.ours->viewport()->children()) {
            const bool shown = qobject_cast<QWidget *>(child)->isVisible();
            QVERIFY(shown || !above);
            above = shown;
        }
        QVERIFY(above);
    }
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
        pair.ours->releaseLabels(line->labels);
        QVERIFY(!pair.ours->itemWidget(row->child(0), 0));
        QVERIFY(label);
        QVERIFY(!label->isVisible());
        QCOMPARE(label->text(), QString("1"));
        line->labels.clear();
    });
    turnLoop();
    QVERIFY(!label);
}

void tst_ValueTree::releasedLabelsMayGoAheadOfTheLoop()
{
    TreePair pair;
    pair.addPort(manySignals(3), "111111");
    pair.addPort(manySignals(3), "111111");
    pair.show();
    const QList<QLabel *> labels = TreePair::line(pair.ours, 0)->labels;
    const QPointer<QLabel> first = labels.first();
    runInLoop([&] {
        pair.ours->releaseLabels(labels);
        delete TreePair::line(pair.ours, 0); // It takes its labels along.
        QVERIFY(!first);
        pair.ours->releaseLabels(TreePair::line(pair.ours, 1)->labels);
        delete pair.ours;
    });
    turnLoop();
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

void tst_ValueTree::labelIsAccessible()
{
    BitLabel label("101");
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(interface);
    QCOMPARE(interface->text(QAccessible::Name), QString("101"));
    QCOMPARE(label.metaObject()->className(), "QLabel");
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

namespace {

// Keeps who is told that a dialog takes the input of windows, or gives it back.
class BlockingWatch : public QObject
{
public:
    BlockingWatch() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::WindowBlocked)
            blocked.append(watched);
        if (event->type() == QEvent::WindowUnblocked)
            unblocked.append(watched);
        return false;
    }

    QObjectList blocked;
    QObjectList unblocked;
};

} // namespace

void tst_ValueTree::linesAndLabelsInViewHearOfDialogs()
{
    TreePair pair;
    pair.addPort(manySignals(60), QString("1").repeated(120));
    pair.addPort(manySignals(60), QString("1").repeated(120));
    pair.show();
    pair.ours->expandAll();
    pair.ours->verticalScrollBar()->setValue(30);
    turnLoop();

    const BlockingWatch watch;
    QDialog dialog(&pair.window);
    dialog.open();
    turnLoop();
    const QObjectList blocked = watch.blocked;
    dialog.reject();
    turnLoop();
    QCOMPARE(watch.unblocked, blocked);
    QCOMPARE(blocked.count(pair.ours->viewport()), 1);
    for (int i = 0; i < 2; ++i) {
        const InitialValueLine *line = TreePair::line(pair.ours, i);
        QCOMPARE(blocked.count(TreePair::line(pair.ours, i)), 1);
        for (QLabel *label : line->labels)
            QCOMPARE(blocked.count(label), label->isVisible() ? 1 : 0);
    }
}

// Moves two fingers up by 40 pixels.
static void moveTwoFingersUp(QWidget *widget)
{
    static QTouchDevice *const screen = QTest::createTouchDevice();
    const QPoint first(60, 150);
    const QPoint second(120, 150);
    QTest::touchEvent(widget, screen).press(0, first, widget).press(1, second, widget);
    for (int way = 5; way <= 40; way += 5) {
        const QPoint up(0, -way);
        QTest::touchEvent(widget, screen).move(0, first + up, widget).move(1, second + up, widget);
    }
    const QPoint end(0, -40);
    QTest::touchEvent(widget, screen)
        .release(0, first + end, widget)
        .release(1, second + end, widget);
}

void tst_ValueTree::twoFingersScrollAfterLabelsWereReplaced()
{
    TreePair pair;
    pair.addPort(manySignals(200), QString("1").repeated(400));
    pair.show();
    pair.ours->expandAll();
    turnLoop();
    moveTwoFingersUp(pair.ours->viewport());
    const int scrolled = pair.ours->verticalScrollBar()->value();
    QVERIFY(scrolled > 0);
    pair.ours->verticalScrollBar()->setValue(0);

    pair.setSignals(0, manySignals(200), QString("0").repeated(400));
    pair.ours->expandAll();
    turnLoop();
    moveTwoFingersUp(pair.ours->viewport());
    QCOMPARE(pair.ours->verticalScrollBar()->value(), scrolled);
}

MOLK_TEST_MAIN(tst_ValueTree)

#include "tst_valuetree.moc"
