// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectfixture.h"

#include "designinfo.h"

#include <QDir>

using Standin::EdamProject;
namespace DesignInfo = Standin::DesignInfo;

/// What a project says of what stands in its file.
class TestProjectEdam : public ProjectTest
{
    Q_OBJECT

private slots:
    void projectIsRead();
    void filesAreReadWithTheirKinds_data();
    void filesAreReadWithTheirKinds();
    void kindsFollowTheSuffixWithoutAFileType_data();
    void kindsFollowTheSuffixWithoutAFileType();
    void pathsAreRelativeToTheProjectFile_data();
    void pathsAreRelativeToTheProjectFile();
    void topLevelTakesEveryForm_data();
    void topLevelTakesEveryForm();
    void fileRecordSaysWhatTheProjectKnows();
    void recordOfAnUnknownFileIsEmpty();
    void firstOfTwoEntriesIsTheRecord();
    void optionsAreRead();
    void aliasesAreFollowed();
    void byteOrderMarkAndCarriageReturnsAreTaken();
    void jsonIsTaken();
    void manyFilesAreReadInLinearTime();
    void adHocProjectIsMadeOfFiles();
    void adHocProjectWithoutATop();
};

void TestProjectEdam::projectIsRead()
{
    const auto project = x->open("version: 0.2.1\nname: ::soc:1.0\ntoplevel: soc\nfiles: []\n");

    QCOMPARE(project->name(), QString("::soc:1.0"));
    QCOMPARE(project->top(), QString("soc"));
    QCOMPARE(project->path(), x->in("x.eda.yml"));
    QCOMPARE(project->directory(), x->directory.path());
    QVERIFY(project->files().isEmpty());
}

void TestProjectEdam::filesAreReadWithTheirKinds_data()
{
    QTest::addColumn<QByteArray>("fileType");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("standard");

    QTest::newRow("verilog") << QByteArray("verilogSource") << 2 << "";
    QTest::newRow("verilog-95") << QByteArray("verilogSource-95") << 2 << "95";
    QTest::newRow("verilog-2005") << QByteArray("verilogSource-2005") << 2 << "2005";
    QTest::newRow("system-verilog") << QByteArray("systemVerilogSource") << 3 << "";
    QTest::newRow("system-verilog-3.1a") << QByteArray("systemVerilogSource-3.1a") << 3 << "3.1a";
    QTest::newRow("vhdl") << QByteArray("vhdlSource") << 4 << "";
    QTest::newRow("vhdl-2008") << QByteArray("vhdlSource-2008") << 4 << "2008";
    QTest::newRow("netlist") << QByteArray("yosysNetlist") << 2 << "";
    QTest::newRow("user") << QByteArray("user") << 1 << "";
    QTest::newRow("constraints") << QByteArray("SDC") << 1 << "";
    QTest::newRow("vlt") << QByteArray("vlt") << 1 << "";
    QTest::newRow("other-case") << QByteArray("VerilogSource") << 1 << "";
    QTest::newRow("empty") << QByteArray("\"\"") << 1 << "";
}

void TestProjectEdam::filesAreReadWithTheirKinds()
{
    QFETCH(QByteArray, fileType);
    QFETCH(int, kind);

    const auto project = x->open("name: x\nfiles:\n  - name: a\n    file_type: " + fileType + "\n");

    QCOMPARE(project->files().size(), 1);
    QCOMPARE(project->files().first().type, kind);
    const QVariantList files = project->designInfo().value(DesignInfo::Files).toList();
    QCOMPARE(files.size(), kind == 1 ? 0 : 1);
    if (kind != 1)
        QTEST(files.first().toMap().value(DesignInfo::Standard).toString(), "standard");
}

void TestProjectEdam::kindsFollowTheSuffixWithoutAFileType_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("kind");

    QTest::newRow("v") << "a.v" << 2;
    QTest::newRow("upper-case") << "A.V" << 2;
    QTest::newRow("vh") << "a.vh" << 2;
    QTest::newRow("sv") << "a.sv" << 3;
    QTest::newRow("svh") << "a.svh" << 3;
    QTest::newRow("vhd") << "a.vhd" << 4;
    QTest::newRow("vhdl") << "a.vhdl" << 4;
    QTest::newRow("json") << "a.json" << 2;
    QTest::newRow("molk") << "a.molk" << 1;
    QTest::newRow("none") << "Makefile" << 1;
}

void TestProjectEdam::kindsFollowTheSuffixWithoutAFileType()
{
    QFETCH(QString, name);
    const auto project = x->open("name: x\nfiles:\n  - name: " + name.toUtf8() + "\n");
    QTEST(project->files().first().type, "kind");
}

void TestProjectEdam::pathsAreRelativeToTheProjectFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");

    QTest::newRow("plain") << "a.v"
                           << "%1/a.v";
    QTest::newRow("below") << "rtl/a.v"
                           << "%1/rtl/a.v";
    QTest::newRow("dots") << "./rtl/../a.v"
                          << "%1/a.v";
    QTest::newRow("absolute") << "/rtl/a.v"
                              << "/rtl/a.v";
    QTest::newRow("blank") << "my rtl/a b.v"
                           << "%1/my rtl/a b.v";
    QTest::newRow("special") << "$(x)`y`;z.v"
                             << "%1/$(x)`y`;z.v";
}

void TestProjectEdam::pathsAreRelativeToTheProjectFile()
{
    QFETCH(QString, name);
    QFETCH(QString, path);
    path.replace("%1", x->directory.path());

    const auto project = x->open("name: x\nfiles:\n  - name: '" + name.toUtf8() + "'\n");

    QCOMPARE(project->files().first().path, path);
    QCOMPARE(project->file(name).path, path);
    QCOMPARE(project->file(path).path, path);
}

void TestProjectEdam::topLevelTakesEveryForm_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("top");

    QTest::newRow("text") << QByteArray("toplevel: soc\n") << "soc";
    QTest::newRow("list") << QByteArray("toplevel: [soc]\n") << "soc";
    QTest::newRow("blanks-around") << QByteArray("toplevel: ' soc '\n") << "soc";
    QTest::newRow("several-in-a-text") << QByteArray("toplevel: soc glbl\n") << "";
    QTest::newRow("several-in-a-list") << QByteArray("toplevel: [soc, glbl]\n") << "";
    QTest::newRow("empty-list") << QByteArray("toplevel: []\n") << "";
    QTest::newRow("empty-text") << QByteArray("toplevel: ''\n") << "";
    QTest::newRow("null") << QByteArray("toplevel:\n") << "";
    QTest::newRow("missing") << QByteArray() << "";
}

void TestProjectEdam::topLevelTakesEveryForm()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, top);

    const auto project = x->open("name: x\n" + text);

    QCOMPARE(project->top(), top);
    QCOMPARE(project->designInfo().contains(DesignInfo::Top), !top.isEmpty());
    QCOMPARE(project->designInfo().value(DesignInfo::Top).toString(), top);
    QCOMPARE(project->option("TopModule").isValid(), !top.isEmpty());
    QCOMPARE(project->option("TopModule").toString(), top);
}

void TestProjectEdam::fileRecordSaysWhatTheProjectKnows()
{
    const auto project = x->open("name: x\nfiles:\n"
                                 "  - name: inc/a.vh\n    file_type: verilogSource\n"
                                 "    is_include_file: true\n    include_path: inc\n"
                                 "  - name: b.vhd\n    file_type: vhdlSource-93\n"
                                 "    logical_name: lib\n"
                                 "  - name: c.v\n    define: {WIDTH: 8, FAST: true, EMPTY: }\n"
                                 "tool_options: {workbench: {disabled_files: [b.vhd]}}\n");

    const TE::DesignFile header = project->file("inc/a.vh");
    QCOMPARE(header.type, 2);
    QVERIFY(header.enable);
    QCOMPARE(header.data,
             (QVariantMap{{"name", "inc/a.vh"},
                          {"file_type", "verilogSource"},
                          {"is_include_file", true},
                          {"include_path", x->directory.path() + "/inc"}}));
    const TE::DesignFile vhdl = project->file("b.vhd");
    QCOMPARE(vhdl.type, 4);
    QVERIFY(!vhdl.enable);
    QCOMPARE(vhdl.data.value("logical_name"), QVariant("lib"));
    QCOMPARE(project->file("c.v").data.value("define").toMap(),
             (QVariantMap{{"WIDTH", "8"}, {"FAST", "1"}, {"EMPTY", ""}}));
}

void TestProjectEdam::recordOfAnUnknownFileIsEmpty()
{
    const auto project = x->open("name: x\nfiles: [{name: a.v}]\n");
    const TE::DesignFile file = project->file("b.v");
    QCOMPARE(file.path, QString());
    QCOMPARE(file.type, 0);
    QVERIFY(!file.enable);
    QVERIFY(file.data.isEmpty());
}

void TestProjectEdam::firstOfTwoEntriesIsTheRecord()
{
    const auto project = x->open("name: x\nfiles:\n  - {name: a.v}\n  - {name: ./a.v, "
                                 "file_type: user}\n");
    QCOMPARE(project->files().size(), 2);
    QCOMPARE(project->file("a.v").type, 2);
}

void TestProjectEdam::optionsAreRead()
{
    const auto project = x->open("name: x\ntool_options:\n  icestorm: {pnr: next}\n  workbench:\n"
                                 "    Synthesize_tool: Synplify\n    IncludePath: [inc, /abs]\n"
                                 "    Verilog_Standard: 2001\n    Empty:\n");

    QCOMPARE(project->option("Synthesize_tool"), QVariant("Synplify"));
    QCOMPARE(project->option("IncludePath"), QVariant(QStringList({"inc", "/abs"})));
    QCOMPARE(project->option("Verilog_Standard"), QVariant("2001"));
    QVERIFY(!project->option("Empty").isValid());
    QVERIFY(!project->option("pnr").isValid());
    QVERIFY(!project->option("disabled_files").isValid());
    QCOMPARE(project->designInfo().value(DesignInfo::VerilogStandard), QVariant("2001"));
}

void TestProjectEdam::aliasesAreFollowed()
{
    const auto project = x->open("name: &n soc\ntoplevel: *n\nfiles:\n"
                                 "  - &first {name: a.v, file_type: &t systemVerilogSource}\n"
                                 "  - {name: b.v, file_type: *t}\n  - *first\n"
                                 "cores: {x: &list [a.v]}\n"
                                 "tool_options: {workbench: {disabled_files: *list}}\n");

    QCOMPARE(project->top(), QString("soc"));
    QCOMPARE(project->files().size(), 3);
    QCOMPARE(project->file("b.v").type, 3);
    QVERIFY(!project->files().at(0).enable);
    QVERIFY(project->files().at(1).enable);
}

void TestProjectEdam::byteOrderMarkAndCarriageReturnsAreTaken()
{
    const auto project = x->open("\xEF\xBB\xBF# made by hand\r\nname: x\r\nfiles:\r\n"
                                 "  - name: a.v\r\n    file_type: verilogSource\r\n");
    QCOMPARE(project->name(), QString("x"));
    QCOMPARE(project->files().first().path, x->in("a.v"));
    QCOMPARE(project->files().first().type, 2);
}

void TestProjectEdam::jsonIsTaken()
{
    const auto project = x->open("{\"name\": \"x\", \"toplevel\": \"t\",\n"
                                 " \"files\": [{\"name\": \"a.v\", \"is_include_file\": false}]}");
    QCOMPARE(project->top(), QString("t"));
    QCOMPARE(project->files().size(), 1);
}

void TestProjectEdam::manyFilesAreReadInLinearTime()
{
    QByteArray text = "name: x\nfiles:\n";
    QByteArray disabled = "tool_options:\n  workbench:\n    disabled_files:\n";
    for (int i = 0; i < 20000; ++i) {
        const QByteArray name = "rtl/f" + QByteArray::number(i) + ".v";
        text += "  - name: " + name + "\n    file_type: verilogSource\n";
        disabled += "      - " + name + "\n";
    }
    const auto project = x->open(text + disabled);

    QCOMPARE(project->files().size(), 20000);
    for (int i = 0; i < 20000; i += 1)
        QVERIFY(!project->file("rtl/f" + QString::number(i) + ".v").enable);
}

void TestProjectEdam::adHocProjectIsMadeOfFiles()
{
    const auto project = EdamProject::adHoc({"b.v", "/abs/a.sv", "h.svh", "b.v"}, "soc");

    QCOMPARE(project->path(), QString());
    QCOMPARE(project->directory(), QDir::currentPath());
    QCOMPARE(project->name(), QString("soc"));
    QCOMPARE(project->top(), QString("soc"));
    QCOMPARE(pathsIn(project->designInfo()),
             QStringList({QDir::current().filePath("b.v"), "/abs/a.sv"}));
    QCOMPARE(project->designInfo().value(DesignInfo::IncludePath),
             QVariant(QStringList(QDir::currentPath())));
}

void TestProjectEdam::adHocProjectWithoutATop()
{
    const auto project = EdamProject::adHoc({}, QString());
    QCOMPARE(project->name(), QString("project"));
    QVERIFY(!project->designInfo().contains(DesignInfo::Top));
    QVERIFY(project->files().isEmpty());
}

MOLK_TEST_GUILESS_MAIN(TestProjectEdam)
#include "tst_projectedam.moc"
