// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "menudriver.h"
#include "modaldriver.h"
#include "molkcore.h"
#include "molkoptionwidget.h"
#include "netlistguard.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "viewbench.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTreeWidget>

using namespace MOLK;

class tst_MolkViewCores : public QObject
{
    Q_OBJECT

private slots:
    void addShowsTheNewCore();
    void sixteenCoresAreTheMost();
    void seventeenCoresOfAFileAreShownAsTheyStand();
    void removeOfTheMiddleRenumbersTheRest();
    void removeKeepsTheOtherPages();
    void removeLogsTheNumbers();
    void theOnlyCoreStays();
    void cancelledRemoveShowsTheFirstCore_data();
    void cancelledRemoveShowsTheFirstCore();
    void menuOnEmptySpaceCanOnlyAdd();
    void dismissedMenuChangesNothing();
    void indexOutsideIsIgnored();

    void clickShowsTheCore();
    void doubleClickShowsTheCore();
    void clickOutsideTheCoresIsIgnored();
    void unknownNumberChangesNothing();
    void coreIsFoundByItsNumber();

    void addedPageIsCountedAndConnected();
    void removedPageNoLongerModifies();
    void netlistGoesToAllPagesAndTheOldOneEnds();

    void fileMayBeReloadedWhileTheMenuIsOpen();
    void fileMayBeReloadedWhileRemoveAsks();
    void viewMayGoWhileTheMenuIsOpen();
    void viewMayGoWhileRemoveAsks();
    void viewMayGoWhileTheLimitIsTold();
    void viewMayGoWhileTheOnlyCoreIsTold();
};

static QTreeWidget *coreTree(const std::unique_ptr<MolkView> &view)
{
    return child<QTreeWidget>(view, "treeWidget");
}

static QStringList coreLines(const std::unique_ptr<MolkView> &view)
{
    return treeLines(coreTree(view)->model());
}

// The core whose page, line and title are shown, or -1 if the three don't agree.
static int shownCore(const std::unique_ptr<MolkView> &view)
{
    const auto *stack = child<QStackedWidget>(view, "stackedWidget");
    const auto *page = qobject_cast<MolkOptionWidget *>(stack->currentWidget());
    const QTreeWidget *tree = coreTree(view);
    const int id = page ? page->core->id : -1;
    const QString name = QString("molk_%1").arg(id);
    const bool agree = tree->currentItem() && tree->currentItem()->text(0) == name
        && tree->currentItem()->isSelected()
        && child<QDockWidget>(view, "dockWidget_2")->windowTitle() == name
        && documentOf(view)->optionWidgets.value(id) == page;
    return agree ? id : -1;
}

static void requestMenu(QTreeWidget *tree, const QPoint &pos)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, tree->viewport()->mapToGlobal(pos));
    QApplication::sendEvent(tree->viewport(), &event);
}

static QPoint rowCenter(const QTreeWidget *tree, int row)
{
    return tree->visualItemRect(tree->topLevelItem(row)).center();
}

static QPoint emptySpace(const QTreeWidget *tree)
{
    return tree->viewport()->rect().bottomLeft() + QPoint(5, -5);
}

static void addByMenu(const std::unique_ptr<MolkView> &view)
{
    MenuDriver menu([](QMenu *shown) { chooseEntry(shown, "Add"); });
    requestMenu(coreTree(view), emptySpace(coreTree(view)));
}

static void removeByMenu(const std::unique_ptr<MolkView> &view, int row)
{
    MenuDriver menu([](QMenu *shown) { chooseEntry(shown, "Remove"); });
    requestMenu(coreTree(view), rowCenter(coreTree(view), row));
}

static QString removeQuestion(int index)
{
    return QString("Do you want to remove MOLK %1 ?").arg(index);
}

static std::unique_ptr<MolkView> shownView(const ViewBench &bench, int cores)
{
    auto view = bench.openView(bench.writeCores(cores));
    if (view) {
        view->show();
        if (!QTest::qWaitForWindowActive(view.get()))
            QTest::qFail("the view isn't active", __FILE__, __LINE__);
    }
    return view;
}

void tst_MolkViewCores::addShowsTheNewCore()
{
    ViewBench bench;
    const auto view = shownView(bench, 2);
    QVERIFY(view);
    QCOMPARE(shownCore(view), 0);

    addByMenu(view);

    QCOMPARE(coreLines(view), QStringList({"molk_0", "molk_1", "molk_2"}));
    QCOMPARE(documentOf(view)->cores.at(2)->id, 2);
    QCOMPARE(shownCore(view), 2);
    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
}

void tst_MolkViewCores::sixteenCoresAreTheMost()
{
    ViewBench bench;
    const auto view = shownView(bench, 15);
    QVERIFY(view);

    addByMenu(view);
    QCOMPARE(documentOf(view)->cores.size(), 16);
    QCOMPARE(shownCore(view), 15);
    view->setModified(false);
    view->changeMolkWidget(3);

    ModalDriver driver;
    driver.expectMessage("Warning", "Support 16 MOLKs at most.", QMessageBox::Ok);
    addByMenu(view);

    QCOMPARE(documentOf(view)->cores.size(), 16);
    QCOMPARE(documentOf(view)->optionWidgets.size(), 16);
    QCOMPARE(shownCore(view), 3);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::seventeenCoresOfAFileAreShownAsTheyStand()
{
    ViewBench bench;
    const auto view = shownView(bench, 17);
    QVERIFY(view);
    QCOMPARE(coreLines(view).size(), 17);

    ModalDriver driver;
    driver.expectMessage("Warning", "Support 16 MOLKs at most.", QMessageBox::Ok);
    addByMenu(view);

    // The number of cores names the core that was to be added; there is none.
    QCOMPARE(documentOf(view)->cores.size(), 17);
    QCOMPARE(shownCore(view), 0);
}

void tst_MolkViewCores::removeOfTheMiddleRenumbersTheRest()
{
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    const MolkCore *last = documentOf(view)->cores.at(2);
    const MolkOptionWidget *lastPage = documentOf(view)->optionWidgets.at(2);
    view->changeMolkWidget(2);
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([](QMessageBox *box) {
        QCOMPARE(box->windowTitle(), QString("Remove MOLk"));
        QCOMPARE(box->text(), removeQuestion(1));
        QCOMPARE(box->icon(), QMessageBox::Question);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
        QCOMPARE(box->defaultButton(), qobject_cast<QPushButton *>(box->button(QMessageBox::Ok)));
        QTest::keyClick(box, Qt::Key_Return);
    });

    removeByMenu(view, 1);

    QCOMPARE(coreLines(view), QStringList({"molk_0", "molk_1"}));
    QCOMPARE(documentOf(view)->cores.size(), 2);
    QCOMPARE(documentOf(view)->cores.at(0)->id, 0);
    QCOMPARE(documentOf(view)->cores.at(1)->id, 1);
    QCOMPARE(documentOf(view)->cores.at(1), last);
    QCOMPARE(documentOf(view)->optionWidgets.at(1), lastPage);
    QCOMPARE(child<QStackedWidget>(view, "stackedWidget")->count(), 2);
    QCOMPARE(shownCore(view), 0);
    QVERIFY(view->isModified());
}

void tst_MolkViewCores::removeKeepsTheOtherPages()
{
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    const QList<MolkOptionWidget *> pages = documentOf(view)->optionWidgets;
    child<QLineEdit>(pages.at(2), "lineEditUserClock")->setText("top/half");
    ModalDriver driver;
    driver.expectMessage("Remove MOLk", removeQuestion(0), QMessageBox::Ok);

    removeByMenu(view, 0);

    QCOMPARE(documentOf(view)->optionWidgets, pages.mid(1));
    QCOMPARE(child<QLineEdit>(pages.at(2), "lineEditUserClock")->text(), QString("top/half"));
}

void tst_MolkViewCores::removeLogsTheNumbers()
{
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    for (const char *line : {"before changed", "0", "1", "after changed", "0", "1"})
        QTest::ignoreMessage(QtDebugMsg, line);
    ModalDriver driver;
    driver.expectMessage("Remove MOLk", removeQuestion(1), QMessageBox::Ok);

    documentOf(view)->removeCore(1);
}

void tst_MolkViewCores::theOnlyCoreStays()
{
    ViewBench bench;
    const auto view = shownView(bench, 1);
    QVERIFY(view);
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([](QMessageBox *box) {
        QCOMPARE(box->windowTitle(), QString("Remove MOLK"));
        QCOMPARE(box->text(), QString("The only MOLK can not be removed."));
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });
    removeByMenu(view, 0);

    QCOMPARE(documentOf(view)->cores.size(), 1);
    QCOMPARE(shownCore(view), 0);
    QVERIFY(!view->isModified());

    // The number of cores is looked at before the index is.
    driver.expectMessage("Remove MOLK", "The only MOLK can not be removed.", QMessageBox::Ok);
    documentOf(view)->removeCore(-1);
}

void tst_MolkViewCores::cancelledRemoveShowsTheFirstCore_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("cancel") << false;
    QTest::newRow("escape") << true;
}

void tst_MolkViewCores::cancelledRemoveShowsTheFirstCore()
{
    QFETCH(bool, byKey);
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    view->changeMolkWidget(2);
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([byKey](QMessageBox *box) {
        if (byKey)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->button(QMessageBox::Cancel)->click();
    });

    removeByMenu(view, 2);

    QCOMPARE(documentOf(view)->cores.size(), 3);
    QCOMPARE(shownCore(view), 0);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::menuOnEmptySpaceCanOnlyAdd()
{
    ViewBench bench;
    const auto view = shownView(bench, 2);
    QVERIFY(view);
    const auto entries = [](const QMenu *menu) {
        QStringList lines;
        const QList<QAction *> actions = menu->actions();
        for (const QAction *action : actions)
            lines.append(action->text() + QLatin1String(action->isEnabled() ? "" : " (off)"));
        return lines;
    };

    MenuDriver onEmpty([&](QMenu *menu) {
        QCOMPARE(menu->parentWidget(), coreTree(view));
        QCOMPARE(entries(menu), QStringList({"Add", "Remove (off)"}));
    });
    requestMenu(coreTree(view), emptySpace(coreTree(view)));
    qApp->removeEventFilter(&onEmpty);

    MenuDriver onRow([&](QMenu *menu) { QCOMPARE(entries(menu), QStringList({"Add", "Remove"})); });
    requestMenu(coreTree(view), rowCenter(coreTree(view), 1));
}

void tst_MolkViewCores::dismissedMenuChangesNothing()
{
    ViewBench bench;
    const auto view = shownView(bench, 2);
    QVERIFY(view);
    view->changeMolkWidget(1);
    MenuDriver menu([](QMenu *shown) { QTest::keyClick(shown, Qt::Key_Escape); });

    requestMenu(coreTree(view), rowCenter(coreTree(view), 0));

    QCOMPARE(shownCore(view), 1);
    QCOMPARE(documentOf(view)->cores.size(), 2);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::indexOutsideIsIgnored()
{
    ViewBench bench;
    const auto view = shownView(bench, 2);
    QVERIFY(view);
    ModalDriver driver;

    documentOf(view)->removeCore(-1);
    documentOf(view)->removeCore(2);

    QCOMPARE(documentOf(view)->cores.size(), 2);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::clickShowsTheCore()
{
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    QTreeWidget *tree = coreTree(view);

    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, rowCenter(tree, 2));
    QCOMPARE(shownCore(view), 2);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, rowCenter(tree, 1));
    QCOMPARE(shownCore(view), 1);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::doubleClickShowsTheCore()
{
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    QTreeWidget *tree = coreTree(view);
    QSignalSpy doubleClicks(tree, SIGNAL(doubleClicked(QModelIndex)));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, rowCenter(tree, 2));
    view->changeMolkWidget(0);
    tree->setCurrentItem(tree->topLevelItem(2));

    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, rowCenter(tree, 2));

    QCOMPARE(doubleClicks.count(), 1);
    QCOMPARE(shownCore(view), 2);
}

void tst_MolkViewCores::clickOutsideTheCoresIsIgnored()
{
    ViewBench bench;
    const auto view = shownView(bench, 2);
    QVERIFY(view);

    view->on_treeWidget_clicked(QModelIndex());
    view->on_treeWidget_doubleClicked(QModelIndex());

    QCOMPARE(shownCore(view), 0);
    MolkView unopened;
    unopened.on_treeWidget_clicked(QModelIndex());
}

void tst_MolkViewCores::unknownNumberChangesNothing()
{
    ViewBench bench;
    const auto view = shownView(bench, 2);
    QVERIFY(view);
    view->changeMolkWidget(1);

    view->changeMolkWidget(2);
    view->changeMolkWidget(-1);

    QCOMPARE(shownCore(view), 1);
    MolkView unopened;
    unopened.changeMolkWidget(0);
}

void tst_MolkViewCores::coreIsFoundByItsNumber()
{
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    auto *document = documentOf(view);

    QCOMPARE(document->coreById(2), document->cores.at(2));
    QVERIFY(document->coreById(3) == nullptr);
    QVERIFY(document->coreById(-1) == nullptr);
    document->cores.at(2)->id = 1;
    QCOMPARE(document->coreById(1), document->cores.at(1));
    document->cores.at(2)->id = 2;
}

void tst_MolkViewCores::addedPageIsCountedAndConnected()
{
    ViewBench bench;
    const auto view = shownView(bench, 2);
    QVERIFY(view);
    MolkCore core(7);
    auto *page = new MolkOptionWidget(&core, nullptr, nullptr);

    QCOMPARE(view->addMolkOptionWidget(page), 3);

    auto *stack = child<QStackedWidget>(view, "stackedWidget");
    QCOMPARE(page->parentWidget(), stack);
    QCOMPARE(coreLines(view), QStringList({"molk_0", "molk_1", "molk_7"}));
    QVERIFY(!view->isModified());
    child<QPushButton>(page, "btnProbeInAdd")->click();
    QVERIFY(view->isModified());
    core.id = 2;
    view->removeMolkOptionWidget(page);
    delete page;
}

void tst_MolkViewCores::removedPageNoLongerModifies()
{
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    MolkOptionWidget *page = documentOf(view)->optionWidgets.at(1);

    view->removeMolkOptionWidget(page);
    documentOf(view)->optionWidgets.removeOne(page);
    child<QPushButton>(page, "btnProbeInAdd")->click();

    QVERIFY(!view->isModified());
    QCOMPARE(coreLines(view), QStringList({"molk_0", "molk_1"}));
    // It isn't deleted, and nobody sees it.
    QCOMPARE(page->parentWidget(), child<QStackedWidget>(view, "stackedWidget"));
    QVERIFY(page->isHidden());
}

void tst_MolkViewCores::netlistGoesToAllPagesAndTheOldOneEnds()
{
    ViewBench bench;
    const auto view = shownView(bench, 2);
    QVERIFY(view);
    auto *document = documentOf(view);
    const NetlistGuard old(document->netlist);
    QSignalSpy first(document->optionWidgets.at(0)->widget(0), SIGNAL(netlistChanged()));
    QSignalSpy second(document->optionWidgets.at(1)->widget(0), SIGNAL(netlistChanged()));

    document->setRtlNetlist(nullptr);
    QVERIFY(document->netlist == nullptr);
    QVERIFY(old.get() == nullptr);
    FATHOM::RtlNetlist *next = benchNetlist();
    document->setRtlNetlist(next);

    QCOMPARE(document->netlist, next);
    QCOMPARE(first.count(), 2);
    QCOMPARE(second.count(), 2);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::fileMayBeReloadedWhileTheMenuIsOpen()
{
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    bench.writeCores(2);
    ModalDriver driver;
    MenuDriver menu([&](QMenu *shown) {
        view->onBannerReload();
        chooseEntry(shown, "Remove");
    });

    // The line under the mouse is gone, so there is nothing to ask about.
    requestMenu(coreTree(view), rowCenter(coreTree(view), 2));

    QCOMPARE(coreLines(view), QStringList({"molk_0", "molk_1"}));
    QCOMPARE(shownCore(view), 0);
}

void tst_MolkViewCores::fileMayBeReloadedWhileRemoveAsks()
{
    ViewBench bench;
    const auto view = shownView(bench, 3);
    QVERIFY(view);
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        view->onBannerReload();
        box->button(QMessageBox::Ok)->click();
    });

    removeByMenu(view, 1);

    QCOMPARE(coreLines(view), QStringList({"molk_0", "molk_1", "molk_2"}));
    QCOMPARE(documentOf(view)->cores.size(), 3);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::viewMayGoWhileTheMenuIsOpen()
{
    ViewBench bench;
    auto view = shownView(bench, 2);
    QVERIFY(view);
    QTreeWidget *tree = coreTree(view);
    MenuDriver menu([&](QMenu *) { view.reset(); });

    view->on_treeWidget_customContextMenuRequested(rowCenter(tree, 1));

    QVERIFY(!view);
}

void tst_MolkViewCores::viewMayGoWhileRemoveAsks()
{
    ViewBench bench;
    auto view = shownView(bench, 2);
    QVERIFY(view);
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });

    documentOf(view)->removeCore(1);

    QVERIFY(!view);
}

void tst_MolkViewCores::viewMayGoWhileTheLimitIsTold()
{
    ViewBench bench;
    auto view = shownView(bench, 16);
    QVERIFY(view);
    QTreeWidget *tree = coreTree(view);
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });
    MenuDriver menu([](QMenu *shown) { chooseEntry(shown, "Add"); });

    view->on_treeWidget_customContextMenuRequested(emptySpace(tree));

    QVERIFY(!view);
}

void tst_MolkViewCores::viewMayGoWhileTheOnlyCoreIsTold()
{
    ViewBench bench;
    auto view = shownView(bench, 1);
    QVERIFY(view);
    QTreeWidget *tree = coreTree(view);
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });
    MenuDriver menu([](QMenu *shown) { chooseEntry(shown, "Remove"); });

    view->on_treeWidget_customContextMenuRequested(rowCenter(tree, 0));

    QVERIFY(!view);
}

MOLK_TEST_MAIN(tst_MolkViewCores)
#include "tst_molkviewcores.moc"
