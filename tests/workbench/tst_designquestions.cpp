// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "appearance.h"
#include "modaldriver.h"
#include "projectpanel.h"
#include "testwidgetsmain.h"
#include "workbenchfixture.h"

#include "host/host.h"
#include "project/edamproject.h"

#include "core/iview.h"

#include <QDockWidget>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSaveFile>
#include <QTreeWidget>

static const char designChanged[] = "Design files changed. Do you want to reload?";

using Steps = std::function<void(WorkbenchFixture &bench)>;
Q_DECLARE_METATYPE(Steps)

/// What comes of the question whether to read a changed design again, and of changes on disk.
class DesignQuestionsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { bench.reset(); }

    void editingOnDiskAsks_data();
    void editingOnDiskAsks();
    void theSameContentOnDiskStaysQuiet();
    void oneQuestionServesForSeveralChanges();
    void reloadingReadsTheDesignAndTakesTheQuestionDown();
    void cancelKeepsTheNetlistAndTheNextChangeAsksAnew();
    void eachOpenConfigurationAsks();
    void aRefusedDesignClosesTheConfiguration();
    void twoQuestionsFitASmallWindow_data();
    void twoQuestionsFitASmallWindow();

private:
    WorkbenchFixture bench;
};

void DesignQuestionsTest::initTestCase()
{
    QVERIFY(bench.start());
}

void DesignQuestionsTest::init()
{
    QVERIFY(bench.openChip());
    QCOMPARE(bench.banners(), QStringList());
}

static void writeInPlace(WorkbenchFixture &bench)
{
    bench.makeFile("chip.v", "module chip(input clk, input more);\nendmodule\n");
}

static void replaceByRenaming(WorkbenchFixture &bench)
{
    QSaveFile file(bench.path("chip.v"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("module chip(input clk, input other);\nendmodule\n");
    QVERIFY(file.commit());
}

static void removeFile(WorkbenchFixture &bench)
{
    QVERIFY(QFile::remove(bench.path("chip.v")));
}

void DesignQuestionsTest::editingOnDiskAsks_data()
{
    QTest::addColumn<Steps>("edit");
    QTest::newRow("written-in-place") << Steps(writeInPlace);
    QTest::newRow("replaced-by-renaming") << Steps(replaceByRenaming);
    QTest::newRow("removed") << Steps(removeFile);
}

// Twice, because a file that is replaced is another one to the file system.
void DesignQuestionsTest::editingOnDiskAsks()
{
    QFETCH(Steps, edit);
    bench.runtime.services().setRecording(true);
    bench.runtime.services().clearCalls();
    edit(bench);
    QTRY_COMPARE(bench.banners(), QStringList(designChanged));
    QCOMPARE(bench.runtime.services().callsOf({"send"}),
             QStringList("send TE.File.Modified file=" + bench.path("chip.v")));
    bench.runtime.services().setRecording(false);
    bench.answerBanner("btnB");

    bench.makeFile("chip.v", "module chip;\nendmodule\n");
    QTRY_COMPARE(bench.banners(), QStringList(designChanged));
}

// The change of the other file comes after it, so nothing more is to come when that is told.
void DesignQuestionsTest::theSameContentOnDiskStaysQuiet()
{
    bench.runtime.services().setRecording(true);
    bench.runtime.services().clearCalls();
    bench.makeFile("chip.v", "module chip(input clk);\nendmodule\n");
    bench.makeFile("notes.txt", "Other notes.\n");
    bench.makeFile("spare.v", "module spare(input more);\nendmodule\n");
    QTRY_COMPARE(bench.banners(), QStringList(designChanged));
    QCOMPARE(bench.runtime.services().callsOf({"send"}),
             QStringList("send TE.File.Modified file=" + bench.path("spare.v")));
    bench.runtime.services().setRecording(false);
}

void DesignQuestionsTest::oneQuestionServesForSeveralChanges()
{
    bench.clickRow("spare.v");
    bench.key(Qt::Key_Space);
    QString error;
    QVERIFY(bench.runtime.services().project()->setTop("chip", &error));
    bench.key(Qt::Key_Delete);
    QCOMPARE(bench.banners(), QStringList(designChanged));
}

void DesignQuestionsTest::reloadingReadsTheDesignAndTakesTheQuestionDown()
{
    bench.clickRow("spare.v");
    bench.key(Qt::Key_Space);
    QString error;
    QVERIFY(bench.runtime.services().project()->setTop("chip", &error));

    bench.runtime.services().setRecording(true);
    bench.runtime.services().clearCalls();
    bench.answerBanner("btnA");
    QCOMPARE(
        bench.runtime.services().callsOf({"catchRtlModules", "catchRtlNetsWithProgressDialog"}),
        QStringList({"catchRtlModules top=chip", "catchRtlNetsWithProgressDialog"}));
    bench.runtime.services().setRecording(false);
    QCOMPARE(bench.banners(), QStringList());

    bench.key(Qt::Key_Space);
    QCOMPARE(bench.banners(), QStringList(designChanged));
}

void DesignQuestionsTest::cancelKeepsTheNetlistAndTheNextChangeAsksAnew()
{
    bench.clickRow("spare.v");
    bench.key(Qt::Key_Space);
    bench.runtime.services().setRecording(true);
    bench.runtime.services().clearCalls();
    bench.answerBanner("btnB");
    QCOMPARE(bench.runtime.services().callsOf({"catchRtlModules"}), QStringList());
    bench.runtime.services().setRecording(false);
    QCOMPARE(bench.banners(), QStringList());

    bench.key(Qt::Key_Delete);
    bench.clickRow("chip.v");
    bench.key(Qt::Key_Delete);
    QCOMPARE(bench.banners(), QStringList(designChanged));
}

void DesignQuestionsTest::eachOpenConfigurationAsks()
{
    bench.window()->openPaths({bench.makeConfiguration("b.molk")});
    bench.clickRow("spare.v");
    bench.key(Qt::Key_Delete);
    QCOMPARE(bench.banners(), QStringList(designChanged));
    bench.answerBanner("btnB");

    bench.key(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(bench.documents()->tabText(bench.documents()->activeView()), "a.molk");
    QCOMPARE(bench.banners(), QStringList(designChanged));
}

void DesignQuestionsTest::aRefusedDesignClosesTheConfiguration()
{
    bench.modify();
    bench.clickRow("chip.v");
    bench.clickRow("spare.v", Qt::ShiftModifier);
    bench.key(Qt::Key_Delete);

    ModalDriver driver;
    driver.expectMessage("Error", "Design files are not exist.", QMessageBox::Ok);
    bench.answerBanner("btnA");
    QTRY_VERIFY(bench.documents()->views().isEmpty());
}

void DesignQuestionsTest::twoQuestionsFitASmallWindow_data()
{
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

// About what a screen has left at twice the scale, with the large letters of the tests. No
// button and no word is cut off, and the page below still has its rows.
void DesignQuestionsTest::twoQuestionsFitASmallWindow()
{
    QFETCH(bool, dark);
    if (dark)
        Workbench::useDarkColours();
    bench.window()->findChild<QDockWidget *>("messagesDock")->hide();
    bench.window()->resize(960, 720);
    bench.makeFile("chip.v", "module chip;\nendmodule\n");
    QFile configuration(bench.path("a.molk"));
    QVERIFY(configuration.open(QIODevice::Append) && configuration.write("\n") == 1);
    configuration.close();
    QTRY_COMPARE(bench.banners().size(), 2);
    QVERIFY2(
        bench.window()->width() <= 960 && bench.window()->height() <= 720,
        qPrintable(QString("%1 x %2").arg(bench.window()->width()).arg(bench.window()->height())));

    QWidget *view = bench.documents()->activeView();
    const auto questions = view->findChildren<QWidget *>("MOLK__ReloadBanner");
    for (const QWidget *question : questions) {
        const auto *text = question->findChild<QLabel *>("labelFile");
        QVERIFY(text->height() >= text->heightForWidth(text->width()));
        const QPalette palette = text->palette();
        QVERIFY(qAbs(palette.color(QPalette::WindowText).lightness()
                     - palette.color(QPalette::Window).lightness())
                > 100);
        for (const char *name : {"btnA", "btnB"}) {
            const auto *button = question->findChild<QPushButton *>(QLatin1String(name));
            QCOMPARE(button->visibleRegion().boundingRect(), button->rect());
        }
    }
    const auto *ports = view->findChild<QTreeWidget *>("treeProbeOut");
    QVERIFY(ports->viewport()->visibleRegion().boundingRect().height() >= 40);
    bench.window()->findChild<QDockWidget *>("messagesDock")->show();
    bench.window()->resize(1280, 820);
}

MOLK_TEST_MAIN(DesignQuestionsTest)
#include "tst_designquestions.moc"
