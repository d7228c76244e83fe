// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectfixture.h"

#include "designinfo.h"

namespace DesignInfo = Standin::DesignInfo;

/// What the extraction is told of a project.
class TestProjectDesignInfo : public ProjectTest
{
    Q_OBJECT

private slots:
    void designInfoHoldsSourcesInOrder();
    void designInfoLeavesOutWhatIsNotCompiled();
    void designInfoHoldsPerFileSettings();
    void includePathComesFromOptionsThenFiles();
    void parametersAreSortedByTheirType();
    void parameterValuesHaveTheirTypes_data();
    void parameterValuesHaveTheirTypes();
    void readyNetlistIsPassedOn();
};

void TestProjectDesignInfo::designInfoHoldsSourcesInOrder()
{
    const auto project = x->open("name: x\nfiles:\n  - {name: z.v}\n  - {name: a.sv}\n"
                                 "  - {name: m.vhd}\n");
    const QMap<QString, QVariant> info = project->designInfo();

    QCOMPARE(info.keys(), QStringList("Files"));
    QCOMPARE(pathsIn(info), QStringList({x->in("z.v"), x->in("a.sv"), x->in("m.vhd")}));
    const QVariantList files = info.value(DesignInfo::Files).toList();
    QCOMPARE(files.at(0).toMap(), (QVariantMap{{"Path", x->in("z.v")}, {"Type", 2}}));
    QCOMPARE(files.at(1).toMap().value(DesignInfo::Type), QVariant(3));
    QCOMPARE(files.at(2).toMap().value(DesignInfo::Type), QVariant(4));
}

void TestProjectDesignInfo::designInfoLeavesOutWhatIsNotCompiled()
{
    const auto project =
        x->open("name: x\nfiles:\n  - {name: a.v}\n  - {name: off.v}\n"
                "  - {name: h.vh, is_include_file: true}\n  - {name: c.sdc, file_type: SDC}\n"
                "  - {name: x.molk, file_type: user}\n"
                "tool_options: {workbench: {disabled_files: [./off.v]}}\n");
    QCOMPARE(pathsIn(project->designInfo()), QStringList(x->in("a.v")));
}

void TestProjectDesignInfo::designInfoHoldsPerFileSettings()
{
    const auto project =
        x->open("name: x\nfiles:\n  - name: a.vhd\n    file_type: vhdlSource-2008\n"
                "    logical_name: lib\n  - name: b.v\n    define: {N: '0x10'}\n");
    const QVariantList files = project->designInfo().value(DesignInfo::Files).toList();

    QCOMPARE(files.at(0).toMap().value(DesignInfo::Library), QVariant("lib"));
    QCOMPARE(files.at(0).toMap().value(DesignInfo::Standard), QVariant("2008"));
    QCOMPARE(files.at(1).toMap().value(DesignInfo::Defines).toMap(), (QVariantMap{{"N", "0x10"}}));
    QVERIFY(!files.at(1).toMap().contains(DesignInfo::Library));
}

void TestProjectDesignInfo::includePathComesFromOptionsThenFiles()
{
    const auto project =
        x->open("name: x\nfiles:\n"
                "  - {name: one/a.vh, is_include_file: true}\n"
                "  - {name: two/sub/b.vh, is_include_file: yes, include_path: two}\n"
                "  - {name: one/c.vh, is_include_file: true}\n"
                "  - {name: off/d.vh, is_include_file: true}\n"
                "  - {name: no/e.vh, is_include_file: false, include_path: no}\n"
                "tool_options:\n  workbench:\n    IncludePath: [inc, /abs, two]\n"
                "    disabled_files: [off/d.vh]\n");

    const QString base = x->directory.path();
    QCOMPARE(project->designInfo().value(DesignInfo::IncludePath),
             QVariant(QStringList({base + "/inc", "/abs", base + "/two", base + "/one"})));
}

void TestProjectDesignInfo::parametersAreSortedByTheirType()
{
    const auto project = x->open("name: x\nparameters:\n"
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

void TestProjectDesignInfo::parameterValuesHaveTheirTypes_data()
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

void TestProjectDesignInfo::parameterValuesHaveTheirTypes()
{
    QFETCH(QByteArray, dataType);
    QFETCH(QByteArray, value);
    QFETCH(QVariant, expected);

    const auto project = x->open("name: x\nparameters:\n  P:\n    datatype: " + dataType
                                 + "\n    default: " + value + "\n    paramtype: vlogparam\n");

    const QVariant found = project->designInfo().value(DesignInfo::Parameters).toMap().value("P");
    QCOMPARE(found.userType(), expected.userType());
    QCOMPARE(found, expected);
}

void TestProjectDesignInfo::readyNetlistIsPassedOn()
{
    const auto project =
        x->open("name: x\nfiles:\n  - {name: out.json, file_type: yosysNetlist}\n");
    QCOMPARE(pathsIn(project->designInfo()), QStringList(x->in("out.json")));
}

MOLK_TEST_GUILESS_MAIN(TestProjectDesignInfo)
#include "tst_projectdesigninfo.moc"
