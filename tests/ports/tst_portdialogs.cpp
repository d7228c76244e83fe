// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "dialoganswers.h"
#include "modaldriver.h"
#include "pagefixture.h"
#include "probedialog.h"
#include "testwidgetsmain.h"

#include "netlist/netlistbuilder.h"

#include "fathom/rtlnetlist.h"

#include <QPointer>
#include <QSignalSpy>
#include <QToolButton>

using namespace MOLK;

class tst_PortDialogs : public QObject
{
    Q_OBJECT

private slots:
    void doubleClickEditsTheProbeIn();
    void doubleClickEditsTheProbeOut();
    void doubleClickOnASignalEditsItsPort();
    void doubleClickOnABitEditsItsPort();
    void doubleClickOnAValueOpensNothing();
    void acceptedEditMarksTheDocument();
    void cancelledEditChangesNothing();
    void acceptedEditShowsTheNewSignals();
    void acceptedEditUnfoldsThePort();
    void acceptedEditIsToldWhenAllIsDone();
    void dialogsSearchTheNetlistOfTheMoment();
    void netlistClosesAProbeOutDialog();
    void netlistLeavesAProbeInDialogOpen();
    void pageMayGoUnderADialog_data();
    void pageMayGoUnderADialog();
    void portEndsItsDialog_data();
    void portEndsItsDialog();
    void missingRowOpensNothing();
};

static QStringList dialogRows(const ProbeDialog *dialog)
{
    return treeLines(dialog->findChild<QTreeWidget *>("treeWidget")->model());
}

void tst_PortDialogs::doubleClickEditsTheProbeIn()
{
    PageFixture fixture(makeCore({{}, {net("top/a"), bus("top/q", 2)}}, {{}}));
    fixture.show();
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), QString("Probe In Port"));
        QCOMPARE(dialog->parentWidget(), fixture.page);
        QCOMPARE(dialogRows(dialog),
                 QStringList({"top/a", "top/q[1:0]", "  top/q[1]", "  top/q[0]"}));
        press(dialog, QDialogButtonBox::Cancel);
    });
    fixture.doubleClick(fixture.treeProbeIn->topLevelItem(1));
    QVERIFY(driver.done());
}

void tst_PortDialogs::doubleClickEditsTheProbeOut()
{
    PageFixture fixture(makeCore({{}}, {{}, {net("top/a")}}));
    fixture.show();
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), QString("Probe Out Port"));
        QCOMPARE(dialog->parentWidget(), fixture.page);
        QCOMPARE(dialogRows(dialog), QStringList({"top/a"}));
        press(dialog, QDialogButtonBox::Cancel);
    });
    fixture.doubleClick(fixture.treeProbeOut->topLevelItem(1));
    QVERIFY(driver.done());
}

void tst_PortDialogs::doubleClickOnASignalEditsItsPort()
{
    PageFixture fixture(makeCore({{net("top/a")}}, {{net("top/b")}}));
    fixture.show();
    fixture.treeProbeIn->expandAll();
    fixture.treeProbeOut->expandAll();
    ModalDriver driver;
    for (const char *name : {"top/a", "top/b"})
        driver.expectDialog<ProbeDialog>([name](ProbeDialog *dialog) {
            QCOMPARE(dialogRows(dialog), QStringList(QString::fromLatin1(name)));
            press(dialog, QDialogButtonBox::Cancel);
        });
    fixture.doubleClick(fixture.treeProbeIn->topLevelItem(0)->child(0));
    fixture.doubleClick(fixture.treeProbeOut->topLevelItem(0)->child(0));
    QVERIFY(driver.done());
}

void tst_PortDialogs::doubleClickOnABitEditsItsPort()
{
    PageFixture fixture(makeCore({{}, {bus("top/q", 2)}}, {{}}));
    fixture.show();
    fixture.treeProbeIn->expandAll();
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([](ProbeDialog *dialog) {
        QCOMPARE(dialogRows(dialog), QStringList({"top/q[1:0]", "  top/q[1]", "  top/q[0]"}));
        press(dialog, QDialogButtonBox::Cancel);
    });
    fixture.doubleClick(fixture.treeProbeIn->topLevelItem(1)->child(0)->child(1));
    QVERIFY(driver.done());
}

void tst_PortDialogs::doubleClickOnAValueOpensNothing()
{
    PageFixture fixture(makeCore({{}}, {{net("top/a")}}));
    fixture.show();
    fixture.treeProbeOut->expandAll();
    ModalDriver driver;
    fixture.doubleClick(fixture.treeValue->topLevelItem(0));
    fixture.doubleClick(fixture.treeValue->topLevelItem(0)->child(0));
    QVERIFY(driver.done());
}

void tst_PortDialogs::acceptedEditMarksTheDocument()
{
    PageFixture fixture(makeCore({{net("top/a")}}, {{net("top/b")}}));
    fixture.show();
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    ModalDriver driver;
    for (int i = 0; i < 2; ++i)
        driver.expectDialog<ProbeDialog>(
            [](ProbeDialog *dialog) { press(dialog, QDialogButtonBox::Ok); });
    fixture.doubleClick(fixture.treeProbeIn->topLevelItem(0));
    QCOMPARE(modifed.count(), 1);
    fixture.doubleClick(fixture.treeProbeOut->topLevelItem(0));
    QCOMPARE(modifed.count(), 2);
    QVERIFY(driver.done());
}

void tst_PortDialogs::cancelledEditChangesNothing()
{
    PageFixture fixture(makeCore({{net("top/a")}}, {{net("top/b"), net("top/c")}}));
    fixture.show();
    QTreeWidgetItem *rowIn = fixture.treeProbeIn->topLevelItem(0)->child(0);
    QTreeWidgetItem *rowOut = fixture.treeProbeOut->topLevelItem(0)->child(0);
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    ModalDriver driver;
    for (int i = 0; i < 2; ++i)
        driver.expectDialog<ProbeDialog>([](ProbeDialog *dialog) {
            auto *tree = dialog->findChild<QTreeWidget *>("treeWidget");
            tree->topLevelItem(0)->setSelected(true);
            dialog->findChild<QToolButton *>("btnRemove")->click();
            press(dialog, QDialogButtonBox::Cancel);
        });
    fixture.doubleClick(fixture.treeProbeIn->topLevelItem(0));
    fixture.doubleClick(fixture.treeProbeOut->topLevelItem(0));
    QVERIFY(driver.done());
    QCOMPARE(modifed.count(), 0);
    QCOMPARE(fixture.treeProbeIn->topLevelItem(0)->child(0), rowIn);
    QCOMPARE(fixture.treeProbeOut->topLevelItem(0)->child(0), rowOut);
    QVERIFY(!fixture.treeProbeIn->topLevelItem(0)->isExpanded());
    QCOMPARE(fixture.core->getProbeOut(0)->width(), 2);
}

void tst_PortDialogs::acceptedEditShowsTheNewSignals()
{
    auto core = makeCore({{net("a"), net("b")}}, {{bus("p", 4), bus("q", 2)}});
    core->getProbeOut(0)->setValue("0x26");
    PageFixture fixture(std::move(core));
    fixture.show();
    QCOMPARE(fixture.bits(0), QString("1001|10"));
    ModalDriver driver;
    for (int i = 0; i < 2; ++i)
        driver.expectDialog<ProbeDialog>([](ProbeDialog *dialog) {
            auto *tree = dialog->findChild<QTreeWidget *>("treeWidget");
            tree->topLevelItem(1)->setSelected(true);
            dialog->findChild<QToolButton *>("btnRemove")->click();
            press(dialog, QDialogButtonBox::Ok);
        });
    fixture.doubleClick(fixture.treeProbeIn->topLevelItem(0));
    fixture.doubleClick(fixture.treeProbeOut->topLevelItem(0));
    QVERIFY(driver.done());
    QCOMPARE(treeLines(fixture.treeProbeIn->model()), QStringList({"Probe In0", "  a"}));
    QCOMPARE(treeLines(fixture.treeProbeOut->model()), QStringList({"Probe Out0", "  p[3:0]"}));
    QCOMPARE(fixture.bits(0), QString("1001"));
    QCOMPARE(fixture.value(0), QString("0x9"));
}

void tst_PortDialogs::acceptedEditUnfoldsThePort()
{
    PageFixture fixture(makeCore({{}, {net("a")}}, {{}, {net("b")}}));
    fixture.show();
    ModalDriver driver;
    for (int i = 0; i < 2; ++i)
        driver.expectDialog<ProbeDialog>(
            [](ProbeDialog *dialog) { press(dialog, QDialogButtonBox::Ok); });
    fixture.doubleClick(fixture.treeProbeIn->topLevelItem(1));
    fixture.doubleClick(fixture.treeProbeOut->topLevelItem(1));
    QVERIFY(driver.done());
    for (QTreeWidget *tree : {fixture.treeProbeIn, fixture.treeProbeOut}) {
        QCOMPARE(tree->currentItem(), tree->topLevelItem(1));
        QVERIFY(tree->topLevelItem(1)->isExpanded());
    }
    QVERIFY(fixture.treeValue->topLevelItem(1)->isExpanded());

    // The row that was clicked is the partner's selection, which the edit didn't touch.
    QCOMPARE(fixture.treeValue->selectedItems(),
             QList<QTreeWidgetItem *>({fixture.treeValue->topLevelItem(1)}));
}

void tst_PortDialogs::acceptedEditIsToldWhenAllIsDone()
{
    PageFixture fixture(makeCore({{net("a")}}, {{net("b")}}));
    fixture.show();
    QStringList seen;
    connect(fixture.page, &ProbePortsOptionWidget::modified, this, [&] {
        for (const QTreeWidget *tree : {fixture.treeProbeIn, fixture.treeProbeOut}) {
            const QTreeWidgetItem *row = tree->topLevelItem(0);
            seen.append(QString("rows %1 expanded %2 current %3")
                            .arg(row->childCount())
                            .arg(row->isExpanded())
                            .arg(row == tree->currentItem()));
        }
    });
    ModalDriver driver;
    for (int i = 0; i < 2; ++i)
        driver.expectDialog<ProbeDialog>([](ProbeDialog *dialog) {
            dialog->findChild<QTreeWidget *>("treeWidget")->clear();
            press(dialog, QDialogButtonBox::Ok);
        });
    fixture.call("editProbeIn", fixture.treeProbeIn->topLevelItem(0));
    QCOMPARE(seen, QStringList({"rows 0 expanded 1 current 1", "rows 1 expanded 0 current 0"}));
    fixture.call("editProbeOut", fixture.treeProbeOut->topLevelItem(0));
    QCOMPARE(seen.mid(2),
             QStringList({"rows 0 expanded 1 current 1", "rows 0 expanded 1 current 1"}));
    QVERIFY(driver.done());
}

void tst_PortDialogs::dialogsSearchTheNetlistOfTheMoment()
{
    Standin::NetlistBuilder oldDesign("old");
    oldDesign.addNet(0, "clk");
    const std::unique_ptr<FATHOM::RtlNetlist> before(oldDesign.build());
    Standin::NetlistBuilder newDesign("new");
    newDesign.addNet(0, "rst");
    const std::unique_ptr<FATHOM::RtlNetlist> after(newDesign.build());
    auto core = makeCore({{}}, {{}});
    core->useUserClock = true;
    PageFixture fixture(std::move(core), before.get());
    fixture.widget->setNetlist(nullptr);
    fixture.widget->setNetlist(after.get());

    ModalDriver driver;
    const auto expectSearch = [&driver] {
        driver.expectDialog<MolkSignalSelectDialog>([](MolkSignalSelectDialog *dialog) {
            QCOMPARE(foundBy(dialog), QStringList("new/rst"));
            press(dialog, QDialogButtonBox::Cancel);
        });
    };
    const auto expectPort = [&] {
        driver.expectDialog<ProbeDialog>([](ProbeDialog *dialog) {
            dialog->findChild<QToolButton *>("btnAdd")->click();
            press(dialog, QDialogButtonBox::Cancel);
        });
        expectSearch();
    };
    expectPort();
    fixture.call("editProbeIn", fixture.treeProbeIn->topLevelItem(0));
    expectPort();
    fixture.call("editProbeOut", fixture.treeProbeOut->topLevelItem(0));
    expectSearch();
    fixture.child<QPushButton>("btnUserClock")->click();
    QVERIFY(driver.done());
}

void tst_PortDialogs::netlistClosesAProbeOutDialog()
{
    PageFixture fixture(makeCore({{}}, {{net("top/a")}}));
    fixture.show();
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *dialog) {
        dialog->findChild<QTreeWidget *>("treeWidget")->topLevelItem(0)->setSelected(true);
        dialog->findChild<QToolButton *>("btnRemove")->click();
        QSignalSpy closed(dialog, SIGNAL(closeOldSearchDialog()));
        fixture.widget->setNetlist(nullptr);
        QCOMPARE(closed.count(), 1);
        QVERIFY(!dialog->isVisible());
        fixture.widget->setNetlist(nullptr);
    });
    fixture.doubleClick(fixture.treeProbeOut->topLevelItem(0));
    QVERIFY(driver.done());
    QCOMPARE(modifed.count(), 0);
    QCOMPARE(fixture.core->getProbeOut(0)->width(), 1);
}

void tst_PortDialogs::netlistLeavesAProbeInDialogOpen()
{
    PageFixture fixture(makeCore({{net("top/a")}}, {{}}));
    fixture.show();
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *dialog) {
        fixture.widget->setNetlist(nullptr);
        QVERIFY(dialog->isVisible());
        press(dialog, QDialogButtonBox::Ok);
    });
    fixture.doubleClick(fixture.treeProbeIn->topLevelItem(0));
    QVERIFY(driver.done());
}

void tst_PortDialogs::pageMayGoUnderADialog_data()
{
    QTest::addColumn<bool>("probeOut");
    QTest::newRow("probe-in") << false;
    QTest::newRow("probe-out") << true;
}

void tst_PortDialogs::pageMayGoUnderADialog()
{
    QFETCH(bool, probeOut);
    PageFixture fixture(makeCore({{net("top/a")}}, {{net("top/b")}}));
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *) { fixture.widget.reset(); });
    QTreeWidget *tree = probeOut ? fixture.treeProbeOut : fixture.treeProbeIn;
    const char *slot = probeOut ? "editProbeOut" : "editProbeIn";
    runInLoop([&] { fixture.call(slot, tree->topLevelItem(0)); });
    QVERIFY(driver.done());
    QVERIFY(!fixture.widget);
}

void tst_PortDialogs::portEndsItsDialog_data()
{
    QTest::addColumn<QString>("direction");
    QTest::newRow("probe-in") << "ProbeIn";
    QTest::newRow("probe-out") << "ProbeOut";
}

/// A host may remove a port while a dialog on it stands, and then nothing is accepted any more.
void tst_PortDialogs::portEndsItsDialog()
{
    QFETCH(QString, direction);
    PageFixture fixture(
        makeCore({{net("top/a")}, {net("top/b")}}, {{net("top/c")}, {net("top/d")}}));
    fixture.show();
    auto *rows = fixture.page->findChild<QTreeWidget *>("tree" + direction);
    QPointer<ProbeDialog> stood;
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *dialog) {
        stood = dialog;
        fixture.page->findChild<QPushButton *>("btn" + direction + "Remove")->click();
        QVERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), int(QDialog::Rejected));
    });
    fixture.doubleClick(rows->topLevelItem(0));
    QVERIFY(driver.done());
    QVERIFY(!stood);
    QCOMPARE(rows->topLevelItemCount(), 1);
    QCOMPARE(treeLines(rows->model()).last().trimmed(),
             QString(direction == "ProbeIn" ? "top/b" : "top/d"));
}

void tst_PortDialogs::missingRowOpensNothing()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    ModalDriver driver;
    fixture.call("editProbeIn", nullptr);
    fixture.call("editProbeOut", nullptr);
    fixture.call("editProbeIn", fixture.treeProbeOut->topLevelItem(0));
    fixture.call("editProbeOut", fixture.treeProbeIn->topLevelItem(0));
    QVERIFY(driver.done());
}

MOLK_TEST_MAIN(tst_PortDialogs)

#include "tst_portdialogs.moc"
