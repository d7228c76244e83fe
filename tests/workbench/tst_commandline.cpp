// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "testmain.h"
#include "version.h"

#include <QDir>

using Workbench::CommandLine;
using Workbench::parseCommandLine;

class CommandLineTest : public QObject
{
    Q_OBJECT

private slots:
    void noArgumentsAskForAnEmptyWindow();
    void pathsBecomeAbsolute();
    void filesAreSortedByTheirSuffix();
    void optionsAreTaken();
    void helpNamesEveryOption();
    void versionIsPrinted();
    void wrongArgumentsAreRefused_data();
    void wrongArgumentsAreRefused();
};

static CommandLine parse(const QStringList &arguments)
{
    return parseCommandLine(QStringList("workbench") + arguments);
}

static QString absolute(const QString &name)
{
    return QDir::current().absoluteFilePath(name);
}

void CommandLineTest::noArgumentsAskForAnEmptyWindow()
{
    const CommandLine line = parse({});
    QCOMPARE(line.request, CommandLine::Run);
    QVERIFY(line.project.isEmpty());
    QVERIFY(line.designFiles.isEmpty());
    QVERIFY(line.documents.isEmpty());
    QVERIFY(line.top.isEmpty());
    QVERIFY(line.plugin.isEmpty());
    QVERIFY(!line.dark);
}

void CommandLineTest::pathsBecomeAbsolute()
{
    const CommandLine line =
        parse({"--project", "p/../soc.eda.yml", "--plug-in", "x.so", "a.molk"});
    QCOMPARE(line.request, CommandLine::Run);
    QCOMPARE(line.project, absolute("soc.eda.yml"));
    QCOMPARE(line.plugin, absolute("x.so"));
    QCOMPARE(line.documents, QStringList(absolute("a.molk")));
}

void CommandLineTest::filesAreSortedByTheirSuffix()
{
    const CommandLine design = parse({"b.sv", "x.molk", "A.V", "c.vhdl", "d.vhd", "n.json"});
    QCOMPARE(design.request, CommandLine::Run);
    QCOMPARE(design.designFiles,
             QStringList({absolute("b.sv"), absolute("A.V"), absolute("c.vhdl"), absolute("d.vhd"),
                          absolute("n.json")}));
    QCOMPARE(design.documents, QStringList(absolute("x.molk")));

    const CommandLine project = parse({"x.molk", "soc.eda.yml", "y.molk"});
    QCOMPARE(project.request, CommandLine::Run);
    QCOMPARE(project.project, absolute("soc.eda.yml"));
    QCOMPARE(project.documents, QStringList({absolute("x.molk"), absolute("y.molk")}));
}

void CommandLineTest::optionsAreTaken()
{
    const CommandLine line = parse({"--top", "chip", "--dark", "a.v"});
    QCOMPARE(line.request, CommandLine::Run);
    QCOMPARE(line.top, "chip");
    QVERIFY(line.dark);
    QCOMPARE(parse({"--", "-a.v"}).designFiles, QStringList(absolute("-a.v")));
}

void CommandLineTest::helpNamesEveryOption()
{
    const CommandLine line = parse({"--help"});
    QCOMPARE(line.request, CommandLine::PrintText);
    for (const char *option : {"--project", "--top", "--plug-in", "--dark", "--help", "--version"})
        QVERIFY2(line.text.contains(QLatin1String(option)), option);
    QCOMPARE(parse({"-h"}).request, CommandLine::PrintText);
}

void CommandLineTest::versionIsPrinted()
{
    const CommandLine line = parse({"--version"});
    QCOMPARE(line.request, CommandLine::PrintText);
    QCOMPARE(line.text, QString("workbench " MOLK_VERSION "\n"));
}

void CommandLineTest::wrongArgumentsAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");

    QTest::newRow("unknown-option") << QStringList("--frob") << "Unknown option 'frob'.";
    QTest::newRow("missing-value") << QStringList("--top") << "Missing value after '--top'.";
    QTest::newRow("empty-value") << QStringList({"--top", "", "a.v"}) << "--top needs a value";
    QTest::newRow("twice") << QStringList({"--top", "a", "--top", "b", "a.v"})
                           << "--top can be given once";
    QTest::newRow("unknown-kind") << QStringList("notes.txt")
                                  << "'notes.txt' is no kind of file that can be opened";
    QTest::newRow("two-projects") << QStringList({"a.eda.yml", "b.eda.yml"})
                                  << "only one project can be open";
    QTest::newRow("option-and-file")
        << QStringList({"--project", "a.eda.yml", "b.eda.yml"}) << "only one project can be open";
    QTest::newRow("sources-beside-project")
        << QStringList({"a.eda.yml", "a.v"}) << "source files can't be named beside a project";
    QTest::newRow("top-of-nothing")
        << QStringList({"--top", "a", "x.molk"}) << "--top needs a project or source files";
}

void CommandLineTest::wrongArgumentsAreRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);

    const CommandLine line = parse(arguments);
    QCOMPARE(line.request, CommandLine::Refuse);
    QCOMPARE(line.text, "workbench: " + reason + "\nTry 'workbench --help'.\n");
}

MOLK_TEST_GUILESS_MAIN(CommandLineTest)
#include "tst_commandline.moc"
