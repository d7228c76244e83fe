// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "corelist.h"
#include "menudriver.h"
#include "modaldriver.h"
#include "molkcore.h"
#include "molkoptionwidget.h"
#include "testwidgetsmain.h"
#include "viewtest.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCursor>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeWidget>

using namespace MOLK;

class tst_MolkViewCores : public ViewTest
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
    void menuOpensAtTheCursor();
    void dismissedMenuChangesNothing();
    void indexOutsideIsIgnored();

    void fileMayBeReloadedWhileTheMenuIsOpen();
    void fileMayBeReloadedWhileRemoveAsks();
    void viewMayGoWhileTheMenuIsOpen();
    void viewMayGoWhileRemoveAsks();
    void viewMayGoWhileTheLimitIsTold();
    void viewMayGoWhileTheOnlyCoreIsTold();
};

static void requestMenu(QTreeWidget *tree, const QPoint &pos)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, tree->viewport()->mapToGlobal(pos));
    QApplication::sendEvent(tree->viewport(), &event);
}

static QPoint emptySpace(const QTreeWidget *tree)
{
    return tree->viewport()->rect().bottomLeft() + QPoint(5, -5);
}

static void addByMenu(const MolkView *view)
{
    MenuDriver menus([](QMenu *menu) { chooseEntry(menu, "Add"); });
    requestMenu(coreTree(view), emptySpace(coreTree(view)));
}

static void removeByMenu(const MolkView *view, int row)
{
    MenuDriver menus([](QMenu *menu) { chooseEntry(menu, "Remove"); });
    requestMenu(coreTree(view), rowCenter(coreTree(view), row));
}

static QString removeQuestion(int index)
{
    return QString("Do you want to remove MOLK %1 ?").arg(index);
}

void tst_MolkViewCores::addShowsTheNewCore()
{
    QVERIFY(openActive(2));
    QCOMPARE(shownCore(view.get()), 0);

    addByMenu(view.get());

    QCOMPARE(coreLines(view.get()), QStringList({"molk_0", "molk_1", "molk_2"}));
    QCOMPARE(document()->cores.at(2)->id, 2);
    QCOMPARE(shownCore(view.get()), 2);
    QCOMPARE(netlistOf(document()->optionWidgets.at(2)), document()->netlist);
    QVERIFY(view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
}

void tst_MolkViewCores::sixteenCoresAreTheMost()
{
    QVERIFY(openActive(15));

    addByMenu(view.get());
    QCOMPARE(document()->cores.size(), 16);
    QCOMPARE(shownCore(view.get()), 15);
    view->setModified(false);
    view->changeMolkWidget(3);

    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), view.get());
        QCOMPARE(box->windowTitle(), QString("Warning"));
        QCOMPARE(box->text(), QString("Support 16 MOLKs at most."));
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });
    addByMenu(view.get());

    QCOMPARE(document()->cores.size(), 16);
    QCOMPARE(document()->optionWidgets.size(), 16);
    QCOMPARE(shownCore(view.get()), 3);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::seventeenCoresOfAFileAreShownAsTheyStand()
{
    QVERIFY(openActive(17));
    QCOMPARE(coreLines(view.get()).size(), 17);

    ModalDriver driver;
    driver.expectMessage("Warning", "Support 16 MOLKs at most.", QMessageBox::Ok);
    addByMenu(view.get());

    // The number of cores names the core that was to be added; there is none.
    QCOMPARE(document()->cores.size(), 17);
    QCOMPARE(shownCore(view.get()), 0);
}

void tst_MolkViewCores::removeOfTheMiddleRenumbersTheRest()
{
    QVERIFY(openActive(3));
    const MolkCore *last = document()->cores.at(2);
    const MolkOptionWidget *lastPage = document()->optionWidgets.at(2);
    view->changeMolkWidget(2);
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), view.get());
        QCOMPARE(box->windowTitle(), QString("Remove MOLk"));
        QCOMPARE(box->text(), removeQuestion(1));
        QCOMPARE(box->icon(), QMessageBox::Question);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
        QCOMPARE(box->defaultButton(), qobject_cast<QPushButton *>(box->button(QMessageBox::Ok)));
        QTest::keyClick(box, Qt::Key_Return);
    });

    removeByMenu(view.get(), 1);

    QCOMPARE(coreLines(view.get()), QStringList({"molk_0", "molk_1"}));
    QCOMPARE(document()->cores.size(), 2);
    QCOMPARE(document()->cores.at(0)->id, 0);
    QCOMPARE(document()->cores.at(1)->id, 1);
    QCOMPARE(document()->cores.at(1), last);
    QCOMPARE(document()->optionWidgets.at(1), lastPage);
    QCOMPARE(child<QStackedWidget>(view, "stackedWidget")->count(), 2);
    QCOMPARE(shownCore(view.get()), 0);
    QVERIFY(view->isModified());
}

void tst_MolkViewCores::removeKeepsTheOtherPages()
{
    QVERIFY(openActive(3));
    const QList<MolkOptionWidget *> pages = document()->optionWidgets;
    child<QLineEdit>(pages.at(2), "lineEditUserClock")->setText("top/half");
    ModalDriver driver;
    driver.expectMessage("Remove MOLk", removeQuestion(0), QMessageBox::Ok);

    removeByMenu(view.get(), 0);

    QCOMPARE(document()->optionWidgets, pages.mid(1));
    QCOMPARE(child<QLineEdit>(pages.at(2), "lineEditUserClock")->text(), QString("top/half"));
}

void tst_MolkViewCores::removeLogsTheNumbers()
{
    QVERIFY(openActive(3));
    for (const char *line : {"before changed", "0", "1", "after changed", "0", "1"})
        QTest::ignoreMessage(QtDebugMsg, line);
    ModalDriver driver;
    driver.expectMessage("Remove MOLk", removeQuestion(1), QMessageBox::Ok);

    document()->removeCore(1);
}

void tst_MolkViewCores::theOnlyCoreStays()
{
    QVERIFY(openActive());
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), view.get());
        QCOMPARE(box->windowTitle(), QString("Remove MOLK"));
        QCOMPARE(box->text(), QString("The only MOLK can not be removed."));
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });
    removeByMenu(view.get(), 0);

    QCOMPARE(document()->cores.size(), 1);
    QCOMPARE(shownCore(view.get()), 0);
    QVERIFY(!view->isModified());

    // The number of cores is looked at before the index is.
    driver.expectMessage("Remove MOLK", "The only MOLK can not be removed.", QMessageBox::Ok);
    document()->removeCore(-1);
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
    QVERIFY(openActive(3));
    view->changeMolkWidget(2);
    ModalDriver driver;
    driver.expectCancelled(byKey);

    removeByMenu(view.get(), 2);

    QCOMPARE(document()->cores.size(), 3);
    QCOMPARE(shownCore(view.get()), 0);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::menuOnEmptySpaceCanOnlyAdd()
{
    QVERIFY(openActive(2));
    const auto entries = [](const QMenu *menu) {
        QStringList lines;
        const QList<QAction *> actions = menu->actions();
        for (const QAction *action : actions)
            lines.append(action->text() + QLatin1String(action->isEnabled() ? "" : " (off)"));
        return lines;
    };

    MenuDriver onEmpty([&](QMenu *menu) {
        QCOMPARE(menu->parentWidget(), coreTree(view.get()));
        QCOMPARE(entries(menu), QStringList({"Add", "Remove (off)"}));
    });
    requestMenu(coreTree(view.get()), emptySpace(coreTree(view.get())));
    qApp->removeEventFilter(&onEmpty);

    MenuDriver onRow([&](QMenu *menu) { QCOMPARE(entries(menu), QStringList({"Add", "Remove"})); });
    requestMenu(coreTree(view.get()), rowCenter(coreTree(view.get()), 1));
}

void tst_MolkViewCores::menuOpensAtTheCursor()
{
    QVERIFY(openActive(2));
    const QPoint place = view->mapToGlobal(QPoint(300, 200));
    QCursor::setPos(place);
    MenuDriver menus([&](QMenu *menu) { QCOMPARE(menu->pos(), place); });

    // The key for menus names another place.
    requestMenu(coreTree(view.get()), rowCenter(coreTree(view.get()), 0));
}

void tst_MolkViewCores::dismissedMenuChangesNothing()
{
    QVERIFY(openActive(2));
    view->changeMolkWidget(1);
    MenuDriver menus([](QMenu *menu) { QTest::keyClick(menu, Qt::Key_Escape); });

    requestMenu(coreTree(view.get()), rowCenter(coreTree(view.get()), 0));

    QCOMPARE(shownCore(view.get()), 1);
    QCOMPARE(document()->cores.size(), 2);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::indexOutsideIsIgnored()
{
    QVERIFY(openActive(2));
    ModalDriver driver;

    document()->removeCore(-1);
    document()->removeCore(2);

    QCOMPARE(document()->cores.size(), 2);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::fileMayBeReloadedWhileTheMenuIsOpen()
{
    QVERIFY(openActive(3));
    bench->writeCores(2);
    ModalDriver driver;
    MenuDriver menus([&](QMenu *menu) {
        view->onBannerReload();
        chooseEntry(menu, "Remove");
    });

    // The line under the mouse is gone, so there is nothing to ask about.
    requestMenu(coreTree(view.get()), rowCenter(coreTree(view.get()), 2));

    QCOMPARE(coreLines(view.get()), QStringList({"molk_0", "molk_1"}));
    QCOMPARE(shownCore(view.get()), 0);
}

void tst_MolkViewCores::fileMayBeReloadedWhileRemoveAsks()
{
    QVERIFY(openActive(3));
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        view->onBannerReload();
        box->button(QMessageBox::Ok)->click();
    });

    removeByMenu(view.get(), 1);

    QCOMPARE(coreLines(view.get()), QStringList({"molk_0", "molk_1", "molk_2"}));
    QCOMPARE(document()->cores.size(), 3);
    QVERIFY(!view->isModified());
}

void tst_MolkViewCores::viewMayGoWhileTheMenuIsOpen()
{
    QVERIFY(openActive(2));
    QTreeWidget *tree = coreTree(view.get());
    MenuDriver menus([&](QMenu *) { view.reset(); });

    view->on_treeWidget_customContextMenuRequested(rowCenter(tree, 1));

    QVERIFY(!view);
}

void tst_MolkViewCores::viewMayGoWhileRemoveAsks()
{
    QVERIFY(openActive(2));
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });

    document()->removeCore(1);

    QVERIFY(!view);
}

void tst_MolkViewCores::viewMayGoWhileTheLimitIsTold()
{
    QVERIFY(openActive(16));
    QTreeWidget *tree = coreTree(view.get());
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });
    MenuDriver menus([](QMenu *menu) { chooseEntry(menu, "Add"); });

    view->on_treeWidget_customContextMenuRequested(emptySpace(tree));

    QVERIFY(!view);
}

void tst_MolkViewCores::viewMayGoWhileTheOnlyCoreIsTold()
{
    QVERIFY(openActive());
    QTreeWidget *tree = coreTree(view.get());
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { view.reset(); });
    MenuDriver menus([](QMenu *menu) { chooseEntry(menu, "Remove"); });

    view->on_treeWidget_customContextMenuRequested(rowCenter(tree, 0));

    QVERIFY(!view);
}

MOLK_TEST_MAIN(tst_MolkViewCores)
#include "tst_molkviewcores.moc"
