// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/moduletable.h"
#include "netlist/netlistbuilder.h"
#include "netlistlines.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"
#include "testmain.h"

#include <malloc.h>

#include <memory>

using namespace Standin;

class TestNetlistObjects : public QObject
{
    Q_OBJECT

private slots:
    void rangesKeepTheirOrder_data();
    void rangesKeepTheirOrder();
    void namesStayUniqueWhateverTheyHold();
    void escapedNamesAreWrittenAsSuch();
    void arraysNamedLikeElementsStayUnique();
    void charactersThatNoNameShouldHoldAreKept();
    void namesThatCantBeMistakenStayAsTheyAre();
    void findNetFindsNothingElse_data();
    void findNetFindsNothingElse();
    void levelsBelowComeBehindTheirParent();
    void arraysGiveOneNetForEachElement();
    void instanceArraysGiveOneLevelForEachInstance();
    void nonAsciiNamesAreFound();
    void thousandsOfLevelsAreNoProblem();
    void moduleThatContainsItselfIsRefused();
    void designThatGrowsWithoutBoundIsRefused();
    void tableWithoutTopIsRefused();
    void netsTakeFewBytesUntilBitsAreAskedFor();
};

void TestNetlistObjects::rangesKeepTheirOrder_data()
{
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("right");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("bits");
    QTest::newRow("down") << 3 << 0 << "b[3:0]" << QStringList{"b[3]", "b[2]", "b[1]", "b[0]"};
    QTest::newRow("up") << 0 << 2 << "b[0:2]" << QStringList{"b[0]", "b[1]", "b[2]"};
    QTest::newRow("offset") << 9 << 8 << "b[9:8]" << QStringList{"b[9]", "b[8]"};
    QTest::newRow("negative") << -1 << -3 << "b[-1:-3]" << QStringList{"b[-1]", "b[-2]", "b[-3]"};
    QTest::newRow("across-zero-up") << -1 << 1 << "b[-1:1]" << QStringList{"b[-1]", "b[0]", "b[1]"};
    QTest::newRow("of-one") << 0 << 0 << "b[0:0]" << QStringList{"b[0]"};
    QTest::newRow("far-out") << 2147483647 << 2147483646 << "b[2147483647:2147483646]"
                             << QStringList{"b[2147483647]", "b[2147483646]"};
    QTest::newRow("far-down") << -2147483647 - 1 << -2147483647 << "b[-2147483648:-2147483647]"
                              << QStringList{"b[-2147483648]", "b[-2147483647]"};
}

void TestNetlistObjects::rangesKeepTheirOrder()
{
    QFETCH(int, left);
    QFETCH(int, right);
    QFETCH(QString, name);
    QFETCH(QStringList, bits);
    NetlistBuilder builder;
    QVERIFY(builder.addBus(0, "b", left, right));
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    const FATHOM::RtlNetBus *bus = netlist->top->netbuses().at(0);
    QCOMPARE(bus->BusName(), name);
    QCOMPARE(bus->fullBusName(), "top/" + name);
    QStringList found;
    for (const FATHOM::RtlNet *bit : bus->nets())
        found += bit->name();
    QCOMPARE(found, bits);
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestNetlistObjects::namesStayUniqueWhateverTheyHold()
{
    const QStringList names{"a",     "a/b",   "b",     "a/b/c",  "a[0]", "a[0][1]", "\\a",
                            "a ",    " a",    "a  b",  "a b",    "a\\",  "\\a ",    "\\a /b",
                            "a.b",   "/",     " ",     "[0]",    "a[0",  "a]",      "a[-1]",
                            "a[00]", "a[+1]", "a [0]", "\\a[0] "};
    NetlistBuilder builder("a");
    // Everything below everything: levels, single nets and buses of the same names.
    for (const QString &outer : names) {
        const int level = builder.addLevel(0, outer, "m");
        for (const QString &inner : names) {
            const int deep = builder.addLevel(level, inner, "m");
            QVERIFY(builder.addNet(deep, "a"));
            QVERIFY(builder.addBus(deep, "b", 1, -1));
            QVERIFY(builder.addNet(level, inner));
        }
        QVERIFY(builder.addBus(0, outer, 1, -1));
    }
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    QCOMPARE(netlist->top->children().size(), names.size());
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestNetlistObjects::escapedNamesAreWrittenAsSuch()
{
    NetlistBuilder builder;
    const int u = builder.addLevel(0, "u/0", "m");
    QVERIFY(builder.addNet(u, "a b"));
    QVERIFY(builder.addBus(u, "q", 7, 0));
    QVERIFY(builder.addBus(u, "q[3]", 1, 0));
    QVERIFY(builder.addBus(u, "x/y", 1, 0));
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    QStringList names;
    for (const FATHOM::RtlNetBus *bus : netlist->top->netbusesIncludeSub())
        names += bus->fullBusName();
    QCOMPARE(
        names,
        QStringList({"top/\\u/0 /q[7:0]", "top/\\u/0 /\\q[3] [1:0]", "top/\\u/0 /\\x/y [1:0]"}));
    QVERIFY(netlist->findNet("top/\\u/0 /\\a  b "));
    QVERIFY(netlist->findNet("top/\\u/0 /\\q[3] [1]"));
    QVERIFY(netlist->findNet("top/\\u/0 /\\x/y [0]"));
    QVERIFY(!netlist->findNet("top/\\u/0 /\\x/y "));
    QCOMPARE(netlist->top->children().at(0)->name(), QString("\\u/0 "));
}

static NetDeclaration arrayOf(const QString &name, const QVector<Range> &dimensions)
{
    NetDeclaration array;
    array.name = name;
    array.dimensions = dimensions;
    return array;
}

void TestNetlistObjects::arraysNamedLikeElementsStayUnique()
{
    ModuleDefinition top("top");
    QVERIFY(top.addNet(arrayOf("a[0]", {{1, 0}})));
    QVERIFY(top.addNet(arrayOf("a", {{0, 0}, {1, 0}})));
    QVERIFY(top.addNet(arrayOf("b[0]", {{1, 0}})));
    NetDeclaration buses = arrayOf("q[1]", {{0, 0}});
    buses.isBus = true;
    buses.range = {1, 0};
    QVERIFY(top.addNet(buses));
    buses.name = "q";
    buses.dimensions = {{1, 1}, {0, 0}};
    QVERIFY(top.addNet(buses));
    top.seal();
    ModuleTable table;
    table.definitions.push_back(top);
    table.top = 0;
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(elaborate(table));
    QCOMPARE(
        netlistLines(*netlist),
        QStringList({"top (top)", "  . \\a[0] [1]", "  . \\a[0] [0]", "  . a[0][1]", "  . a[0][0]",
                     "  . b[0][1]", "  . b[0][0]", "  = \\q[1] [0][1:0]", "  = q[1][0][1:0]"}));
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestNetlistObjects::charactersThatNoNameShouldHoldAreKept()
{
    const QChar nul(0);
    const QChar mark(QChar::ByteOrderMark);
    NetlistBuilder builder;
    for (const QString &name : {QString("a"), "a" + nul + "b", "a" + nul + "c", mark + QString("a"),
                                mark + QString("a/b"), QString("\001"), QString(nul)}) {
        const int level = builder.addLevel(0, name, "m");
        QVERIFY(builder.addNet(level, name));
        QVERIFY(builder.addBus(level, name + "[0]", 1, 0));
        QVERIFY(builder.addNet(level, name + "[0][0]"));
        QVERIFY(builder.addNet(0, name));
    }
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    QCOMPARE(netlist->top->children().at(1)->name(), "a" + nul + "b");
    QCOMPARE(netlist->top->singleNets().at(1)->fullPathName(), "top/a" + nul + "b");
    QCOMPARE(netlist->top->singleNets().at(3)->fullPathName(), "top/" + (mark + QString("a")));
    QCOMPARE(netlist->top->singleNetsIncludeSub().size(), 21);
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestNetlistObjects::namesThatCantBeMistakenStayAsTheyAre()
{
    NetlistBuilder builder;
    QVERIFY(builder.addNet(0, "data_reg[3]"));
    QVERIFY(builder.addNet(0, "a.b[0]$x"));
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    QCOMPARE(allFullNames(*netlist), QStringList({"top/data_reg[3]", "top/a.b[0]$x"}));
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestNetlistObjects::findNetFindsNothingElse_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names{"",           "/",
                            "top",        "top/",
                            "top//clk",   "clk",
                            "Top/clk",    "top/clk/",
                            "top/clk[0]", "top/u0",
                            "top/q",      "top/q[8]",
                            "top/q[-1]",  "top/q[07]",
                            "top/q[+7]",  "top/q[7",
                            "top/q7]",    "top/q[]",
                            "top/q[7:0]", "top/q[ 7]",
                            "top/q[7] ",  "top/q[7][0]",
                            "top/u0/clk", "/top/clk",
                            "top/\\clk ", "top/q[4294967303]",
                            "top/u0/x/y", "top/u0[0]/x",
                            "\\top /clk"};
    for (const QString &name : names)
        QTest::newRow(qPrintable('"' + name + '"')) << name;
}

void TestNetlistObjects::findNetFindsNothingElse()
{
    QFETCH(QString, name);
    NetlistBuilder builder;
    QVERIFY(builder.addNet(0, "clk"));
    QVERIFY(builder.addBus(0, "q", 7, 0));
    QVERIFY(builder.addNet(builder.addLevel(0, "u0", "m"), "x"));
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    QVERIFY(netlist->findNet("top/u0/x"));
    QVERIFY(!netlist->findNet(name));
}

void TestNetlistObjects::levelsBelowComeBehindTheirParent()
{
    NetlistBuilder builder;
    const int b = builder.addLevel(0, "b", "m");
    const int a = builder.addLevel(0, "a", "m");
    const int deep = builder.addLevel(b, "deep", "m");
    for (int level : {a, deep, b, 0}) {
        QVERIFY(builder.addNet(level, "n"));
        QVERIFY(builder.addBus(level, "v", 0, 0));
    }
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    QStringList nets;
    for (const FATHOM::RtlNet *net : netlist->top->singleNetsIncludeSub())
        nets += net->fullPathName();
    QCOMPARE(nets, QStringList({"top/n", "top/b/n", "top/b/deep/n", "top/a/n"}));
    const FATHOM::Hierachy *levelB = netlist->top->children().at(0);
    QCOMPARE(levelB->singleNetsIncludeSub().size(), 2);
    QCOMPARE(levelB->netbusesIncludeSub().size(), 2);
    QCOMPARE(levelB->netbuses().size(), 1);
}

// A table of one definition besides the top, which instantiates it.
static ModuleTable tableOf(ModuleDefinition child,
                           const std::function<void(ModuleDefinition *)> &fill)
{
    ModuleTable table;
    child.seal();
    table.definitions.push_back(std::move(child));
    ModuleDefinition top("top");
    fill(&top);
    top.seal();
    table.definitions.push_back(std::move(top));
    table.top = 1;
    return table;
}

void TestNetlistObjects::arraysGiveOneNetForEachElement()
{
    const auto fill = [](ModuleDefinition *top) {
        NetDeclaration array;
        array.name = "y";
        array.dimensions = {{1, 0}, {-1, 1}};
        array.isBus = true;
        array.range = {3, 2};
        array.flags = QByteArray(12, char(0));
        array.flags[1] = NoProbeIn;
        QVERIFY(top->addNet(array));
        array.flags.chop(1);
        array.name = "z";
        QVERIFY(!top->addNet(array));
        array.isBus = false;
        array.flags.clear();
        array.dimensions = {{2, 3}};
        QVERIFY(top->addNet(array));
    };
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(
        elaborate(tableOf(ModuleDefinition("m"), fill)));
    QCOMPARE(netlistLines(*netlist),
             QStringList({"top (top)", "  . z[2]", "  . z[3]", "  = y[1][-1][3:2] 01",
                          "  = y[1][0][3:2]", "  = y[1][1][3:2]", "  = y[0][-1][3:2]",
                          "  = y[0][0][3:2]", "  = y[0][1][3:2]"}));
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestNetlistObjects::instanceArraysGiveOneLevelForEachInstance()
{
    ModuleDefinition child("m");
    NetDeclaration net;
    net.name = "n";
    QVERIFY(child.addNet(net));
    const auto fill = [](ModuleDefinition *top) {
        QVERIFY(top->addInstanceArray("u", 0, {1, 0}));
        QVERIFY(top->addInstance("u[1]", 0));
        QVERIFY(!top->addInstance("u", 0));
    };
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(elaborate(tableOf(child, fill)));
    QCOMPARE(allFullNames(*netlist), QStringList({"top/u[1]/n", "top/u[0]/n", "top/\\u[1] /n"}));
    QCOMPARE(namesNotFound(*netlist), QStringList());
}

void TestNetlistObjects::nonAsciiNamesAreFound()
{
    NetlistBuilder builder;
    const QString name = QString::fromUtf8("\u00fc\u4e2d\U0001d11e");
    QVERIFY(builder.addNet(0, name));
    QVERIFY(builder.addBus(builder.addLevel(0, name, name), name, 1, 0));
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    QCOMPARE(netlist->top->singleNets().at(0)->fullPathName(), "top/" + name);
    QCOMPARE(netlist->top->children().at(0)->netbuses().at(0)->fullBusName(),
             "top/" + name + "/" + name + "[1:0]");
    QCOMPARE(namesNotFound(*netlist), QStringList());
    QVERIFY(!netlist->findNet(QString("top/") + QChar(0xd834)));
}

void TestNetlistObjects::thousandsOfLevelsAreNoProblem()
{
    NetlistBuilder builder;
    int level = 0;
    for (int i = 0; i < 5000; ++i)
        level = builder.addLevel(level, "u", "m");
    QVERIFY(builder.addNet(level, "n"));
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    FATHOM::RtlNet *net = netlist->top->singleNetsIncludeSub().at(0);
    QCOMPARE(net->fullPathName().size(), 3 + 5000 * 2 + 2);
    QCOMPARE(netlist->findNet(net->fullPathName()), net);
}

void TestNetlistObjects::moduleThatContainsItselfIsRefused()
{
    ModuleTable table;
    for (int i = 0; i < 2; ++i) {
        ModuleDefinition definition(QString("m%1").arg(i));
        QVERIFY(definition.addInstance("u", 1 - i));
        definition.seal();
        table.definitions.push_back(definition);
    }
    table.top = 0;
    QString error;
    QVERIFY(!elaborate(table, &error));
    QCOMPARE(error, QString("Module \"m1\" contains itself"));
}

void TestNetlistObjects::designThatGrowsWithoutBoundIsRefused()
{
    ModuleTable table;
    for (int i = 0; i < 64; ++i) {
        ModuleDefinition definition("m");
        if (i > 0) {
            QVERIFY(definition.addInstance("a", i - 1));
            QVERIFY(definition.addInstanceArray("b", i - 1, {1000000, 0}));
        }
        definition.seal();
        table.definitions.push_back(definition);
    }
    table.top = 63;
    QString error;
    QVERIFY(!elaborate(table, &error));
    QCOMPARE(error, QString("The design has more than 67108864 nets and levels"));
}

void TestNetlistObjects::tableWithoutTopIsRefused()
{
    QString error;
    QVERIFY(!elaborate(ModuleTable(), &error));
    QCOMPARE(error, QString("The design has no top module"));
}

static std::size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void TestNetlistObjects::netsTakeFewBytesUntilBitsAreAskedFor()
{
    // A sanitizer's allocator isn't the one that is counted here; it then says nothing is in use.
    const std::size_t before = heapInUse();
    ModuleTable table;
    ModuleDefinition top("top");
    for (int i = 0; i < 2800; ++i) {
        NetDeclaration bus;
        bus.name = QString("some_bus_%1").arg(i);
        bus.isBus = true;
        bus.range = {31, 0};
        QVERIFY(top.addNet(bus));
    }
    for (int i = 0; i < 10400; ++i) {
        NetDeclaration net;
        net.name = QString("some_net_%1").arg(i);
        QVERIFY(top.addNet(net));
    }
    top.seal();
    table.definitions.push_back(std::move(top));
    table.top = 0;
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(elaborate(std::move(table)));
    const std::size_t bits = 2800 * 32 + 10400;
    const std::size_t bytes = heapInUse() - before;
    QVERIFY2(bytes <= 8 * bits, qPrintable(QString("%1 bytes, %2 bits").arg(bytes).arg(bits)));
    QCOMPARE(netlist->top->netbuses().size(), 2800);
}

MOLK_TEST_GUILESS_MAIN(TestNetlistObjects)

#include "tst_netlistobjects.moc"
