// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testmain.h"

#include "designinfo.h"
#include "project/edamproject.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

using Standin::EdamProject;
namespace DesignInfo = Standin::DesignInfo;

class TestProjectEdam : public QObject
{
    Q_OBJECT

private slots:
    void init();
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
    void designInfoHoldsSourcesInOrder();
    void designInfoLeavesOutWhatIsNotCompiled();
    void designInfoHoldsPerFileSettings();
    void includePathComesFromOptionsThenFiles();
    void parametersAreSortedByTheirType();
    void parameterValuesHaveTheirTypes_data();
    void parameterValuesHaveTheirTypes();
    void readyNetlistIsPassedOn();
    void aliasesAreFollowed();
    void byteOrderMarkAndCarriageReturnsAreTaken();
    void jsonIsTaken();
    void faultsNameFileLineAndKey_data();
    void faultsNameFileLineAndKey();
    void allFaultsAreReported();
    void unreadableFilesAreRefused_data();
    void unreadableFilesAreRefused();
    void newerVersionIsAWarning();
    void hooksAreNotRun();
    void aliasBombIsRefusedOrHarmless();
    void manyFilesAreReadInLinearTime();
    void adHocProjectIsMadeOfFiles();
    void adHocProjectWithoutATop();

private:
    QString write(const QByteArray &text);
    std::unique_ptr<EdamProject> open(const QByteArray &text);

    std::unique_ptr<QTemporaryDir> directory;
};

void TestProjectEdam::init()
{
    directory = std::make_unique<QTemporaryDir>();
    QVERIFY(directory->isValid());
}

QString TestProjectEdam::write(const QByteArray &text)
{
    const QString path = directory->filePath("soc.eda.yml");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        QTest::qFail("the project file can't be written", __FILE__, __LINE__);
    return path;
}

std::unique_ptr<EdamProject> TestProjectEdam::open(const QByteArray &text)
{
    QStringList errors;
    QStringList warnings;
    std::unique_ptr<EdamProject> project = EdamProject::open(write(text), &errors, &warnings);
    if (!project || !errors.isEmpty() || !warnings.isEmpty()) {
        QTest::qFail(qPrintable((errors + warnings).join('\n')), __FILE__, __LINE__);
        return EdamProject::adHoc({}, QString());
    }
    return project;
}

static QStringList pathsIn(const QMap<QString, QVariant> &info)
{
    QStringList paths;
    const QVariantList files = info.value(DesignInfo::Files).toList();
    for (const QVariant &file : files)
        paths.append(file.toMap().value(DesignInfo::Path).toString());
    return paths;
}

void TestProjectEdam::projectIsRead()
{
    const auto project = open("version: 0.2.1\nname: ::soc:1.0\ntoplevel: soc\nfiles: []\n");

    QCOMPARE(project->name(), QString("::soc:1.0"));
    QCOMPARE(project->top(), QString("soc"));
    QCOMPARE(project->path(), directory->filePath("soc.eda.yml"));
    QCOMPARE(project->directory(), directory->path());
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

    const auto project = open("name: x\nfiles:\n  - name: a\n    file_type: " + fileType + "\n");

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
    const auto project = open("name: x\nfiles:\n  - name: " + name.toUtf8() + "\n");
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
    path.replace("%1", directory->path());

    const auto project = open("name: x\nfiles:\n  - name: '" + name.toUtf8() + "'\n");

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

    const auto project = open("name: x\n" + text);

    QCOMPARE(project->top(), top);
    QCOMPARE(project->designInfo().contains(DesignInfo::Top), !top.isEmpty());
    QCOMPARE(project->designInfo().value(DesignInfo::Top).toString(), top);
    QCOMPARE(project->option("TopModule").isValid(), !top.isEmpty());
    QCOMPARE(project->option("TopModule").toString(), top);
}

void TestProjectEdam::fileRecordSaysWhatTheProjectKnows()
{
    const auto project = open("name: x\nfiles:\n"
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
                          {"include_path", directory->path() + "/inc"}}));
    const TE::DesignFile vhdl = project->file("b.vhd");
    QCOMPARE(vhdl.type, 4);
    QVERIFY(!vhdl.enable);
    QCOMPARE(vhdl.data.value("logical_name"), QVariant("lib"));
    QCOMPARE(project->file("c.v").data.value("define").toMap(),
             (QVariantMap{{"WIDTH", "8"}, {"FAST", "1"}, {"EMPTY", ""}}));
}

void TestProjectEdam::recordOfAnUnknownFileIsEmpty()
{
    const auto project = open("name: x\nfiles: [{name: a.v}]\n");
    const TE::DesignFile file = project->file("b.v");
    QCOMPARE(file.path, QString());
    QCOMPARE(file.type, 0);
    QVERIFY(!file.enable);
    QVERIFY(file.data.isEmpty());
}

void TestProjectEdam::firstOfTwoEntriesIsTheRecord()
{
    const auto project = open("name: x\nfiles:\n  - {name: a.v}\n  - {name: ./a.v, "
                              "file_type: user}\n");
    QCOMPARE(project->files().size(), 2);
    QCOMPARE(project->file("a.v").type, 2);
}

void TestProjectEdam::optionsAreRead()
{
    const auto project = open("name: x\ntool_options:\n  icestorm: {pnr: next}\n  workbench:\n"
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

void TestProjectEdam::designInfoHoldsSourcesInOrder()
{
    const auto project = open("name: x\nfiles:\n  - {name: z.v}\n  - {name: a.sv}\n"
                              "  - {name: m.vhd}\n");
    const QMap<QString, QVariant> info = project->designInfo();

    QCOMPARE(info.keys(), QStringList("Files"));
    QCOMPARE(pathsIn(info),
             QStringList({directory->filePath("z.v"), directory->filePath("a.sv"),
                          directory->filePath("m.vhd")}));
    const QVariantList files = info.value(DesignInfo::Files).toList();
    QCOMPARE(files.at(0).toMap(), (QVariantMap{{"Path", directory->filePath("z.v")}, {"Type", 2}}));
    QCOMPARE(files.at(1).toMap().value(DesignInfo::Type), QVariant(3));
    QCOMPARE(files.at(2).toMap().value(DesignInfo::Type), QVariant(4));
}

void TestProjectEdam::designInfoLeavesOutWhatIsNotCompiled()
{
    const auto project =
        open("name: x\nfiles:\n  - {name: a.v}\n  - {name: off.v}\n"
             "  - {name: h.vh, is_include_file: true}\n  - {name: c.sdc, file_type: SDC}\n"
             "  - {name: x.molk, file_type: user}\n"
             "tool_options: {workbench: {disabled_files: [./off.v]}}\n");
    QCOMPARE(pathsIn(project->designInfo()), QStringList(directory->filePath("a.v")));
}

void TestProjectEdam::designInfoHoldsPerFileSettings()
{
    const auto project = open("name: x\nfiles:\n  - name: a.vhd\n    file_type: vhdlSource-2008\n"
                              "    logical_name: lib\n  - name: b.v\n    define: {N: '0x10'}\n");
    const QVariantList files = project->designInfo().value(DesignInfo::Files).toList();

    QCOMPARE(files.at(0).toMap().value(DesignInfo::Library), QVariant("lib"));
    QCOMPARE(files.at(0).toMap().value(DesignInfo::Standard), QVariant("2008"));
    QCOMPARE(files.at(1).toMap().value(DesignInfo::Defines).toMap(), (QVariantMap{{"N", "0x10"}}));
    QVERIFY(!files.at(1).toMap().contains(DesignInfo::Library));
}

void TestProjectEdam::includePathComesFromOptionsThenFiles()
{
    const auto project = open("name: x\nfiles:\n"
                              "  - {name: one/a.vh, is_include_file: true}\n"
                              "  - {name: two/sub/b.vh, is_include_file: yes, include_path: two}\n"
                              "  - {name: one/c.vh, is_include_file: true}\n"
                              "  - {name: off/d.vh, is_include_file: true}\n"
                              "  - {name: no/e.vh, is_include_file: false, include_path: no}\n"
                              "tool_options:\n  workbench:\n    IncludePath: [inc, /abs, two]\n"
                              "    disabled_files: [off/d.vh]\n");

    const QString base = directory->path();
    QCOMPARE(project->designInfo().value(DesignInfo::IncludePath),
             QVariant(QStringList({base + "/inc", "/abs", base + "/two", base + "/one"})));
}

void TestProjectEdam::parametersAreSortedByTheirType()
{
    const auto project = open("name: x\nparameters:\n"
                              "  D: {datatype: str, default: text, paramtype: vlogdefine}\n"
                              "  FLAG: {datatype: bool, default: true, paramtype: vlogdefine}\n"
                              "  P: {datatype: int, default: 5, paramtype: vlogparam}\n"
                              "  G: {datatype: int, default: 6, paramtype: generic}\n"
                              "  A: {datatype: int, default: 7, paramtype: plusarg}\n"
                              "  C: {datatype: int, default: 8, paramtype: cmdlinearg}\n"
                              "  N: {datatype: int, paramtype: vlogparam}\n");
    const QMap<QString, QVariant> info = project->designInfo();

    QCOMPARE(info.value(DesignInfo::Defines).toMap(), (QVariantMap{{"D", "text"}, {"FLAG", "1"}}));
    QCOMPARE(info.value(DesignInfo::Parameters).toMap(), (QVariantMap{{"P", 5}}));
    QCOMPARE(info.value(DesignInfo::Generics).toMap(), (QVariantMap{{"G", 6}}));
}

void TestProjectEdam::parameterValuesHaveTheirTypes_data()
{
    QTest::addColumn<QByteArray>("dataType");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("int") << QByteArray("int") << QByteArray("-5") << QVariant(qlonglong(-5));
    QTest::newRow("hex") << QByteArray("int") << QByteArray("0x1F") << QVariant(qlonglong(31));
    QTest::newRow("int-as-text") << QByteArray("str") << QByteArray("5") << QVariant("5");
    QTest::newRow("quoted") << QByteArray("int") << QByteArray("\"5\"") << QVariant("5");
    QTest::newRow("true") << QByteArray("bool") << QByteArray("true") << QVariant(true);
    QTest::newRow("off") << QByteArray("bool") << QByteArray("off") << QVariant(false);
    QTest::newRow("one-as-bool") << QByteArray("bool") << QByteArray("1") << QVariant(true);
    QTest::newRow("true-as-text") << QByteArray("str") << QByteArray("true") << QVariant("true");
    QTest::newRow("real") << QByteArray("real") << QByteArray("2.5") << QVariant(2.5);
    QTest::newRow("verilog-number")
        << QByteArray("int") << QByteArray("8'hFF") << QVariant("8'hFF");
    QTest::newRow("file") << QByteArray("file") << QByteArray("a.hex") << QVariant("a.hex");
    QTest::newRow("huge") << QByteArray("int") << QByteArray("99999999999999999999x")
                          << QVariant("99999999999999999999x");
}

void TestProjectEdam::parameterValuesHaveTheirTypes()
{
    QFETCH(QByteArray, dataType);
    QFETCH(QByteArray, value);
    QFETCH(QVariant, expected);

    const auto project = open("name: x\nparameters:\n  P:\n    datatype: " + dataType
                              + "\n    default: " + value + "\n    paramtype: vlogparam\n");

    const QVariant found = project->designInfo().value(DesignInfo::Parameters).toMap().value("P");
    QCOMPARE(found.userType(), expected.userType());
    QCOMPARE(found, expected);
}

void TestProjectEdam::readyNetlistIsPassedOn()
{
    const auto project = open("name: x\nfiles:\n  - {name: out.json, file_type: yosysNetlist}\n");
    QCOMPARE(pathsIn(project->designInfo()), QStringList(directory->filePath("out.json")));
}

void TestProjectEdam::aliasesAreFollowed()
{
    const auto project = open("name: &n soc\ntoplevel: *n\nfiles:\n"
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
    const auto project = open("\xEF\xBB\xBF# made by hand\r\nname: x\r\nfiles:\r\n"
                              "  - name: a.v\r\n    file_type: verilogSource\r\n");
    QCOMPARE(project->name(), QString("x"));
    QCOMPARE(project->files().first().path, directory->filePath("a.v"));
    QCOMPARE(project->files().first().type, 2);
}

void TestProjectEdam::jsonIsTaken()
{
    const auto project = open("{\"name\": \"x\", \"toplevel\": \"t\",\n"
                              " \"files\": [{\"name\": \"a.v\", \"is_include_file\": false}]}");
    QCOMPARE(project->top(), QString("t"));
    QCOMPARE(project->files().size(), 1);
}

void TestProjectEdam::faultsNameFileLineAndKey_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("message");

    const auto row = [](const char *what, const QByteArray &text, const QString &message) {
        QTest::newRow(what) << text << message;
    };
    row("empty", "", ": document: is not a map");
    row("list", "- a\n", ":1: document: is not a map");
    row("text", "hello\n", ":1: document: is not a map");
    row("no-name", "files: []\n", ":1: name: is missing");
    row("empty-name", "name: ''\n", ":1: name: is missing");
    row("name-is-list", "name: [a]\n", ":1: name: is not a text");
    row("top-is-map", "name: x\ntoplevel: {a: b}\n", ":2: toplevel: is neither a text nor a list");
    row("top-of-maps", "name: x\ntoplevel:\n  - a\n  - {b: c}\n", ":4: toplevel[1]: is not a text");
    row("files-is-map", "name: x\nfiles: {a: b}\n", ":2: files: is not a list");
    row("files-is-text", "name: x\nfiles: a.v\n", ":2: files: is not a list");
    row("file-is-text", "name: x\nfiles:\n  - a.v\n", ":3: files[0]: is not a map");
    row("file-is-null", "name: x\nfiles:\n  - ~\n", ":3: files[0]: is not a map");
    row("file-without-name", "name: x\nfiles:\n  - {name: a.v}\n  - file_type: user\n",
        ":4: files[1].name: is missing");
    row("file-name-is-list", "name: x\nfiles:\n  - name: [a]\n",
        ":3: files[0].name: is not a text");
    row("file-type-is-map", "name: x\nfiles:\n  - name: a.v\n    file_type: {a: b}\n",
        ":4: files[0].file_type: is not a text");
    row("include-flag", "name: x\nfiles:\n  - name: a.v\n    is_include_file: maybe\n",
        ":4: files[0].is_include_file: is neither true nor false");
    row("include-flag-quoted", "name: x\nfiles:\n  - name: a.v\n    is_include_file: 'true'\n",
        ":4: files[0].is_include_file: is neither true nor false");
    row("include-path", "name: x\nfiles:\n  - name: a.v\n    include_path: [b]\n",
        ":4: files[0].include_path: is not a text");
    row("define", "name: x\nfiles:\n  - name: a.v\n    define: [b]\n",
        ":4: files[0].define: is not a map");
    row("define-value", "name: x\nfiles:\n  - name: a.v\n    define:\n      A: {b: c}\n",
        ":5: files[0].define.A: is not a text");
    row("parameters", "name: x\nparameters: [a]\n", ":2: parameters: is not a map");
    row("parameter", "name: x\nparameters:\n  P: 5\n", ":3: parameters.P: is not a map");
    row("default", "name: x\nparameters:\n  P:\n    default: [1]\n",
        ":4: parameters.P.default: is not a single value");
    row("tools", "name: x\ntool_options: [a]\n", ":2: tool_options: is not a map");
    row("workbench", "name: x\ntool_options:\n  workbench: on\n",
        ":3: tool_options.workbench: is not a map");
    row("include-option", "name: x\ntool_options:\n  workbench:\n    IncludePath: inc\n",
        ":4: tool_options.workbench.IncludePath: is not a list");
    row("option-is-map", "name: x\ntool_options:\n  workbench:\n    A: {b: c}\n",
        ":4: tool_options.workbench.A: is neither a text nor a list");
    row("option-of-lists", "name: x\ntool_options:\n  workbench:\n    A: [[b]]\n",
        ":4: tool_options.workbench.A[0]: is not a text");
    row("disabled", "name: x\ntool_options:\n  workbench:\n    disabled_files: a.v\n",
        ":4: tool_options.workbench.disabled_files: is not a list");
    row("repeated-key", "name: x\nfiles: []\nname: y\n",
        ":3: name: stands here for the second time");
    row("repeated-key-in-file", "name: x\nfiles:\n  - name: a.v\n    name: b.v\n",
        ":4: files[0].name: stands here for the second time");
    row("repeated-parameter", "name: x\nparameters:\n  P: {default: 1}\n  P: {default: 2}\n",
        ":4: parameters.P: stands here for the second time");
    row("syntax", "name: x\nfiles: [a\n", ":3: end of sequence flow not found");
    row("alias", "name: *x\n", ":1: the referenced anchor is not defined");
    row("self-containing-files", "name: x\nfiles: &f [*f]\n", ":2: files[0]: is not a map");
}

void TestProjectEdam::faultsNameFileLineAndKey()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, message);

    QStringList errors;
    const QString path = write(text);
    QVERIFY(!EdamProject::open(path, &errors));
    QCOMPARE(errors, QStringList(path + message));
}

void TestProjectEdam::allFaultsAreReported()
{
    QStringList errors;
    const QString path = write("files:\n  - a.v\n  - {file_type: user}\ntoplevel: {}\n");

    QVERIFY(!EdamProject::open(path, &errors));

    QCOMPARE(
        errors,
        QStringList({path + ":1: name: is missing",
                     path + ":4: toplevel: is neither a text nor a list",
                     path + ":2: files[0]: is not a map", path + ":3: files[1].name: is missing"}));
}

void TestProjectEdam::unreadableFilesAreRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("message");

    QTest::newRow("missing") << "/nowhere/a.eda.yml"
                             << ": the file does not exist";
    QTest::newRow("directory") << "/"
                               << ": it is not a regular file";
    QTest::newRow("device") << "/dev/null"
                            << ": it is not a regular file";
}

void TestProjectEdam::unreadableFilesAreRefused()
{
    QFETCH(QString, path);
    QFETCH(QString, message);
    QStringList errors;
    QVERIFY(!EdamProject::open(path, &errors));
    QCOMPARE(errors, QStringList(path + message));
}

void TestProjectEdam::newerVersionIsAWarning()
{
    QStringList errors;
    QStringList warnings;
    const QString path = write("name: x\nversion: 1.0.0\n");

    QVERIFY(EdamProject::open(path, &errors, &warnings));

    QCOMPARE(errors, QStringList());
    QCOMPARE(warnings,
             QStringList(path + ":2: version: is 1.0.0, what is newer than 0 may be misread"));
    QVERIFY(EdamProject::open(path, &errors));
}

void TestProjectEdam::hooksAreNotRun()
{
    const QString mark = directory->filePath("ran");
    const auto project = open("name: x\nhooks:\n  pre_build:\n    - name: h\n      cmd: [touch, "
                              + mark.toUtf8() + "]\n");
    QString error;
    QVERIFY(project->setTop("t", &error));
    QVERIFY(!QFile::exists(mark));
}

void TestProjectEdam::aliasBombIsRefusedOrHarmless()
{
    QByteArray text = "name: x\na0: &a0 [v, v, v, v, v, v, v, v, v, v]\n";
    for (int i = 1; i < 15; ++i) {
        const QByteArray last = "*a" + QByteArray::number(i - 1);
        const QByteArray name = "a" + QByteArray::number(i);
        text += name + ": &" + name + " [" + (last + ", ").repeated(9) + last + "]\n";
    }
    const auto project = open(text + "files: [{name: a.v}]\n");
    QCOMPARE(project->files().size(), 1);

    QString error;
    QVERIFY(!project->setTop("t", &error));
    QCOMPARE(error,
             QString("The project file repeats parts through anchors in a way that cannot "
                     "be changed here."));
    QCOMPARE(project->top(), QString());
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
    const auto project = open(text + disabled);

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
