// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "projectpanel.h"
#include "sourceview.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "workbenchfixture.h"

#include "host/host.h"
#include "project/edamproject.h"

#include "core/iview.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStatusBar>

using Workbench::MainWindow;
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
    void theStatusBarNamesTheProject();
    void theHintOfAnEmptyWindowIsLegible();

    void aConfigurationBringsItsProjectAlong();
    void aConfigurationWithoutADesignIsRefused();
    void sourceFilesMakeAProjectIfNoneIsOpen();
    void sourceFilesAreShownIfAProjectIsOpen();
    void anotherTopModuleIsNotStored();
    void aBrokenProjectIsToldAndChangesNothing();
    void anotherProjectClosesTheViews();
    void aRefusedCloseKeepsTheProject();
    void theTreeFollowsTheProject();

private:
    void answerFileDialog(ModalDriver &driver, const QString &path);

    WorkbenchFixture bench;
};

void MainWindowTest::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QVERIFY(bench.start());
    QCOMPARE(bench.window()->statusBar()->findChild<QLabel *>()->text(), "No project");
}

void MainWindowTest::cleanup()
{
    bench.reset();
    bench.window()->show();
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
    QVERIFY(bench.openExample());
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
    QVERIFY(bench.openExample());
    const ModalDriver driver;
    bench.action("&Close")->trigger();
    QVERIFY(!bench.documents()->activeView());
    QVERIFY(!bench.action("&Close")->isEnabled());
}

void MainWindowTest::closingAModifiedViewAsks()
{
    Core::IView *view = bench.openExample();
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
    QVERIFY(bench.openExample("a.molk"));
    bench.modify();
    QVERIFY(bench.openExample("b.molk"));
    bench.modify();
    QVERIFY(bench.openExample("clean.molk"));

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
    QVERIFY(bench.openExample());
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
    driver.expectDialog<QDialog>([this](QDialog *dialog) {
        QCOMPARE(dialog->findChild<QLineEdit *>("editCreateIn")->text(), QDir::homePath());
        QVERIFY(!dialog->findChild<QWidget *>("checkBoxAddToCurrent")->isEnabled());
        QCOMPARE(bench.window()->statusBar()->currentMessage(),
                 "Without a project a new file is made, but not opened.");
        dialog->reject();
    });
    bench.window()->findChild<QAction *>("MB.Wizard.MOLK")->trigger();
    QCOMPARE(bench.window()->statusBar()->currentMessage(), QString());
}

void MainWindowTest::theStatusBarNamesTheProject()
{
    const auto *label = bench.window()->statusBar()->findChild<QLabel *>();
    QStringList errors;
    QVERIFY(bench.window()->openProject(bench.makeProject("p.eda.yml"), QString(), &errors));
    QVERIFY2(label->text().startsWith("p, top module "), qPrintable(label->text()));
    QVERIFY(bench.window()->closeProject());
    QCOMPARE(label->text(), "No project");
}

// Whatever it is drawn with, something of it stands out from what it is drawn on.
void MainWindowTest::theHintOfAnEmptyWindowIsLegible()
{
    const QList<QLabel *> labels = bench.documents()->findChildren<QLabel *>();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), "Open a configuration or a project, or drop files here.");
    const QImage image = labels.first()->grab().toImage();
    int darkest = 255;
    int lightest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int lightness = qGray(image.pixel(x, y));
            darkest = qMin(darkest, lightness);
            lightest = qMax(lightest, lightness);
        }
    }
    QVERIFY2(lightest - darkest > 100, qPrintable(QString::number(lightest - darkest)));
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
    QVERIFY(bench.openExample());
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
    QVERIFY(bench.openExample());
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
    QVERIFY(bench.openExample());
    QStringList errors;
    QVERIFY(bench.window()->openProject(bench.makeProject("q.eda.yml"), QString(), &errors));
    QVERIFY(bench.documents()->views().isEmpty());
    QCOMPARE(bench.window()->windowTitle(), "q - Workbench");
}

void MainWindowTest::aRefusedCloseKeepsTheProject()
{
    QVERIFY(bench.openExample());
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

MOLK_TEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
