// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectfixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using Standin::EdamProject;

class TestProjectEditing : public ProjectTest
{
    Q_OBJECT

private slots:
    void fileIsAdded();
    void addedFileGetsTheTypeOfItsSuffix_data();
    void addedFileGetsTheTypeOfItsSuffix();
    void fileInTheProjectIsNotAddedAgain();
    void whatIsNoFileIsNotAdded();
    void filesAreAddedWithOneWrite();
    void firstFileIsAddedToAProjectWithoutAList();
    void fileIsNamedRelativeToTheProject();
    void fileIsRemoved();
    void removedFileLeavesTheListOfDisabledOnes();
    void fileIsSwitchedOffAndOn();
    void kindIsChanged_data();
    void kindIsChanged();
    void includeFileIsMadeAndUnmade();
    void topIsSetAndUnset();
    void optionsAreSetAndUnset();
    void deviceHasAnEventOfItsOwn();
    void unknownFilesAreRefused();
    void nothingHappensWhenNothingChanges();
    void stateIsNewWhenTheEventComes();
    void severalFilesChangeWithOneWrite();
    void ofSeveralFilesOneUnknownRefusesAll();
    void filesAreMoved_data();
    void filesAreMoved();
    void aMoveToItselfIsNone();
    void severalOptionsAreSetWithOneWrite();
    void optionsThatAreSoAlreadyStayQuiet();
};

void TestProjectEditing::fileIsAdded()
{
    const auto project = x->open(plainProject);
    const QString path = x->touch("rtl/c.sv");

    QVERIFY(project->addFile(path));

    QCOMPARE(x->events.take(), QStringList("TE.File.Add file=" + path));
    QCOMPARE(project->file(path).type, 3);
    QVERIFY(project->file(path).enable);
    QCOMPARE(x->read(), plainProject + "  - name: rtl/c.sv\n    file_type: systemVerilogSource\n");
}

void TestProjectEditing::addedFileGetsTheTypeOfItsSuffix_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("entry");

    QTest::newRow("verilog") << "c.v" << QByteArray("file_type: verilogSource");
    QTest::newRow("header") << "c.svh"
                            << QByteArray("file_type: systemVerilogSource\n    is_include_file: "
                                          "true");
    QTest::newRow("vhdl") << "c.vhd" << QByteArray("file_type: vhdlSource");
    QTest::newRow("configuration") << "c.molk" << QByteArray("file_type: user");
    QTest::newRow("netlist") << "c.json" << QByteArray("file_type: yosysNetlist");
}

void TestProjectEditing::addedFileGetsTheTypeOfItsSuffix()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, entry);
    const auto project = x->open(plainProject);

    QVERIFY(project->addFile(x->touch(name)));

    QCOMPARE(x->read(), plainProject + "  - name: " + name.toUtf8() + "\n    " + entry + "\n");
}

void TestProjectEditing::fileInTheProjectIsNotAddedAgain()
{
    const auto project = x->open(plainProject);
    x->touch("a.v");
    QVERIFY(!project->addFile(x->in("a.v")));
    QVERIFY(!project->addFile(x->in("./sub/../a.v")));
    QCOMPARE(x->read(), plainProject);
    QCOMPARE(x->events.take(), QStringList());
}

void TestProjectEditing::whatIsNoFileIsNotAdded()
{
    const auto project = x->open(plainProject);
    QVERIFY(!project->addFile(x->in("missing.v")));
    QVERIFY(!project->addFile(x->directory.path()));
    QVERIFY(!project->addFile(QString()));
    QVERIFY(!project->addFiles({x->touch("c.v"), x->in("missing.v")}, &x->error));
    QCOMPARE(x->error, x->in("missing.v") + " is not a file.");
    QCOMPARE(x->read(), plainProject);
    QCOMPARE(x->events.take(), QStringList());
}

void TestProjectEditing::filesAreAddedWithOneWrite()
{
    const auto project = x->open(plainProject);
    const QString c = x->touch("c.v");
    const QString d = x->touch("d.v");
    x->touch("a.v");
    x->events.project = project.get();

    QVERIFY(project->addFiles({c, x->in("a.v"), d, c}, &x->error));

    QCOMPARE(x->events.take(), QStringList({"TE.File.Add file=" + c, "TE.File.Add file=" + d}));
    QCOMPARE(x->events.filesAtEvent, 4);
}

void TestProjectEditing::firstFileIsAddedToAProjectWithoutAList()
{
    const auto project = x->open("name: x\nfiles:\n");
    QVERIFY(project->addFile(x->touch("c.v")));
    QCOMPARE(x->read(),
             QByteArray("name: x\nfiles:\n  - name: c.v\n    file_type: verilogSource\n"));
}

void TestProjectEditing::fileIsNamedRelativeToTheProject()
{
    QDir(x->directory.path()).mkdir("build");
    const auto project = EdamProject::adHoc({}, "x");
    QVERIFY(project->saveAs(x->in("build/x.eda.yml"), &x->error));
    QVERIFY(project->addFiles({x->touch("rtl/c.v"), "/bin/sh"}, &x->error));
    QCOMPARE(project->files().at(0).data.value("name"), QVariant("../rtl/c.v"));
    QCOMPARE(project->files().at(1).data.value("name"), QVariant("/bin/sh"));
}

void TestProjectEditing::fileIsRemoved()
{
    const auto project = x->open(plainProject);

    QVERIFY(project->removeFiles({"a.v"}, &x->error));

    QCOMPARE(x->events.take(),
             QStringList("TE.File.Remove file=" + x->in("a.v") + " enable=true type=2"));
    QCOMPARE(project->file("a.v").type, 0);
    QCOMPARE(x->read(),
             QByteArray("name: x\nfiles:\n  - name: b.vhd\n    file_type: vhdlSource\n"));

    QVERIFY(project->removeFiles({x->in("b.vhd")}, &x->error));
    QCOMPARE(x->read(), QByteArray("name: x\nfiles: []\n"));
}

void TestProjectEditing::removedFileLeavesTheListOfDisabledOnes()
{
    const auto project = x->open(plainProject);
    QVERIFY(project->setFilesEnabled({"a.v"}, false, &x->error));
    x->events.take();

    QVERIFY(project->removeFiles({"a.v"}, &x->error));

    QCOMPARE(x->events.take(),
             QStringList("TE.File.Remove file=" + x->in("a.v") + " enable=false type=2"));
    QVERIFY(!x->read().contains("a.v"));
    x->touch("a.v");
    QVERIFY(project->addFile(x->in("a.v")));
    QVERIFY(project->file("a.v").enable);
}

void TestProjectEditing::fileIsSwitchedOffAndOn()
{
    const auto project = x->open(plainProject);

    QVERIFY(project->setFilesEnabled({"a.v"}, false, &x->error));
    QCOMPARE(x->events.take(),
             QStringList("TE.File.Change.Enable file=" + x->in("a.v") + " enable=false type=2"));
    QVERIFY(!project->file("a.v").enable);
    QCOMPARE(x->read(),
             plainProject + "tool_options:\n  workbench:\n    disabled_files:\n      - a.v\n");

    QVERIFY(project->setFilesEnabled({"b.vhd"}, false, &x->error));
    QVERIFY(project->setFilesEnabled({"a.v"}, true, &x->error));
    QCOMPARE(x->events.take(),
             QStringList({"TE.File.Change.Enable file=" + x->in("b.vhd") + " enable=false type=4",
                          "TE.File.Change.Enable file=" + x->in("a.v") + " enable=true type=2"}));
    QVERIFY(project->file("a.v").enable);
    QVERIFY(!project->file("b.vhd").enable);
}

void TestProjectEditing::kindIsChanged_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("fileType");

    QTest::newRow("system-verilog") << 3 << QByteArray("systemVerilogSource");
    QTest::newRow("vhdl") << 4 << QByteArray("vhdlSource");
    QTest::newRow("other") << 1 << QByteArray("user");
}

void TestProjectEditing::kindIsChanged()
{
    QFETCH(int, kind);
    QFETCH(QByteArray, fileType);
    const auto project = x->open(plainProject);

    QVERIFY(project->setFilesKind({"a.v"}, Standin::FileKind(kind), &x->error));

    QCOMPARE(x->events.take(),
             QStringList("TE.File.Change.Type file=" + x->in("a.v")
                         + " type=" + QString::number(kind) + " previous=2"));
    QCOMPARE(project->file("a.v").type, kind);
    QCOMPARE(x->read(), QByteArray(plainProject).replace("verilogSource-2005", fileType));
}

void TestProjectEditing::includeFileIsMadeAndUnmade()
{
    const auto project = x->open(plainProject);
    const QString line = "TE.File.Change.Type file=" + x->in("a.v") + " type=2 previous=2";

    QVERIFY(project->setIncludeFiles({"a.v"}, true, &x->error));
    QCOMPARE(x->events.take(), QStringList(line));
    QCOMPARE(project->file("a.v").data.value("is_include_file"), QVariant(true));
    QVERIFY(x->read().contains("    is_include_file: true\n"));

    QVERIFY(project->setIncludeFiles({"a.v"}, false, &x->error));
    QCOMPARE(x->events.take(), QStringList(line));
    QCOMPARE(x->read(), plainProject);
}

void TestProjectEditing::topIsSetAndUnset()
{
    const auto project = x->open(plainProject);

    QVERIFY(project->setTop("soc", &x->error));
    QCOMPARE(x->events.take(), QStringList("TE.Option.Change option=TopModule"));
    QCOMPARE(project->top(), QString("soc"));
    QCOMPARE(x->read(), plainProject + "toplevel: soc\n");

    QVERIFY(project->setOption("TopModule", QVariant(), &x->error));
    QCOMPARE(x->events.take(), QStringList("TE.Option.Change option=TopModule"));
    QCOMPARE(project->top(), QString());
    QCOMPARE(x->read(), plainProject);
}

void TestProjectEditing::optionsAreSetAndUnset()
{
    const auto project = x->open(plainProject);

    QVERIFY(project->setOption("IncludePath", QStringList({"inc", "/abs"}), &x->error));
    QVERIFY(project->setOption("Verilog_Standard", "2001", &x->error));
    QCOMPARE(x->events.take(),
             QStringList({"TE.Option.Change option=IncludePath",
                          "TE.Option.Change option=Verilog_Standard"}));
    QCOMPARE(x->read(),
             plainProject
                 + "tool_options:\n  workbench:\n    IncludePath:\n      - inc\n      - /abs\n"
                   "    Verilog_Standard: \"2001\"\n");
    QCOMPARE(project->option("Verilog_Standard"), QVariant("2001"));

    QVERIFY(project->setOption("IncludePath", QStringList(), &x->error));
    QVERIFY(project->setOption("Verilog_Standard", QVariant(), &x->error));
    QCOMPARE(x->events.take().size(), 2);
    QVERIFY(!project->option("IncludePath").isValid());
    QVERIFY(!x->read().contains("IncludePath"));
}

void TestProjectEditing::deviceHasAnEventOfItsOwn()
{
    const auto project = x->open(plainProject);
    QVERIFY(project->setOption("Device", "OD-7", &x->error));
    QCOMPARE(x->events.take(), QStringList("TE.Device.Change"));
    QCOMPARE(project->option("Device"), QVariant("OD-7"));
}

void TestProjectEditing::unknownFilesAreRefused()
{
    const auto project = x->open(plainProject);
    const QString message = "no.v is not in the project.";

    QVERIFY(!project->removeFiles({"no.v"}, &x->error));
    QCOMPARE(x->error, message);
    QVERIFY(!project->setFilesEnabled({"no.v"}, true, &x->error));
    QCOMPARE(x->error, message);
    QVERIFY(!project->setFilesKind({"no.v"}, Standin::VhdlKind, &x->error));
    QCOMPARE(x->error, message);
    QVERIFY(!project->setIncludeFiles({"no.v"}, true, &x->error));
    QCOMPARE(x->error, message);
    QCOMPARE(x->events.take(), QStringList());
}

void TestProjectEditing::nothingHappensWhenNothingChanges()
{
    const auto project = x->open("# as it is\n" + plainProject);

    QVERIFY(project->setFilesEnabled({"a.v"}, true, &x->error));
    QVERIFY(project->setFilesKind({"a.v"}, Standin::VerilogKind, &x->error));
    QVERIFY(project->setIncludeFiles({"a.v"}, false, &x->error));
    QVERIFY(project->setTop(QString(), &x->error));
    QVERIFY(project->setOption("Device", QVariant(), &x->error));
    QVERIFY(project->addFiles({}, &x->error));

    QCOMPARE(x->events.take(), QStringList());
    QCOMPARE(x->read(), "# as it is\n" + plainProject);
}

void TestProjectEditing::stateIsNewWhenTheEventComes()
{
    const auto project = x->open(plainProject);
    x->events.project = project.get();
    QVERIFY(project->removeFiles({"a.v"}, &x->error));
    QCOMPARE(x->events.filesAtEvent, 1);
}

static QStringList namesOf(const EdamProject &project)
{
    QStringList names;
    const QList<TE::DesignFile> files = project.files();
    for (const TE::DesignFile &file : files)
        names.append(file.data.value("name").toString());
    return names;
}

// The folder gets no second project file in between, so each operation is one write.
void TestProjectEditing::severalFilesChangeWithOneWrite()
{
    const auto project = x->open("name: x\nfiles: [{name: a.v, file_type: verilogSource}, "
                                 "{name: b.v, file_type: verilogSource}, "
                                 "{name: c.vhd, file_type: vhdlSource}]\n");
    x->events.project = project.get();
    const QStringList all{"c.vhd", "a.v", "b.v"};

    QVERIFY(project->setFilesEnabled({"a.v"}, false, &x->error));
    x->events.take();
    QVERIFY(project->setFilesEnabled(all, false, &x->error));
    QCOMPARE(
        x->events.take(),
        QStringList({"TE.File.Change.Enable file=" + x->in("b.v") + " enable=false type=2",
                     "TE.File.Change.Enable file=" + x->in("c.vhd") + " enable=false type=4"}));

    QVERIFY(project->setFilesKind(all, Standin::SystemVerilogKind, &x->error));
    QCOMPARE(x->events.take(),
             QStringList({"TE.File.Change.Type file=" + x->in("a.v") + " type=3 previous=2",
                          "TE.File.Change.Type file=" + x->in("b.v") + " type=3 previous=2",
                          "TE.File.Change.Type file=" + x->in("c.vhd") + " type=3 previous=4"}));

    QVERIFY(project->setIncludeFiles({"a.v", "b.v", "a.v"}, true, &x->error));
    QCOMPARE(x->events.take(),
             QStringList({"TE.File.Change.Type file=" + x->in("a.v") + " type=3 previous=3",
                          "TE.File.Change.Type file=" + x->in("b.v") + " type=3 previous=3"}));

    QVERIFY(project->removeFiles({"c.vhd", "a.v"}, &x->error));
    QCOMPARE(x->events.take(),
             QStringList({"TE.File.Remove file=" + x->in("a.v") + " enable=false type=3",
                          "TE.File.Remove file=" + x->in("c.vhd") + " enable=false type=3"}));
    QCOMPARE(x->events.filesAtEvent, 1);
    QCOMPARE(namesOf(*project), QStringList("b.v"));
    QVERIFY(x->read().contains("disabled_files:\n      - b.v\n"));
}

void TestProjectEditing::ofSeveralFilesOneUnknownRefusesAll()
{
    const auto project = x->open(plainProject);
    const QStringList some{"a.v", "no.v"};

    QVERIFY(!project->removeFiles(some, &x->error));
    QVERIFY(!project->setFilesEnabled(some, false, &x->error));
    QVERIFY(!project->setFilesKind(some, Standin::VhdlKind, &x->error));
    QVERIFY(!project->setIncludeFiles(some, true, &x->error));
    QVERIFY(!project->moveFiles(some, "b.vhd", EdamProject::After, &x->error));
    QVERIFY(!project->moveFiles({"a.v"}, "no.v", EdamProject::After, &x->error));
    QCOMPARE(x->error, QString("no.v is not in the project."));
    QCOMPARE(x->read(), plainProject);
    QCOMPARE(x->events.take(), QStringList());
}

void TestProjectEditing::filesAreMoved_data()
{
    QTest::addColumn<QStringList>("moved");
    QTest::addColumn<QString>("anchor");
    QTest::addColumn<bool>("before");
    QTest::addColumn<QStringList>("order");

    QTest::newRow("one-up") << QStringList("c.v") << "b.v" << true
                            << QStringList({"a.v", "c.v", "b.v", "d.v"});
    QTest::newRow("one-down") << QStringList("b.v") << "c.v" << false
                              << QStringList({"a.v", "c.v", "b.v", "d.v"});
    QTest::newRow("to-the-front") << QStringList("d.v") << "a.v" << true
                                  << QStringList({"d.v", "a.v", "b.v", "c.v"});
    QTest::newRow("to-the-end") << QStringList("a.v") << "d.v" << false
                                << QStringList({"b.v", "c.v", "d.v", "a.v"});
    QTest::newRow("a-block") << QStringList({"a.v", "b.v"}) << "d.v" << true
                             << QStringList({"c.v", "a.v", "b.v", "d.v"});
    QTest::newRow("apart") << QStringList({"d.v", "a.v"}) << "b.v" << false
                           << QStringList({"b.v", "a.v", "d.v", "c.v"});
}

void TestProjectEditing::filesAreMoved()
{
    QFETCH(QStringList, moved);
    QFETCH(QString, anchor);
    QFETCH(bool, before);
    QFETCH(QStringList, order);
    const auto project =
        x->open("name: x\nfiles: [{name: a.v}, {name: b.v}, {name: c.v}, {name: d.v}]\n");

    QVERIFY(project->moveFiles(moved, anchor, before ? EdamProject::Before : EdamProject::After,
                               &x->error));

    QCOMPARE(namesOf(*project), order);
    QStringList told;
    for (const QString &name : qAsConst(order)) {
        if (moved.contains(name))
            told.append("TE.File.Modified file=" + x->in(name));
    }
    QCOMPARE(x->events.take(), told);
    QStringList errors;
    QCOMPARE(namesOf(*EdamProject::open(x->in("x.eda.yml"), &errors)), order);
}

void TestProjectEditing::aMoveToItselfIsNone()
{
    const auto project = x->open(plainProject);
    QVERIFY(project->moveFiles({"a.v"}, "a.v", EdamProject::After, &x->error));
    QVERIFY(project->moveFiles({"a.v"}, "b.vhd", EdamProject::Before, &x->error));
    QVERIFY(project->moveFiles({}, "b.vhd", EdamProject::Before, &x->error));
    QCOMPARE(x->events.take(), QStringList());
    QCOMPARE(x->read(), plainProject);
}

void TestProjectEditing::severalOptionsAreSetWithOneWrite()
{
    const auto project = x->open(plainProject);
    const QVariantMap values{{"Device", "OD-7"},
                             {"TopModule", "soc"},
                             {"IncludePath", QStringList("inc")},
                             {"Synthesize_tool", "Synplify"}};

    QVERIFY(project->setOptions(values, &x->error));

    QCOMPARE(x->events.take(),
             QStringList({"TE.Device.Change", "TE.Option.Change option=IncludePath",
                          "TE.Option.Change option=Synthesize_tool",
                          "TE.Option.Change option=TopModule"}));
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry)
        QCOMPARE(project->option(entry.key()), *entry);
}

void TestProjectEditing::optionsThatAreSoAlreadyStayQuiet()
{
    const auto project = x->open("toplevel: soc\n" + plainProject);
    QVERIFY(project->setOptions({{"TopModule", "soc"}, {"Device", QVariant()}}, &x->error));
    QCOMPARE(x->events.take(), QStringList());
    QVERIFY(project->setOptions({{"TopModule", "soc"}, {"Device", "OD-7"}}, &x->error));
    QCOMPARE(x->events.take(), QStringList("TE.Device.Change"));
}

MOLK_TEST_GUILESS_MAIN(TestProjectEditing)
#include "tst_projectediting.moc"
