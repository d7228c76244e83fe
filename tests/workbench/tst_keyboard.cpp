// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "projectpanel.h"
#include "testwidgetsmain.h"
#include "workbenchfixture.h"

#include "host/documentarea.h"

#include "core/iview.h"

#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTreeWidget>

/// What the keyboard alone can reach in the window.
class KeyboardTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { bench.reset(); }

    void noTwoEntriesOfAMenuShareALetter();
    void noTwoEntriesShareAKey();
    void whatNeedsAProjectIsDisabledWithoutOne();
    void whatNeedsFilesIsDisabledWithoutThem();
    void theKeysOfTheTreeHoldThereOnly();
    void returnOpensTheFileOfTheRow();

    void returnShowsACore_data();
    void returnShowsACore();
    void returnOpensThePortOfARow_data();
    void returnOpensThePortOfARow();
    void returnInAValueLeavesTheRowsAlone();
    void dialogsKeepTheirReturn();

    void panesAreVisitedInTurn();
    void hiddenPanesAreLeftOut();
    void documentsAreVisitedInTurn();
    void theQuestionOfAConfigurationIsReached();

private:
    QTreeWidget *tree(const QString &name)
    {
        return bench.documents()->activeView()->findChild<QTreeWidget *>(name);
    }

    WorkbenchFixture bench;
};

void KeyboardTest::initTestCase()
{
    QVERIFY(bench.start());
}

void KeyboardTest::init()
{
    QVERIFY(bench.openChip());
    bench.activate();
}

static void collectMenus(const QWidget *menu, QList<const QWidget *> *found)
{
    found->append(menu);
    const auto actions = menu->actions();
    for (const QAction *action : actions) {
        if (action->menu())
            collectMenus(action->menu(), found);
    }
}

// The entries of the menu of recent files are files, and have no letters.
void KeyboardTest::noTwoEntriesOfAMenuShareALetter()
{
    QList<const QWidget *> menus;
    collectMenus(bench.window()->menuBar(), &menus);
    menus.append(bench.panel());
    QVERIFY(menus.size() >= 8);
    for (const QWidget *menu : qAsConst(menus)) {
        QStringList letters;
        const auto actions = menu->actions();
        for (const QAction *action : actions) {
            if (action->isSeparator() || menu->objectName() == "recentMenu")
                continue;
            const QString letter = QKeySequence::mnemonic(action->text()).toString();
            QVERIFY2(!letter.isEmpty(), qPrintable("no letter: " + action->text()));
            QVERIFY2(!letters.contains(letter), qPrintable("twice: " + action->text()));
            letters.append(letter);
        }
    }
}

void KeyboardTest::noTwoEntriesShareAKey()
{
    QHash<QString, QString> owners;
    const auto actions = bench.window()->findChildren<QAction *>();
    for (const QAction *action : actions) {
        const QList<QKeySequence> keys = action->shortcuts();
        for (const QKeySequence &key : keys) {
            const QString text = key.toString();
            QVERIFY2(!owners.contains(text),
                     qPrintable(text + ": " + action->text() + ", " + owners.value(text)));
            owners.insert(text, action->text());
        }
    }
    QVERIFY(owners.size() >= 15);
}

void KeyboardTest::whatNeedsAProjectIsDisabledWithoutOne()
{
    const QStringList texts{"&Add Files...", "&Top Module...", "&Settings...",
                            "Save Project &As...", "Close P&roject"};
    for (const QString &text : texts)
        QVERIFY2(bench.action(text)->isEnabled(), qPrintable(text));
    QVERIFY(bench.window()->closeProject());
    for (const QString &text : texts)
        QVERIFY2(!bench.action(text)->isEnabled(), qPrintable(text));
}

void KeyboardTest::whatNeedsFilesIsDisabledWithoutThem()
{
    const QStringList texts{"&Open", "&Remove from Project", "Use in &Design", "File &Kind",
                            "&Include File"};
    bench.clickRow("Verilog");
    for (const QString &text : texts)
        QVERIFY2(!bench.action(text)->isEnabled(), qPrintable(text));
    bench.clickRow("chip.v");
    for (const QString &text : texts)
        QVERIFY2(bench.action(text)->isEnabled(), qPrintable(text));
}

// Delete in a field of a page isn't about the project.
void KeyboardTest::theKeysOfTheTreeHoldThereOnly()
{
    const QByteArray before = bench.projectText();
    bench.clickRow("spare.v");
    tree("treeProbeIn")->setFocus();
    for (Qt::Key key : {Qt::Key_Delete, Qt::Key_Space, Qt::Key_Insert})
        bench.key(key);
    QCOMPARE(bench.projectText(), before);
}

void KeyboardTest::returnOpensTheFileOfTheRow()
{
    bench.clickRow("chip.v");
    bench.key(Qt::Key_Return);
    QCOMPARE(bench.documents()->tabText(bench.documents()->activeView()), "chip.v");
}

void KeyboardTest::returnShowsACore_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
    QTest::newRow("f2") << int(Qt::Key_F2);
}

void KeyboardTest::returnShowsACore()
{
    QFETCH(int, key);
    MOLK::MolkCore first(0);
    MOLK::MolkCore second(1);
    QVERIFY(MOLK::writeMOLKConfigToXml({&first, &second}, bench.path("two.molk")));
    bench.window()->openPaths({bench.path("two.molk")});
    const auto *dock = bench.documents()->activeView()->findChild<QDockWidget *>("dockWidget_2");
    QCOMPARE(dock->windowTitle(), "molk_0");

    tree("treeWidget")->setFocus();
    bench.key(Qt::Key_Down);
    QCOMPARE(dock->windowTitle(), "molk_0");
    bench.key(Qt::Key(key));
    QCOMPARE(dock->windowTitle(), "molk_1");
}

void KeyboardTest::returnOpensThePortOfARow_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("title");
    QTest::newRow("probe-in") << "treeProbeIn"
                              << "Probe In Port";
    QTest::newRow("probe-out") << "treeProbeOut"
                               << "Probe Out Port";
}

void KeyboardTest::returnOpensThePortOfARow()
{
    QFETCH(QString, name);
    QFETCH(QString, title);
    ModalDriver driver;
    driver.expectDialog<QDialog>([title](QDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), title);
        dialog->reject();
    });
    tree(name)->setFocus();
    bench.key(Qt::Key_Down);
    bench.key(Qt::Key_Return);
}

// The line leaves the key to the tree that it lies in.
void KeyboardTest::returnInAValueLeavesTheRowsAlone()
{
    QTreeWidget *values = tree("treeValue");
    QWidget *line = values->itemWidget(values->topLevelItem(0), 0);
    line->setEnabled(true);
    line->setFocus();
    QCOMPARE(QApplication::focusWidget(), line);
    bench.key(Qt::Key_Return);
    QVERIFY(tree("treeProbeOut")->selectedItems().isEmpty());
}

// Return runs the search, also from the results.
void KeyboardTest::dialogsKeepTheirReturn()
{
    ModalDriver driver;
    driver.expectDialog<QDialog>([](QDialog *search) {
        QCOMPARE(search->windowTitle(), "Search Nets");
        auto *results = search->findChild<QTreeWidget *>("treeWidget");
        search->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), search);
        search->findChild<QLineEdit *>("lineEditName")->setFocus();
        QTest::keyClick(search->windowHandle(), Qt::Key_Return);
        QCOMPARE(results->topLevelItemCount(), 2);
        results->setCurrentItem(results->topLevelItem(0));
        results->setFocus();
        search->findChild<QLineEdit *>("lineEditName")->setText("clk");
        QTest::keyClick(search->windowHandle(), Qt::Key_Return);
        QCOMPARE(results->topLevelItemCount(), 1);
        search->reject();
    });
    QWidget *view = bench.documents()->activeView();
    QTest::mouseClick(view->findChild<QWidget *>("checkUserClock"), Qt::LeftButton, {},
                      QPoint(8, 8));
    QTest::mouseClick(view->findChild<QPushButton *>("btnUserClock"), Qt::LeftButton);
}

void KeyboardTest::panesAreVisitedInTurn()
{
    bench.panel()->setFocus();
    bench.key(Qt::Key_F6);
    QVERIFY(bench.documents()->isAncestorOf(QApplication::focusWidget()));
    bench.key(Qt::Key_F6);
    QCOMPARE(QApplication::focusWidget()->objectName(), "problems");
    bench.key(Qt::Key_F6);
    QCOMPARE(QApplication::focusWidget(), bench.panel());
    bench.key(Qt::Key_F6, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), "problems");

    // Back where the user was.
    QWidget *ports = tree("treeProbeIn");
    ports->setFocus();
    bench.key(Qt::Key_F6);
    bench.key(Qt::Key_F6, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), ports);
}

void KeyboardTest::hiddenPanesAreLeftOut()
{
    auto *dock = bench.window()->findChild<QDockWidget *>("messagesDock");
    dock->hide();
    tree("treeProbeIn")->setFocus();
    bench.key(Qt::Key_F6);
    QCOMPARE(QApplication::focusWidget(), bench.panel());
    dock->show();
}

void KeyboardTest::documentsAreVisitedInTurn()
{
    bench.window()->openPaths({bench.path("chip.v"), bench.path("spare.v")});
    const auto shown = [this] {
        return bench.documents()->tabText(bench.documents()->activeView());
    };
    QCOMPARE(shown(), "spare.v");
    bench.key(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(shown(), "a.molk");
    bench.key(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(shown(), "chip.v");
    bench.key(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(shown(), "a.molk");
    bench.key(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(shown(), "spare.v");
}

// Its buttons come in the order of the Tab key, and Space presses them.
void KeyboardTest::theQuestionOfAConfigurationIsReached()
{
    bench.clickRow("spare.v");
    bench.key(Qt::Key_Delete);
    QCOMPARE(bench.banners(), QStringList("Design files changed. Do you want to reload?"));
    tree("treeWidget")->setFocus();
    bool reached = false;
    for (int i = 0; i < 40 && !reached; ++i) {
        bench.key(Qt::Key_Tab);
        reached = QApplication::focusWidget()->objectName() == "btnB";
    }
    QVERIFY(reached);
    bench.key(Qt::Key_Space);
    QCOMPARE(bench.banners(), QStringList());
}

MOLK_TEST_MAIN(KeyboardTest)
#include "tst_keyboard.moc"
