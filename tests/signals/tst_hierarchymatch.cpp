// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designs.h"
#include "filters.h"

#include "hierarchymatch.h"

#include "testmain.h"

using namespace MOLK;

class TestHierarchyMatch : public QObject
{
    Q_OBJECT

private slots:
    void matchesHaveTheShapeOfTheDesign_data();
    void matchesHaveTheShapeOfTheDesign();
    void aChildMatchIsAppendedOnlyIfItHoldsSomething();
    void netsAndBusesMatchAsInTheFlatSearch();
};

static QStringList matchLines(const HierarchyMatch &match, int depth = 0)
{
    const QString indent(depth * 2, ' ');
    QStringList lines{indent + match.label};
    for (const FATHOM::RtlNetBus *bus : match.buses)
        lines.append(indent + "- " + bus->BusName());
    for (const FATHOM::RtlNet *net : match.nets)
        lines.append(indent + "- " + net->name());
    for (const HierarchyMatch &child : match.children)
        lines += matchLines(child, depth + 1);
    return lines;
}

void TestHierarchyMatch::matchesHaveTheShapeOfTheDesign_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("scope");
    QTest::addColumn<bool>("withSub");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("everything-of-a-level")
        << ""
        << "u_core" << true
        << QStringList{"core:u_core",   "- q[1:0]",     "- busy",      "- valid",
                       "  fifo:u_fifo", "  - mem[2:0]", "  - full_4x", "  - wr*en"};
    QTest::newRow("levels-on-the-way")
        << "full"
        << "" << true << QStringList{"top", "  core:u_core", "    fifo:u_fifo", "    - full_4x"};
    QTest::newRow("no-hit") << "nothing like it"
                            << "u_core" << true << QStringList{"core:u_core"};
    QTest::newRow("hits-below-are-not-looked-for")
        << "full"
        << "u_core" << false << QStringList{"core:u_core"};
    QTest::newRow("only-the-level") << ""
                                    << "u_pad" << false << QStringList{"pad:u_pad", "- ready"};
    QTest::newRow("two-branches") << "y"
                                  << "" << true
                                  << QStringList{"top", "  core:u_core", "  - busy", "  pad:u_pad",
                                                 "  - ready"};
}

void TestHierarchyMatch::matchesHaveTheShapeOfTheDesign()
{
    QFETCH(QString, pattern);
    QFETCH(QString, scope);
    QFETCH(bool, withSub);
    QFETCH(QStringList, lines);
    const Design design = searchDesign();
    NetFilter filter = filterFor(pattern, "normal");
    filter.advanced = true;
    filter.scope = levelAt(design, scope);
    filter.includeSubentries = withSub;
    QCOMPARE(matchLines(matchHierarchy(filter)), lines);
}

void TestHierarchyMatch::aChildMatchIsAppendedOnlyIfItHoldsSomething()
{
    const Design design = searchDesign();
    HierarchyMatch parent;
    parent.label = "parent";
    NetFilter filter = filterFor("busy", "normal");
    matchChildHierarchy(parent, levelAt(design, "u_pad"), filter);
    QVERIFY(parent.isEmpty());
    matchChildHierarchy(parent, levelAt(design, "u_core"), filter);
    QCOMPARE(matchLines(parent), QStringList({"parent", "  core:u_core", "  - busy"}));
    // At this depth the search goes on whatever the filter says.
    filter.pattern = "full";
    matchChildHierarchy(parent, levelAt(design, "u_core"), filter);
    QCOMPARE(parent.children.size(), 2);
}

void TestHierarchyMatch::netsAndBusesMatchAsInTheFlatSearch()
{
    const Design design = searchDesign();
    const QList<FATHOM::RtlNet *> nets = design->top->singleNetsIncludeSub();
    const QList<FATHOM::RtlNetBus *> buses = design->top->netbusesIncludeSub();
    for (const QString &mode : allModes) {
        for (const QString &pattern : QStringList{"", "top/clk", "*q*", ".*[0-9].*", "("}) {
            const NetFilter filter = everywhere(filterFor(pattern, mode), design);
            QStringList names;
            for (const FATHOM::RtlNet *net : nets) {
                if (matchNet(net, filter))
                    names.append(net->fullPathName());
            }
            for (const FATHOM::RtlNetBus *bus : buses) {
                if (matchBus(bus, filter))
                    names.append(bus->fullBusName());
            }
            QCOMPARE(names, found(design, filter));
        }
    }
}

MOLK_TEST_GUILESS_MAIN(TestHierarchyMatch)

#include "tst_hierarchymatch.moc"
