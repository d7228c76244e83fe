// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designs.h"
#include "searchfixture.h"
#include "signalitems.h"

#include "netlistguard.h"
#include "signaldisplay.h"

#include "modaldriver.h"
#include "testwidgetsmain.h"

using namespace MOLK;

class TestMolkSignalSelectDialogSelection : public QObject
{
    Q_OBJECT

private slots:
    void addTakesTheSelectedRows();
    void aBusAndItsBitAddTheBusAlone();
    void aBitShowsItsFullPathUntilItsBusReplacesIt();
    void aBusWithExcludedBitsArrivesWithoutThem();
    void addingNothingChangesNothing();
    void addAllTakesExcludedSignalsToo();
    void addAllTakesModuleRowsOfTheHierarchyView();
    void excludedBitsStayGrayFromTheHierarchyView();
    void entriesOfTheHierarchyViewShowTheirFullNames();
    void removeLeavesBitRows();
    void removeAllEmptiesTheList();
    void entriesKeepTheirPlacesOverSearches();
    void selectedSignalsAreTheTopLevelRows();
    void oneNameIsReadFromTheFirstEntry_data();
    void oneNameIsReadFromTheFirstEntry();
    void getSignalsReturnsTheSelectedList();
    void getSignalsReturnsNothingOnCancel();
    void getSignalReturnsOneName();
    void getSignalReturnsNothingOnCancel();
    void aDialogMayDieWithItsParent();
    void theNetlistMayEndUnderTheDialog();
};

void TestMolkSignalSelectDialogSelection::addTakesTheSelectedRows()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.searchFor("");
    f.clickRows(f.results, {"top/u_pad/ready", "top/clk", "top/u_core/q[1:0]"});
    f.click("btnAdd");
    // In the order of the results, buses first, whatever the order of the clicks.
    QCOMPARE(f.selectedLines(),
             QStringList({"top/u_core/q[1:0]", "  top/u_core/q[1]", "  top/u_core/q[0]", "top/clk",
                          "top/u_pad/ready"}));
    QCOMPARE(f.results->selectedItems().size(), 3);
    f.click("btnAdd");
    QCOMPARE(f.selected->topLevelItemCount(), 3);
}

void TestMolkSignalSelectDialogSelection::aBusAndItsBitAddTheBusAlone()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.searchFor("q[");
    f.clickRows(f.results, {"top/u_core/q[1:0]", "top/u_core/q[0]"});
    f.click("btnAdd");
    QCOMPARE(f.selectedLines(),
             QStringList({"top/u_core/q[1:0]", "  top/u_core/q[1]", "  top/u_core/q[0]"}));
}

void TestMolkSignalSelectDialogSelection::aBitShowsItsFullPathUntilItsBusReplacesIt()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.searchFor("");
    f.clickRows(f.results, {"top/data[2]", "top/clk"});
    f.click("btnAdd");
    QCOMPARE(f.selectedLines(), QStringList({"top/data[2]", "top/clk"}));
    const SignalItem added = f.dialog.selectedSignals().first();
    QCOMPARE(added.kind, 1);
    QVERIFY(added.selectable && added.found && added.members.isEmpty() && added.alias.isEmpty());

    f.clickRows(f.results, {"top/data[3:0]"});
    f.click("btnAdd");
    QCOMPARE(f.selectedLines(),
             QStringList({"top/clk", "top/data[3:0]", "  top/data[3]", "  top/data[2]",
                          "  top/data[1]", "  top/data[0]"}));
}

void TestMolkSignalSelectDialogSelection::aBusWithExcludedBitsArrivesWithoutThem()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.searchFor("ctl");
    f.clickRows(f.results, {"top/ctl[1:2]"});
    f.click("btnAdd");
    QCOMPARE(f.selectedLines(), QStringList({"top/ctl[1:2]", "  top/ctl[1]"}));
    QCOMPARE(f.results->topLevelItem(0)->childCount(), 2);
}

void TestMolkSignalSelectDialogSelection::addingNothingChangesNothing()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("btnAdd");
    f.click("btnAddAll");
    f.click("btnDel");
    f.click("btnDelAll");
    QCOMPARE(f.selected->topLevelItemCount(), 0);
}

void TestMolkSignalSelectDialogSelection::addAllTakesExcludedSignalsToo()
{
    const Design design = searchDesign();
    SearchFixture f(design.get(), 1);
    f.searchFor("top/ctl");
    f.click("btnAddAll");
    // Both bits are excluded and leave the bus, which then counts as a bit. Their own rows carry
    // nothing and so come through as bits that may be chosen.
    QCOMPARE(f.selectedLines(), QStringList({"top/ctl[1:2]", "top/ctl[1]", "top/ctl[2]"}));
    QCOMPARE(f.selected->topLevelItem(0)->foreground(0).color(), QColor(Qt::gray));
    QVERIFY(!f.selected->topLevelItem(1)->isDisabled());

    f.searchFor("valid");
    f.click("btnAddAll");
    QTreeWidgetItem *gray = f.selected->topLevelItem(3);
    QCOMPARE(gray->text(0), QString("top/u_core/valid"));
    QCOMPARE(gray->foreground(0).color(), QColor(Qt::gray));
}

void TestMolkSignalSelectDialogSelection::addAllTakesModuleRowsOfTheHierarchyView()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("checkBoxAdvancedFilter");
    f.click("checkBoxIncludeSubentries");
    f.click("checkBoxHierarchyView");
    f.searchFor("q[");
    f.click("btnAddAll");
    QCOMPARE(f.selectedLines(),
             QStringList({"top", "core:u_core", "top/u_core/q[1:0]", "  top/u_core/q[1]",
                          "  top/u_core/q[0]"}));
    QCOMPARE(f.dialog.selectedSignals().first().kind, 1);
    // The user can't select a module row.
    f.click("btnDelAll");
    f.clickRows(f.results, {"core:u_core"});
    f.click("btnAdd");
    QCOMPARE(f.selected->topLevelItemCount(), 0);
}

void TestMolkSignalSelectDialogSelection::excludedBitsStayGrayFromTheHierarchyView()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("checkBoxAdvancedFilter");
    f.click("checkBoxHierarchyView");
    f.searchFor("ctl");
    f.click("btnAddAll");
    QCOMPARE(f.selectedLines(), QStringList({"top", "top/ctl[1:2]", "  top/ctl[1]", "top/ctl[2]"}));
    QCOMPARE(f.selected->topLevelItem(2)->foreground(0).color(), QColor(Qt::gray));
}

void TestMolkSignalSelectDialogSelection::entriesOfTheHierarchyViewShowTheirFullNames()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("checkBoxAdvancedFilter");
    f.click("checkBoxIncludeSubentries");
    f.click("checkBoxHierarchyView");
    f.searchFor("");
    f.clickRows(f.results, {"busy", "q[1]", "mem[2:0]", "clk"});
    f.click("btnAdd");
    // The memory may not be watched, so it can't be selected.
    QCOMPARE(f.selectedLines(), QStringList({"top/u_core/q[1]", "top/clk", "top/u_core/busy"}));
}

void TestMolkSignalSelectDialogSelection::removeLeavesBitRows()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.searchFor("");
    f.clickRows(f.results, {"top/data[3:0]", "top/u_core/q[1:0]", "top/clk"});
    f.click("btnAdd");
    f.clickRows(f.selected, {"top/data[1]"});
    f.click("btnDel");
    QCOMPARE(f.selected->topLevelItemCount(), 3);
    f.clickRows(f.selected, {"top/data[1]", "top/data[3:0]", "top/u_core/q[0]", "top/clk"});
    f.click("btnDel");
    QCOMPARE(f.selectedLines(),
             QStringList({"top/u_core/q[1:0]", "  top/u_core/q[1]", "  top/u_core/q[0]"}));
    QCOMPARE(f.selected->selectedItems().size(), 1);
}

void TestMolkSignalSelectDialogSelection::removeAllEmptiesTheList()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.searchFor("data");
    f.click("btnAddAll");
    f.click("btnDelAll");
    QCOMPARE(f.selected->topLevelItemCount(), 0);
    f.clickRows(f.results, {"top/data[1]"});
    f.click("btnAdd");
    QCOMPARE(f.selectedLines(), QStringList("top/data[1]"));
}

void TestMolkSignalSelectDialogSelection::entriesKeepTheirPlacesOverSearches()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.searchFor("ready");
    f.click("btnAddAll");
    f.searchFor("q[");
    f.click("btnAddAll");
    f.searchFor("y");
    f.click("btnAddAll");
    QCOMPARE(f.selectedLines(),
             QStringList({"top/u_pad/ready", "top/u_core/q[1:0]", "  top/u_core/q[1]",
                          "  top/u_core/q[0]", "top/u_core/busy"}));
}

void TestMolkSignalSelectDialogSelection::selectedSignalsAreTheTopLevelRows()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.searchFor("/");
    f.clickRows(f.results, {"top/u_core/q[1:0]", "top/clk"});
    f.click("btnAdd");
    QCOMPARE(itemNames(f.dialog.selectedSignals()),
             QStringList({"top/u_core/q[1:0]{top/u_core/q[1] top/u_core/q[0]}", "top/clk"}));
    const SignalItem clock = f.dialog.selectedSignals().last();
    QCOMPARE(clock.kind, 0);
}

void TestMolkSignalSelectDialogSelection::oneNameIsReadFromTheFirstEntry_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    QTest::newRow("nothing-selected") << "no such net" << 0 << "";
    QTest::newRow("net") << "clk" << 0 << "top/clk";
    QTest::newRow("first-of-several") << "y" << 0 << "top/u_core/busy";
    QTest::newRow("bus") << "data" << 0 << "top/data[3]";
    // All of its bits left it, so it stands for itself.
    QTest::newRow("bus-of-excluded-bits") << "mem" << 0 << "top/u_core/u_fifo/mem[2:0]";
}

void TestMolkSignalSelectDialogSelection::oneNameIsReadFromTheFirstEntry()
{
    QFETCH(QString, pattern);
    QFETCH(int, type);
    QFETCH(QString, name);
    const Design design = searchDesign();
    SearchFixture f(design.get(), type);
    f.searchFor(pattern);
    f.click("btnAddAll");
    QCOMPARE(f.dialog.selectedSignalName(), name);

    // Bits that may not be chosen are skipped, and there may be no other.
    SignalItem half = bus("half", 3);
    half.members[0].selectable = false;
    SignalItem gray = bus("gray", 1);
    gray.members[0].selectable = false;
    f.selected->clear();
    f.selected->addTopLevelItems({makeSignalRow(half, 0), makeSignalRow(gray, 0)});
    QCOMPARE(f.dialog.selectedSignalName(), QString("half[1]"));
    f.selected->clear();
    f.selected->addTopLevelItems({makeSignalRow(gray, 0), makeSignalRow(half, 0)});
    QCOMPARE(f.dialog.selectedSignalName(), QString(""));
}

// Finds and adds everything that `pattern` hits, and closes the dialog by `button`.
static void answer(MolkSignalSelectDialog *dialog, const QString &pattern, const QString &button)
{
    QTest::keyClicks(dialog->findChild<QLineEdit *>("lineEditName"), pattern);
    QTest::mouseClick(dialog->findChild<QWidget *>("pushButtonSearch"), Qt::LeftButton);
    QTest::mouseClick(dialog->findChild<QWidget *>("btnAddAll"), Qt::LeftButton);
    const QList<QAbstractButton *> buttons = dialog->findChildren<QAbstractButton *>();
    for (QAbstractButton *each : buttons) {
        if (each->text().remove('&') == button)
            QTest::mouseClick(each, Qt::LeftButton);
    }
}

void TestMolkSignalSelectDialogSelection::getSignalsReturnsTheSelectedList()
{
    const Design design = searchDesign();
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>(
        [](MolkSignalSelectDialog *dialog) { answer(dialog, "y", "OK"); });
    const QList<SignalItem> items = MolkSignalSelectDialog::getSignals(design.get(), 0, nullptr);
    QCOMPARE(itemNames(items), QStringList({"top/u_core/busy", "top/u_pad/ready"}));
    QVERIFY(driver.done());
}

void TestMolkSignalSelectDialogSelection::getSignalsReturnsNothingOnCancel()
{
    const Design design = searchDesign();
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>(
        [](MolkSignalSelectDialog *dialog) { answer(dialog, "y", "Cancel"); });
    QVERIFY(MolkSignalSelectDialog::getSignals(design.get(), 0, nullptr).isEmpty());
}

void TestMolkSignalSelectDialogSelection::getSignalReturnsOneName()
{
    const Design design = searchDesign();
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>(
        [](MolkSignalSelectDialog *dialog) { answer(dialog, "data", "OK"); });
    QCOMPARE(MolkSignalSelectDialog::getSignal(design.get(), 0, nullptr), QString("top/data[3]"));
}

void TestMolkSignalSelectDialogSelection::getSignalReturnsNothingOnCancel()
{
    const Design design = searchDesign();
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>(
        [](MolkSignalSelectDialog *dialog) { answer(dialog, "data", "Cancel"); });
    QCOMPARE(MolkSignalSelectDialog::getSignal(design.get(), 0, nullptr), QString());
}

void TestMolkSignalSelectDialogSelection::aDialogMayDieWithItsParent()
{
    const Design design = searchDesign();
    ModalDriver driver;
    auto *first = new QWidget;
    driver.expectDialog<MolkSignalSelectDialog>([first](MolkSignalSelectDialog *dialog) {
        answer(dialog, "data", "none");
        delete first;
    });
    QVERIFY(MolkSignalSelectDialog::getSignals(design.get(), 0, first).isEmpty());

    auto *second = new QWidget;
    driver.expectDialog<MolkSignalSelectDialog>(
        [second](MolkSignalSelectDialog *) { delete second; });
    QCOMPARE(MolkSignalSelectDialog::getSignal(design.get(), 0, second), QString());
}

void TestMolkSignalSelectDialogSelection::theNetlistMayEndUnderTheDialog()
{
    Design design = searchDesign();
    FATHOM::RtlNetlist *netlist = design.release();
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>([netlist](MolkSignalSelectDialog *dialog) {
        answer(dialog, "busy", "none");
        endNetlist(netlist);
        dialog->findChild<QLineEdit *>("lineEditName")->clear();
        answer(dialog, "", "OK");
    });
    // What was picked before stays; the search after finds nothing.
    QCOMPARE(itemNames(MolkSignalSelectDialog::getSignals(netlist, 0, nullptr)),
             QStringList("top/u_core/busy"));
}

MOLK_TEST_MAIN(TestMolkSignalSelectDialogSelection)

#include "tst_molksignalselectdialog_selection.moc"
