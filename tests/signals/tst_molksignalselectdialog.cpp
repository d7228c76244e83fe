// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designs.h"
#include "literalrows.h"
#include "searchfixture.h"

#include "molksignalselectdialog.h"
#include "netlistguard.h"

#include "testwidgetsmain.h"
#include "treelines.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTreeWidget>

using namespace MOLK;

class TestMolkSignalSelectDialog : public QObject
{
    Q_OBJECT

private slots:
    void dialogStartsWithItsDefaults();
    void plainSearchCoversTheWholeDesign();
    void modesAreReadFromTheRadioButtons_data();
    void modesAreReadFromTheRadioButtons();
    void excludedSignalsAreListedGray_data();
    void excludedSignalsAreListedGray();
    void resultsReadAsIfFilledThroughSetters();
    void returnSearchesFromAnywhere_data();
    void returnSearchesFromAnywhere();
    void otherKeysAreDropped();
    void aSecondSearchReplacesTheResultsAlone();
    void searchButtonAndCursorAreBusyDuringASearch();
    void searchesLeaveTheirTraceInTheLog();
    void aSearchWithoutANetlistFindsNothing();
    void aSearchAfterTheNetlistEndedFindsNothing();
};

void TestMolkSignalSelectDialog::dialogStartsWithItsDefaults()
{
    const Design design = searchDesign();
    const SearchFixture f(design.get());
    QVERIFY(f.find<QRadioButton>("radioButtonNormal")->isChecked());
    for (const QString &box : QStringList{"checkBoxCaseSensitive", "checkBoxAdvancedFilter",
                                          "checkBoxIncludeSubentries", "checkBoxHierarchyView"})
        QVERIFY(!f.find<QCheckBox>(box)->isChecked());
    QVERIFY(f.find<QWidget>("widget_4")->isHidden());
    QCOMPARE(f.results->topLevelItemCount(), 0);
    QCOMPARE(f.selected->topLevelItemCount(), 0);
    QVERIFY(f.dialog.selectedSignals().isEmpty());
}

void TestMolkSignalSelectDialog::plainSearchCoversTheWholeDesign()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    QCOMPARE(f.searchFor(""),
             QStringList({"top/data[3:0]",
                          "  top/data[3]",
                          "  top/data[2]",
                          "  top/data[1]",
                          "  top/data[0]",
                          "top/ctl[1:2]",
                          "  top/ctl[1]",
                          "  top/ctl[2]",
                          "top/u_core/q[1:0]",
                          "  top/u_core/q[1]",
                          "  top/u_core/q[0]",
                          "top/u_core/u_fifo/mem[2:0]",
                          "  top/u_core/u_fifo/mem[2]",
                          "  top/u_core/u_fifo/mem[1]",
                          "  top/u_core/u_fifo/mem[0]",
                          "top/clk",
                          "top/Rst.n",
                          "top/u_core/busy",
                          "top/u_core/valid",
                          "top/u_core/u_fifo/full_4x",
                          "top/u_core/u_fifo/wr*en",
                          "top/u_pad/ready"}));
    QCOMPARE(f.searchFor("FULL"), QStringList("top/u_core/u_fifo/full_4x"));
    QCOMPARE(f.searchFor(" FULL"), QStringList());
    f.click("checkBoxCaseSensitive");
    QCOMPARE(f.searchFor("FULL"), QStringList());
}

void TestMolkSignalSelectDialog::modesAreReadFromTheRadioButtons_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("normal") << "radioButtonNormal"
                            << "r*e" << QStringList("top/u_core/u_fifo/wr*en");
    QTest::newRow("wildcard") << "radioButtonWildcard"
                              << "*/re*y" << QStringList("top/u_pad/ready");
    QTest::newRow("wildcard-whole-name") << "radioButtonWildcard"
                                         << "clk" << QStringList();
    QTest::newRow("expression") << "radioButtonRegularExpression"
                                << "top/[a-c]lk" << QStringList("top/clk");
    QTest::newRow("invalid-expression") << "radioButtonRegularExpression"
                                        << "(" << QStringList();
}

void TestMolkSignalSelectDialog::modesAreReadFromTheRadioButtons()
{
    QFETCH(QString, button);
    QFETCH(QString, pattern);
    QFETCH(QStringList, lines);
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click(button);
    QCOMPARE(f.searchFor(pattern), lines);
}

void TestMolkSignalSelectDialog::excludedSignalsAreListedGray_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("gray");
    QTest::newRow("probe-in") << 0
                              << QStringList{"top/ctl[2]", "top/u_core/u_fifo/mem[2:0]",
                                             "top/u_core/u_fifo/mem[2]", "top/u_core/u_fifo/mem[1]",
                                             "top/u_core/u_fifo/mem[0]"};
    QTest::newRow("probe-out") << 1
                               << QStringList{"top/ctl[1:2]", "top/ctl[1]", "top/ctl[2]",
                                              "top/u_core/valid"};
    QTest::newRow("any-other-type")
        << 7
        << QStringList{"top/ctl[2]", "top/u_core/u_fifo/mem[2:0]", "top/u_core/u_fifo/mem[2]",
                       "top/u_core/u_fifo/mem[1]", "top/u_core/u_fifo/mem[0]"};
}

void TestMolkSignalSelectDialog::excludedSignalsAreListedGray()
{
    QFETCH(int, type);
    QFETCH(QStringList, gray);
    const Design design = searchDesign();
    SearchFixture f(design.get(), type);
    f.searchFor("");
    QStringList grayRows;
    for (QTreeWidgetItemIterator it(f.results); *it; ++it) {
        if ((*it)->foreground(0).color() != QColor(Qt::gray))
            continue;
        grayRows.append((*it)->text(0));
        QVERIFY(!((*it)->flags() & (Qt::ItemIsSelectable | Qt::ItemIsEnabled)));
    }
    QCOMPARE(grayRows, gray);
}

void TestMolkSignalSelectDialog::resultsReadAsIfFilledThroughSetters()
{
    const Design design = searchDesign();
    SearchFixture f(design.get(), 1);
    f.searchFor("");
    QTreeWidget expected;
    for (const FATHOM::RtlNetBus *bus : design->top->netbusesIncludeSub())
        Literal::addSignalRow(&expected, Literal::itemOf(bus), 0);
    for (const FATHOM::RtlNet *net : design->top->singleNetsIncludeSub())
        Literal::addSignalRow(&expected, Literal::itemOf(net), 0);
    QCOMPARE(Literal::treeDump(f.results), Literal::treeDump(&expected));
}

void TestMolkSignalSelectDialog::returnSearchesFromAnywhere_data()
{
    QTest::addColumn<QString>("focus");
    for (const char *focus : {"lineEditName", "checkBoxCaseSensitive", "radioButtonWildcard",
                              "treeWidget", "treeWidgetAddSignal", "comboBoxSearchIn"})
        QTest::newRow(focus) << focus;
}

void TestMolkSignalSelectDialog::returnSearchesFromAnywhere()
{
    QFETCH(QString, focus);
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("checkBoxAdvancedFilter");
    f.click("checkBoxIncludeSubentries");
    QTest::keyClicks(f.edit, "ready");
    auto *widget = f.find<QWidget>(focus);
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_Return);
    QCOMPARE(treeLines(f.results->model()), QStringList("top/u_pad/ready"));
    QVERIFY(f.dialog.isVisible());
}

void TestMolkSignalSelectDialog::otherKeysAreDropped()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    QTest::keyClicks(f.edit, "ready");
    QTest::keyClick(f.edit, Qt::Key_Enter);
    QTest::keyClick(f.edit, Qt::Key_Escape);
    QTest::keyClick(&f.dialog, Qt::Key_Escape);
    QTest::keyClick(&f.dialog, Qt::Key_Enter);
    QVERIFY(f.dialog.isVisible());
    QCOMPARE(f.results->topLevelItemCount(), 0);
}

void TestMolkSignalSelectDialog::aSecondSearchReplacesTheResultsAlone()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    f.searchFor("clk");
    f.click("btnAddAll");
    QCOMPARE(f.searchFor("ready"), QStringList("top/u_pad/ready"));
    QCOMPARE(treeLines(f.selected->model()), QStringList("top/clk"));
}

void TestMolkSignalSelectDialog::searchButtonAndCursorAreBusyDuringASearch()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());

    // Once when the old results go, once when the new ones come.
    QStringList seen;
    const auto note = [&] {
        const QCursor *cursor = QGuiApplication::overrideCursor();
        seen.append(QString("%1 %2")
                        .arg(cursor ? int(cursor->shape()) : -1)
                        .arg(f.find<QPushButton>("pushButtonSearch")->isEnabled()));
    };
    {
        const QObject search;
        connect(f.results->model(), &QAbstractItemModel::modelReset, &search, note);
        connect(f.results->model(), &QAbstractItemModel::rowsInserted, &search, note);
        f.searchFor("clk");
    }
    const QString busy = QString("%1 0").arg(int(Qt::WaitCursor));
    QCOMPARE(seen, QStringList({busy, busy}));
    QVERIFY(f.find<QPushButton>("pushButtonSearch")->isEnabled());
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestMolkSignalSelectDialog::searchesLeaveTheirTraceInTheLog()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^[0-9.]+ s$"));
    f.searchFor("clk");
    f.click("checkBoxAdvancedFilter");
    f.click("checkBoxHierarchyView");
    QTest::ignoreMessage(QtDebugMsg, "checked Hierarchy View");
    f.searchFor("clk");
}

void TestMolkSignalSelectDialog::aSearchWithoutANetlistFindsNothing()
{
    SearchFixture f(nullptr);
    QCOMPARE(f.scopeTree()->topLevelItemCount(), 0);
    QCOMPARE(f.searchFor(""), QStringList());
    f.click("checkBoxAdvancedFilter");
    QCOMPARE(f.searchFor(""), QStringList());
    f.find<QComboBox>("comboBoxSearchIn")->showPopup();
    f.find<QComboBox>("comboBoxSearchIn")->hidePopup();
    f.click("checkBoxHierarchyView");
    QCOMPARE(f.searchFor(""), QStringList());
    QVERIFY(f.find<QPushButton>("pushButtonSearch")->isEnabled());
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestMolkSignalSelectDialog::aSearchAfterTheNetlistEndedFindsNothing()
{
    Design design = searchDesign();
    SearchFixture f(design.get());
    f.click("checkBoxAdvancedFilter");
    f.pickLevel("u_core[core]");
    QCOMPARE(f.searchFor("busy").size(), 1);
    endNetlist(design.release());
    QCOMPARE(f.searchFor("busy"), QStringList());
    f.click("checkBoxHierarchyView");
    QCOMPARE(f.searchFor("busy"), QStringList());
    f.click("checkBoxAdvancedFilter");
    QCOMPARE(f.searchFor("busy"), QStringList());
    QVERIFY(f.find<QPushButton>("pushButtonSearch")->isEnabled());
}

MOLK_TEST_MAIN(TestMolkSignalSelectDialog)

#include "tst_molksignalselectdialog.moc"
