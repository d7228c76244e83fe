// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testmain.h"

#include "host/event.h"
#include "host/eventbus.h"
#include "project/edamproject.h"

#include "qutil/eventmanager.h"
#include "qutil/ieventhandler.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

using Standin::EdamProject;

/// Hears all events of a project, and sees what the project says at that moment.
class EventList : public QUtil::IEventHandler
{
public:
    EventList()
    {
        for (const QString &name :
             QStringList{"TE.File.Add", "TE.File.Remove", "TE.File.Change.Enable",
                         "TE.File.Change.Type", "TE.Option.Change", "TE.Device.Change"})
            QUtil::EventManager::instance()->subscribe(this, name);
    }

    ~EventList() override { QUtil::EventManager::instance()->unsubscribeAll(this); }

    void handleIEvent(const QUtil::IEvent *event) override
    {
        QString line = event->type();
        for (const QString &key : QStringList{"file", "enable", "type", "previous", "option"}) {
            if (event->get(key).isValid())
                line += " " + key + "=" + event->get(key).toString();
        }
        lines.append(line);
        if (project)
            filesAtEvent = project->files().size();
    }

    QStringList take() { return std::exchange(lines, {}); }

    const EdamProject *project = nullptr;
    int filesAtEvent = -1;

private:
    QStringList lines;
};

class TestProjectEditing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everythingUnknownIsKept();
    void headCommentsAreKept();
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

private:
    std::unique_ptr<EdamProject> open(const QByteArray &text);
    QByteArray read() const;
    QString touch(const QString &name);
    QString in(const QString &name) const { return directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<EventList> events;
    QString error;
};

static const QByteArray plain = "name: x\n"
                                "files:\n"
                                "  - name: a.v\n"
                                "    file_type: verilogSource-2005\n"
                                "  - name: b.vhd\n"
                                "    file_type: vhdlSource\n";

void TestProjectEditing::init()
{
    directory = std::make_unique<QTemporaryDir>();
    QVERIFY(directory->isValid());
    events = std::make_unique<EventList>();
    error.clear();
}

void TestProjectEditing::cleanup()
{
    events.reset();
}

std::unique_ptr<EdamProject> TestProjectEditing::open(const QByteArray &text)
{
    const QString path = in("x.eda.yml");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        QTest::qFail("the project file can't be written", __FILE__, __LINE__);
    file.close();

    QStringList errors;
    std::unique_ptr<EdamProject> project = EdamProject::open(path, &errors);
    if (!project)
        QTest::qFail(qPrintable(errors.join('\n')), __FILE__, __LINE__);
    return project;
}

QByteArray TestProjectEditing::read() const
{
    QFile file(in("x.eda.yml"));
    if (!file.open(QIODevice::ReadOnly))
        QTest::qFail("the project file can't be read", __FILE__, __LINE__);
    return file.readAll();
}

QString TestProjectEditing::touch(const QString &name)
{
    const QString path = in(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        QTest::qFail("a source file can't be written", __FILE__, __LINE__);
    return path;
}

void TestProjectEditing::everythingUnknownIsKept()
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
    const auto project = open(text);
    QVERIFY(project->setTop("new", &error));

    QByteArray expected = text;
    expected.replace("toplevel: old", "toplevel: new");
    QCOMPARE(QString::fromUtf8(read()), QString::fromUtf8(expected));
}

void TestProjectEditing::headCommentsAreKept()
{
    const auto project = open("# Made by hand.\n# Keep this.\nname: x # gone\n# gone\n");
    QVERIFY(project->setTop("t", &error));
    QCOMPARE(read(), QByteArray("# Made by hand.\n# Keep this.\nname: x\ntoplevel: t\n"));
    QVERIFY(project->setTop("u", &error));
    QCOMPARE(read(), QByteArray("# Made by hand.\n# Keep this.\nname: x\ntoplevel: u\n"));
}

void TestProjectEditing::fileIsAdded()
{
    const auto project = open(plain);
    const QString path = touch("rtl/c.sv");

    QVERIFY(project->addFile(path));

    QCOMPARE(events->take(), QStringList("TE.File.Add file=" + path));
    QCOMPARE(project->file(path).type, 3);
    QVERIFY(project->file(path).enable);
    QCOMPARE(read(), plain + "  - name: rtl/c.sv\n    file_type: systemVerilogSource\n");
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
    const auto project = open(plain);

    QVERIFY(project->addFile(touch(name)));

    QCOMPARE(read(), plain + "  - name: " + name.toUtf8() + "\n    " + entry + "\n");
}

void TestProjectEditing::fileInTheProjectIsNotAddedAgain()
{
    const auto project = open(plain);
    touch("a.v");
    QVERIFY(!project->addFile(in("a.v")));
    QVERIFY(!project->addFile(in("./sub/../a.v")));
    QCOMPARE(read(), plain);
    QCOMPARE(events->take(), QStringList());
}

void TestProjectEditing::whatIsNoFileIsNotAdded()
{
    const auto project = open(plain);
    QVERIFY(!project->addFile(in("missing.v")));
    QVERIFY(!project->addFile(directory->path()));
    QVERIFY(!project->addFile(QString()));
    QVERIFY(!project->addFiles({touch("c.v"), in("missing.v")}, &error));
    QCOMPARE(error, in("missing.v") + " is not a file.");
    QCOMPARE(read(), plain);
    QCOMPARE(events->take(), QStringList());
}

void TestProjectEditing::filesAreAddedWithOneWrite()
{
    const auto project = open(plain);
    const QString c = touch("c.v");
    const QString d = touch("d.v");
    touch("a.v");
    events->project = project.get();

    QVERIFY(project->addFiles({c, in("a.v"), d, c}, &error));

    QCOMPARE(events->take(), QStringList({"TE.File.Add file=" + c, "TE.File.Add file=" + d}));
    QCOMPARE(events->filesAtEvent, 4);
}

void TestProjectEditing::firstFileIsAddedToAProjectWithoutAList()
{
    const auto project = open("name: x\nfiles:\n");
    QVERIFY(project->addFile(touch("c.v")));
    QCOMPARE(read(), QByteArray("name: x\nfiles:\n  - name: c.v\n    file_type: verilogSource\n"));
}

void TestProjectEditing::fileIsNamedRelativeToTheProject()
{
    QDir(directory->path()).mkdir("build");
    const auto project = EdamProject::adHoc({}, "x");
    QVERIFY(project->saveAs(in("build/x.eda.yml"), &error));
    QVERIFY(project->addFiles({touch("rtl/c.v"), "/bin/sh"}, &error));
    QCOMPARE(project->files().at(0).data.value("name"), QVariant("../rtl/c.v"));
    QCOMPARE(project->files().at(1).data.value("name"), QVariant("/bin/sh"));
}

void TestProjectEditing::fileIsRemoved()
{
    const auto project = open(plain);

    QVERIFY(project->removeFile("a.v", &error));

    QCOMPARE(events->take(),
             QStringList("TE.File.Remove file=" + in("a.v") + " enable=true type=2"));
    QCOMPARE(project->file("a.v").type, 0);
    QCOMPARE(read(), QByteArray("name: x\nfiles:\n  - name: b.vhd\n    file_type: vhdlSource\n"));

    QVERIFY(project->removeFile(in("b.vhd"), &error));
    QCOMPARE(read(), QByteArray("name: x\nfiles: []\n"));
}

void TestProjectEditing::removedFileLeavesTheListOfDisabledOnes()
{
    const auto project = open(plain);
    QVERIFY(project->setFileEnabled("a.v", false, &error));
    events->take();

    QVERIFY(project->removeFile("a.v", &error));

    QCOMPARE(events->take(),
             QStringList("TE.File.Remove file=" + in("a.v") + " enable=false type=2"));
    QVERIFY(!read().contains("a.v"));
    touch("a.v");
    QVERIFY(project->addFile(in("a.v")));
    QVERIFY(project->file("a.v").enable);
}

void TestProjectEditing::fileIsSwitchedOffAndOn()
{
    const auto project = open(plain);

    QVERIFY(project->setFileEnabled("a.v", false, &error));
    QCOMPARE(events->take(),
             QStringList("TE.File.Change.Enable file=" + in("a.v") + " enable=false type=2"));
    QVERIFY(!project->file("a.v").enable);
    QCOMPARE(read(), plain + "tool_options:\n  workbench:\n    disabled_files:\n      - a.v\n");

    QVERIFY(project->setFileEnabled("b.vhd", false, &error));
    QVERIFY(project->setFileEnabled("a.v", true, &error));
    QCOMPARE(events->take(),
             QStringList({"TE.File.Change.Enable file=" + in("b.vhd") + " enable=false type=4",
                          "TE.File.Change.Enable file=" + in("a.v") + " enable=true type=2"}));
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
    const auto project = open(plain);

    QVERIFY(project->setFileKind("a.v", Standin::FileKind(kind), &error));

    QCOMPARE(events->take(),
             QStringList("TE.File.Change.Type file=" + in("a.v") + " type=" + QString::number(kind)
                         + " previous=2"));
    QCOMPARE(project->file("a.v").type, kind);
    QCOMPARE(read(), QByteArray(plain).replace("verilogSource-2005", fileType));
}

void TestProjectEditing::includeFileIsMadeAndUnmade()
{
    const auto project = open(plain);
    const QString line = "TE.File.Change.Type file=" + in("a.v") + " type=2 previous=2";

    QVERIFY(project->setIncludeFile("a.v", true, &error));
    QCOMPARE(events->take(), QStringList(line));
    QCOMPARE(project->file("a.v").data.value("is_include_file"), QVariant(true));
    QVERIFY(read().contains("    is_include_file: true\n"));

    QVERIFY(project->setIncludeFile("a.v", false, &error));
    QCOMPARE(events->take(), QStringList(line));
    QCOMPARE(read(), plain);
}

void TestProjectEditing::topIsSetAndUnset()
{
    const auto project = open(plain);

    QVERIFY(project->setTop("soc", &error));
    QCOMPARE(events->take(), QStringList("TE.Option.Change option=TopModule"));
    QCOMPARE(project->top(), QString("soc"));
    QCOMPARE(read(), plain + "toplevel: soc\n");

    QVERIFY(project->setOption("TopModule", QVariant(), &error));
    QCOMPARE(events->take(), QStringList("TE.Option.Change option=TopModule"));
    QCOMPARE(project->top(), QString());
    QCOMPARE(read(), plain);
}

void TestProjectEditing::optionsAreSetAndUnset()
{
    const auto project = open(plain);

    QVERIFY(project->setOption("IncludePath", QStringList({"inc", "/abs"}), &error));
    QVERIFY(project->setOption("Verilog_Standard", "2001", &error));
    QCOMPARE(events->take(),
             QStringList({"TE.Option.Change option=IncludePath",
                          "TE.Option.Change option=Verilog_Standard"}));
    QCOMPARE(read(),
             plain
                 + "tool_options:\n  workbench:\n    IncludePath:\n      - inc\n      - /abs\n"
                   "    Verilog_Standard: \"2001\"\n");
    QCOMPARE(project->option("Verilog_Standard"), QVariant("2001"));

    QVERIFY(project->setOption("IncludePath", QStringList(), &error));
    QVERIFY(project->setOption("Verilog_Standard", QVariant(), &error));
    QCOMPARE(events->take().size(), 2);
    QVERIFY(!project->option("IncludePath").isValid());
    QVERIFY(!read().contains("IncludePath"));
}

void TestProjectEditing::deviceHasAnEventOfItsOwn()
{
    const auto project = open(plain);
    QVERIFY(project->setOption("Device", "OD-7", &error));
    QCOMPARE(events->take(), QStringList("TE.Device.Change"));
    QCOMPARE(project->option("Device"), QVariant("OD-7"));
}

void TestProjectEditing::unknownFilesAreRefused()
{
    const auto project = open(plain);
    const QString message = "no.v is not in the project.";

    QVERIFY(!project->removeFile("no.v", &error));
    QCOMPARE(error, message);
    QVERIFY(!project->setFileEnabled("no.v", true, &error));
    QCOMPARE(error, message);
    QVERIFY(!project->setFileKind("no.v", Standin::VhdlKind, &error));
    QCOMPARE(error, message);
    QVERIFY(!project->setIncludeFile("no.v", true, &error));
    QCOMPARE(error, message);
    QCOMPARE(events->take(), QStringList());
}

void TestProjectEditing::nothingHappensWhenNothingChanges()
{
    const auto project = open("# as it is\n" + plain);

    QVERIFY(project->setFileEnabled("a.v", true, &error));
    QVERIFY(project->setFileKind("a.v", Standin::VerilogKind, &error));
    QVERIFY(project->setIncludeFile("a.v", false, &error));
    QVERIFY(project->setTop(QString(), &error));
    QVERIFY(project->setOption("Device", QVariant(), &error));
    QVERIFY(project->addFiles({}, &error));

    QCOMPARE(events->take(), QStringList());
    QCOMPARE(read(), "# as it is\n" + plain);
}

void TestProjectEditing::stateIsNewWhenTheEventComes()
{
    const auto project = open(plain);
    events->project = project.get();
    QVERIFY(project->removeFile("a.v", &error));
    QCOMPARE(events->filesAtEvent, 1);
}

void TestProjectEditing::failedWriteChangesNothing()
{
    const auto project = open(plain);
    // A directory that is in the way fails the write for every user, root included.
    QVERIFY(QFile::rename(in("x.eda.yml"), in("away")));
    QVERIFY(QDir(directory->path()).mkdir("x.eda.yml"));

    QVERIFY(!project->setTop("t", &error));
    QVERIFY(!project->removeFile("a.v", &error));

    QVERIFY(error.contains(in("x.eda.yml")));
    QCOMPARE(project->top(), QString());
    QCOMPARE(project->files().size(), 2);
    QCOMPARE(events->take(), QStringList());

    const auto fresh = EdamProject::adHoc({}, "x");
    QVERIFY(!fresh->saveAs(in("missing/x.eda.yml"), &error));
    QVERIFY2(error.startsWith("Cannot write the project file " + in("missing/x.eda.yml") + ": "),
             qPrintable(error));
    QCOMPARE(fresh->path(), QString());
}

void TestProjectEditing::fileChangedByOthersIsNotOverwritten()
{
    const auto project = open(plain);
    const QByteArray theirs = plain + "toplevel: theirs\n";
    open(theirs);

    QVERIFY(!project->setTop("ours", &error));

    QCOMPARE(error,
             "The project file " + in("x.eda.yml")
                 + " has been changed by another program. Open it again first.");
    QCOMPARE(read(), theirs);
    QCOMPARE(project->top(), QString());
}

void TestProjectEditing::fileIsReplacedWhole()
{
    const auto project = open(plain);
    QFile::setPermissions(in("x.eda.yml"), QFile::ReadOwner | QFile::WriteOwner);
    QFile old(in("x.eda.yml"));
    QVERIFY(old.open(QIODevice::ReadOnly));

    QVERIFY(project->setTop("t", &error));

    QCOMPARE(old.readAll(), plain);
    QCOMPARE(QFile::permissions(in("x.eda.yml")) & (QFile::ReadGroup | QFile::ReadOther),
             QFile::Permissions());
    QCOMPARE(QDir(directory->path()).entryList(QDir::Files), QStringList("x.eda.yml"));
}

void TestProjectEditing::symbolicLinkSurvives()
{
    open(plain);
    QVERIFY(QFile::rename(in("x.eda.yml"), in("real.yml")));
    QVERIFY(QFile::link(in("real.yml"), in("x.eda.yml")));
    QStringList errors;
    const auto project = EdamProject::open(in("x.eda.yml"), &errors);
    QVERIFY(project);

    QVERIFY(project->setTop("t", &error));

    QVERIFY(QFileInfo(in("x.eda.yml")).isSymLink());
    QCOMPARE(read(), plain + "toplevel: t\n");
}

void TestProjectEditing::sharedPartsAreSeparatedByAnEdit()
{
    const auto project = open("name: x\nfiles:\n  - {name: a.v, file_type: &t verilogSource}\n"
                              "  - {name: b.v, file_type: *t}\nother: *t\n");
    QVERIFY(project->setFileKind("a.v", Standin::VhdlKind, &error));

    QCOMPARE(project->file("a.v").type, 4);
    QCOMPARE(project->file("b.v").type, 2);
    QCOMPARE(read(),
             QByteArray("name: x\nfiles:\n  - {name: a.v, file_type: vhdlSource}\n"
                        "  - {name: b.v, file_type: verilogSource}\n"
                        "other: verilogSource\n"));
}

void TestProjectEditing::carriageReturnsAndMarkGoWithAnEdit()
{
    const auto project = open("\xEF\xBB\xBF# head\r\nname: x\r\nother: \"1\"\r\n");
    QVERIFY(project->setTop("t", &error));
    QCOMPARE(read(), QByteArray("# head\nname: x\nother: \"1\"\ntoplevel: t\n"));
}

void TestProjectEditing::adHocProjectIsChangedInMemory()
{
    const auto project = EdamProject::adHoc({in("a.v")}, QString());
    const QStringList before = QDir::current().entryList(QDir::Files | QDir::Hidden);

    QVERIFY(project->setTop("t", &error));
    QVERIFY(project->addFile(touch("b.v")));

    QCOMPARE(project->top(), QString("t"));
    QCOMPARE(project->files().size(), 2);
    QCOMPARE(events->take().size(), 2);
    QCOMPARE(QDir::current().entryList(QDir::Files | QDir::Hidden), before);
}

void TestProjectEditing::adHocProjectIsSaved()
{
    const auto project = EdamProject::adHoc({in("a.v"), in("sub/b.sv")}, "top");

    QVERIFY(project->saveAs(in("x.eda.yml"), &error));

    QCOMPARE(project->path(), in("x.eda.yml"));
    QCOMPARE(project->directory(), directory->path());
    QCOMPARE(read(),
             QByteArray("version: 0.2.1\nname: top\nfiles:\n"
                        "  - name: a.v\n    file_type: verilogSource\n"
                        "  - name: sub/b.sv\n    file_type: systemVerilogSource\n"
                        "toplevel: top\n"));
    QCOMPARE(project->file(in("sub/b.sv")).type, 3);
    QVERIFY(project->setTop("t", &error));
    QVERIFY(read().contains("toplevel: t\n"));
}

void TestProjectEditing::savingElsewhereKeepsTheFiles()
{
    const auto project =
        open("name: x\nfiles:\n  - {name: a.v}\n"
             "  - {name: inc/h.vh, is_include_file: true, include_path: inc}\n"
             "tool_options: {workbench: {IncludePath: [more, /abs], disabled_files: [a.v]}}\n");
    const QMap<QString, QVariant> before = project->designInfo();
    const QByteArray text = read();
    QDir(directory->path()).mkdir("build");

    QVERIFY(project->saveAs(in("build/y.eda.yml"), &error));

    QCOMPARE(read(), text);
    QCOMPARE(project->designInfo(), before);
    QVERIFY(!project->file("../a.v").enable);
    QStringList errors;
    const auto again = EdamProject::open(in("build/y.eda.yml"), &errors);
    QVERIFY(again);
    QCOMPARE(again->designInfo(), before);
}

void TestProjectEditing::hostileNamesSurvive()
{
    const QStringList names{
        "a b.v",   "'q\".v",      "x;y.v",  "$(z)`w`.v",
        "-dash.v", "# hash.v",    "a: b.v", "&x.v",
        "*y.v",    "new\nline.v", "1.v",    "[l].v",
        "{m}.v",   "%p.v",        "\\t.v",  QString::fromUtf8("gr\xC3\xBC\xC3\x9F.v")};
    const auto project = open("name: x\n");
    QStringList paths;
    for (const QString &name : names)
        paths.append(touch(name));

    QVERIFY2(project->addFiles(paths, &error), qPrintable(error));

    QStringList errors;
    const auto again = EdamProject::open(in("x.eda.yml"), &errors);
    QVERIFY2(again, qPrintable(errors.join('\n')));
    QStringList found;
    const QList<TE::DesignFile> files = again->files();
    for (const TE::DesignFile &file : files)
        found.append(file.path);
    QCOMPARE(found, paths);
}

MOLK_TEST_GUILESS_MAIN(TestProjectEditing)
#include "tst_projectediting.moc"
