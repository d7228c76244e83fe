// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "confinement.h"
#include "extractiontest.h"
#include "testmain.h"

#include <QDirIterator>
#include <QRandomGenerator>

namespace DesignInfo = Standin::DesignInfo;

/// Designs that mean harm, or are merely broken.
class tst_HostileDesigns : public QObject
{
    Q_OBJECT

private slots:
    void fileNamesInjectNothing_data();
    void fileNamesInjectNothing();
    void directoryNamesInjectNothing();
    void moduleNamesInjectNothing();
    void settingsInjectNothing();
    void vhdlWritesNoFiles_data();
    void vhdlWritesNoFiles();
    void foreignCodeIsNotRun();
    void mutatedSourcesEnd_data();
    void mutatedSourcesEnd();

private:
    static QStringList names();
};

QStringList tst_HostileDesigns::names()
{
    return {"plain.v",
            "with blank.v",
            "semi;colon.v",
            "q\"uote.v",
            "end\"; exec -- touch PWNED_A; #.v",
            "nl\nexec -- touch PWNED_B\n.v",
            "glob[1].v",
            "star*.v",
            "dollar$HOME.v",
            "tick`touch PWNED_C`.v",
            "hash#x.v",
            "-dash.v",
            "back\\slash.v",
            "tilde~.v",
            "<<EOT.v",
            "sub$(touch PWNED_D).v",
            "a'b.v",
            "+plus.v",
            "com,ma.v",
            QString::fromUtf8("utf\xC3\xA9\xE4\xB8\xAD.v"),
            "x\" ; exec -- touch PWNED_E ; read_verilog \".v",
            "{br}ace.v",
            "percent%s%n.v"};
}

/// Files below \a directory that a payload would have made.
static QStringList canaries(const QString &directory)
{
    QStringList found;
    for (const QString &place : {directory, QDir::currentPath()}) {
        QDirIterator files(place, {"PWNED*"}, QDir::AllEntries, QDirIterator::Subdirectories);
        while (files.hasNext())
            found.append(files.next());
    }
    return found;
}

void tst_HostileDesigns::fileNamesInjectNothing_data()
{
    QTest::addColumn<QString>("name");
    for (int i = 0; i < names().size(); ++i)
        QTest::newRow(qPrintable(QString("name-%1").arg(i))) << names().at(i);
}

void tst_HostileDesigns::fileNamesInjectNothing()
{
    QFETCH(QString, name);
    ExtractionTest test;
    const QString file = test.write("src/" + name, "module top(input x); wire a = ; endmodule\n");
    QVERIFY(!file.isEmpty());
    test.add(file);
    const QStringList errors = test.modules().errors();
    QVERIFY(!errors.isEmpty());
    const QString shown = QString(file).replace('\n', "\\n");
    QVERIFY2(errors.first().startsWith("ERROR: " + shown + ":1:31: "), qPrintable(errors.first()));
    QVERIFY(!test.write("src/" + name, "module top(input x); endmodule\n").isEmpty());
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x"});
    QCOMPARE(canaries(test.directory.path()), QStringList());
}

void tst_HostileDesigns::directoryNamesInjectNothing()
{
    ExtractionTest test;
    QStringList include;
    QByteArray text;
    for (int i = 0; i < names().size(); ++i) {
        const QString folder = "inc/" + names().at(i);
        const QByteArray number = QByteArray::number(i);
        test.write(folder + QString("/part%1.vh").arg(i), "wire w" + number + ";\n");
        include.append(test.path(folder));
        text += "`include \"part" + number + ".vh\"\n";
    }
    test.info.insert(DesignInfo::IncludePath, include);
    test.write("src;touch PWNED/beside.vh", "wire beside;\n");
    test.add(test.write("src;touch PWNED/a.v",
                        "module top;\n" + text + "`include \"beside.vh\"\nendmodule\n"));
    QCOMPARE(test.modules().errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()).size(), names().size() + 1);
    QVERIFY(canaries(test.path("inc")).isEmpty());
}

void tst_HostileDesigns::moduleNamesInjectNothing()
{
    ExtractionTest test;
    QByteArray text = "module top;\n";
    const QList<QByteArray> odd{"a;touch${IFS}PWNED",
                                "$(touch${IFS}PWNED)",
                                "--exe",
                                "q\"x",
                                "`PWNED`",
                                "<a&b>",
                                "*",
                                "/etc/passwd",
                                "../x"};
    for (int i = 0; i < odd.size(); ++i)
        text += '\\' + odd.at(i) + "  u" + QByteArray::number(i) + "();\n";
    text += "endmodule\n";
    for (int i = 0; i < odd.size(); i += 2)
        text += "module \\" + odd.at(i) + " ; wire w; endmodule\n";
    test.add(test.write("a.v", text));
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.errors(), QStringList());
    QCOMPARE(answer.topModules, QStringList{"top"});
    const auto netlist = test.netlist();
    const FATHOM::Hierachy *netlistTop = netlist->top;
    QCOMPARE(netlistTop->name(), QString("top"));
    const QList<FATHOM::Hierachy *> children = netlistTop->children();
    for (const FATHOM::Hierachy *child : children) {
        QVERIFY(odd.contains(child->module().toUtf8()));
        QCOMPARE(child->singleNets().size(), 1);
    }
    QCOMPARE(children.size(), 5);
    for (const QByteArray &top : odd)
        test.modules(QString::fromUtf8(top));
    QCOMPARE(canaries(test.directory.path()), QStringList());
}

void tst_HostileDesigns::settingsInjectNothing()
{
    ExtractionTest test;
    const QVariantMap odd{{"A", "1\n`include \"/etc/passwd\""},
                          {"B", "$(touch PWNED)"},
                          {"C", "\"; touch PWNED; \""},
                          {"-x", "--exe"}};
    test.info.insert(DesignInfo::Defines, odd);
    test.info.insert(DesignInfo::Parameters, odd);
    test.info.insert(DesignInfo::Generics, odd);
    test.info.insert(DesignInfo::VerilogStandard, "\"; touch PWNED");
    test.info.insert(DesignInfo::IncludePath, QStringList{"relative", "", "/nonexistent"});
    test.add(test.write("a.v", "module top #(parameter B = 0) (input x); endmodule"),
             {{DesignInfo::Defines, odd}, {DesignInfo::Library, "--work"}});
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()), QStringList{"top/x"});
    QCOMPARE(canaries(test.directory.path()), QStringList());
}

void tst_HostileDesigns::vhdlWritesNoFiles_data()
{
    QTest::addColumn<QByteArray>("declaration");
    QTest::addColumn<QByteArray>("statement");
    QTest::newRow("opened-by-declaration")
        << QByteArray("file t : text open write_mode is \"%1\";") << QByteArray();
    QTest::newRow("opened-to-append")
        << QByteArray("file t : text open append_mode is \"%1\";") << QByteArray();
    QTest::newRow("opened-by-call")
        << QByteArray("file t : text;") << QByteArray("file_open(t, \"%1\", write_mode);");
}

/// A function that is evaluated while the design is synthesized can open files for writing.
void tst_HostileDesigns::vhdlWritesNoFiles()
{
    QFETCH(QByteArray, declaration);
    QFETCH(QByteArray, statement);
    // Not where temporary files are, which a confined program sees as an empty place of its own.
    const QTemporaryDir outside(QDir::currentPath() + "/molk-test-XXXXXX");
    QVERIFY(outside.isValid());
    const QString canary = outside.filePath("PWNED");
    const QByteArray path = canary.toUtf8();
    const QByteArray design = "use std.textio.all;\n"
                              "entity a is port (x : in bit; y : out bit); end;\n"
                              "architecture r of a is\n"
                              "  impure function f return natural is\n"
        + declaration.replace("%1", path) + "\n  begin\n" + statement.replace("%1", path)
        + " return 1; end;\n"
          "  constant C : natural := f;\n"
          "begin y <= x when C = 1 else '0'; end;\n";

    // Without confinement it does, or nothing would be tested below.
    Standin::ExtractionOptions options;
    options.bubblewrap = "/nonexistent/bwrap";
    ExtractionTest open(options);
    open.add(open.write("a.vhd", design));
    QVERIFY(!open.modules().messages.filter("WARNING: bubblewrap").isEmpty());
    QVERIFY(QFile::remove(canary));

    ExtractionTest test;
    test.add(test.write("a.vhd", design));
    const ModulesAnswer answer = test.modules();
    test.netlist();
    // Where the machine can't confine a program the log has to say so.
    QCOMPARE(answer.messages.filter("WARNING: bubblewrap").isEmpty(), machineConfines());
    QCOMPARE(QFile::exists(canary), !machineConfines());
}

void tst_HostileDesigns::foreignCodeIsNotRun()
{
    ExtractionTest test;
    const QByteArray canary = test.path("PWNED").toUtf8();
    test.add(test.write("a.v",
                        "module top(output [31:0] o);\n"
                        "import \"DPI-C\" function int system(string s);\n"
                        "localparam R = system(\"touch "
                            + canary
                            + "\");\nassign o = R;\n"
                              "initial $system(\"touch "
                            + canary + "\");\nendmodule\n"));
    test.modules();
    test.netlist();
    QCOMPARE(canaries(test.directory.path()), QStringList());
}

static QByteArray mutated(QByteArray text, QRandomGenerator *random)
{
    static const QList<QByteArray> pieces{
        "(",        ")",        "begin", "end",      "endmodule", "module x;",
        "`",        "`ifdef A", "\"",    "/*",       "\\",        "[",
        "#",        ";",        "'{",    "generate", "\xff",      QByteArray("\0", 1),
        "interface"};
    for (int i = 0; i < 3; ++i) {
        const int at = int(random->bounded(text.size()));
        switch (random->bounded(3)) {
        case 0:
            text.remove(at, int(random->bounded(40)));
            break;
        case 1:
            text.insert(at, pieces.at(int(random->bounded(pieces.size()))));
            break;
        default:
            text.insert(at, text.mid(int(random->bounded(text.size())), 60));
            break;
        }
    }
    return text;
}

void tst_HostileDesigns::mutatedSourcesEnd_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<quint32>("seed");
    const QStringList files{"fabric/arbiter.v",         "fabric/crossbar.v", "net/mac_rx.v",
                            "core/rtl/core_regfile.sv", "mixed/pulse.vhd",   "mixed/blink.vhd"};
    for (quint32 seed = 0; seed < 36; ++seed) {
        const QString file = files.at(int(seed) % files.size());
        QTest::newRow(qPrintable(QString("%1-%2").arg(file.section('/', -1)).arg(seed)))
            << file << seed;
    }
}

/// Whatever the text is, the reading ends with errors that say where, or with a netlist.
void tst_HostileDesigns::mutatedSourcesEnd()
{
    QFETCH(QString, file);
    QFETCH(quint32, seed);
    ExtractionTest test;
    QFile source(ExtractionTest::data(file));
    QVERIFY(source.open(QIODevice::ReadOnly));
    QRandomGenerator random(seed);
    test.info.insert(DesignInfo::IncludePath, QStringList{ExtractionTest::data("core/include")});
    test.info.insert(DesignInfo::Defines, QVariantMap{{"PORTS", "4"}, {"DW", "8"}});
    test.add(test.write("source." + file.section('.', -1), mutated(source.readAll(), &random)));
    const ModulesAnswer answer = test.modules();
    const auto netlist = test.netlist();
    QVERIFY(netlist && netlist->top);
    for (const QString &line : answer.messages) {
        QVERIFY2(!line.contains("crashed") && !line.contains("was stopped"), qPrintable(line));
        QVERIFY(!line.contains('\n'));
    }
    const bool delivered = !netlist->top->name().isEmpty() && answer.errors().isEmpty();
    QVERIFY(delivered || !answer.errors().isEmpty() || answer.topModules.size() != 1);
}

MOLK_TEST_GUILESS_MAIN(tst_HostileDesigns)
#include "tst_hostiledesigns.moc"
