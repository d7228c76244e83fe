// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "messagespane.h"
#include "modaldriver.h"
#include "sourceview.h"
#include "testwidgetsmain.h"
#include "workbenchfixture.h"

#include "host/host.h"

#include "core/iview.h"

#include <QDockWidget>
#include <QDropEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMimeData>
#include <QSettings>
#include <QTreeWidget>
#include <QWindow>

using Workbench::SourceView;

/// The other roads by which files come into the window, and what it remembers.
class WindowFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void theLayoutOfTheLastTimeIsTakenOver();
    void droppedFilesAreOpened();
    void somethingElseIsNotDropped();
    void recentFilesAreOffered();
    void aProblemOpensItsSource();
    void aFileThatIsGoneIsTold();
    void theLayoutIsStored();

private:
    QStringList recentTexts();

    WorkbenchFixture bench;
};

// A window with the panes of the workbench, of which one is closed and one is at another side.
static QByteArray otherLayout()
{
    QMainWindow window;
    for (const char *name : {"projectDock", "messagesDock"}) {
        auto *dock = new QDockWidget(&window);
        dock->setObjectName(QLatin1String(name));
        window.addDockWidget(Qt::RightDockWidgetArea, dock);
    }
    window.findChild<QDockWidget *>("messagesDock")->hide();
    return window.saveState();
}

void WindowFilesTest::initTestCase()
{
    QSettings().setValue("window/state", otherLayout());
    QVERIFY(bench.start());
}

void WindowFilesTest::theLayoutOfTheLastTimeIsTakenOver()
{
    auto *project = bench.window()->findChild<QDockWidget *>("projectDock");
    QCOMPARE(bench.window()->dockWidgetArea(project), Qt::RightDockWidgetArea);
    auto *messages = bench.window()->findChild<QDockWidget *>("messagesDock");
    QVERIFY(messages->isHidden());
    messages->show();
}

void WindowFilesTest::cleanup()
{
    bench.reset();
    bench.window()->show();
}

QStringList WindowFilesTest::recentTexts()
{
    auto *menu = bench.window()->findChild<QMenu *>("recentMenu");
    emit menu->aboutToShow();
    QStringList texts;
    const auto actions = menu->actions();
    for (const QAction *action : actions) {
        if (!action->isSeparator())
            texts.append(action->text());
    }
    return texts;
}

static void drop(QWidget *window, const QMimeData &data)
{
    const QPoint middle = window->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window->windowHandle(), &enter);
    if (!enter.isAccepted())
        return;
    QDropEvent dropped(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window->windowHandle(), &dropped);
}

void WindowFilesTest::droppedFilesAreOpened()
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(bench.makeProject("p.eda.yml")),
                  QUrl::fromLocalFile(bench.makeConfiguration("a.molk"))});
    drop(bench.window(), data);
    QTRY_VERIFY(bench.documents()->activeView());
    QCOMPARE(bench.window()->windowTitle(), "a.molk - p - Workbench");
}

void WindowFilesTest::somethingElseIsNotDropped()
{
    QMimeData data;
    data.setText("some text");
    drop(bench.window(), data);
    data.setUrls({QUrl("https://example.org/a.molk")});
    drop(bench.window(), data);
    QCoreApplication::processEvents();
    QVERIFY(bench.documents()->views().isEmpty());
}

void WindowFilesTest::recentFilesAreOffered()
{
    QCOMPARE(recentTexts(), QStringList("&Clear List"));
    QVERIFY(bench.openExample("a & b.molk"));
    QCOMPARE(recentTexts(),
             QStringList({bench.path("p.eda.yml"), bench.path("a && b.molk"), "&Clear List"}));

    bench.action("&Close")->trigger();
    bench.action(bench.path("a && b.molk"))->trigger();
    QVERIFY(bench.documents()->activeView());

    recentTexts();
    bench.action("&Clear List")->trigger();
    QCOMPARE(recentTexts(), QStringList("&Clear List"));
}

void WindowFilesTest::aProblemOpensItsSource()
{
    QVERIFY(bench.openExample());
    bench.window()->messages()->setDesignLog({"WARNING: " + bench.path("chip.v") + ":2:1: odd"});
    auto *problems = bench.window()->findChild<QTreeWidget *>("problems");
    emit problems->itemActivated(problems->topLevelItem(0), 0);
    auto *view = qobject_cast<SourceView *>(bench.documents()->activeView());
    QVERIFY(view);
    QCOMPARE(view->currentLine(), 2);
}

void WindowFilesTest::aFileThatIsGoneIsTold()
{
    QVERIFY(bench.openExample());
    ModalDriver driver;
    driver.expectMessage("Error", bench.path("gone.v") + " does not exist.", QMessageBox::Ok);
    bench.window()->openPaths({bench.path("gone.v")});

    driver.expectMessage("Error", bench.path("gone.molk") + " open file failed.", QMessageBox::Ok);
    bench.window()->openPaths({bench.path("gone.molk")});
    QVERIFY(!recentTexts().contains(bench.path("gone.molk")));
    QCOMPARE(bench.documents()->views().size(), 1);
}

void WindowFilesTest::theLayoutIsStored()
{
    auto *dock = bench.window()->findChild<QDockWidget *>("messagesDock");
    dock->hide();
    QVERIFY(bench.window()->close());
    dock->show();

    QVERIFY(QSettings().contains("window/state"));
    QVERIFY(bench.window()->restoreState(QSettings().value("window/state").toByteArray()));
    QVERIFY(dock->isHidden());
    dock->show();
}

MOLK_TEST_MAIN(WindowFilesTest)
#include "tst_windowfiles.moc"
