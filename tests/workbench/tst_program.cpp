// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "childenvironment.h"
#include "testmain.h"
#include "version.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

/// The workbench as a shell sees it: exit codes, and what goes to which stream.
class ProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void helpAndVersionNeedNoDisplay();
    void usageErrorsNeedNoDisplay();
    void failuresAreToldWithFileAndCause_data();
    void failuresAreToldWithFileAndCause();
    void optionsOfTheToolkitAreLeftToIt();
    void aMissingDisplayIsTold_data();
    void aMissingDisplayIsTold();
    void theInstalledProgramFindsItsPlugin();

private:
    struct Outcome
    {
        int exitCode = -1;
        QString output;
        QString errors;
    };

    Outcome run(const QStringList &arguments, const QString &platform = "offscreen",
                const QString &program = WORKBENCH_PROGRAM);

    QTemporaryDir dir;
};

ProgramTest::Outcome ProgramTest::run(const QStringList &arguments, const QString &platform,
                                      const QString &program)
{
    QProcessEnvironment environment = childEnvironment(dir.path());
    environment.insert("QT_QPA_PLATFORM", platform);
    environment.remove("DISPLAY");
    environment.remove("WAYLAND_DISPLAY");

    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(dir.path());
    process.start(program, arguments);
    Outcome outcome;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return outcome;
    outcome.exitCode = process.exitCode();
    outcome.output = QString::fromLocal8Bit(process.readAllStandardOutput());
    outcome.errors = QString::fromLocal8Bit(process.readAllStandardError());
    return outcome;
}

void ProgramTest::helpAndVersionNeedNoDisplay()
{
    const Outcome help = run({"--help"}, "xcb");
    QCOMPARE(help.exitCode, 0);
    QVERIFY(help.output.startsWith("Usage: "));
    QCOMPARE(help.errors, QString());

    const Outcome version = run({"--version"}, "xcb");
    QCOMPARE(version.exitCode, 0);
    QCOMPARE(version.output, QString("workbench " MOLK_VERSION "\n"));
}

void ProgramTest::usageErrorsNeedNoDisplay()
{
    const Outcome outcome = run({"--frob"}, "xcb");
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.errors,
             QString("workbench: Unknown option 'frob'.\nTry 'workbench --help'.\n"));
}

void ProgramTest::failuresAreToldWithFileAndCause_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");

    const QString here = dir.path() + "/";
    QTest::newRow("missing-source") << QStringList("a.v") << here + "a.v: No such file.";
    QTest::newRow("missing-configuration")
        << QStringList("a.molk") << here + "a.molk: No such file.";
    QTest::newRow("missing-project")
        << QStringList({"--project", "p.eda.yml"}) << here + "p.eda.yml: the file does not exist";
    QTest::newRow("broken-project")
        << QStringList("broken.eda.yml") << here + "broken.eda.yml:2: files: ";
    QTest::newRow("no-plug-in") << QStringList({"--plug-in", "broken.eda.yml"})
                                << "Cannot load the plug-in " + here + "broken.eda.yml: ";
}

void ProgramTest::failuresAreToldWithFileAndCause()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);

    QFile broken(dir.filePath("broken.eda.yml"));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("name: x\nfiles: 7\n");
    broken.close();

    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output, QString());
    const QString told = outcome.errors.section('\n', -2, -2);
    QVERIFY2(told.startsWith("workbench: " + error), qPrintable(outcome.errors));
}

void ProgramTest::optionsOfTheToolkitAreLeftToIt()
{
    const Outcome outcome = run({"-platform", "offscreen", "a.v"}, "xcb");
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.errors.contains("a.v: No such file."));
}

void ProgramTest::aMissingDisplayIsTold_data()
{
    QTest::addColumn<QString>("platform");
    QTest::newRow("usual") << QString();
    QTest::newRow("named") << "xcb";
}

void ProgramTest::aMissingDisplayIsTold()
{
    QFETCH(QString, platform);
    const Outcome outcome = run({}, platform);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.errors, QString("workbench: there is no display to open a window on\n"));
}

// The plug-in is loaded before files are looked at, so that a missing file proves that it was
// found.
void ProgramTest::theInstalledProgramFindsItsPlugin()
{
    for (const char *component : {"workbench", "plugin"}) {
        const Outcome installed =
            run({"--install", BUILD_FOLDER, "--component", QLatin1String(component), "--prefix",
                 dir.filePath("prefix")},
                "offscreen", CMAKE_PROGRAM);
        QVERIFY2(installed.exitCode == 0, qPrintable(installed.errors));
    }
    const QString program = dir.filePath("prefix/" BIN_FOLDER "/workbench");
    const Outcome outcome = run({"a.v"}, "offscreen", program);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains("a.v: No such file."), qPrintable(outcome.errors));

    // Without the plug-in it says so.
    QDir(dir.filePath("prefix/" PLUGIN_FOLDER)).remove("libMolkInserterPlugin.so");
    const Outcome without = run({"a.v"}, "offscreen", program);
    QCOMPARE(without.exitCode, 1);
    QVERIFY2(without.errors.contains("libMolkInserterPlugin.so is neither in the build tree nor "
                                     "installed; name it with --plug-in."),
             qPrintable(without.errors));
}

MOLK_TEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
