// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "menudriver.h"
#include "modaldriver.h"
#include "projectpanel.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "workbenchfixture.h"

#include "host/host.h"
#include "project/edamproject.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTreeWidget>
#include <QWindow>

static const char designChanged[] = "Design files changed. Do you want to reload?";

using Steps = std::function<void(WorkbenchFixture &bench)>;
Q_DECLARE_METATYPE(Steps)

/// What a user does to the files of a project, and how an open configuration answers.
class ProjectChangesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { bench.reset(); }

    void addingAsks_data();
    void addingAsks();
    void whatCannotBeAddedIsTold();
    void removingAsks();
    void removingWhatIsOffDoesNot();
    void switchingOffAndOnAsks();
    void addingWhatIsOffAsksWhenItIsSwitchedOn();
    void changingTheKindAsks_data();
    void changingTheKindAsks();
    void aKindThatIsNoDesignsStaysQuiet();
    void makingAnIncludeFileAsks();
    void changingTheOrderAsks();

    void theContextMenuOffersTheSame();
    void severalFilesAreChangedAtOnce();
    void thousandsOfFilesAreChangedInOneGo();
    void aProjectFileThatCannotBeWrittenIsTold_data();
    void aProjectFileThatCannotBeWrittenIsTold();

private:
    void expectFiles(ModalDriver &driver, const QStringList &paths);
    QStringList rows() { return treeLines(bench.panel()->model()); }

    WorkbenchFixture bench;
};

void ProjectChangesTest::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QVERIFY(bench.start());
}

void ProjectChangesTest::init()
{
    QVERIFY(bench.openChip());
    QCOMPARE(bench.banners(), QStringList());
}

void ProjectChangesTest::expectFiles(ModalDriver &driver, const QStringList &paths)
{
    driver.expectDialog<QFileDialog>([paths](QFileDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), "Add Files");
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText("\"" + paths.join("\" \"") + "\"");
        QMetaObject::invokeMethod(dialog, "accept");
    });
}

void ProjectChangesTest::addingAsks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("group");
    QTest::addColumn<bool>("asks");

    QTest::newRow("verilog") << "more.v"
                             << "Verilog" << true;
    QTest::newRow("system-verilog") << "more.sv"
                                    << "SystemVerilog" << true;
    QTest::newRow("vhdl") << "more.vhd"
                          << "VHDL" << true;
    QTest::newRow("include") << "more.vh"
                             << "Include Files" << true;
    QTest::newRow("netlist") << "more.json"
                             << "Netlists" << true;
    QTest::newRow("configuration") << "more.molk"
                                   << "Configurations" << false;
    QTest::newRow("text") << "more.txt"
                          << "Other Files" << false;
}

void ProjectChangesTest::addingAsks()
{
    QFETCH(QString, name);
    QFETCH(QString, group);
    QFETCH(bool, asks);
    const QString path = bench.makeFile(name, "\n");

    ModalDriver driver;
    expectFiles(driver, {path});
    bench.clickRow("chip.v");
    bench.key(Qt::Key_Insert);

    QCOMPARE(bench.banners(), asks ? QStringList(designChanged) : QStringList());
    QVERIFY(bench.projectText().contains(name.toUtf8()));
    QTRY_VERIFY(rows().contains("    " + name));
    QCOMPARE(bench.row(name)->parent()->text(0), group);
}

void ProjectChangesTest::whatCannotBeAddedIsTold()
{
    const QByteArray before = bench.projectText();
    const QString path = bench.makeFile("fleeting.v", "\n");
    ModalDriver driver;
    driver.expectDialog<QFileDialog>([path](QFileDialog *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        // It goes between the choice and the adding.
        connect(dialog, &QFileDialog::accepted, dialog, [path] { QFile::remove(path); });
        QMetaObject::invokeMethod(dialog, "accept");
    });
    driver.expectMessage("Error", path + " is not a file.", QMessageBox::Ok);
    bench.menu("PA");
    QCOMPARE(bench.banners(), QStringList());
    QCOMPARE(bench.projectText(), before);
}

void ProjectChangesTest::removingAsks()
{
    bench.clickRow("spare.v");
    bench.key(Qt::Key_Delete);

    QCOMPARE(bench.banners(), QStringList(designChanged));
    QVERIFY(!bench.projectText().contains("spare.v"));
    QVERIFY(QFile::exists(bench.path("spare.v")));
    QTRY_VERIFY(!rows().contains("    spare.v"));
    bench.answerBanner("btnB");

    bench.clickRow("notes.txt");
    bench.menu("PR");
    QCOMPARE(bench.banners(), QStringList());
    QVERIFY(!bench.projectText().contains("notes.txt"));
}

void ProjectChangesTest::removingWhatIsOffDoesNot()
{
    bench.clickRow("spare.v");
    bench.key(Qt::Key_Space);
    bench.answerBanner("btnB");
    QTRY_COMPARE(bench.row("spare.v")->foreground(0).color(), QColor(Qt::gray));

    bench.key(Qt::Key_Delete);
    QVERIFY(!bench.projectText().contains("spare.v"));
    QCOMPARE(bench.banners(), QStringList());
}

void ProjectChangesTest::switchingOffAndOnAsks()
{
    bench.clickRow("spare.v");
    QVERIFY(bench.action("Use in &Design")->isChecked());
    bench.key(Qt::Key_Space);

    QCOMPARE(bench.banners(), QStringList(designChanged));
    QVERIFY(bench.projectText().contains("disabled_files:\n      - spare.v"));
    QTRY_VERIFY(bench.row("spare.v")->foreground(0).color() == QColor(Qt::gray));
    QCOMPARE(bench.row("spare.v")->toolTip(0),
             bench.path("spare.v") + "\nSwitched off: not in the design");
    QVERIFY(!bench.action("Use in &Design")->isChecked());
    bench.answerBanner("btnB");

    bench.menu("PD");
    QCOMPARE(bench.banners(), QStringList(designChanged));
    QVERIFY(!bench.projectText().contains("disabled_files"));
    bench.answerBanner("btnB");

    bench.clickRow("notes.txt");
    bench.key(Qt::Key_Space);
    QVERIFY(bench.projectText().contains("disabled_files:\n      - notes.txt"));
    QCOMPARE(bench.banners(), QStringList());
}

// A file that was switched off stands in the list of those when it comes back.
void ProjectChangesTest::addingWhatIsOffAsksWhenItIsSwitchedOn()
{
    bench.makeFile("chip.eda.yml",
                   "name: chip\nfiles:\n  - {name: chip.v, file_type: verilogSource}\n"
                   "tool_options: {workbench: {disabled_files: [late.v]}}\n");
    QStringList errors;
    QVERIFY(bench.window()->openProject(bench.path("chip.eda.yml"), QString(), &errors));
    bench.window()->openPaths({bench.path("a.molk")});

    ModalDriver driver;
    expectFiles(driver, {bench.makeFile("late.v", "module late; endmodule\n")});
    bench.menu("PA");
    QCOMPARE(bench.banners(), QStringList());
    QTRY_VERIFY(rows().contains("    late.v"));

    bench.clickRow("late.v");
    bench.key(Qt::Key_Space);
    QCOMPARE(bench.banners(), QStringList(designChanged));
}

void ProjectChangesTest::changingTheKindAsks_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("letters");
    QTest::addColumn<QByteArray>("type");

    QTest::newRow("to-system-verilog")
        << "chip.v" << QByteArray("PKS") << QByteArray("systemVerilogSource");
    QTest::newRow("to-vhdl") << "chip.v" << QByteArray("PKH") << QByteArray("vhdlSource");
    QTest::newRow("to-other") << "chip.v" << QByteArray("PKO") << QByteArray("user");
    QTest::newRow("from-other") << "notes.txt" << QByteArray("PKV") << QByteArray("verilogSource");
}

void ProjectChangesTest::changingTheKindAsks()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, letters);
    QFETCH(QByteArray, type);
    bench.clickRow(file);
    bench.menu(letters);

    QCOMPARE(bench.banners(), QStringList(designChanged));
    QVERIFY2(bench.projectText().contains("name: " + file.toUtf8() + ", file_type: " + type + "}"),
             bench.projectText());
}

void ProjectChangesTest::aKindThatIsNoDesignsStaysQuiet()
{
    const QByteArray before = bench.projectText();
    bench.clickRow("notes.txt");
    bench.menu("PKO");
    QCOMPARE(bench.projectText(), before);
    bench.menu("PKI");
    QVERIFY(bench.projectText().contains("is_include_file: true"));
    QCOMPARE(bench.banners(), QStringList());
}

void ProjectChangesTest::makingAnIncludeFileAsks()
{
    bench.clickRow("spare.v");
    bench.menu("PKI");
    QCOMPARE(bench.banners(), QStringList(designChanged));
    QVERIFY(bench.projectText().contains(
        "name: spare.v, file_type: verilogSource, is_include_file: true"));
    QTRY_COMPARE(bench.row("spare.v")->parent()->text(0), "Include Files");
    QVERIFY(bench.action("&Include File")->isChecked());
}

void ProjectChangesTest::changingTheOrderAsks()
{
    bench.clickRow("spare.v");
    QVERIFY(!bench.action("Move Do&wn")->isEnabled());
    bench.key(Qt::Key_Up, Qt::AltModifier);

    QCOMPARE(bench.banners(), QStringList(designChanged));
    QVERIFY(bench.projectText().indexOf("spare.v") < bench.projectText().indexOf("chip.v,"));
    QTRY_COMPARE(bench.row("spare.v")->parent()->indexOfChild(bench.row("spare.v")), 0);
    QVERIFY(!bench.action("Move &Up")->isEnabled());
    bench.answerBanner("btnB");

    bench.key(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(bench.banners(), QStringList(designChanged));
    QVERIFY(bench.projectText().indexOf("spare.v") > bench.projectText().indexOf("chip.v,"));
}

void ProjectChangesTest::theContextMenuOffersTheSame()
{
    const MenuDriver driver([](QMenu *menu) {
        QStringList texts;
        const auto actions = menu->actions();
        for (const QAction *action : actions)
            texts.append(action->text());
        QCOMPARE(texts,
                 QStringList({"&Open", "&Add Files...", "&Remove from Project", "Use in &Design",
                              "File &Kind", "Move &Up", "Move Do&wn", "&Top Module...",
                              "&Settings..."}));
        chooseEntry(menu, "&Remove from Project");
    });
    bench.activate();
    QTreeWidget *tree = bench.panel();
    const QPoint place = tree->visualItemRect(bench.row("spare.v")).center();
    QTest::mouseClick(bench.window()->windowHandle(), Qt::RightButton, {},
                      tree->viewport()->mapTo(bench.window(), place));
    QCOMPARE(bench.banners(), QStringList(designChanged));
    QVERIFY(!bench.projectText().contains("spare.v"));
}

void ProjectChangesTest::severalFilesAreChangedAtOnce()
{
    bench.clickRow("chip.v");
    bench.clickRow("notes.txt", Qt::ControlModifier);
    bench.key(Qt::Key_Space);
    QVERIFY(bench.projectText().contains("disabled_files:\n      - chip.v\n      - notes.txt\n"));
    QTRY_COMPARE(bench.row("notes.txt")->foreground(0).color(), QColor(Qt::gray));

    // Both are still selected.
    bench.key(Qt::Key_Space);
    QVERIFY(!bench.projectText().contains("disabled_files"));
    bench.key(Qt::Key_Delete);
    QTRY_COMPARE(
        rows().mid(0, 5),
        QStringList({"chip", "  Configurations", "    a.molk", "  Verilog", "    spare.v"}));
}

// However many are selected, those who look at the selection are told a few times only.
void ProjectChangesTest::thousandsOfFilesAreChangedInOneGo()
{
    const int count = 3000;
    QByteArray text = "name: chip\nfiles:\n";
    for (int i = 0; i < count; ++i)
        text += "  - {name: f" + QByteArray::number(i) + ".v, file_type: verilogSource}\n";
    bench.makeFile("chip.eda.yml", text);
    QStringList errors;
    QVERIFY(bench.window()->openProject(bench.path("chip.eda.yml"), QString(), &errors));
    bench.clickRow("f0.v");
    bench.key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(bench.panel()->selectedFiles().size(), count);

    QSignalSpy told(bench.panel(), &QTreeWidget::itemSelectionChanged);
    bench.key(Qt::Key_Space);
    QTRY_COMPARE(bench.row("f2999.v")->foreground(0).color(), QColor(Qt::gray));
    QCOMPARE(bench.panel()->selectedFiles().size(), count);
    QVERIFY2(told.size() < 10, QByteArray::number(told.size()));
    QCOMPARE(bench.projectText().count("\n      - f"), count);

    bench.key(Qt::Key_Delete);
    QTRY_COMPARE(rows().mid(0, 2), QStringList({"chip", "  Options"}));
}

void ProjectChangesTest::aProjectFileThatCannotBeWrittenIsTold_data()
{
    QTest::addColumn<Steps>("act");
    QTest::newRow("remove") << Steps([](WorkbenchFixture &x) { x.key(Qt::Key_Delete); });
    QTest::newRow("switch-off") << Steps([](WorkbenchFixture &x) { x.key(Qt::Key_Space); });
    QTest::newRow("kind") << Steps([](WorkbenchFixture &x) { x.menu("PKH"); });
    QTest::newRow("include") << Steps([](WorkbenchFixture &x) { x.menu("PKI"); });
    QTest::newRow("order") << Steps([](WorkbenchFixture &x) { x.menu("PU"); });
}

void ProjectChangesTest::aProjectFileThatCannotBeWrittenIsTold()
{
    QFETCH(Steps, act);
    bench.clickRow("spare.v");
    const QStringList before = rows();
    // A directory in its way keeps every user from writing a file.
    QVERIFY(QFile::rename(bench.path("chip.eda.yml"), bench.path("away")));
    QVERIFY(QDir().mkdir(bench.path("chip.eda.yml")));

    {
        ModalDriver driver;
        driver.expectMessage("Error",
                             "The project file " + bench.path("chip.eda.yml")
                                 + " has been changed by another program. Open it again first.",
                             QMessageBox::Ok);
        act(bench);
    }
    QVERIFY(QDir().rmdir(bench.path("chip.eda.yml")));
    QVERIFY(QFile::rename(bench.path("away"), bench.path("chip.eda.yml")));

    QCOMPARE(bench.banners(), QStringList());
    QCOMPARE(rows(), before);
    QVERIFY(bench.action("Use in &Design")->isChecked());
    QVERIFY(!bench.action("&Include File")->isChecked());
    QVERIFY(bench.action("&Verilog")->isChecked());
    QVERIFY(!bench.action("V&HDL")->isChecked());

    // When the file is as it was, the same can be done.
    act(bench);
    QCOMPARE(bench.banners(), QStringList(designChanged));
}

MOLK_TEST_MAIN(ProjectChangesTest)
#include "tst_projectchanges.moc"
