// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "projectpanel.h"
#include "sourceview.h"
#include "testwidgetsmain.h"
#include "workbenchfixture.h"

#include "host/documentarea.h"
#include "host/host.h"
#include "project/edamproject.h"

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>

/// Projects that are kept in memory, and how they come into files.
class ProjectSavingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void aProjectInMemorySaysSo();
    void anUnchangedOneGoesWithoutAQuestion();
    void aChangedOneAsksBeforeItGoes_data();
    void aChangedOneAsksBeforeItGoes();
    void savingAtTheQuestionLetsItGo();
    void cancellingTheFileKeepsIt();
    void savingMakesItAProjectLikeOthers();
    void theSuffixIsAdded();
    void aFileInTheWayIsAskedFor();
    void whatCannotBeWrittenIsTold();
    void aStoredProjectIsSavedElsewhere();

    void aShownSourceFollowsItsFile();
    void aShownSourceThatGoesStays();

private:
    void openAdHoc(bool changed);
    void expectSaveDialog(ModalDriver &driver, const QString &name);
    QString label() { return bench.window()->statusBar()->findChild<QLabel *>()->text(); }
    Standin::EdamProject *project() { return bench.runtime.services().project(); }

    WorkbenchFixture bench;
};

static const char question[] =
    "The project chip is kept in memory alone.\nDo you want to save its changes?";

void ProjectSavingTest::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QVERIFY(bench.start());
}

void ProjectSavingTest::cleanup()
{
    bench.reset();
    bench.window()->show();
    for (const char *name : {"made.eda.yml", "sub/made.eda.yml", "chip.eda.yml"})
        QFile::remove(bench.path(QLatin1String(name)));
}

void ProjectSavingTest::openAdHoc(bool changed)
{
    const QString source = bench.makeFile("chip.v", "module chip(input clk);\nendmodule\n");
    QVERIFY(bench.window()->openDesign({source}, "chip"));
    QString error;
    if (changed)
        QVERIFY(project()->setOption("Device", "OD-7", &error));
}

void ProjectSavingTest::expectSaveDialog(ModalDriver &driver, const QString &name)
{
    const QString path = bench.path(name);
    driver.expectDialog<QFileDialog>([path](QFileDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), "Save Project As");
        // The dialog looks at what is typed only where somebody types.
        dialog->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), dialog);
        auto *line = dialog->findChild<QLineEdit *>("fileNameEdit");
        line->setFocus();
        line->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });
}

void ProjectSavingTest::aProjectInMemorySaysSo()
{
    openAdHoc(false);
    QCOMPARE(label(), "chip, top module chip, kept in memory");
    QVERIFY(bench.window()->findChild<QPlainTextEdit *>("log")->toPlainText().contains(
        "The project of these files is kept in memory; File, Save Project As writes it to a "
        "file."));
}

void ProjectSavingTest::anUnchangedOneGoesWithoutAQuestion()
{
    openAdHoc(false);
    const ModalDriver driver;
    QVERIFY(bench.window()->closeProject());
}

void ProjectSavingTest::aChangedOneAsksBeforeItGoes_data()
{
    QTest::addColumn<QString>("road");
    QTest::newRow("close-project") << "close";
    QTest::newRow("another-project") << "project";
    QTest::newRow("another-design") << "design";
    QTest::newRow("quit") << "quit";
}

void ProjectSavingTest::aChangedOneAsksBeforeItGoes()
{
    QFETCH(QString, road);
    const QString other = bench.makeProject("p.eda.yml");
    openAdHoc(true);
    const auto go = [this, road, other] {
        if (road == "close")
            bench.menu("FR");
        else if (road == "project")
            bench.window()->openPaths({other});
        else if (road == "design")
            bench.window()->openDesign({bench.path("chip.v")}, "other");
        else
            bench.key(Qt::Key_Q, Qt::ControlModifier);
    };

    ModalDriver driver;
    driver.expectMessage("Save Project", question, QMessageBox::Cancel);
    go();
    QCOMPARE(project()->option("Device"), QVariant("OD-7"));
    QVERIFY(bench.window()->isVisible());

    driver.expectMessage("Save Project", question, QMessageBox::Discard);
    go();
    if (road == "quit")
        QVERIFY(!bench.window()->isVisible());
    else
        QVERIFY(!project() || !project()->hasUnsavedChanges());
}

void ProjectSavingTest::savingAtTheQuestionLetsItGo()
{
    openAdHoc(true);
    ModalDriver driver;
    driver.expectMessage("Save Project", question, QMessageBox::Save);
    expectSaveDialog(driver, "made.eda.yml");
    QVERIFY(bench.window()->closeProject());
    QStringList errors;
    const auto made = Standin::EdamProject::open(bench.path("made.eda.yml"), &errors);
    QVERIFY(made);
    QCOMPARE(made->option("Device"), QVariant("OD-7"));
}

void ProjectSavingTest::cancellingTheFileKeepsIt()
{
    openAdHoc(true);
    ModalDriver driver;
    driver.expectMessage("Save Project", question, QMessageBox::Save);
    driver.expectDialog<QFileDialog>([](QFileDialog *dialog) { dialog->reject(); });
    QVERIFY(!bench.window()->closeProject());
    QVERIFY(project()->hasUnsavedChanges());
}

void ProjectSavingTest::savingMakesItAProjectLikeOthers()
{
    openAdHoc(true);
    ModalDriver driver;
    expectSaveDialog(driver, "made.eda.yml");
    bench.key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(project()->path(), bench.path("made.eda.yml"));
    QCOMPARE(label(), "chip, top module chip");
    QVERIFY(bench.window()->closeProject());

    bench.menu("FT");
    QVERIFY(bench.action(bench.path("made.eda.yml")));
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
}

void ProjectSavingTest::theSuffixIsAdded()
{
    openAdHoc(false);
    ModalDriver driver;
    expectSaveDialog(driver, "made");
    bench.menu("FA");
    QCOMPARE(project()->path(), bench.path("made.eda.yml"));
}

void ProjectSavingTest::aFileInTheWayIsAskedFor()
{
    openAdHoc(false);
    const QString theirs = bench.makeFile("made.eda.yml", "name: theirs\n");
    ModalDriver driver;
    driver.expectDialog<QFileDialog>([theirs](QFileDialog *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(theirs);
        QMetaObject::invokeMethod(dialog, "accept");
        dialog->reject();
    });
    driver.expectDialog<QMessageBox>([](QMessageBox *box) {
        QVERIFY(box->text().startsWith("made.eda.yml already exists."));
        box->button(QMessageBox::No)->click();
    });
    bench.menu("FA");
    QCOMPARE(project()->path(), QString());
    QFile file(theirs);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("name: theirs\n"));
}

void ProjectSavingTest::whatCannotBeWrittenIsTold()
{
    openAdHoc(true);
    QVERIFY(QDir().mkpath(bench.path("in-the-way.eda.yml")));
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([this](QMessageBox *box) {
        QCOMPARE(box->windowTitle(), "Error");
        QVERIFY2(box->text().startsWith("Cannot write the project file "
                                        + bench.path("in-the-way.eda.yml") + ": "),
                 qPrintable(box->text()));
        box->button(QMessageBox::Ok)->click();
    });
    QVERIFY(!bench.window()->saveProjectAs(bench.path("in-the-way.eda.yml")));
    QCOMPARE(project()->path(), QString());
    QVERIFY(project()->hasUnsavedChanges());
}

void ProjectSavingTest::aStoredProjectIsSavedElsewhere()
{
    QVERIFY(bench.openChip());
    QVERIFY(QDir().mkpath(bench.path("sub")));
    ModalDriver driver;
    expectSaveDialog(driver, "sub/made.eda.yml");
    bench.menu("FA");
    QCOMPARE(project()->file(bench.path("chip.v")).data.value("name"), QVariant("../chip.v"));
    QCOMPARE(bench.documents()->views().size(), 1);
    QTRY_VERIFY(bench.row("../chip.v"));
}

void ProjectSavingTest::aShownSourceFollowsItsFile()
{
    QVERIFY(bench.openChip());
    bench.window()->showSource(bench.path("chip.v"), 2);
    auto *view = qobject_cast<Workbench::SourceView *>(bench.documents()->activeView());
    QVERIFY(view);
    const auto *text = view->findChild<QPlainTextEdit *>();

    bench.makeFile("chip.v", "module chip;\n// new\nendmodule\n");
    QTRY_COMPARE(text->toPlainText(), "module chip;\n// new\nendmodule\n");
    QCOMPARE(view->currentLine(), 2);
    QCOMPARE(bench.documents()->activeView(), view);
}

// The configuration behind it tells when the change has been seen.
void ProjectSavingTest::aShownSourceThatGoesStays()
{
    QVERIFY(bench.openChip());
    bench.window()->showSource(bench.path("chip.v"), 0);
    auto *view = bench.documents()->activeView();
    QVERIFY(QFile::remove(bench.path("chip.v")));
    bench.documents()->showView(bench.documents()->views().constFirst());
    QTRY_COMPARE(bench.banners().size(), 1);
    QVERIFY(view->findChild<QPlainTextEdit *>()->toPlainText().startsWith("module chip("));
}

MOLK_TEST_MAIN(ProjectSavingTest)
#include "tst_projectsaving.moc"
