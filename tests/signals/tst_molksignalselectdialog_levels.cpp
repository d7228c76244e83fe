// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designs.h"
#include "literalrows.h"
#include "searchfixture.h"

#include "signaldisplay.h"

#include "testwidgetsmain.h"

#include <QCheckBox>

using namespace MOLK;

/// Searches from a level of the design on, and results in the shape of its levels.
class TestMolkSignalSelectDialogLevels : public QObject
{
    Q_OBJECT

private slots:
    void advancedFilterHidesItsSectionAndKeepsItsState();
    void advancedFilterSearchesThePickedLevel();
    void advancedFilterStartsAtTheTop();
    void hierarchyViewNeedsTheAdvancedFilter();
    void hierarchyViewShowsLevels();
    void hierarchyViewWithoutAHitIsEmpty();
    void hierarchyRowsReadAsIfFilledThroughSetters();
};

void TestMolkSignalSelectDialogLevels::advancedFilterHidesItsSectionAndKeepsItsState()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    auto *section = f.find<QWidget>("widget_4");
    f.click("checkBoxAdvancedFilter");
    QVERIFY(section->isVisible());
    f.click("checkBoxHierarchyView");
    f.click("checkBoxIncludeSubentries");

    f.click("checkBoxAdvancedFilter");
    QVERIFY(!section->isVisible());
    QCOMPARE(f.searchFor("full"), QStringList("top/u_core/u_fifo/full_4x"));

    f.click("checkBoxAdvancedFilter");
    QVERIFY(f.find<QCheckBox>("checkBoxHierarchyView")->isChecked());
    QVERIFY(f.find<QCheckBox>("checkBoxIncludeSubentries")->isChecked());
    QCOMPARE(f.searchFor("full").size(), 4);
}

void TestMolkSignalSelectDialogLevels::advancedFilterSearchesThePickedLevel()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("checkBoxAdvancedFilter");
    f.pickLevel("u_core[core]");
    QCOMPARE(f.searchFor("u").filter("/u_fifo"), QStringList());
    QCOMPARE(f.searchFor("y"), QStringList("top/u_core/busy"));
    f.click("checkBoxIncludeSubentries");
    QCOMPARE(f.searchFor("u_fifo/f"), QStringList("top/u_core/u_fifo/full_4x"));
    f.pickLevel("u_fifo[fifo]");
    QCOMPARE(f.searchFor("u"),
             QStringList({"top/u_core/u_fifo/mem[2:0]", "  top/u_core/u_fifo/mem[2]",
                          "  top/u_core/u_fifo/mem[1]", "  top/u_core/u_fifo/mem[0]",
                          "top/u_core/u_fifo/full_4x", "top/u_core/u_fifo/wr*en"}));
}

void TestMolkSignalSelectDialogLevels::advancedFilterStartsAtTheTop()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("checkBoxAdvancedFilter");
    QVERIFY(!f.scopeTree()->currentItem());
    QCOMPARE(f.searchFor("/"),
             QStringList({"top/data[3:0]", "  top/data[3]", "  top/data[2]", "  top/data[1]",
                          "  top/data[0]", "top/ctl[1:2]", "  top/ctl[1]", "  top/ctl[2]",
                          "top/clk", "top/Rst.n"}));
    // A row that is no level of the design counts as none.
    f.scopeTree()->addTopLevelItem(new QTreeWidgetItem(QStringList("u_core")));
    f.scopeTree()->setCurrentItem(f.scopeTree()->topLevelItem(1));
    QCOMPARE(f.searchFor("clk"), QStringList("top/clk"));
}

void TestMolkSignalSelectDialogLevels::hierarchyViewNeedsTheAdvancedFilter()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.find<QCheckBox>("checkBoxHierarchyView")->setChecked(true);
    QCOMPARE(f.searchFor("clk"), QStringList("top/clk"));
}

void TestMolkSignalSelectDialogLevels::hierarchyViewShowsLevels()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("checkBoxAdvancedFilter");
    f.click("checkBoxHierarchyView");
    f.click("checkBoxIncludeSubentries");
    QCOMPARE(f.searchFor("u_"),
             QStringList({"top", "  core:u_core", "    q[1:0]", "      q[1]", "      q[0]",
                          "    busy", "    valid", "    fifo:u_fifo", "      mem[2:0]",
                          "        mem[2]", "        mem[1]", "        mem[0]", "      full_4x",
                          "      wr*en", "  pad:u_pad", "    ready"}));
    QTreeWidgetItem *top = f.results->topLevelItem(0);
    QTreeWidgetItem *core = top->child(0);
    QVERIFY(top->isExpanded());
    QVERIFY(!core->isExpanded());
    QVERIFY(!(core->flags() & Qt::ItemIsSelectable));
    QVERIFY(core->flags() & Qt::ItemIsEnabled);
    QVERIFY(!core->data(0, Qt::UserRole).isValid());
    QCOMPARE(signalOfRow(core->child(0)).name, QString("top/u_core/q[1:0]"));
    QCOMPARE(core->child(0)->toolTip(0), QString("q[1:0]"));
    QCOMPARE(signalOfRow(core->child(0)->child(0)).name, QString("top/u_core/q[1]"));

    // Only what leads to a hit.
    QCOMPARE(f.searchFor("full"),
             QStringList({"top", "  core:u_core", "    fifo:u_fifo", "      full_4x"}));
    // From below the root.
    f.pickLevel("u_core[core]");
    QCOMPARE(f.searchFor("busy"), QStringList({"core:u_core", "  busy"}));
    f.click("checkBoxIncludeSubentries");
    QCOMPARE(f.searchFor("full"), QStringList());
}

void TestMolkSignalSelectDialogLevels::hierarchyViewWithoutAHitIsEmpty()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("checkBoxAdvancedFilter");
    f.click("checkBoxHierarchyView");
    f.click("checkBoxIncludeSubentries");
    f.searchFor("clk");
    QCOMPARE(f.searchFor("no such net"), QStringList());
}

void TestMolkSignalSelectDialogLevels::hierarchyRowsReadAsIfFilledThroughSetters()
{
    const Design design = searchDesign();
    SearchFixture f(design.get(), 1);
    f.click("checkBoxAdvancedFilter");
    f.click("checkBoxHierarchyView");
    f.searchFor("");

    QTreeWidget expected;
    auto *top = new QTreeWidgetItem(&expected, QStringList("top"), 0);
    top->setFlags(top->flags() & ~Qt::ItemIsSelectable);
    for (const FATHOM::RtlNetBus *bus : design->top->netbuses()) {
        QStringList names{bus->BusName()};
        for (const FATHOM::RtlNet *bit : bus->nets())
            names.append(bit->name());
        Literal::addNamedSignalRow(top, Literal::itemOf(bus), names, 0);
    }
    for (const FATHOM::RtlNet *net : design->top->singleNets())
        Literal::addNamedSignalRow(top, Literal::itemOf(net), {net->name()}, 0);
    QCOMPARE(Literal::treeDump(f.results), Literal::treeDump(&expected));
}

MOLK_TEST_MAIN(TestMolkSignalSelectDialogLevels)

#include "tst_molksignalselectdialog_levels.moc"
