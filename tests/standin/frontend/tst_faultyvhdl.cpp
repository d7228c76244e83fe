// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testmain.h"

/// VHDL with errors, and with what the synthesis can't read: the errors are told with their places,
/// and the rest of the design is there.
class tst_FaultyVhdl : public QObject
{
    Q_OBJECT

private slots:
    void theRestIsRead_data();
    void theRestIsRead();
    void faultyUnitSpoilsNoOther_data();
    void faultyUnitSpoilsNoOther();
    void faultsOfAllFilesAreTold();
    void consequencesAreNotTold();
    void missingLibrariesAreNoErrors();
    void faultyLeafIsABlackBoxToVerilog();
    void crashIsLedBackToItsArchitecture();
    void missingToolLeavesTheVerilogThere();
    void endlessFunctionLeavesTheLevels();
    void garbageIsAnError();
    void placesAreThoseOfTheFile();
};

static const char libraries[] =
    "library ieee; use ieee.std_logic_1164.all; use ieee.numeric_std.all;\n";

static const char leaf[] =
    "library ieee; use ieee.std_logic_1164.all;\n"
    "entity leaf is port (clk, d : in std_logic; q : out std_logic); end;\n"
    "architecture rtl of leaf is signal stored : std_logic; begin\n"
    "process (clk) begin if rising_edge(clk) then stored <= d; end if; end process;\n"
    "q <= stored; end;\n";

void tst_FaultyVhdl::theRestIsRead_data()
{
    QTest::addColumn<QByteArray>("declarations");
    QTest::addColumn<QByteArray>("statements");
    QTest::addColumn<QString>("place");

    // The declarations begin in the sixth line, the statements two lines further on.
    QTest::newRow("undeclared-name")
        << QByteArray("signal x : std_logic;") << QByteArray("x <= nosuch;") << "8:6: ";
    QTest::newRow("undeclared-name-in-a-process")
        << QByteArray("signal x : std_logic;")
        << QByteArray("process (clk) begin if rising_edge(clk) then\nx <= nosuch; end if; end "
                      "process;")
        << "9:6: ";
    QTest::newRow("condition")
        << QByteArray("signal x : std_logic;")
        << QByteArray("process (clk) begin if nosuch = '1' then x <= '0'; end if; end process;")
        << "8:24: ";
    QTest::newRow("other-branch")
        << QByteArray("signal x : std_logic;")
        << QByteArray("process (clk) begin if clk = '1' then x <= '0';\nelsif nosuch = '1' then x "
                      "<= '1'; end if; end process;")
        << "9:7: ";
    QTest::newRow("choice") << QByteArray("signal x : std_logic;")
                            << QByteArray("process (clk) begin case clk is when nosuch => x <= "
                                          "'0'; when others => null; end case; end process;")
                            << "8:38: ";
    QTest::newRow("type") << QByteArray("signal x : nosuch; signal y : std_logic;")
                          << QByteArray("y <= x;") << "6:12: ";
    QTest::newRow("initial-value")
        << QByteArray("signal x : std_logic := 3;") << QByteArray("x <= clk;") << "6:25: ";
    QTest::newRow("width") << QByteArray("signal x : std_logic_vector(3 downto 0);")
                           << QByteArray("x <= std_logic_vector(to_unsigned(1, 4)) & \"0\" & 3;")
                           << "8:";
    QTest::newRow("missing-semicolon")
        << QByteArray("signal x : std_logic") << QByteArray("x <= clk;") << "6:";
    QTest::newRow("missing-semicolon-between-statements")
        << QByteArray("signal x, y : std_logic;") << QByteArray("x <= clk\ny <= clk;") << "";
    QTest::newRow("double-colon") << QByteArray("signal x :: std_logic;") << QByteArray("x <= clk;")
                                  << "6:";
    QTest::newRow("unclosed-bracket")
        << QByteArray("signal x : std_logic;") << QByteArray("x <= (clk and d;") << "8:";
    QTest::newRow("process-without-end")
        << QByteArray("signal x : std_logic;")
        << QByteArray("process (clk) begin if rising_edge(clk) then x <= d; end if;") << "";
    QTest::newRow("unclosed-sensitivity")
        << QByteArray("signal x : std_logic;")
        << QByteArray("process (clk begin x <= d; end process;") << "8:";
    QTest::newRow("record") << QByteArray("type r is record a : std_logic; b : nosuch; end record; "
                                          "signal x : r;")
                            << QByteArray("x.a <= clk;") << "6:37: ";
    QTest::newRow("function") << QByteArray(
        "function f(a : std_logic) return std_logic is begin return nosuch; end;")
                              << QByteArray("q2 <= f(clk);") << "";
    QTest::newRow("component-port")
        << QByteArray("component c port (a : in std_logic; b : in nosuch); end component;")
        << QByteArray("u : c port map (a => clk, b => clk);") << "6:44: ";
    QTest::newRow("entity") << QByteArray()
                            << QByteArray("u : entity work.nosuch port map (clk => clk);")
                            << "8:17: ";
    QTest::newRow("unknown-port") << QByteArray()
                                  << QByteArray(
                                         "u : entity work.leaf port map (clk => clk, nosuch => d);")
                                  << "8:";
    QTest::newRow("generate-range")
        << QByteArray("signal x : std_logic_vector(3 downto 0);")
        << QByteArray("g : for i in 0 to nosuch generate x(i) <= clk; end generate;") << "8:19: ";
    QTest::newRow("in-a-generate-statement")
        << QByteArray("signal x : std_logic_vector(3 downto 0);")
        << QByteArray("g : for i in 0 to 3 generate x(i) <= nosuch; end generate;") << "8:38: ";

    // What only the synthesis refuses.
    QTest::newRow("real") << QByteArray("signal x : real := 0.0;") << QByteArray("x <= x + 1.0;")
                          << "8:8: ";
    QTest::newRow("waits")
        << QByteArray("signal x : std_logic;")
        << QByteArray("process begin x <= '1'; wait for 10 ns; x <= '0'; wait; end process;")
        << "8:15: ";
    QTest::newRow("division-by-zero")
        << QByteArray("signal x : integer;") << QByteArray("x <= 3 / 0;") << "8:8: ";
    QTest::newRow("out-of-range") << QByteArray("signal x : std_logic_vector(3 downto 0);")
                                  << QByteArray("x <= x(5 downto 2);") << "8:";
    QTest::newRow("file") << QByteArray("file f : std.textio.text open read_mode is \"nosuch\";")
                          << QByteArray("process (clk) variable l : std.textio.line; begin\n"
                                        "std.textio.readline(f, l); end process;")
                          << "";
}

void tst_FaultyVhdl::theRestIsRead()
{
    QFETCH(QByteArray, declarations);
    QFETCH(QByteArray, statements);
    QFETCH(QString, place);
    ExtractionTest test;
    test.add(test.write("leaf.vhd", leaf));
    const QString file = test.write(
        "top.vhd",
        QByteArray(libraries)
            + "entity top is port (clk, d : in std_logic; q, q2 : out std_logic);\nend;\n"
              "architecture rtl of top is\nsignal first, last : std_logic;\n"
            + declarations + "\nbegin\n" + statements
            + "\nprocess (clk) begin if rising_edge(clk) then last <= first; end if;\nend "
              "process;\nfirst <= d; q <= last;\nlast_leaf : entity work.leaf port map (clk => "
              "clk, d => last, q => open);\nend;\n");
    test.add(file);
    const ModulesAnswer answer = test.modules("top");
    QVERIFY(!answer.errors().isEmpty());
    QVERIFY2(answer.errors().first().startsWith("ERROR: " + file + ':' + place),
             qPrintable(answer.errors().join('\n')));
    QCOMPARE(answer.topModules, QStringList{"top"});
    const QStringList nets = netLines(*test.netlist());
    QVERIFY2(missing(nets, {"top/clk", "top/d", "top/q", "top/q2", "top/first"}).isEmpty(),
             qPrintable(answer.messages.join('\n')));
    // What isn't ended may take what stands behind it along.
    if (!QByteArray(QTest::currentDataTag()).contains("without-end"))
        QVERIFY2(missing(nets, {"top/last", "top/last_leaf/clk", "top/last_leaf/stored"}).isEmpty(),
                 qPrintable(answer.messages.join('\n')));
}

void tst_FaultyVhdl::faultyUnitSpoilsNoOther_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("place");

    QTest::newRow("garbage") << QByteArray("this is ( not VHDL ; at all\n") << "1:";
    QTest::newRow("binary") << QByteArray("\x7f"
                                          "ELF\x02\x01\0\0\0\xff\xfe\x80\n\0",
                                          14)
                            << "";
    QTest::newRow("entity-without-end")
        << QByteArray("entity bad is port (a : in bit);\narchitecture r of bad is begin end;\n")
        << "2:";
    QTest::newRow("architecture-without-end")
        << QByteArray("entity bad is end;\narchitecture r of bad is begin\n") << "";
    QTest::newRow("architecture-of-nothing")
        << QByteArray("architecture r of nosuch is begin end;\n") << "1:19: ";
    QTest::newRow("port-type") << QByteArray(
        "entity bad is port (a : in nosuch; b : out bit); end;\n"
        "architecture r of bad is begin b <= a; end;\n")
                               << "1:28: ";
    QTest::newRow("package") << QByteArray("package bad is constant c : nosuch := 1; end;\n")
                             << "1:29: ";
    QTest::newRow("package-body-alone") << QByteArray("package body bad is end;\n") << "1:";
    QTest::newRow("unclosed-string")
        << QByteArray("entity bad is end;\narchitecture r of bad is constant c : string := \"x;\n"
                      "begin end;\n")
        << "2:";
    QTest::newRow("unclosed-comment") << QByteArray("entity bad is end; /* to the end\n") << "";
    QTest::newRow("configuration")
        << QByteArray("configuration c of nosuch is for rtl end for; end;\n") << "1:20: ";
}

/// Ahead of and behind units without faults, in files of their own and in one file.
void tst_FaultyVhdl::faultyUnitSpoilsNoOther()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, place);
    const QByteArray top = QByteArray(libraries)
        + "entity top is port (clk, d : in std_logic; q : out std_logic); end;\n"
          "architecture rtl of top is begin\nu : entity work.leaf port map (clk, d, q); end;\n";
    const QStringList nets{"top/clk", "top/d",   "top/q",       "top/u/clk",
                           "top/u/d", "top/u/q", "top/u/stored"};
    for (int at : {0, 2}) {
        ExtractionTest test;
        const QString faulty = test.write("bad.vhd", text);
        QStringList files{test.write("leaf.vhd", leaf), test.write("top.vhd", top)};
        files.insert(at, faulty);
        for (const QString &file : qAsConst(files))
            test.add(file);
        const ModulesAnswer answer = test.modules("top");
        const QStringList placed = answer.errors().filter("ERROR: " + faulty + ':' + place);
        QVERIFY2(!placed.isEmpty(), qPrintable(answer.messages.join('\n')));
        QCOMPARE(answer.topModules, QStringList{"top"});
        QCOMPARE(missing(netLines(*test.netlist()), nets), QStringList());
    }
    ExtractionTest test;
    const QString whole = test.write("all.vhd", QByteArray(leaf) + top + text);
    test.add(whole);
    const ModulesAnswer answer = test.modules("top");
    QVERIFY2(!answer.errors().filter("ERROR: " + whole + ':').isEmpty(),
             qPrintable(answer.messages.join('\n')));
    QCOMPARE(missing(netLines(*test.netlist()), nets), QStringList());
}

void tst_FaultyVhdl::faultsOfAllFilesAreTold()
{
    ExtractionTest test;
    QStringList wanted;
    QByteArray body;
    for (int i = 0; i < 5; ++i) {
        const QByteArray name = "part" + QByteArray::number(i);
        const QString file = test.write(
            QString::fromLatin1(name) + ".vhd",
            "entity " + name + " is port (a : in bit; b : out bit); end;\narchitecture r of " + name
                + " is signal w : bit; begin\nb <= nosuch;\nw <= a; end;\n");
        test.add(file);
        wanted.append("ERROR: " + file + ":3:6: no declaration for \"nosuch\"");
        body += "u" + QByteArray::number(i) + " : entity work." + name + " port map (a, open);\n";
    }
    test.add(test.write("top.vhd",
                        "entity top is port (a : in bit); end;\narchitecture r of top is begin\n"
                            + body + "end;\n"));
    QCOMPARE(test.modules("top").errors(), wanted);
    const auto netlist = test.netlist();
    QCOMPARE(levelLines(*netlist).size(), 6);
    QVERIFY(netLines(*netlist).contains("top/u4/w"));
}

void tst_FaultyVhdl::consequencesAreNotTold()
{
    ExtractionTest test;
    const QString file =
        test.write("top.vhd",
                   "entity top is port (a : in bit; b : out bit); end;\n"
                   "architecture r of top is\nsignal x : nosuch;\nsignal y, z : "
                   "bit;\nbegin\nx <= a;\ny <= x;\nb <= y and x;\nz <= a;\nend;\n");
    test.add(file);
    QCOMPARE(test.modules("top").errors(),
             QStringList("ERROR: " + file + ":3:12: no declaration for \"nosuch\""));
    QCOMPARE(missing(netLines(*test.netlist()), {"top/a", "top/b", "top/y", "top/z"}),
             QStringList());
}

/// As with Verilog's black boxes: what a device's library has isn't known, and the nets are there.
void tst_FaultyVhdl::missingLibrariesAreNoErrors()
{
    ExtractionTest test;
    const QString file = test.write(
        "top.vhd",
        QByteArray(libraries)
            + "library vendor; use vendor.cells.all;\n"
              "entity top is port (clk_in : in std_logic; q : out std_logic); end;\n"
              "architecture rtl of top is signal clk, r : std_logic;\nbegin\n"
              "buf : CLKBUF generic map (N => 3) port map (I => clk_in, O => clk);\n"
              "other : entity vendor.pll port map (clk_in, clk);\n"
              "process (clk) begin if rising_edge(clk) then r <= not r; end if; end process;\n"
              "q <= r; end;\n");
    test.add(file);
    const ModulesAnswer answer = test.modules("top");
    QCOMPARE(answer.errors(), QStringList());
    QVERIFY2(!answer.messages.filter("WARNING: " + file + ":2:9: ").isEmpty(),
             qPrintable(answer.messages.join('\n')));
    QCOMPARE(missing(netLines(*test.netlist()), {"top/clk_in", "top/q", "top/clk", "top/r"}),
             QStringList());
}

void tst_FaultyVhdl::faultyLeafIsABlackBoxToVerilog()
{
    ExtractionTest test;
    const QString file = test.write("leaf.vhd", "entity leaf is port (a : in nosuch); end leaf;\n");
    test.add(file);
    test.add(test.write("top.v", "module top(input x); wire w; leaf u(.a(x)); endmodule\n"));
    const ModulesAnswer answer = test.modules("top");
    QVERIFY2(!answer.errors().filter("ERROR: " + file + ":1:29: ").isEmpty(),
             qPrintable(answer.messages.join('\n')));
    QCOMPARE(netLines(*test.netlist()), (QStringList{"top/x", "top/w"}));
}

/// A tool that crashes on one architecture and says nothing of it.
void tst_FaultyVhdl::crashIsLedBackToItsArchitecture()
{
    ExtractionTest writer;
    Standin::ExtractionOptions options;
    options.ghdl =
        writer.write("tool",
                     "#!/bin/sh\ncase \"$1\" in --synth) if grep -q 'deadly *<=' "
                     "*.vhd; then\nkill -SEGV $$; fi;; esac\nexec /usr/bin/ghdl \"$@\"\n");
    QFile::setPermissions(options.ghdl, QFile::ReadOwner | QFile::ExeOwner);
    // Where it is confined, it sees no files of the test's directory but the design's.
    options.bubblewrap = "/nonexistent/bwrap";
    ExtractionTest test(options);
    QByteArray text;
    QByteArray body;
    QString place;
    for (int i = 0; i < 12; ++i) {
        const QByteArray name = "part" + QByteArray::number(i);
        text += "entity " + name + " is port (a : in bit); end;\narchitecture r of " + name
            + " is signal deadly, w : bit; begin\nw <= a;\n" + (i == 7 ? "deadly <= a;\n" : "\n")
            + "end;\n";
        body += "u" + QByteArray::number(i) + " : entity work." + name + " port map (a);\n";
    }
    const QString file = test.write("top.vhd",
                                    text
                                        + "entity top is port (a : in bit); end;\n"
                                          "architecture r of top is begin\n"
                                        + body + "end;\n");
    test.add(file);
    QCOMPARE(
        test.modules("top").errors(),
        QStringList("ERROR: " + file
                    + ":37: the architecture of \"part7\" can't be read: the tool fails on it"));
    const auto netlist = test.netlist();
    QVERIFY2(levelLines(*netlist).size() == 13, qPrintable(netLines(*netlist).join(' ')));
    QVERIFY(netLines(*netlist).contains("top/u6/w"));
    QVERIFY(netLines(*netlist).contains("top/u7/w"));
}

void tst_FaultyVhdl::missingToolLeavesTheVerilogThere()
{
    Standin::ExtractionOptions options;
    options.ghdl = "/nonexistent/ghdl";
    ExtractionTest test(options);
    test.add(test.write("leaf.vhd", leaf));
    test.add(test.write("top.v", "module top(input x); wire w; leaf u(.d(x)); endmodule\n"));
    const QStringList errors = test.modules("top").errors();
    QVERIFY2(!errors.isEmpty() && errors.first().contains("/nonexistent/ghdl"),
             qPrintable(errors.join('\n')));
    QCOMPARE(netLines(*test.netlist()), (QStringList{"top/x", "top/w"}));
}

void tst_FaultyVhdl::endlessFunctionLeavesTheLevels()
{
    Standin::ExtractionOptions options;
    options.timeoutSeconds = 3;
    ExtractionTest test(options);
    test.add(
        test.write("top.vhd",
                   QByteArray(leaf) + libraries
                       + "entity top is port (clk, d : in std_logic; q : out std_logic); end;\n"
                         "architecture rtl of top is signal n : integer;\n"
                         "function f return integer is variable i : integer := 0; begin\n"
                         "loop i := i mod 2; end loop; return i; end;\nbegin\n"
                         "n <= f;\nu : entity work.leaf port map (clk, d, q);\nend;\n"));
    const QStringList errors = test.modules("top").errors();
    QVERIFY2(errors.size() == 1 && errors.first().contains("3 s"), qPrintable(errors.join('\n')));
    QCOMPARE(levelLines(*test.netlist()), (QStringList{"top top", "top/u leaf"}));
}

void tst_FaultyVhdl::garbageIsAnError()
{
    ExtractionTest test;
    const QString file = test.write("top.vhd", "entity top is end; ) ) begin end end; ( is is;\n");
    test.add(file);
    QVERIFY(!test.modules("top").errors().filter("ERROR: " + file).isEmpty());
    QCOMPARE(test.netlist()->top->name(), QString("top"));
}

/// Also where something is put into the text ahead of it.
void tst_FaultyVhdl::placesAreThoseOfTheFile()
{
    ExtractionTest test;
    const QString file =
        test.write("top.vhd",
                   "entity top is port (a : in bit; b : out bit); end;\n"
                   "architecture r of top is signal x, y : bit; begin x <= nosuch; "
                   "g : block signal z : bit; begin y <= nosuch; end block; b <= "
                   "nosuch; end;\n");
    test.add(file);
    const QString line = "ERROR: " + file + ":2:%1: no declaration for \"nosuch\"";
    QCOMPARE(test.modules("top").errors(),
             (QStringList{line.arg(56), line.arg(101), line.arg(125)}));
    QCOMPARE(missing(netLines(*test.netlist()), {"top/x", "top/y"}), QStringList());
}

MOLK_TEST_GUILESS_MAIN(tst_FaultyVhdl)
#include "tst_faultyvhdl.moc"
