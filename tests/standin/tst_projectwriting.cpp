// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectfixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using Standin::EdamProject;

class TestProjectWriting : public ProjectTest
{
    Q_OBJECT

private slots:
    void everythingUnknownIsKept();
    void headCommentsAreKept();
    void failedWriteChangesNothing();
    void fileChangedByOthersIsNotOverwritten();
    void fileIsReplacedWhole();
    void symbolicLinkSurvives();
    void sharedPartsAreSeparatedByAnEdit();
    void carriageReturnsAndMarkGoWithAnEdit();
    void adHocProjectIsChangedInMemory();
    void adHocProjectIsSaved();
    void savingElsewhereKeepsTheFiles();
    void hostileNamesSurvive();
    void changesInMemoryAreKnown();
};

void TestProjectWriting::everythingUnknownIsKept()
{
    const QByteArray text = "version: 0.2.1\n"
                            "zebra: {b: 1, a: \"2\"}\n"
                            "name: ::x:0\n"
                            "hooks:\n"
                            "  pre_build:\n"
                            "    - name: h\n"
                            "      cmd: [sh, -c, \"echo `id`\"]\n"
                            "files:\n"
                            "  - core: ::lib:1.0\n"
                            "    name: a.v\n"
                            "    file_type: verilogSource\n"
                            "    tags: [simulation]\n"
                            "parameters:\n"
                            "  P:\n"
                            "    datatype: int\n"
                            "    default: 0x10\n"
                            "    description: |\n"
                            "      One line.\n"
                            "        Another: line.\n"
                            "    paramtype: vlogparam\n"
                            "dependencies:\n"
                            "  ::x:0:\n"
                            "    - ::lib:1.0\n"
                            "vpi: []\n"
                            "tool_options:\n"
                            "  verilator:\n"
                            "    mode: lint-only\n"
                            "    version: \"1.10\"\n"
                            "toplevel: old\n"
                            "nothing: ~\n";
    const auto project = x->open(text);
    QVERIFY(project->setTop("new", &x->error));

    QByteArray expected = text;
    expected.replace("toplevel: old", "toplevel: new");
    QCOMPARE(QString::fromUtf8(x->read()), QString::fromUtf8(expected));
}

void TestProjectWriting::headCommentsAreKept()
{
    const auto project = x->open("# Made by hand.\n# Keep this.\nname: x # gone\n# gone\n");
    QVERIFY(project->setTop("t", &x->error));
    QCOMPARE(x->read(), QByteArray("# Made by hand.\n# Keep this.\nname: x\ntoplevel: t\n"));
    QVERIFY(project->setTop("u", &x->error));
    QCOMPARE(x->read(), QByteArray("# Made by hand.\n# Keep this.\nname: x\ntoplevel: u\n"));
}

void TestProjectWriting::failedWriteChangesNothing()
{
    const auto project = x->open(plainProject);
    // A directory that is in the way fails the write for every user, root included.
    QVERIFY(QFile::rename(x->in("x.eda.yml"), x->in("away")));
    QVERIFY(QDir(x->directory.path()).mkdir("x.eda.yml"));

    QVERIFY(!project->setTop("t", &x->error));
    QVERIFY(!project->removeFiles({"a.v"}, &x->error));

    QVERIFY(x->error.contains(x->in("x.eda.yml")));
    QCOMPARE(project->top(), QString());
    QCOMPARE(project->files().size(), 2);
    QCOMPARE(x->events.take(), QStringList());

    const auto fresh = EdamProject::adHoc({}, "x");
    QVERIFY(!fresh->saveAs(x->in("missing/x.eda.yml"), &x->error));
    QVERIFY2(
        x->error.startsWith("Cannot write the project file " + x->in("missing/x.eda.yml") + ": "),
        qPrintable(x->error));
    QCOMPARE(fresh->path(), QString());
}

void TestProjectWriting::fileChangedByOthersIsNotOverwritten()
{
    const auto project = x->open(plainProject);
    const QByteArray theirs = plainProject + "toplevel: theirs\n";
    x->open(theirs);

    QVERIFY(!project->setTop("ours", &x->error));

    QCOMPARE(x->error,
             "The project file " + x->in("x.eda.yml")
                 + " has been changed by another program. Open it again first.");
    QCOMPARE(x->read(), theirs);
    QCOMPARE(project->top(), QString());
}

void TestProjectWriting::fileIsReplacedWhole()
{
    const auto project = x->open(plainProject);
    QFile::setPermissions(x->in("x.eda.yml"), QFile::ReadOwner | QFile::WriteOwner);
    QFile old(x->in("x.eda.yml"));
    QVERIFY(old.open(QIODevice::ReadOnly));

    QVERIFY(project->setTop("t", &x->error));

    QCOMPARE(old.readAll(), plainProject);
    QCOMPARE(QFile::permissions(x->in("x.eda.yml")) & (QFile::ReadGroup | QFile::ReadOther),
             QFile::Permissions());
    QCOMPARE(QDir(x->directory.path()).entryList(QDir::Files), QStringList("x.eda.yml"));
}

void TestProjectWriting::symbolicLinkSurvives()
{
    x->open(plainProject);
    QVERIFY(QFile::rename(x->in("x.eda.yml"), x->in("real.yml")));
    QVERIFY(QFile::link(x->in("real.yml"), x->in("x.eda.yml")));
    QStringList errors;
    const auto project = EdamProject::open(x->in("x.eda.yml"), &errors);
    QVERIFY(project);

    QVERIFY(project->setTop("t", &x->error));

    QVERIFY(QFileInfo(x->in("x.eda.yml")).isSymLink());
    QCOMPARE(x->read(), plainProject + "toplevel: t\n");
}

void TestProjectWriting::sharedPartsAreSeparatedByAnEdit()
{
    const auto project = x->open("name: x\nfiles:\n  - {name: a.v, file_type: &t verilogSource}\n"
                                 "  - {name: b.v, file_type: *t}\nother: *t\n");
    QVERIFY(project->setFilesKind({"a.v"}, Standin::VhdlKind, &x->error));

    QCOMPARE(project->file("a.v").type, 4);
    QCOMPARE(project->file("b.v").type, 2);
    QCOMPARE(x->read(),
             QByteArray("name: x\nfiles:\n  - {name: a.v, file_type: vhdlSource}\n"
                        "  - {name: b.v, file_type: verilogSource}\n"
                        "other: verilogSource\n"));
}

void TestProjectWriting::carriageReturnsAndMarkGoWithAnEdit()
{
    const auto project = x->open("\xEF\xBB\xBF# head\r\nname: x\r\nother: \"1\"\r\n");
    QVERIFY(project->setTop("t", &x->error));
    QCOMPARE(x->read(), QByteArray("# head\nname: x\nother: \"1\"\ntoplevel: t\n"));
}

void TestProjectWriting::adHocProjectIsChangedInMemory()
{
    const auto project = EdamProject::adHoc({x->in("a.v")}, QString());
    const QStringList before = QDir::current().entryList(QDir::Files | QDir::Hidden);

    QVERIFY(project->setTop("t", &x->error));
    QVERIFY(project->addFile(x->touch("b.v")));

    QCOMPARE(project->top(), QString("t"));
    QCOMPARE(project->files().size(), 2);
    QCOMPARE(x->events.take().size(), 2);
    QCOMPARE(QDir::current().entryList(QDir::Files | QDir::Hidden), before);
}

void TestProjectWriting::adHocProjectIsSaved()
{
    const auto project = EdamProject::adHoc({x->in("a.v"), x->in("sub/b.sv")}, "top");

    QVERIFY(project->saveAs(x->in("x.eda.yml"), &x->error));

    QCOMPARE(project->path(), x->in("x.eda.yml"));
    QCOMPARE(project->directory(), x->directory.path());
    QCOMPARE(x->read(),
             QByteArray("version: 0.2.1\nname: top\nfiles:\n"
                        "  - name: a.v\n    file_type: verilogSource\n"
                        "  - name: sub/b.sv\n    file_type: systemVerilogSource\n"
                        "toplevel: top\n"));
    QCOMPARE(project->file(x->in("sub/b.sv")).type, 3);
    QVERIFY(project->setTop("t", &x->error));
    QVERIFY(x->read().contains("toplevel: t\n"));
}

void TestProjectWriting::savingElsewhereKeepsTheFiles()
{
    const auto project =
        x->open("name: x\nfiles:\n  - {name: a.v}\n"
                "  - {name: inc/h.vh, is_include_file: true, include_path: inc}\n"
                "tool_options: {workbench: {IncludePath: [more, /abs], disabled_files: [a.v]}}\n");
    const QMap<QString, QVariant> before = project->designInfo();
    const QByteArray text = x->read();
    QDir(x->directory.path()).mkdir("build");

    QVERIFY(project->saveAs(x->in("build/y.eda.yml"), &x->error));

    QCOMPARE(x->read(), text);
    QCOMPARE(project->designInfo(), before);
    QVERIFY(!project->file("../a.v").enable);
    QStringList errors;
    const auto again = EdamProject::open(x->in("build/y.eda.yml"), &errors);
    QVERIFY(again);
    QCOMPARE(again->designInfo(), before);
}

void TestProjectWriting::hostileNamesSurvive()
{
    const QStringList names{
        "a b.v",   "'q\".v",      "x;y.v",  "$(z)`w`.v",
        "-dash.v", "# hash.v",    "a: b.v", "&x.v",
        "*y.v",    "new\nline.v", "1.v",    "[l].v",
        "{m}.v",   "%p.v",        "\\t.v",  QString::fromUtf8("gr\xC3\xBC\xC3\x9F.v")};
    const auto project = x->open("name: x\n");
    QStringList paths;
    for (const QString &name : names)
        paths.append(x->touch(name));

    QVERIFY2(project->addFiles(paths, &x->error), qPrintable(x->error));

    QStringList errors;
    const auto again = EdamProject::open(x->in("x.eda.yml"), &errors);
    QVERIFY2(again, qPrintable(errors.join('\n')));
    QStringList found;
    const QList<TE::DesignFile> files = again->files();
    for (const TE::DesignFile &file : files)
        found.append(file.path);
    QCOMPARE(found, paths);
}

void TestProjectWriting::changesInMemoryAreKnown()
{
    const auto project = EdamProject::adHoc({x->in("a.v")}, "top");
    QVERIFY(!project->hasUnsavedChanges());
    QVERIFY(project->setTop("top", &x->error));
    QVERIFY(!project->hasUnsavedChanges());
    QVERIFY(project->setTop("other", &x->error));
    QVERIFY(project->hasUnsavedChanges());

    QVERIFY(!project->saveAs(x->in("missing/x.eda.yml"), &x->error));
    QVERIFY(project->hasUnsavedChanges());
    QVERIFY(project->saveAs(x->in("x.eda.yml"), &x->error));
    QVERIFY(!project->hasUnsavedChanges());
    QVERIFY(project->setTop("top", &x->error));
    QVERIFY(!project->hasUnsavedChanges());
}

MOLK_TEST_GUILESS_MAIN(TestProjectWriting)
#include "tst_projectwriting.moc"
