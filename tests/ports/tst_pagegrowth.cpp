// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "blockcount.h"
#include "modaldriver.h"
#include "pagefixture.h"
#include "probedialog.h"
#include "testwidgetsmain.h"
#include "treepair.h"
#include "turnloop.h"

#include <QApplication>
#include <QPushButton>
#include <QStyledItemDelegate>

using namespace MOLK;

namespace {

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

// What an action on a page costs: the code of the pages, Qt's layouts and Qt's events.
struct Costs
{
    qint64 blocks = 0;
    int events = 0;
    int delegateCalls = 0;
};

} // namespace

/// What a page costs grows with its ports and no faster, told without a clock.
class tst_PageGrowth : public QObject
{
    Q_OBJECT

private slots:
    void buildGrowsWithThePage();
    void refreshGrowsWithThePage_data();
    void refreshGrowsWithThePage();
    void removalOfAPortGrowsWithThePage_data();
    void removalOfAPortGrowsWithThePage();
    void editOfAPortGrowsWithThePage();
    void editSendsFewEventsBesideItsRefresh_data();
    void editSendsFewEventsBesideItsRefresh();
};

static const int signalsOfAPort = 40;
static const int rowsInView = 24;

static std::unique_ptr<MolkCore> coreWithPorts(int ports)
{
    return makeCore({{}}, QVector<QList<SignalItem>>(ports, manySignals(signalsOfAPort)).toList());
}

static Costs buildCosts(int ports)
{
    std::unique_ptr<MolkCore> core = coreWithPorts(ports);
    const EventCounter counter;
    const BlockCount counted;
    PageFixture fixture(std::move(core));
    fixture.show();
    turnLoop();
    return {counted.blocks(), counter.events, 0};
}

// What \a act costs on a page that is shown.
static Costs costsOnAPage(int ports, bool expanded, const std::function<void(PageFixture *)> &act)
{
    PageFixture fixture(coreWithPorts(ports));
    CountingDelegate delegate;
    fixture.treeProbeOut->setItemDelegate(&delegate);
    fixture.treeValue->setItemDelegate(&delegate);
    fixture.show();
    if (expanded)
        fixture.treeProbeOut->expandAll();
    turnLoop();

    delegate.calls = 0;
    const EventCounter counter;
    const BlockCount counted;
    runInLoop([&] { act(&fixture); });
    turnLoop();
    return {counted.blocks(), counter.events, delegate.calls};
}

static QString told(qint64 small, qint64 middle, qint64 large)
{
    return QString("8 ports: %1, 16 ports: %2, 32 ports: %3").arg(small).arg(middle).arg(large);
}

// What doubles from the first step to the second may double once more. Beside it there is what the
// rows in view cost, which differ.
static void checkGrowth(qint64 small, qint64 middle, qint64 large)
{
    QVERIFY2(large - middle <= 2.1 * (middle - small) + rowsInView,
             qPrintable(told(small, middle, large)));
}

static void checkGrowth(const std::function<Costs(int ports)> &costs)
{
    const Costs small = costs(8);
    const Costs middle = costs(16);
    const Costs large = costs(32);
    QVERIFY(middle.blocks > small.blocks);
    checkGrowth(small.blocks, middle.blocks, large.blocks);
    checkGrowth(small.events, middle.events, large.events);
    // Whatever the number of rows, they are laid out a few times, and what is painted is what is in
    // view.
    QVERIFY2(large.delegateCalls <= small.delegateCalls + 2 * rowsInView,
             qPrintable(told(small.delegateCalls, middle.delegateCalls, large.delegateCalls)));
}

static void addFoldedAndUnfolded()
{
    QTest::addColumn<bool>("expanded");
    QTest::newRow("folded") << false;
    QTest::newRow("unfolded") << true;
}

void tst_PageGrowth::buildGrowsWithThePage()
{
    checkGrowth(buildCosts);
}

static void refresh(PageFixture *fixture)
{
    fixture->page->refreshProbeOutSignals();
}

void tst_PageGrowth::refreshGrowsWithThePage_data()
{
    addFoldedAndUnfolded();
}

void tst_PageGrowth::refreshGrowsWithThePage()
{
    QFETCH(bool, expanded);
    checkGrowth([&](int ports) { return costsOnAPage(ports, expanded, refresh); });
}

void tst_PageGrowth::removalOfAPortGrowsWithThePage_data()
{
    addFoldedAndUnfolded();
}

void tst_PageGrowth::removalOfAPortGrowsWithThePage()
{
    QFETCH(bool, expanded);
    checkGrowth([&](int ports) {
        return costsOnAPage(ports, expanded, [](PageFixture *fixture) {
            fixture->treeProbeOut->topLevelItem(1)->setSelected(true);
            fixture->child<QPushButton>("btnProbeOutRemove")->click();
        });
    });
}

static void acceptAnEdit(PageFixture *fixture)
{
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([](ProbeDialog *dialog) { dialog->accept(); });
    fixture->call("editProbeOut", fixture->treeProbeOut->topLevelItem(1));
}

// The edit unfolds its port, so that on a folded page more may be in view than before.
void tst_PageGrowth::editOfAPortGrowsWithThePage()
{
    checkGrowth([](int ports) { return costsOnAPage(ports, true, acceptAnEdit); });
}

void tst_PageGrowth::editSendsFewEventsBesideItsRefresh_data()
{
    addFoldedAndUnfolded();
}

// The dialog comes and goes without a word to each label of the page.
void tst_PageGrowth::editSendsFewEventsBesideItsRefresh()
{
    QFETCH(bool, expanded);
    const auto eventsBeside = [&](int ports) {
        return costsOnAPage(ports, expanded, acceptAnEdit).events
            - costsOnAPage(ports, expanded, refresh).events;
    };
    const int small = eventsBeside(8);
    const int large = eventsBeside(32);

    // Each line is told that input is blocked, that it isn't any more, and that the window isn't
    // active, and moves when the port is scrolled into view.
    const int moreLines = 32 - 8;
    QVERIFY2(large - small <= 4 * moreLines + rowsInView,
             qPrintable(QString("8 ports: %1, 32 ports: %2").arg(small).arg(large)));
}

MOLK_TEST_MAIN(tst_PageGrowth)
#include "tst_pagegrowth.moc"
