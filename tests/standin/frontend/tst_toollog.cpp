// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/directoryfarm.h"
#include "frontend/toollog.h"
#include "testmain.h"

#include <QDir>
#include <QFileInfo>

class tst_ToolLog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void verilatorLinesAreRewritten_data();
    void verilatorLinesAreRewritten();
    void ghdlLinesAreRewritten_data();
    void ghdlLinesAreRewritten();
    void longLogIsCut();
    void unseenCharactersAreWrittenAsEscapes();
    void privateNamesLeadBack_data();
    void privateNamesLeadBack();
    void privateDirectoryIsTheUsersAlone();

private:
    Standin::DirectoryFarm farm;
};

void tst_ToolLog::initTestCase()
{
    QCOMPARE(farm.addSource("/design/rtl/top one.v", ".v"), QString("d0001/s0001.v"));
    QCOMPARE(farm.addSource("/design/rtl/b.v", ".v"), QString("d0001/s0002.v"));
    QCOMPARE(farm.addSource("/design/lib/c.vhd", ".vhd"), QString("d0002/s0003.vhd"));
    QCOMPARE(farm.addIncludeDirectory(QDir::tempPath()), QString("i0001"));
    QCOMPARE(farm.addIncludeDirectory("/no such/directory"), QString());
}

void tst_ToolLog::verilatorLinesAreRewritten_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("lines");

    QTest::newRow("error") << QByteArray("%Error: d0001/s0001.v:3:5: syntax error, x\n")
                           << QStringList{"ERROR: /design/rtl/top one.v:3:5: syntax error, x"};
    QTest::newRow("coded") << QByteArray("%Error-UNSUPPORTED: d0001/s0002.v:3:5: Unsupported: y\n")
                           << QStringList{"ERROR: /design/rtl/b.v:3:5: Unsupported: y"};
    QTest::newRow("warning") << QByteArray("%Warning-WIDTH: d0001/s0002.v:1:2: text: with: colons")
                             << QStringList{"WARNING: /design/rtl/b.v:1:2: text: with: colons"};
    QTest::newRow("included") << QByteArray("%Error: d0001/../inc/x.vh:1:2: z\n")
                              << QStringList{"ERROR: /design/inc/x.vh:1:2: z"};
    QTest::newRow("include-directory")
        << QByteArray("%Error: i0001/x.vh:1:2: z\n")
        << QStringList{"ERROR: " + QFileInfo(QDir::tempPath()).absoluteFilePath() + "/x.vh:1:2: z"};
    QTest::newRow("no-place") << QByteArray("%Error: Cannot do it\n")
                              << QStringList{"ERROR: Cannot do it"};
    QTest::newRow("our-own-file") << QByteArray("%Error: stubs.v:1:2: bad pin\n")
                                  << QStringList{"ERROR: bad pin"};
    QTest::newRow("quotation-and-hints")
        << QByteArray("%Error: d0001/s0002.v:1:2: x\n    1 |  %Error\n      | ^\n"
                      "        ... Looked in:\n             : ... In instance top\n")
        << QStringList{"ERROR: /design/rtl/b.v:1:2: x"};
    QTest::newRow("totals") << QByteArray("%Error: Exiting due to 3 error(s)\n"
                                          "%Error: Command Failed x\n")
                            << QStringList();
    QTest::newRow("repetition") << QByteArray("%Error: a\n%Error: a\n%Error: b\n")
                                << QStringList{"ERROR: a", "ERROR: b"};
    QTest::newRow("control-characters")
        << QByteArray("%Error: d0001/s0002.v:1:2: no 'a\x1b[2J\rb'\n%Warning: c\x07 d\n")
        << QStringList{"ERROR: /design/rtl/b.v:1:2: no 'a\\x1b[2J\\x0db'", "WARNING: c\\x07 d"};
    QTest::newRow("other-text") << QByteArray("terminate called\nAborted\n") << QStringList();
    QTest::newRow("empty") << QByteArray() << QStringList();
}

void tst_ToolLog::verilatorLinesAreRewritten()
{
    QFETCH(QByteArray, text);
    QTEST(Standin::rewriteVerilatorLog(text, farm), "lines");
}

void tst_ToolLog::ghdlLinesAreRewritten_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("failed");
    QTest::addColumn<QStringList>("lines");

    QTest::newRow("error") << QByteArray("s0003.vhd:5:7: unexpected token\n s <= ' ;\n      ^\n")
                           << true << QStringList{"ERROR: /design/lib/c.vhd:5:7: unexpected token"};
    QTest::newRow("warning") << QByteArray("s0003.vhd:5:7:warning: not bound [-Wbinding]\n") << true
                             << QStringList{
                                    "WARNING: /design/lib/c.vhd:5:7: not bound [-Wbinding]"};
    QTest::newRow("note") << QByteArray("s0003.vhd:5:7:note: found RAM\n") << false
                          << QStringList();
    QTest::newRow("error-word") << QByteArray("s0003.vhd:5:7:error: x\n") << true
                                << QStringList{"ERROR: /design/lib/c.vhd:5:7: x"};
    QTest::newRow("report") << QByteArray("s0003.vhd:5:7:(report warning): x\n"
                                          "s0003.vhd:6:7:(report note): y\n"
                                          "s0003.vhd:7:7:(assertion failure): z\n")
                            << true
                            << QStringList{"WARNING: /design/lib/c.vhd:5:7: x",
                                           "ERROR: /design/lib/c.vhd:7:7: z"};
    QTest::newRow("succeeded") << QByteArray("s0003.vhd:5:7: odd\n") << false
                               << QStringList{"WARNING: /design/lib/c.vhd:5:7: odd"};
    QTest::newRow("general") << QByteArray("/usr/bin/ghdl-mcode: cannot find entity x\n"
                                           "ghdl:error: compilation error\n")
                             << true << QStringList{"ERROR: cannot find entity x"};
    QTest::newRow("control-characters")
        << QByteArray("s0003.vhd:5:7: \"\x1b[2J\"\nghdl: cannot find \x07 x\n") << true
        << QStringList{"ERROR: /design/lib/c.vhd:5:7: \"\\x1b[2J\"", "ERROR: cannot find \\x07 x"};
}

void tst_ToolLog::ghdlLinesAreRewritten()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, failed);
    QTEST(Standin::rewriteGhdlLog(text, farm, failed), "lines");
}

void tst_ToolLog::longLogIsCut()
{
    QByteArray text;
    for (int i = 0; i < 3000; ++i)
        text += "%Warning-X: w" + QByteArray::number(i) + '\n';
    text += "%Error: last\n";
    const QStringList lines = Standin::rewriteVerilatorLog(text, farm);
    QCOMPARE(lines.size(), Standin::MaximumLogLines + 2);
    QCOMPARE(lines.at(Standin::MaximumLogLines), QString("ERROR: last"));
    QCOMPARE(lines.last(), QString("WARNING: 2000 more lines are left out"));
}

void tst_ToolLog::unseenCharactersAreWrittenAsEscapes()
{
    QCOMPARE(Standin::printable("a\nb\tc\x1b[1m\xe4"), QString("a\\nb\\x09c\\x1b[1m\xe4"));
    QCOMPARE(Standin::printable(QString::fromUtf8("\u2028a\u202eb\u2066c\u200dd")),
             QString::fromUtf8("\\x2028a\\x202eb\\x2066c\u200dd"));
}

void tst_ToolLog::privateNamesLeadBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("real");

    QTest::newRow("copy") << "d0001/s0001.v"
                          << "/design/rtl/top one.v";
    QTest::newRow("beside") << "d0001/x.vh"
                            << "/design/rtl/x.vh";
    QTest::newRow("above") << "d0002/../x/y.vh"
                           << "/design/x/y.vh";
    QTest::newRow("absolute") << "/a/../b"
                              << "/b";
    QTest::newRow("ours") << "stubs.v" << QString();
    QTest::newRow("unknown-directory") << "d0009/x" << QString();
}

void tst_ToolLog::privateNamesLeadBack()
{
    QFETCH(QString, name);
    QTEST(farm.realPath(name), "real");
}

void tst_ToolLog::privateDirectoryIsTheUsersAlone()
{
    QCOMPARE(QFileInfo(farm.path()).permissions()
                 & (QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
                    | QFile::WriteOther | QFile::ExeOther),
             QFile::Permissions());
}

MOLK_TEST_GUILESS_MAIN(tst_ToolLog)
#include "tst_toollog.moc"
