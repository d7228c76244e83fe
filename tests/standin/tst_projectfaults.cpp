// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectfixture.h"

#include <QFile>

using Standin::EdamProject;

/// Project files that are faulty, or mean harm.
class TestProjectFaults : public ProjectTest
{
    Q_OBJECT

private slots:
    void faultsNameFileLineAndKey_data();
    void faultsNameFileLineAndKey();
    void allFaultsAreReported();
    void unreadableFilesAreRefused_data();
    void unreadableFilesAreRefused();
    void newerVersionIsAWarning();
    void hooksAreNotRun();
    void aliasBombIsRefusedOrHarmless();
};

void TestProjectFaults::faultsNameFileLineAndKey_data()
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

void TestProjectFaults::faultsNameFileLineAndKey()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, message);

    QStringList errors;
    const QString path = x->write(text);
    QVERIFY(!EdamProject::open(path, &errors));
    QCOMPARE(errors, QStringList(path + message));
}

void TestProjectFaults::allFaultsAreReported()
{
    QStringList errors;
    const QString path = x->write("files:\n  - a.v\n  - {file_type: user}\ntoplevel: {}\n");

    QVERIFY(!EdamProject::open(path, &errors));

    QCOMPARE(
        errors,
        QStringList({path + ":1: name: is missing",
                     path + ":4: toplevel: is neither a text nor a list",
                     path + ":2: files[0]: is not a map", path + ":3: files[1].name: is missing"}));
}

void TestProjectFaults::unreadableFilesAreRefused_data()
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

void TestProjectFaults::unreadableFilesAreRefused()
{
    QFETCH(QString, path);
    QFETCH(QString, message);
    QStringList errors;
    QVERIFY(!EdamProject::open(path, &errors));
    QCOMPARE(errors, QStringList(path + message));
}

void TestProjectFaults::newerVersionIsAWarning()
{
    QStringList errors;
    QStringList warnings;
    const QString path = x->write("name: x\nversion: 1.0.0\n");

    QVERIFY(EdamProject::open(path, &errors, &warnings));

    QCOMPARE(errors, QStringList());
    QCOMPARE(warnings,
             QStringList(path + ":2: version: is 1.0.0, what is newer than 0 may be misread"));
    QVERIFY(EdamProject::open(path, &errors));
}

void TestProjectFaults::hooksAreNotRun()
{
    const QString mark = x->in("ran");
    const auto project = x->open("name: x\nhooks:\n  pre_build:\n    - name: h\n      cmd: [touch, "
                                 + mark.toUtf8() + "]\n");
    QString error;
    QVERIFY(project->setTop("t", &error));
    QVERIFY(!QFile::exists(mark));
}

void TestProjectFaults::aliasBombIsRefusedOrHarmless()
{
    QByteArray text = "name: x\na0: &a0 [v, v, v, v, v, v, v, v, v, v]\n";
    for (int i = 1; i < 15; ++i) {
        const QByteArray last = "*a" + QByteArray::number(i - 1);
        const QByteArray name = "a" + QByteArray::number(i);
        text += name + ": &" + name + " [" + (last + ", ").repeated(9) + last + "]\n";
    }
    const auto project = x->open(text + "files: [{name: a.v}]\n");
    QCOMPARE(project->files().size(), 1);

    QString error;
    QVERIFY(!project->setTop("t", &error));
    QCOMPARE(error,
             QString("The project file repeats parts through anchors in a way that cannot "
                     "be changed here."));
    QCOMPARE(project->top(), QString());
}

MOLK_TEST_GUILESS_MAIN(TestProjectFaults)
#include "tst_projectfaults.moc"
