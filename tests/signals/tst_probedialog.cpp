// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designs.h"
#include "literalset.h"
#include "searchfixture.h"
#include "signalitems.h"

#include "netlistguard.h"
#include "probedialog.h"
#include "probeout.h"
#include "signaldisplay.h"
#include "signaltreewidget.h"

#include "modaldriver.h"
#include "testwidgetsmain.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>

using namespace MOLK;

class TestProbeDialog : public QObject
{
    Q_OBJECT

private slots:
    void rowsAreThePortsSignals();
    void removeIsEnabledForTopLevelRowsAlone();
    void removeDeletesTheSelectedRows();
    void keysMoveTheSelectedRows();
    void excludedRowsCannotBeRemovedYetAreWrittenBack();
    void addedSignalsComeBusesFirst();
    void anAddedBusReplacesItsBits();
    void pickingNothingChangesNothing_data();
    void pickingNothingChangesNothing();
    void searchIsForTheDirectionOfThePort();
    void okWritesTheRowsToThePort();
    void okWritesAnEmptyListToo();
    void everyFieldSurvives();
    void cancelLeavesThePortAsItIs();
    void atMost256SignalsAreWritten_data();
    void atMost256SignalsAreWritten();
    void aRefusedListCanBeShortened();
    void addingLooksAtNoLimit();
    void closeWidgetTellsAndRejects();
    void theDialogMayDieUnderItsSearch();
    void theNetlistMayEndUnderTheDialog();
};

static const QStringList boxTexts{"Warning", "Support 256 signals at most."};

namespace {

class Fixture
{
public:
    explicit Fixture(ProbeIn *port, FATHOM::RtlNetlist *netlist = nullptr, int type = 0)
        : dialog(port, netlist, type, nullptr)
    {
        dialog.show();
        Q_ASSERT(tree && add && remove);
    }

    void press(QDialogButtonBox::StandardButton button)
    {
        auto *box = dialog.findChild<QDialogButtonBox *>("buttonBox");
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    }

    void addAll(const QString &pattern)
    {
        ModalDriver driver;
        driver.expectDialog<MolkSignalSelectDialog>([pattern](MolkSignalSelectDialog *search) {
            QTest::keyClicks(search->findChild<QLineEdit *>("lineEditName"), pattern);
            QTest::mouseClick(search->findChild<QWidget *>("pushButtonSearch"), Qt::LeftButton);
            QTest::mouseClick(search->findChild<QWidget *>("btnAddAll"), Qt::LeftButton);
            search->accept();
        });
        QTest::mouseClick(add, Qt::LeftButton);
    }

    QStringList lines() const { return treeLines(tree->model()); }

    ProbeDialog dialog;
    signalTreeWidget *tree = dialog.findChild<signalTreeWidget *>("treeWidget");
    QToolButton *add = dialog.findChild<QToolButton *>("btnAdd");
    QToolButton *remove = dialog.findChild<QToolButton *>("btnRemove");
};

} // namespace

void TestProbeDialog::rowsAreThePortsSignals()
{
    ProbeIn port(0);
    port.setSignalNet({net("top/a"), bus("top/q", 2), bit("top/r[1]")});
    const Fixture f(&port);
    QCOMPARE(f.lines(),
             QStringList({"top/a", "top/q[1:0]", "  top/q[1]", "  top/q[0]", "top/r[1]"}));
    QCOMPARE(f.tree->topLevelItem(1)->type(), 0);
}

void TestProbeDialog::removeIsEnabledForTopLevelRowsAlone()
{
    ProbeIn port(0);
    port.setSignalNet({net("a"), bus("q", 2), net("b")});
    const Fixture f(&port);
    SearchFixture::clickRows(f.tree, {"a"});
    QVERIFY(f.remove->isEnabled());
    SearchFixture::clickRows(f.tree, {"q[1]"});
    QVERIFY(!f.remove->isEnabled());
    SearchFixture::clickRows(f.tree, {"q[1:0]", "q[1]"});
    QVERIFY(!f.remove->isEnabled());
    SearchFixture::clickRows(f.tree, {"q[1]", "q[1:0]"});
    QVERIFY(!f.remove->isEnabled());
    SearchFixture::clickRows(f.tree, {"b", "q[1:0]"});
    QVERIFY(f.remove->isEnabled());
    f.tree->clearSelection();
    QVERIFY(!f.remove->isEnabled());
}

void TestProbeDialog::removeDeletesTheSelectedRows()
{
    ProbeIn port(0);
    port.setSignalNet({net("a"), bus("q", 2), net("b"), net("c")});
    const Fixture f(&port);
    SearchFixture::clickRows(f.tree, {"q[1:0]", "b"});
    QTest::mouseClick(f.remove, Qt::LeftButton);
    QCOMPARE(f.lines(), QStringList({"a", "c"}));
    QVERIFY(!f.remove->isEnabled());
}

void TestProbeDialog::keysMoveTheSelectedRows()
{
    ProbeIn port(0);
    port.setSignalNet({net("a"), bus("q", 2), net("b")});
    Fixture f(&port);
    QApplication::setActiveWindow(&f.dialog);
    QVERIFY(QTest::qWaitForWindowActive(&f.dialog));
    SearchFixture::clickRows(f.tree, {"b"});
    f.tree->setFocus();
    QTest::keyClick(f.tree, Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(f.lines(), QStringList({"a", "b", "q[1:0]", "  q[1]", "  q[0]"}));
    QTest::keyClick(f.tree, Qt::Key_Up, Qt::AltModifier);
    QTest::keyClick(f.tree, Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(f.lines(), QStringList({"b", "a", "q[1:0]", "  q[1]", "  q[0]"}));
    QTest::keyClick(f.tree, Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(f.lines(), QStringList({"a", "b", "q[1:0]", "  q[1]", "  q[0]"}));
    QVERIFY(f.remove->isEnabled());
    QCOMPARE(itemNames(port.getSignalNet()), QStringList({"a", "q[1:0]{q[1] q[0]}", "b"}));

    // The keys are the list's alone.
    f.add->setFocus();
    QTest::keyClick(f.add, Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(f.lines().first(), QString("a"));
    f.press(QDialogButtonBox::Ok);
    QCOMPARE(itemNames(port.getSignalNet()), QStringList({"a", "b", "q[1:0]{q[1] q[0]}"}));
}

void TestProbeDialog::excludedRowsCannotBeRemovedYetAreWrittenBack()
{
    SignalItem gray = net("gray");
    gray.selectable = false;
    ProbeIn port(0);
    port.setSignalNet({net("a"), gray, net("b")});
    Fixture f(&port);
    SearchFixture::clickRows(f.tree, {"gray"});
    QVERIFY(!f.remove->isEnabled());
    f.tree->selectAll();
    QTest::mouseClick(f.remove, Qt::LeftButton);
    QCOMPARE(f.lines(), QStringList("gray"));
    f.press(QDialogButtonBox::Ok);
    QCOMPARE(Literal::itemsDump(port.getSignalNet()), Literal::itemsDump({gray}));
}

void TestProbeDialog::addedSignalsComeBusesFirst()
{
    const Design design = searchDesign();
    ProbeIn port(0);
    port.setSignalNet({net("top/u_pad/ready")});
    Fixture f(&port, design.get());
    f.addAll("u_core/");
    QCOMPARE(f.lines().mid(0, 4),
             QStringList({"top/u_pad/ready", "top/u_core/q[1:0]", "  top/u_core/q[1]",
                          "  top/u_core/q[0]"}));
    QCOMPARE(f.lines().last(), QString("top/u_core/u_fifo/wr*en"));
    const int rows = f.tree->topLevelItemCount();
    f.addAll("u_core/busy");
    QCOMPARE(f.tree->topLevelItemCount(), rows);
}

void TestProbeDialog::anAddedBusReplacesItsBits()
{
    const Design design = searchDesign();
    ProbeIn port(0);
    port.setSignalNet({bit("top/u_core/q[0]"), net("top/clk"), bit("top/u_core/q[1]")});
    Fixture f(&port, design.get());
    f.addAll("q[");
    QCOMPARE(
        f.lines(),
        QStringList({"top/clk", "top/u_core/q[1:0]", "  top/u_core/q[1]", "  top/u_core/q[0]"}));
}

void TestProbeDialog::pickingNothingChangesNothing_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("ok-without-a-pick") << true;
    QTest::newRow("cancel") << false;
}

void TestProbeDialog::pickingNothingChangesNothing()
{
    QFETCH(bool, accepted);
    const Design design = searchDesign();
    ProbeIn port(0);
    port.setSignalNet({net("a"), bus("q", 2)});
    const Fixture f(&port, design.get());
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>([accepted](MolkSignalSelectDialog *search) {
        QCOMPARE(qobject_cast<ProbeDialog *>(search->parentWidget()) != nullptr, true);
        search->done(accepted ? QDialog::Accepted : QDialog::Rejected);
    });
    QTest::mouseClick(f.add, Qt::LeftButton);
    QVERIFY(driver.done());
    QCOMPARE(f.lines(), QStringList({"a", "q[1:0]", "  q[1]", "  q[0]"}));
}

void TestProbeDialog::searchIsForTheDirectionOfThePort()
{
    const Design design = searchDesign();
    ProbeOut port(0);
    Fixture f(&port, design.get(), 1);
    f.addAll("valid");
    QVERIFY(!signalOfRow(f.tree->topLevelItem(0)).selectable);
    f.press(QDialogButtonBox::Ok);
    QCOMPARE(itemNames(port.getSignalNet()), QStringList("top/u_core/valid"));
}

void TestProbeDialog::okWritesTheRowsToThePort()
{
    const Design design = searchDesign();
    ProbeIn port(0);
    port.setSignalNet({net("b"), net("a")});
    Fixture f(&port, design.get());
    f.addAll("top/clk");
    QCOMPARE(itemNames(port.getSignalNet()), QStringList({"b", "a"}));
    f.press(QDialogButtonBox::Ok);
    QCOMPARE(itemNames(port.getSignalNet()), QStringList({"b", "a", "top/clk"}));
    QCOMPARE(f.dialog.result(), int(QDialog::Accepted));
    QVERIFY(!f.dialog.isVisible());
}

void TestProbeDialog::okWritesAnEmptyListToo()
{
    ProbeIn port(0);
    port.setSignalNet({net("a")});
    Fixture f(&port);
    SearchFixture::clickRows(f.tree, {"a"});
    QTest::mouseClick(f.remove, Qt::LeftButton);
    f.press(QDialogButtonBox::Ok);
    QVERIFY(port.getSignalNet().isEmpty());
    QCOMPARE(f.dialog.result(), int(QDialog::Accepted));
}

void TestProbeDialog::everyFieldSurvives()
{
    SignalItem item = bus("q", 3);
    item.alias = "the bus";
    item.members[0].found = false;
    item.members[1].selectable = false;
    item.members[2].alias = "lsb";
    SignalItem unset;
    ProbeIn port(0);
    port.setSignalNet({item, unset});
    Fixture f(&port);
    f.press(QDialogButtonBox::Ok);
    QCOMPARE(Literal::itemsDump(port.getSignalNet()), Literal::itemsDump({item, unset}));
}

void TestProbeDialog::cancelLeavesThePortAsItIs()
{
    const Design design = searchDesign();
    ProbeIn port(0);
    port.setSignalNet({net("a"), net("b")});
    Fixture f(&port, design.get());
    f.addAll("clk");
    SearchFixture::clickRows(f.tree, {"a"});
    QTest::mouseClick(f.remove, Qt::LeftButton);
    f.press(QDialogButtonBox::Cancel);
    QCOMPARE(itemNames(port.getSignalNet()), QStringList({"a", "b"}));
    QCOMPARE(f.dialog.result(), int(QDialog::Rejected));
}

static QList<SignalItem> netsAndBits(int nets, int bits, bool standAloneBits = false)
{
    QList<SignalItem> items;
    for (int i = 0; i < nets; ++i)
        items.append(standAloneBits ? bit(QString("n[%1]").arg(i)) : net(QString("n%1").arg(i)));
    if (bits > 0)
        items.append(bus("q", bits));
    return items;
}

void TestProbeDialog::atMost256SignalsAreWritten_data()
{
    QTest::addColumn<QList<SignalItem>>("items");
    QTest::addColumn<bool>("written");
    QTest::newRow("256-nets") << netsAndBits(256, 0) << true;
    QTest::newRow("257-nets") << netsAndBits(257, 0) << false;
    QTest::newRow("56-nets-and-200-bits") << netsAndBits(56, 200) << true;
    QTest::newRow("57-nets-and-200-bits") << netsAndBits(57, 200) << false;
    QTest::newRow("256-bits-of-a-bus") << netsAndBits(0, 256) << true;
    QTest::newRow("257-bits-of-a-bus") << netsAndBits(0, 257) << false;
    QTest::newRow("257-stand-alone-bits") << netsAndBits(257, 0, true) << false;
}

void TestProbeDialog::atMost256SignalsAreWritten()
{
    QFETCH(QList<SignalItem>, items);
    QFETCH(bool, written);
    ProbeIn port(0);
    port.setSignalNet(items);
    Fixture f(&port);
    port.setSignalNet({net("old")}); // The rows were loaded once and for all.
    ModalDriver driver;
    if (!written) {
        driver.expectDialog<QMessageBox>([&f](QMessageBox *box) {
            QCOMPARE(box->parentWidget(), &f.dialog);
            QCOMPARE(box->windowTitle(), boxTexts.first());
            QCOMPARE(box->text(), boxTexts.last());
            QCOMPARE(box->icon(), QMessageBox::Warning);
            QCOMPARE(box->standardButtons(), QMessageBox::Ok);
            box->accept();
        });
    }
    f.press(QDialogButtonBox::Ok);
    QCOMPARE(f.dialog.isVisible(), !written);
    QCOMPARE(itemNames(port.getSignalNet()), written ? itemNames(items) : QStringList("old"));
    QVERIFY(driver.done());
}

void TestProbeDialog::aRefusedListCanBeShortened()
{
    ProbeIn port(0);
    port.setSignalNet(netsAndBits(257, 0));
    Fixture f(&port);
    {
        ModalDriver driver;
        driver.expectMessage(boxTexts.first(), boxTexts.last(), QMessageBox::Ok);
        f.press(QDialogButtonBox::Ok);
    }
    QCOMPARE(f.tree->topLevelItemCount(), 257);
    SearchFixture::clickRows(f.tree, {"n0"});
    QTest::mouseClick(f.remove, Qt::LeftButton);
    f.press(QDialogButtonBox::Ok);
    QCOMPARE(port.getSignalNet().size(), 256);
}

void TestProbeDialog::addingLooksAtNoLimit()
{
    const Design design = searchDesign();
    ProbeIn port(0);
    port.setSignalNet(netsAndBits(256, 0));
    Fixture f(&port, design.get());
    f.addAll("top/clk");
    QCOMPARE(f.tree->topLevelItemCount(), 257);
    QCOMPARE(f.lines().last(), QString("top/clk"));
}

void TestProbeDialog::closeWidgetTellsAndRejects()
{
    ProbeIn port(0);
    port.setSignalNet({net("a")});
    ProbeDialog dialog(&port, nullptr, 1, nullptr);
    QList<bool> visibleWhenTold;
    connect(&dialog, &ProbeDialog::closeOldSearchDialog, this,
            [&] { visibleWhenTold.append(dialog.isVisible()); });
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([](ProbeDialog *shown) {
        SearchFixture::clickRows(shown->findChild<QTreeWidget *>("treeWidget"), {"a"});
        QTest::mouseClick(shown->findChild<QToolButton *>("btnRemove"), Qt::LeftButton);
        QMetaObject::invokeMethod(shown, "closeWidget");
    });
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QCOMPARE(visibleWhenTold, QList<bool>({true}));
    QCOMPARE(itemNames(port.getSignalNet()), QStringList("a"));
}

void TestProbeDialog::theDialogMayDieUnderItsSearch()
{
    const Design design = searchDesign();
    ProbeIn port(0);
    const QPointer<ProbeDialog> dialog = new ProbeDialog(&port, design.get(), 0, nullptr);
    dialog->show();
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>(
        [dialog](MolkSignalSelectDialog *) { delete dialog.data(); });
    QTest::mouseClick(dialog->findChild<QToolButton *>("btnAdd"), Qt::LeftButton);
    QVERIFY(!dialog);
}

void TestProbeDialog::theNetlistMayEndUnderTheDialog()
{
    Design design = searchDesign();
    ProbeIn port(0);
    port.setSignalNet({net("a")});
    Fixture f(&port, design.get());
    f.addAll("top/clk");
    endNetlist(design.release());
    f.addAll("");
    QCOMPARE(f.lines(), QStringList({"a", "top/clk"}));
    f.press(QDialogButtonBox::Ok);
    QCOMPARE(itemNames(port.getSignalNet()), QStringList({"a", "top/clk"}));
}

MOLK_TEST_MAIN(TestProbeDialog)

#include "tst_probedialog.moc"
