// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "fileselection.h"
#include "testmain.h"

#include "project/edamproject.h"

using Workbench::FileSelection;

class FileSelectionTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingHasNothingInCommon();
    void whatIsCommonIsSeen_data();
    void whatIsCommonIsSeen();
    void neighboursAreThoseOfTheGroup_data();
    void neighboursAreThoseOfTheGroup();
};

static TE::DesignFile file(const QString &path, int type, bool enabled = true, bool include = false)
{
    TE::DesignFile made;
    made.path = path;
    made.type = type;
    made.enable = enabled;
    if (include)
        made.data.insert("is_include_file", true);
    return made;
}

static const QList<TE::DesignFile> files()
{
    return {
        file("/a.v", Standin::VerilogKind),        file("/s.sv", Standin::SystemVerilogKind),
        file("/b.v", Standin::VerilogKind, false), file("/i.vh", Standin::VerilogKind, true, true),
        file("/c.v", Standin::VerilogKind),        file("/n.txt", Standin::OtherKind),
        file("/d.v", Standin::VerilogKind)};
}

void FileSelectionTest::nothingHasNothingInCommon()
{
    const FileSelection selection = Workbench::describeSelection(files(), {"/elsewhere.v"});
    QCOMPARE(selection.paths, QStringList());
    QCOMPARE(selection.kind, 0);
    QCOMPARE(selection.enabled, Qt::Unchecked);
    QCOMPARE(selection.above, QString());
    QCOMPARE(selection.below, QString());
}

void FileSelectionTest::whatIsCommonIsSeen_data()
{
    QTest::addColumn<QStringList>("selected");
    QTest::addColumn<int>("kind");
    QTest::addColumn<Qt::CheckState>("enabled");
    QTest::addColumn<Qt::CheckState>("include");

    QTest::newRow("one") << QStringList("/s.sv") << 3 << Qt::Checked << Qt::Unchecked;
    QTest::newRow("one-off") << QStringList("/b.v") << 2 << Qt::Unchecked << Qt::Unchecked;
    QTest::newRow("one-include") << QStringList("/i.vh") << 2 << Qt::Checked << Qt::Checked;
    QTest::newRow("on-and-off") << QStringList({"/a.v", "/b.v"}) << 2 << Qt::PartiallyChecked
                                << Qt::Unchecked;
    QTest::newRow("several-kinds")
        << QStringList({"/n.txt", "/i.vh"}) << 0 << Qt::Checked << Qt::PartiallyChecked;
}

void FileSelectionTest::whatIsCommonIsSeen()
{
    QFETCH(QStringList, selected);
    const FileSelection selection = Workbench::describeSelection(files(), selected);
    QTEST(selection.kind, "kind");
    QTEST(selection.enabled, "enabled");
    QTEST(selection.include, "include");
}

void FileSelectionTest::neighboursAreThoseOfTheGroup_data()
{
    QTest::addColumn<QStringList>("selected");
    QTest::addColumn<QString>("above");
    QTest::addColumn<QString>("below");

    QTest::newRow("first") << QStringList("/a.v") << ""
                           << "/b.v";
    QTest::newRow("middle") << QStringList("/c.v") << "/b.v"
                            << "/d.v";
    QTest::newRow("last") << QStringList("/d.v") << "/c.v"
                          << "";
    QTest::newRow("alone") << QStringList("/s.sv") << ""
                           << "";
    QTest::newRow("block") << QStringList({"/c.v", "/b.v"}) << "/a.v"
                           << "/d.v";
    QTest::newRow("apart") << QStringList({"/b.v", "/d.v"}) << "/a.v"
                           << "";
    QTest::newRow("around-one") << QStringList({"/a.v", "/c.v"}) << ""
                                << "/d.v";
    QTest::newRow("all") << QStringList({"/a.v", "/b.v", "/c.v", "/d.v"}) << ""
                         << "";
    QTest::newRow("two-groups") << QStringList({"/b.v", "/s.sv"}) << ""
                                << "";
}

void FileSelectionTest::neighboursAreThoseOfTheGroup()
{
    QFETCH(QStringList, selected);
    const FileSelection selection = Workbench::describeSelection(files(), selected);
    QTEST(selection.above, "above");
    QTEST(selection.below, "below");
}

MOLK_TEST_GUILESS_MAIN(FileSelectionTest)
#include "tst_fileselection.moc"
