// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "frontend/ghdltext.h"
#include "frontend/vhdlconstructs.h"
#include "frontend/vhdlsignals.h"
#include "testmain.h"

using Standin::VhdlConstruct;

/// What becomes of VHDL on its way through the synthesis: names, signals that nothing depends on,
/// and the division of its text.
class tst_VhdlDesigns : public QObject
{
    Q_OBJECT

private slots:
    void verilogWordsAreNames();
    void extendedNamesAreTaken();
    void undrivenSignalsAreUndriven();
    void faultyTranslationIsMended();
    void keywordsAreTold_data();
    void keywordsAreTold();
    void everySignalIsThere();
    void memoriesStayMemories();
    void ownAttributeIsLeftAlone();
    void entitiesFitTheirInstancesInVerilog();
    void connectionsOfEntitiesKeepTheirNames();
    void errorsBesideEntitiesKeepTheirColumns();
    void genericsTakeConstantsOfTheirType_data();
    void genericsTakeConstantsOfTheirType();
    void instanceWithAnUnknownGenericStays();
    void setsOfGenericsHaveALimit();
    void topTakesTruthForABooleanGeneric();
    void emptyEntityIsALevel();
    void textIsDivided_data();
    void textIsDivided();
    void oddTextIsDividedInTime_data();
    void oddTextIsDividedInTime();
};

void tst_VhdlDesigns::verilogWordsAreNames()
{
    ExtractionTest test;
    test.add(test.write(
        "top.vhd",
        "library ieee; use ieee.std_logic_1164.all;\n"
        "entity logic is port (input : in std_logic; output : out std_logic); end;\n"
        "architecture table of logic is signal reg : std_logic; begin\n"
        "process (input) begin if rising_edge(input) then reg <= not reg; end if; end process;\n"
        "output <= reg; end;\n"
        "library ieee; use ieee.std_logic_1164.all;\n"
        "entity top is port (clk, initial : in std_logic; always : out std_logic_vector(1 downto "
        "0)); end;\n"
        "architecture rtl of top is signal wire, assign, posedge, endmodule : std_logic;\n"
        "signal module, priority : std_logic_vector(1 downto 0); begin\n"
        "cell : entity work.logic port map (input => clk, output => wire);\n"
        "assign <= wire and initial; posedge <= assign; endmodule <= posedge;\n"
        "process (posedge) begin if rising_edge(posedge) then priority <= endmodule & wire; end "
        "if; end process;\n"
        "module <= priority; always <= module; end;\n"));
    QCOMPARE(test.modules("top").errors(), QStringList());
    const auto netlist = test.netlist();
    QCOMPARE(levelLines(*netlist), (QStringList{"top top", "top/cell logic"}));
    QStringList nets = netLines(*netlist);
    nets.sort();
    QCOMPARE(nets,
             (QStringList{"top/always[1:0]", "top/assign", "top/cell/input", "top/cell/output",
                          "top/cell/reg", "top/clk", "top/endmodule", "top/initial",
                          "top/module[1:0]", "top/posedge", "top/priority[1:0]", "top/wire"}));
}

void tst_VhdlDesigns::extendedNamesAreTaken()
{
    ExtractionTest test;
    test.add(test.write("top.vhd",
                        "entity top is port (a : in bit; \\b.c\\ : out bit); end;\n"
                        "architecture r of top is signal \\a b\\, \\reg\\, \\x<y\\ : bit;\n"
                        "signal \\v v\\ : bit_vector(1 downto 0);\n"
                        "component box port (i : in bit; o : out bit); end component;\nbegin\n"
                        "\\a b\\ <= a; \\reg\\ <= \\a b\\; \\b.c\\<=\\reg\\; \\v v\\(0)<=\\x<y\\;\n"
                        "\\u u\\ : box port map (i => \\a b\\, o => \\x<y\\); end;\n"));
    QCOMPARE(test.modules("top").errors(), QStringList());
    // Names with blanks and slashes are written as escaped ones in paths.
    const QStringList nets = netLines(*test.netlist());
    QCOMPARE(missing(nets,
                     {"top/a", "top/b.c", "top/\\a  b ", "top/reg", "top/x<y", "top/\\v  v [1:0]"}),
             QStringList());
}

/// GHDL gives them a value that is no value.
void tst_VhdlDesigns::undrivenSignalsAreUndriven()
{
    ExtractionTest test;
    test.add(test.write("top.vhd",
                        "library ieee; use ieee.std_logic_1164.all;\n"
                        "entity top is port (a : in std_logic; b : out std_logic); end;\n"
                        "architecture r of top is signal free, zero : std_logic;\n"
                        "signal free_bus : std_logic_vector(3 downto 0); begin\n"
                        "zero <= '0'; b <= a and zero; end;\n"));
    QCOMPARE(test.modules("top").errors(), QStringList());
    const auto netlist = test.netlist();
    for (const char *name : {"free", "zero"}) {
        const FATHOM::RtlNet *net = netlist->findNet(QString("top/") + QLatin1String(name));
        QVERIFY2(net, name);
        QVERIFY(net->noProbeIn);
        QCOMPARE(net->noProbeOut, QByteArray(name) == "zero");
    }
    const FATHOM::RtlNetBus *bus = netlist->top->netbuses().value(0);
    QVERIFY(bus && bus->BusName().startsWith("free_bus"));
    QVERIFY(bus->noProbeIn && !bus->noProbeOut);
}

/// What the synthesis writes and the next tool refuses costs no more than itself.
void tst_VhdlDesigns::faultyTranslationIsMended()
{
    ExtractionTest writer;
    Standin::ExtractionOptions options;
    options.ghdl = writer.write("tool",
                                "#!/bin/sh\ncase \"$1\" in --synth) /usr/bin/ghdl \"$@\" | sed "
                                "'s/assign faulty = .*;/assign "
                                "faulty = ;/';; *) exec /usr/bin/ghdl \"$@\";; esac\n");
    QFile::setPermissions(options.ghdl, QFile::ReadOwner | QFile::ExeOwner);
    options.bubblewrap = "/nonexistent/bwrap";
    ExtractionTest test(options);
    test.add(test.write("top.vhd",
                        "entity top is port (a : in bit; b : out bit); end;\n"
                        "architecture r of top is signal faulty, good : bit; begin\n"
                        "faulty <= a; good <= a; b <= good; end;\n"));
    QCOMPARE(test.modules("top").errors().size(), 1);
    QCOMPARE(missing(netLines(*test.netlist()), {"top/a", "top/b", "top/faulty", "top/good"}),
             QStringList());
}

void tst_VhdlDesigns::keywordsAreTold_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("escaped");

    QTest::newRow("none") << QByteArray("module a (input b, output [3:0] c); endmodule")
                          << QByteArray("module a (input b, output [3:0] c); endmodule");
    QTest::newRow("ports") << QByteArray("module reg (input input, output [1:0] output); endmodule")
                           << QByteArray("module \\reg  (input \\input , output [1:0] \\output ); "
                                         "endmodule");
    QTest::newRow("declarations")
        << QByteArray("module a (input b); wire wire; reg [3:0] reg; reg x; endmodule")
        << QByteArray("module a (input b); wire \\wire ; reg [3:0] \\reg ; reg x; endmodule");
    QTest::newRow("assignments")
        << QByteArray("module a (input b); assign assign = reg & wire[2]; endmodule")
        << QByteArray("module a (input b); assign \\assign  = \\reg  & \\wire [2]; endmodule");
    QTest::newRow("process")
        << QByteArray("module a (input b); always @(posedge posedge or negedge b) if (reg) always "
                      "<= {output, b}; else initial <= 1; endmodule")
        << QByteArray("module a (input b); always @(posedge \\posedge  or negedge b) if (\\reg ) "
                      "\\always  <= {\\output , b}; else \\initial  <= 1; endmodule");
    QTest::newRow("selection")
        << QByteArray("module a (input b); always @* case (b) 1'b1: reg = 0; default: default = 1; "
                      "endcase endmodule")
        << QByteArray("module a (input b); always @* case (b) 1'b1: \\reg  = 0; default: \\default "
                      " = 1; endcase endmodule");
    QTest::newRow("instance")
        << QByteArray("module a (input b); reg module (.input(wire), .b(b)); endmodule")
        << QByteArray(
               "module a (input b); \\reg  \\module  (.\\input (\\wire ), .b(b)); endmodule");
    QTest::newRow("newer-words") << QByteArray("module a (input b); wire logic; assign logic = do;")
                                 << QByteArray(
                                        "module a (input b); wire \\logic ; assign \\logic  = \\do "
                                        ";");
    QTest::newRow("memory") << QByteArray("module a (input b); reg [7:0] reg[3:0]; initial begin "
                                          "reg[3] = 8'h0; end endmodule")
                            << QByteArray(
                                   "module a (input b); reg [7:0] \\reg [3:0]; initial begin "
                                   "\\reg [3] = 8'h0; end endmodule");
}

void tst_VhdlDesigns::keywordsAreTold()
{
    QFETCH(QByteArray, text);
    QTEST(Standin::withEscapedKeywords(text), "escaped");
}

/// Whether anything depends on it or not.
void tst_VhdlDesigns::everySignalIsThere()
{
    ExtractionTest test;
    test.add(test.write("types.vhd",
                        "package types is subtype word is bit_vector(7 downto 0);\n"
                        "type state is (idle, run); type pair is record a : word; s : state; end "
                        "record; end;\n"));
    test.add(test.write("top.vhd",
                        "use work.types.all;\n"
                        "entity top is port (a : in bit; b : out bit); end;\n"
                        "architecture r of top is\nsignal unused, unread : bit; signal w : word;\n"
                        "signal s : state; signal n : natural range 0 to 7; signal p : pair;\n"
                        "begin\nunread <= a; b <= a; s <= run when a = '1' else idle;\n"
                        "g : for i in 0 to 1 generate signal inner : bit; begin inner <= a; end "
                        "generate;\n"
                        "k : block signal inblock : bit; begin inblock <= a; end block;\nend;\n"));
    QCOMPARE(test.modules("top").errors(), QStringList());
    const QStringList nets = netLines(*test.netlist());
    for (const char *net : {"top/unused", "top/unread", "top/w[7:0]", "top/s", "top/n[2:0]",
                            "top/p[8:0]", "top/g_n1_inner", "top/g_n2_inner", "top/k_inblock"})
        QVERIFY2(nets.contains(QLatin1String(net)),
                 qPrintable(QLatin1String(net) + " in " + nets.join(' ')));
}

void tst_VhdlDesigns::memoriesStayMemories()
{
    ExtractionTest test;
    test.add(test.write(
        "top.vhd",
        "library ieee; use ieee.std_logic_1164.all; use ieee.numeric_std.all;\n"
        "entity top is port (clk, we : in std_logic; a : in unsigned(9 downto 0);\n"
        "d : in std_logic_vector(31 downto 0); q : out std_logic_vector(31 downto 0)); end;\n"
        "architecture r of top is\n"
        "type ram_t is array (0 to 1023) of std_logic_vector(31 downto 0); signal ram : ram_t;\n"
        "begin process (clk) begin if rising_edge(clk) then if we = '1' then\n"
        "ram(to_integer(a)) <= d; end if; q <= ram(to_integer(a)); end if; end process; end;\n"));
    QCOMPARE(test.modules("top").errors(), QStringList());
    QCOMPARE(netLines(*test.netlist()).filter("ram"), QStringList());
}

void tst_VhdlDesigns::ownAttributeIsLeftAlone()
{
    ExtractionTest test;
    test.add(test.write("top.vhd",
                        "entity top is port (a : in bit; b : out bit); end;\n"
                        "architecture r of top is signal x : bit;\nattribute keep : string;\n"
                        "attribute keep of x : signal is \"true\";\nbegin b <= x; x <= a; end;\n"));
    QCOMPARE(test.modules("top").errors(), QStringList());
    QVERIFY(netLines(*test.netlist()).contains("top/x"));
}

static QByteArray genericEntity()
{
    return "library ieee; use ieee.std_logic_1164.all;\n"
           "entity Cell is port (clk : in std_logic; q : out std_logic); end;\n"
           "architecture a of Cell is signal m : std_logic; begin m <= not clk; q <= m; end;\n"
           "library ieee; use ieee.std_logic_1164.all;\n"
           "entity Shift_Reg is\n"
           "generic (WIDTH : positive := 8; constant HAS_PARITY : Boolean := false; TAG : string "
           ":= "
           "\"none\");\n"
           "port (signal Clk_In : in std_logic; DataIn : in std_logic_vector(WIDTH - 1 downto 0);\n"
           "Q, parity : out std_logic);\nend;\n"
           "architecture rtl of Shift_Reg is signal store : std_logic_vector(WIDTH downto 0); "
           "begin\n"
           "process (Clk_In) begin if rising_edge(Clk_In) then store <= '0' & DataIn; end if; end "
           "process;\n"
           "Q <= store(0); p : if HAS_PARITY generate u : entity work.Cell port map (clk => Q, q "
           "=> "
           "parity);\nend generate; u : entity work.Cell port map (clk => Clk_In, q => open); "
           "end;\n";
}

/// Ports and generics in any case, by name and by position, and a module for each set of generics.
void tst_VhdlDesigns::entitiesFitTheirInstancesInVerilog()
{
    ExtractionTest test;
    const QString file = test.write("shift.vhd", genericEntity());
    test.add(file);
    test.add(test.write("top.v",
                        "module top(input clk, input [15:0] d, output [4:0] y);\n"
                        "Shift_Reg u0 (.clk_in(clk), .datain(d[7:0]), .q(y[0]));\n"
                        "shift_reg #(.width(16), .has_parity(1)) u1 (.CLK_IN(clk), .DATAIN(d),\n"
                        "  .Q(y[1])), u2 (.clk_in(clk), .Q(y[2]));\n"
                        "Shift_Reg #(4, 1'b0, \"x\") u3 (.Clk_In(clk), .Q(y[3]));\n"
                        "shift_reg #(.width(8'h2)) u4 (clk, d[1:0], y[4]);\nendmodule\n"));
    QCOMPARE(test.modules("top").ofTheDesign(),
             QStringList("WARNING: " + file + ":8:4: no assignment for port \"parity\""));
    const auto netlist = test.netlist();
    QCOMPARE(levelLines(*netlist),
             (QStringList{"top top", "top/u0 Shift_Reg", "top/u0/u Cell", "top/u1 Shift_Reg",
                          "top/u1/p_u Cell", "top/u1/u Cell", "top/u2 Shift_Reg", "top/u2/p_u Cell",
                          "top/u2/u Cell", "top/u3 Shift_Reg", "top/u3/u Cell", "top/u4 Shift_Reg",
                          "top/u4/u Cell"}));
    QCOMPARE(missing(netLines(*netlist),
                     {"top/u0/DataIn[7:0]", "top/u0/store[8:0]", "top/u1/DataIn[15:0]",
                      "top/u2/store[16:0]", "top/u3/DataIn[3:0]", "top/u4/store[2:0]"}),
             QStringList());
}

/// Names of members and nets that differ from a port's only in case, and names that stand for both.
void tst_VhdlDesigns::connectionsOfEntitiesKeepTheirNames()
{
    ExtractionTest test;
    test.add(test.write("fifo.vhd",
                        "library ieee; use ieee.std_logic_1164.all;\n"
                        "entity fifo is port (CLK, DATA : in std_logic; Q : out std_logic); end;\n"
                        "architecture a of fifo is begin Q <= DATA and CLK; end;\n"));
    test.add(test.write("top.sv",
                        "typedef struct packed {logic data; logic q;} pair;\n"
                        "module top(input clk, input pair p, output pair o, output q);\n"
                        "fifo u0 (.clk(clk), .data(p.data), .q(o.q));\n"
                        "fifo u1 (clk, p.data, o.data), u2 (.\\clk , .data(p.q), .q);\n"
                        "endmodule\n"));
    QCOMPARE(test.modules("top").ofTheDesign(), QStringList());
    const auto netlist = test.netlist();
    QCOMPARE(levelLines(*netlist),
             (QStringList{"top top", "top/u0 fifo", "top/u1 fifo", "top/u2 fifo"}));
    QCOMPARE(missing(netLines(*netlist), {"top/u0/DATA", "top/u2/CLK", "top/u2/Q"}), QStringList());
}

void tst_VhdlDesigns::errorsBesideEntitiesKeepTheirColumns()
{
    ExtractionTest test;
    test.add(test.write("shift.vhd", genericEntity()));
    const QString file = test.write(
        "top.sv",
        "module top(input clk_in, input [3:0] d);\n"
        "Shift_Reg #(2) u0 (.Clk_In(clk_in)); Shift_Reg #(3) u1 (.clk_in, .none1(d));\n"
        "Shift_Reg #(4) u2 (.none2(d)); Shift_Reg #(4) u3 (.clk_in, .none3(d)); assign b = a0;\n"
        "endmodule\n");
    test.add(file);
    const QString begin = "ERROR: " + file;
    QCOMPARE(test.modules("top").errors().filter("none"),
             (QStringList{begin + ":2:67: Pin not found: 'none1'",
                          begin + ":3:21: Pin not found: 'none2'",
                          begin + ":3:61: Pin not found: 'none3'"}));
}

void tst_VhdlDesigns::genericsTakeConstantsOfTheirType_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("condition");

    QTest::newRow("logic") << QByteArray("std_logic := '0'") << QByteArray("1'b1")
                           << QByteArray("G = '1'");
    QTest::newRow("bit") << QByteArray("bit := '1'") << QByteArray("0") << QByteArray("G = '0'");
    QTest::newRow("vector") << QByteArray("std_logic_vector(3 downto 0) := \"0000\"")
                            << QByteArray("4'h2") << QByteArray("G = \"0010\"");
    QTest::newRow("vector-without-width") << QByteArray("std_logic_vector(3 downto 0) := \"0101\"")
                                          << QByteArray("2") << QByteArray("G = \"0101\"");
    QTest::newRow("real") << QByteArray("real := 3.0") << QByteArray("2") << QByteArray("G > 2.5");
    QTest::newRow("divided-digits")
        << QByteArray("integer := 0") << QByteArray("16'H1_0") << QByteArray("G = 16");
    QTest::newRow("negative") << QByteArray("integer := 0") << QByteArray("-5")
                              << QByteArray("G = -5");
    QTest::newRow("unknown-digits")
        << QByteArray("integer := 5") << QByteArray("4'bx1") << QByteArray("G = 5");
}

void tst_VhdlDesigns::genericsTakeConstantsOfTheirType()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, condition);
    ExtractionTest test;
    test.add(test.write("e.vhd",
                        "library ieee; use ieee.std_logic_1164.all;\n"
                        "entity e is generic (G : "
                            + type
                            + "); port (a : in std_logic); end;\n"
                              "architecture r of e is begin g1 : if "
                            + condition
                            + " generate signal taken : std_logic; begin taken <= not a; end "
                              "generate; end;\n"));
    test.add(test.write("top.v",
                        "module top(input x);\ne #(.G(" + value + ")) u (.a(x));\nendmodule\n"));
    QCOMPARE(test.modules("top").errors(), QStringList());
    const QStringList lines = netLines(*test.netlist());
    QVERIFY2(!lines.filter("taken").isEmpty(), qPrintable(lines.join('\n')));
}

void tst_VhdlDesigns::instanceWithAnUnknownGenericStays()
{
    ExtractionTest test;
    test.add(test.write("e.vhd",
                        "entity e is generic (w : natural := 4);\n"
                        "port (y : out bit_vector(w - 1 downto 0)); end;\n"
                        "architecture a of e is begin y <= (others => '1'); end;\n"));
    test.add(test.write("top.v",
                        "module top(output [1:0] a, output [3:0] b);\n"
                        "e #(.w(2), .no(1)) u (.y(a));\ne #(4, 5) v (.y(b));\nendmodule\n"));
    QCOMPARE(test.modules("top").ofTheDesign(),
             (QStringList{"WARNING: the instance \"u\" gives a generic that \"e\" doesn't have",
                          "WARNING: the instance \"v\" gives a generic that \"e\" doesn't have"}));
    const auto netlist = test.netlist();
    QCOMPARE(missing(netLines(*netlist), {"top/u/y[1:0]", "top/v/y[3:0]"}), QStringList());
}

void tst_VhdlDesigns::setsOfGenericsHaveALimit()
{
    ExtractionTest writer;
    Standin::ExtractionOptions options;
    options.ghdl = writer
                       .optionsWithTool("#!/bin/sh\ncase \"$*\" in *--synth*)\n"
                                        "echo 'module e; endmodule';; esac\n")
                       .verilator;
    options.bubblewrap = "/nonexistent/bwrap";
    ExtractionTest test(options);
    test.add(test.write("e.vhd",
                        "entity e is generic (g : integer); end;\n"
                        "architecture a of e is begin end;\n"));
    QByteArray text = "module top;\n";
    for (int i = 0; i < 40; ++i)
        text += "e #(.g(" + QByteArray::number(i) + ")) u" + QByteArray::number(i) + "();\n";
    test.add(test.write("top.v", text + "endmodule\n"));
    const QStringList messages = test.modules("top").messages;
    const QString line =
        "WARNING: the entity \"e\" has more sets of generics than can be told apart";
    QCOMPARE(messages.filter("sets of generics"), QStringList(line));
    QCOMPARE(messages.filter("ERROR"), QStringList());
    QCOMPARE(levelLines(*test.netlist()).filter(" e").size(), 40);
    QCOMPARE(test.extraction->toolRuns(), 32 + 3);
}

void tst_VhdlDesigns::topTakesTruthForABooleanGeneric()
{
    ExtractionTest test;
    test.add(test.write("shift.vhd", genericEntity()));
    test.info.insert(Standin::DesignInfo::Generics,
                     QVariantMap{{"has_parity", true}, {"WIDTH", 3}});
    QCOMPARE(test.modules("shift_reg").ofTheDesign().join('\n'), QString());
    const auto netlist = test.netlist();
    QCOMPARE(levelLines(*netlist).size(), 3);
    QVERIFY(netLines(*netlist).contains("shift_reg/store[3:0]"));
}

void tst_VhdlDesigns::emptyEntityIsALevel()
{
    ExtractionTest test;
    test.add(test.write("top.vhd",
                        "entity nothing is port (a : in bit); end;\n"
                        "architecture r of nothing is begin end;\n"
                        "entity top is port (a : in bit; b : out bit); end;\n"
                        "architecture r of top is begin b <= a;\n"
                        "u : entity work.nothing port map (a); end;\n"));
    QCOMPARE(test.modules("top").errors(), QStringList());
    QCOMPARE(levelLines(*test.netlist()), (QStringList{"top top", "top/u nothing"}));
}

/// One line for each part: its kind, its depth as blanks, and its first words.
static QStringList partsOf(const QByteArray &text)
{
    static const char *const kinds[] = {"context", "unit",    "leaf",      "instance",
                                        "region",  "process", "statement", "compound",
                                        "list",    "element", "branch"};
    const Standin::VhdlTokens tokens(text);
    const Standin::VhdlConstructs constructs(tokens);
    QStringList lines;
    for (const VhdlConstruct &each : constructs.all()) {
        QString line;
        for (int up = each.parent; up >= 0; up = constructs.all()[std::size_t(up)].parent)
            line += ' ';
        const auto begin = int(tokens.begin(each.begin));
        const auto end = int(tokens.end(each.end - 1));
        const QString words = QString::fromUtf8(text.mid(begin, end - begin)).simplified();
        lines.append(line + QLatin1String(kinds[each.kind]) + ": " + words.left(20));
    }
    return lines;
}

void tst_VhdlDesigns::textIsDivided_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("parts");

    QTest::newRow("entity") << QByteArray("library l; use l.p.all; entity e is generic (g : t := "
                                          "f(1; 2)); port (a : in t; b : t); end entity e;")
                            << QStringList{
                                   "context: library l;",         "context: use l.p.all;",
                                   "unit: entity e is generic ",  " list: generic (g : t := f(",
                                   "  element: g : t := f(1; 2)", " list: port (a : in t; b : ",
                                   "  element: a : in t",         "  element: b : t"};
    QTest::newRow("architecture") << QByteArray(
        "architecture r of e is signal s : t; component c port (a : t); end component; begin s <= "
        "a; u : c port map (a => s); w : entity work.c; p : process (s) is variable v : t; begin "
        "if a then b <= c; elsif d then b <= e; else b <= '0'; end if; case s is when x => b <= 1; "
        "when others => null; end case; for i in s'range loop v := i; end loop; end process; g : "
        "if a generate t <= s; else generate begin end; end generate; k : block is begin end "
        "block; end;")
                                  << QStringList{"unit: architecture r of e ",
                                                 " leaf: signal s : t;",
                                                 " compound: component c port (a ",
                                                 "  list: port (a : t);",
                                                 "   element: a : t",
                                                 " leaf: s <= a;",
                                                 " instance: u : c port map (a =>",
                                                 " instance: w : entity work.c;",
                                                 " process: p : process (s) is v",
                                                 "  leaf: variable v : t;",
                                                 "  statement: if a then b <= c; el",
                                                 "   leaf: b <= c;",
                                                 "   branch: elsif d then",
                                                 "   leaf: b <= e;",
                                                 "   branch: else",
                                                 "   leaf: b <= '0';",
                                                 "  statement: case s is when x => ",
                                                 "   branch: when x =>",
                                                 "   leaf: b <= 1;",
                                                 "   branch: when others =>",
                                                 "   leaf: null;",
                                                 "  statement: for i in s'range loo",
                                                 "   leaf: v := i;",
                                                 " region: g : if a generate t ",
                                                 "  leaf: t <= s;",
                                                 "  branch: else generate",
                                                 " region: k : block is begin e"};
    QTest::newRow("package") << QByteArray(
        "package p is type r is record a : t; b : u; end record; function f(a : t) return t; type "
        "e is (x, y); end; package body p is function f(a : t) return t is begin return a; end; "
        "end package body; configuration c of e is for r for all : x use entity work.y; end for; "
        "end for; end;")
                             << QStringList{"unit: package p is type r ",
                                            " compound: type r is record a :",
                                            "  leaf: a : t;",
                                            "  leaf: b : u;",
                                            " leaf: function f(a : t) re",
                                            " leaf: type e is (x, y);",
                                            "unit: package body p is fu",
                                            " compound: function f(a : t) re",
                                            "  leaf: return a;",
                                            "unit: configuration c of e",
                                            " compound: for r for all : x us",
                                            "  leaf: for all : x use enti"};
    QTest::newRow("not-ended") << QByteArray(
        "entity e is port (a : in t; architecture r of e is signal s : t begin p : process begin s "
        "<= a end; library l; entity f is end;")
                               << QStringList{"unit: entity e is port (a ",
                                              " leaf: port (a : in t;",
                                              "unit: architecture r of e ",
                                              " leaf: signal s : t",
                                              " process: p : process begin s ",
                                              "  leaf: s <= a",
                                              "context: library l;",
                                              "unit: entity f is end;"};
}

void tst_VhdlDesigns::textIsDivided()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, parts);
    qInfo("%s", qPrintable(partsOf(text).join("\n")));
    QCOMPARE(partsOf(text).join('\n'), parts.join('\n'));
}

void tst_VhdlDesigns::oddTextIsDividedInTime_data()
{
    QTest::addColumn<QByteArray>("piece");

    for (const char *piece : {"if ",     "process ",   "end if ",       "end ",
                              "( ",      "for ",       "when ",         "else ",
                              "case ",   "component ", "function ",     "type x is record ",
                              "a : ",    "begin ",     "package p is ", "architecture a of b is ",
                              "port ( ", "generate ",  "library ",      "entity e is ",
                              "/* ",     "\" ",        "signal "})
        QTest::newRow(QByteArray(piece).trimmed().replace(' ', '-').constData())
            << QByteArray(piece);
}

/// Without an end of anything. What takes the square of the length would take minutes here.
void tst_VhdlDesigns::oddTextIsDividedInTime()
{
    QFETCH(QByteArray, piece);
    const QByteArray text = "architecture a of b is begin process begin " + piece.repeated(200000);
    const Standin::VhdlTokens tokens(text);
    const Standin::VhdlConstructs constructs(tokens);
    QVERIFY(!constructs.units().empty());
    for (const VhdlConstruct &each : constructs.all())
        QVERIFY(each.begin < each.end && each.end <= tokens.count());
}

MOLK_TEST_GUILESS_MAIN(tst_VhdlDesigns)
#include "tst_vhdldesigns.moc"
