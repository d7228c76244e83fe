// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "messagespane.h"
#include "modaldriver.h"
#include "projectpanel.h"
#include "sourceview.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "workbenchfixture.h"

#include "host/host.h"
#include "project/edamproject.h"

#include "core/iview.h"

#include <QDockWidget>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSettings>
#include <QWindow>

using Workbench::MainWindow;
using Workbench::MessagesPane;
using Workbench::ProjectPanel;
using Workbench::SourceView;

class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void theMenuOpensAProjectAndAConfiguration();
    void savingFollowsTheActiveView();
    void closingACleanViewAsksNothing();
    void closingAModifiedViewAsks();
    void closingTheWindowAsksEachModifiedView();
    void quittingIsClosing();
    void aWizardsFileIsOpened();
    void withoutAProjectTheWizardBeginsAtHome();

    void aConfigurationBringsItsProjectAlong();
    void aConfigurationWithoutADesignIsRefused();
    void sourceFilesMakeAProjectIfNoneIsOpen();
    void sourceFilesAreShownIfAProjectIsOpen();
    void anotherTopModuleIsNotStored();
    void aBrokenProjectIsToldAndChangesNothing();
    void anotherProjectClosesTheViews();
    void aRefusedCloseKeepsTheProject();
    void theTreeFollowsTheProject();

    void droppedFilesAreOpened();
    void somethingElseIsNotDropped();
    void recentFilesAreOffered();
    void aProblemOpensItsSource();
    void aFileThatIsGoneIsTold();
    void theLayoutIsRemembered();

private:
    Core::IView *openExample(const QString &name = "a.molk");
    QStringList recentTexts();
    void answerFileDialog(ModalDriver &driver, const QString &path);

    WorkbenchFixture bench;
};

void MainWindowTest::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QVERIFY(bench.start());
}

void MainWindowTest::cleanup()
{
    bench.reset();
    bench.window()->show();
}

// A clean view of a configuration with one core.
Core::IView *MainWindowTest::openExample(const QString &name)
{
    const QString path = bench.makeConfiguration(name);
    QStringList errors;
    if (!bench.runtime.services().project()
        && !bench.window()->openProject(bench.makeProject("p.eda.yml"), QString(), &errors))
        return nullptr;
    bench.window()->openPaths({path});
    return bench.documents()->activeView();
}

QStringList MainWindowTest::recentTexts()
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

void MainWindowTest::answerFileDialog(ModalDriver &driver, const QString &path)
{
    driver.expectDialog<QFileDialog>([path](QFileDialog *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });
}

void MainWindowTest::theMenuOpensAProjectAndAConfiguration()
{
    const QString project = bench.makeProject("p.eda.yml", {"a.molk"});
    const QString configuration = bench.makeConfiguration("a.molk");
    QCOMPARE(bench.window()->windowTitle(), "Workbench");

    ModalDriver driver;
    answerFileDialog(driver, project);
    bench.action("Open &Project...")->trigger();
    QCOMPARE(bench.window()->windowTitle(), "p - Workbench");
    QCOMPARE(
        treeLines(bench.window()->findChild<ProjectPanel *>()->model()),
        QStringList({"p", "  Configurations", "    a.molk", "  Verilog", "    chip.v", "  Options",
                     "    Top module: chip", "    Device: not set", "    Verilog standard: not set",
                     "    Synthesis tool: not set", "    Include path: not set"}));

    answerFileDialog(driver, configuration);
    bench.action("&Open...")->trigger();
    QVERIFY(bench.documents()->activeView());
    QCOMPARE(bench.window()->windowTitle(), "a.molk - p - Workbench");
}

void MainWindowTest::savingFollowsTheActiveView()
{
    QVERIFY(openExample());
    QAction *save = bench.runtime.services().proxyAction("Core.Action.Save");
    QVERIFY(!save->isEnabled());

    bench.modify();
    QVERIFY(save->isEnabled());
    QCOMPARE(bench.window()->windowTitle(), "a.molk * - p - Workbench");

    save->trigger();
    QVERIFY(!save->isEnabled());
    QCOMPARE(bench.window()->windowTitle(), "a.molk - p - Workbench");

    // A view without anything to save has no action.
    bench.modify();
    bench.window()->showSource(bench.path("chip.v"), 0);
    QVERIFY(!save->isEnabled());
}

void MainWindowTest::closingACleanViewAsksNothing()
{
    QVERIFY(openExample());
    const ModalDriver driver;
    bench.action("&Close")->trigger();
    QVERIFY(!bench.documents()->activeView());
    QVERIFY(!bench.action("&Close")->isEnabled());
}

void MainWindowTest::closingAModifiedViewAsks()
{
    Core::IView *view = openExample();
    QVERIFY(view);
    bench.modify();
    const QString question = "Save changes to \"" + bench.path("a.molk") + "\" ?";

    ModalDriver driver;
    driver.expectMessage("Save", question, QMessageBox::Cancel);
    bench.action("&Close")->trigger();
    QCOMPARE(bench.documents()->activeView(), view);

    driver.expectMessage("Save", question, QMessageBox::Discard);
    bench.action("&Close")->trigger();
    QVERIFY(!bench.documents()->activeView());
}

void MainWindowTest::closingTheWindowAsksEachModifiedView()
{
    QVERIFY(openExample("a.molk"));
    bench.modify();
    QVERIFY(openExample("b.molk"));
    bench.modify();
    QVERIFY(openExample("clean.molk"));

    // The clean view in front goes without a word.
    ModalDriver driver;
    driver.expectMessage("Save", "Save changes to \"" + bench.path("b.molk") + "\" ?",
                         QMessageBox::Ok);
    driver.expectMessage("Save", "Save changes to \"" + bench.path("a.molk") + "\" ?",
                         QMessageBox::Cancel);
    QVERIFY(!bench.window()->close());
    QVERIFY(bench.window()->isVisible());
    QCOMPARE(bench.documents()->views().size(), 1);

    driver.expectMessage("Save", "Save changes to \"" + bench.path("a.molk") + "\" ?",
                         QMessageBox::Discard);
    QVERIFY(bench.window()->close());
    QVERIFY(bench.documents()->views().isEmpty());
}

void MainWindowTest::quittingIsClosing()
{
    QVERIFY(openExample());
    bench.modify();
    ModalDriver driver;
    driver.expectMessage("Save", "Save changes to \"" + bench.path("a.molk") + "\" ?",
                         QMessageBox::Discard);
    bench.action("&Quit")->trigger();
    QVERIFY(!bench.window()->isVisible());
}

void MainWindowTest::aWizardsFileIsOpened()
{
    QStringList errors;
    QVERIFY(bench.window()->openProject(bench.makeProject("p.eda.yml"), QString(), &errors));
    auto *wizard = bench.window()->findChild<QAction *>("MB.Wizard.MOLK");
    QVERIFY(wizard);
    QCOMPARE(wizard->text(), "&MOLK Config File...");

    ModalDriver driver;
    driver.expectDialog<QDialog>([](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("editName")->setText("made");
        dialog->accept();
    });
    wizard->trigger();
    QVERIFY(bench.documents()->activeView());
    QCOMPARE(bench.documents()->tabText(bench.documents()->activeView()), "made.molk *");
    QTRY_VERIFY(
        treeLines(bench.window()->findChild<ProjectPanel *>()->model()).contains("    made.molk"));
}

void MainWindowTest::withoutAProjectTheWizardBeginsAtHome()
{
    ModalDriver driver;
    driver.expectDialog<QDialog>([](QDialog *dialog) {
        QCOMPARE(dialog->findChild<QLineEdit *>("editCreateIn")->text(), QDir::homePath());
        QVERIFY(!dialog->findChild<QWidget *>("checkBoxAddToCurrent")->isEnabled());
        dialog->reject();
    });
    bench.window()->findChild<QAction *>("MB.Wizard.MOLK")->trigger();
}

void MainWindowTest::aConfigurationBringsItsProjectAlong()
{
    bench.makeProject("other.eda.yml");
    bench.makeProject("holder.eda.yml", {"a.molk"});
    bench.window()->openPaths({bench.makeConfiguration("a.molk")});
    QVERIFY(bench.documents()->activeView());
    QCOMPARE(bench.runtime.services().project()->name(), "holder");
    QVERIFY(QFile::remove(bench.path("holder.eda.yml")));
}

void MainWindowTest::aConfigurationWithoutADesignIsRefused()
{
    ModalDriver driver;
    driver.expectMessage("Error", "Design files are not exist.", QMessageBox::Ok);
    bench.window()->openPaths({bench.makeConfiguration("lonely.molk")});
    QVERIFY(!bench.documents()->activeView());
}

void MainWindowTest::sourceFilesMakeAProjectIfNoneIsOpen()
{
    const QString one = bench.makeFile("one.v", "module one; endmodule\n");
    const QString two = bench.makeFile("two.sv", "module two; endmodule\n");
    bench.window()->openPaths({one, two});
    const Standin::EdamProject *project = bench.runtime.services().project();
    QVERIFY(project);
    QCOMPARE(project->files().size(), 2);
    QVERIFY(project->path().isEmpty());
    QVERIFY(bench.documents()->views().isEmpty());
}

void MainWindowTest::sourceFilesAreShownIfAProjectIsOpen()
{
    QVERIFY(openExample());
    bench.window()->openPaths({bench.path("chip.v")});
    auto *view = qobject_cast<SourceView *>(bench.documents()->activeView());
    QVERIFY(view);
    QCOMPARE(view->file(), bench.path("chip.v"));
    QCOMPARE(bench.documents()->views().size(), 2);

    bench.window()->openPaths({bench.path("./chip.v")});
    QCOMPARE(bench.documents()->views().size(), 2);
}

void MainWindowTest::anotherTopModuleIsNotStored()
{
    const QString path = bench.makeProject("p.eda.yml");
    QStringList errors;
    QVERIFY(bench.window()->openProject(path, "other", &errors));
    QCOMPARE(bench.runtime.services().project()->top(), "other");
    QCOMPARE(bench.runtime.services().project()->designInfo().value("Top").toString(), "other");

    QVERIFY(bench.window()->openProject(path, QString(), &errors));
    QCOMPARE(bench.runtime.services().project()->top(), "chip");
}

void MainWindowTest::aBrokenProjectIsToldAndChangesNothing()
{
    QVERIFY(openExample());
    const QString broken = bench.makeFile("broken.eda.yml", "name: x\nfiles: 7\n");

    ModalDriver driver;
    driver.expectMessage("Error", "The project " + broken + " can not be opened.", QMessageBox::Ok);
    bench.window()->openPaths({broken});
    QCOMPARE(bench.runtime.services().project()->name(), "p");
    QCOMPARE(bench.documents()->views().size(), 1);
    QVERIFY(bench.window()->findChild<QPlainTextEdit *>("log")->toPlainText().contains(
        "ERROR: " + broken + ":2:"));
}

void MainWindowTest::anotherProjectClosesTheViews()
{
    QVERIFY(openExample());
    QStringList errors;
    QVERIFY(bench.window()->openProject(bench.makeProject("q.eda.yml"), QString(), &errors));
    QVERIFY(bench.documents()->views().isEmpty());
    QCOMPARE(bench.window()->windowTitle(), "q - Workbench");
}

void MainWindowTest::aRefusedCloseKeepsTheProject()
{
    QVERIFY(openExample());
    bench.modify();
    ModalDriver driver;
    driver.expectMessage("Save", "Save changes to \"" + bench.path("a.molk") + "\" ?",
                         QMessageBox::Cancel);
    bench.window()->openPaths({bench.makeProject("q.eda.yml")});
    QCOMPARE(bench.runtime.services().project()->name(), "p");
    QCOMPARE(bench.documents()->views().size(), 1);

    driver.expectMessage("Save", "Save changes to \"" + bench.path("a.molk") + "\" ?",
                         QMessageBox::Discard);
    bench.action("Close P&roject")->trigger();
    QVERIFY(!bench.runtime.services().project());
    QVERIFY(!bench.action("Close P&roject")->isEnabled());
}

void MainWindowTest::theTreeFollowsTheProject()
{
    QStringList errors;
    QVERIFY(bench.window()->openProject(bench.makeProject("p.eda.yml"), QString(), &errors));
    auto *panel = bench.window()->findChild<ProjectPanel *>();
    panel->topLevelItem(0)->child(1)->setExpanded(false);

    QString error;
    QVERIFY(bench.runtime.services().project()->setTop("other", &error));
    QTRY_VERIFY(treeLines(panel->model()).contains("    Top module: other"));

    // What the user has folded stays so.
    QCOMPARE(panel->topLevelItem(0)->child(1)->text(0), "Options");
    QVERIFY(!panel->topLevelItem(0)->child(1)->isExpanded());
    QVERIFY(panel->topLevelItem(0)->child(0)->isExpanded());
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

void MainWindowTest::droppedFilesAreOpened()
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(bench.makeProject("p.eda.yml")),
                  QUrl::fromLocalFile(bench.makeConfiguration("a.molk"))});
    drop(bench.window(), data);
    QTRY_VERIFY(bench.documents()->activeView());
    QCOMPARE(bench.window()->windowTitle(), "a.molk - p - Workbench");
}

void MainWindowTest::somethingElseIsNotDropped()
{
    QMimeData data;
    data.setText("some text");
    drop(bench.window(), data);
    data.setUrls({QUrl("https://example.org/a.molk")});
    drop(bench.window(), data);
    QCoreApplication::processEvents();
    QVERIFY(bench.documents()->views().isEmpty());
}

void MainWindowTest::recentFilesAreOffered()
{
    QCOMPARE(recentTexts(), QStringList("&Clear List"));
    QVERIFY(openExample("a & b.molk"));
    QCOMPARE(recentTexts(),
             QStringList({bench.path("p.eda.yml"), bench.path("a && b.molk"), "&Clear List"}));

    bench.action("&Close")->trigger();
    bench.action(bench.path("a && b.molk"))->trigger();
    QVERIFY(bench.documents()->activeView());

    recentTexts();
    bench.action("&Clear List")->trigger();
    QCOMPARE(recentTexts(), QStringList("&Clear List"));
}

void MainWindowTest::aProblemOpensItsSource()
{
    QVERIFY(openExample());
    bench.window()->messages()->setDesignLog({"WARNING: " + bench.path("chip.v") + ":2:1: odd"});
    auto *problems = bench.window()->findChild<QTreeWidget *>("problems");
    emit problems->itemActivated(problems->topLevelItem(0), 0);
    auto *view = qobject_cast<SourceView *>(bench.documents()->activeView());
    QVERIFY(view);
    QCOMPARE(view->currentLine(), 2);
}

void MainWindowTest::aFileThatIsGoneIsTold()
{
    QVERIFY(openExample());
    ModalDriver driver;
    driver.expectMessage("Error", bench.path("gone.v") + " does not exist.", QMessageBox::Ok);
    bench.window()->openPaths({bench.path("gone.v")});

    driver.expectMessage("Error", bench.path("gone.molk") + " open file failed.", QMessageBox::Ok);
    bench.window()->openPaths({bench.path("gone.molk")});
    QVERIFY(!recentTexts().contains(bench.path("gone.molk")));
    QCOMPARE(bench.documents()->views().size(), 1);
}

void MainWindowTest::theLayoutIsRemembered()
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

MOLK_TEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
