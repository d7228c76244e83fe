// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "dialoganswers.h"
#include "modaldriver.h"
#include "pagefixture.h"
#include "testwidgetsmain.h"

#include "netlist/netlistbuilder.h"

#include "fathom/rtlnetlist.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalSpy>

using namespace MOLK;

class tst_UserClock : public QObject
{
    Q_OBJECT

private slots:
    void clockNameDoesntMarkTheDocument();
    void usedClockWithoutANameIsShown();
    void uncheckingKeepsTheClockName();
    void clockControlsFollowTheBox();
    void typingAClockNameIsAnEdit();
    void pickedClockIsTakenOver();
    void clockIsSearchedAsForAProbeIn();
    void cancelledClockSearchChangesNothing();
    void pageMayGoUnderTheClockSearch();
};

// Searches for everything and takes over the first row.
static void pickFirst(MolkSignalSelectDialog *dialog)
{
    foundBy(dialog);
    auto *tree = dialog->findChild<QTreeWidget *>("treeWidget");
    tree->topLevelItem(0)->setSelected(true);
    dialog->findChild<QPushButton *>("btnAdd")->click();
}

void tst_UserClock::clockNameDoesntMarkTheDocument()
{
    auto core = makeCore({{}}, {{}});
    core->setUserClockName("top/clk");
    core->useUserClock = true;
    Standin::Host host;

    // The relay is the last thing to be connected.
    MolkOptionWidget widget(core.get(), nullptr, nullptr);
    QSignalSpy modifed(&widget, SIGNAL(modifed()));
    QCOMPARE(modifed.count(), 0);
    auto *clock = widget.findChild<QLineEdit *>("lineEditUserClock");
    QCOMPARE(clock->text(), QString("top/clk"));
    clock->setText("top/clk2");
    QCOMPARE(modifed.count(), 1);
}

void tst_UserClock::usedClockWithoutANameIsShown()
{
    auto core = makeCore({{}}, {{}});
    core->useUserClock = true;
    PageFixture fixture(std::move(core));
    QVERIFY(fixture.child<QCheckBox>("checkUserClock")->isChecked());
    for (const char *name : {"labelClock", "lineEditUserClock", "btnUserClock"})
        QVERIFY(fixture.child<QWidget>(name)->isEnabled());
}

void tst_UserClock::uncheckingKeepsTheClockName()
{
    auto core = makeCore({{}}, {{}});
    core->setUserClockName("top/clk");
    core->useUserClock = true;
    PageFixture fixture(std::move(core));
    auto *box = fixture.child<QCheckBox>("checkUserClock");
    box->click();
    QCOMPARE(fixture.child<QLineEdit>("lineEditUserClock")->text(), QString("top/clk"));
    QVERIFY(fixture.core->useUserClock);

    fixture.widget->storeToModel();
    QVERIFY(!fixture.core->useUserClock);
    QCOMPARE(fixture.core->getUserClockName(), QString("top/clk"));
    box->click();
    QCOMPARE(fixture.child<QLineEdit>("lineEditUserClock")->text(), QString("top/clk"));
}

void tst_UserClock::clockControlsFollowTheBox()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    for (const bool used : {true, false}) {
        modifed.clear();
        fixture.child<QCheckBox>("checkUserClock")->click();
        QCOMPARE(modifed.count(), 1);
        for (const char *name : {"labelClock", "lineEditUserClock", "btnUserClock"})
            QCOMPARE(fixture.child<QWidget>(name)->isEnabled(), used);
    }
    QVERIFY(!fixture.core->useUserClock);
}

void tst_UserClock::typingAClockNameIsAnEdit()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    fixture.child<QCheckBox>("checkUserClock")->click();
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    QTest::keyClicks(fixture.child<QLineEdit>("lineEditUserClock"), "clk");
    QCOMPARE(modifed.count(), 3);
    QCOMPARE(fixture.core->getUserClockName(), QString());
}

void tst_UserClock::pickedClockIsTakenOver()
{
    Standin::NetlistBuilder builder("top");
    builder.addNet(0, "clk");
    std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    auto core = makeCore({{}}, {{}});
    core->useUserClock = true;
    PageFixture fixture(std::move(core), netlist.get());
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    ModalDriver driver;
    for (int i = 0; i < 2; ++i)
        driver.expectDialog<MolkSignalSelectDialog>([&](MolkSignalSelectDialog *dialog) {
            QCOMPARE(dialog->parentWidget(), fixture.page);
            pickFirst(dialog);
            press(dialog, QDialogButtonBox::Ok);
        });
    fixture.child<QPushButton>("btnUserClock")->click();
    QCOMPARE(fixture.child<QLineEdit>("lineEditUserClock")->text(), QString("top/clk"));
    QCOMPARE(modifed.count(), 2);

    // The same name again is an edit too, though the text doesn't change.
    fixture.child<QPushButton>("btnUserClock")->click();
    QCOMPARE(modifed.count(), 3);
    QVERIFY(driver.done());
    QCOMPARE(fixture.core->getUserClockName(), QString());
}

void tst_UserClock::clockIsSearchedAsForAProbeIn()
{
    Standin::NetlistBuilder builder("top");
    builder.addNet(0, "driven", Standin::NoProbeOut);
    builder.addNet(0, "unseen", Standin::NoProbeIn);
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    auto core = makeCore({{}}, {{}});
    core->useUserClock = true;
    PageFixture fixture(std::move(core), netlist.get());
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>([](MolkSignalSelectDialog *dialog) {
        QCOMPARE(foundBy(dialog), QStringList({"top/driven", "top/unseen"}));
        const auto *tree = dialog->findChild<QTreeWidget *>("treeWidget");
        QVERIFY(!tree->topLevelItem(0)->isDisabled());
        QVERIFY(tree->topLevelItem(1)->isDisabled());
        press(dialog, QDialogButtonBox::Cancel);
    });
    fixture.child<QPushButton>("btnUserClock")->click();
    QVERIFY(driver.done());
}

void tst_UserClock::cancelledClockSearchChangesNothing()
{
    auto core = makeCore({{}}, {{}});
    core->setUserClockName("top/clk");
    core->useUserClock = true;
    PageFixture fixture(std::move(core));
    QSignalSpy modifed(fixture.widget.get(), SIGNAL(modifed()));
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>(
        [](MolkSignalSelectDialog *dialog) { press(dialog, QDialogButtonBox::Cancel); });
    driver.expectDialog<MolkSignalSelectDialog>(
        [](MolkSignalSelectDialog *dialog) { press(dialog, QDialogButtonBox::Ok); });
    fixture.child<QPushButton>("btnUserClock")->click();
    fixture.child<QPushButton>("btnUserClock")->click();
    QVERIFY(driver.done());
    QCOMPARE(fixture.child<QLineEdit>("lineEditUserClock")->text(), QString("top/clk"));
    QCOMPARE(modifed.count(), 0);
}

void tst_UserClock::pageMayGoUnderTheClockSearch()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    ModalDriver driver;
    driver.expectDialog<MolkSignalSelectDialog>(
        [&](MolkSignalSelectDialog *) { fixture.widget.reset(); });
    runInLoop([&] { fixture.call("onbtnUserClock"); });
    QVERIFY(driver.done());
    QVERIFY(!fixture.widget);
}

MOLK_TEST_MAIN(tst_UserClock)

#include "tst_userclock.moc"
