// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "pagefixture.h"
#include "testwidgetsmain.h"

#include <QShortcut>
#include <QSignalSpy>

using namespace MOLK;

class tst_InitialValueLineKeys : public QObject
{
    Q_OBJECT

private slots:
    void keysFollowTheTable_data();
    void keysFollowTheTable();
    void modifiedComesAheadOfTheKey();
    void allSelectedTextCantBeTypedOver();
    void typingOverASelectedDigit();
    void returnCommitsNothing();
    void windowShortcutsStayAheadOfTheLine();
    void wipedPrefixComesBackWithTheCommit();
};

void tst_InitialValueLineKeys::keysFollowTheTable_data()
{
    QTest::addColumn<int>("selectionStart");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("passes");
    QTest::addColumn<QString>("shown");

    const auto row = [](const char *name, int selectionStart, int cursor, int key, bool passes,
                        const QString &shown) {
        QTest::newRow(name) << selectionStart << cursor << key << passes << shown;
    };
    row("before-prefix-left", -1, 0, Qt::Key_Left, true, "0xABC");
    row("before-prefix-right", -1, 0, Qt::Key_Right, true, "0xABC");
    row("before-prefix-delete", -1, 0, Qt::Key_Delete, false, "0xABC");
    row("before-prefix-backspace", -1, 0, Qt::Key_Backspace, false, "0xABC");
    row("before-prefix-digit", -1, 0, Qt::Key_1, false, "0xABC");
    row("inside-prefix-left", -1, 1, Qt::Key_Left, true, "0xABC");
    row("inside-prefix-right", -1, 1, Qt::Key_Right, true, "0xABC");
    row("inside-prefix-delete", -1, 1, Qt::Key_Delete, false, "0xABC");
    row("inside-prefix-backspace", -1, 1, Qt::Key_Backspace, false, "0xABC");
    row("inside-prefix-end", -1, 1, Qt::Key_End, false, "0xABC");
    row("inside-prefix-digit", -1, 1, Qt::Key_1, false, "0xABC");
    row("behind-prefix-backspace", -1, 2, Qt::Key_Backspace, false, "0xABC");
    row("behind-prefix-delete", -1, 2, Qt::Key_Delete, true, "0x0BC");
    row("behind-prefix-digit", -1, 2, Qt::Key_1, true, "0x1BC");
    row("behind-prefix-left", -1, 2, Qt::Key_Left, true, "0xABC");
    row("in-digits-backspace", -1, 3, Qt::Key_Backspace, true, "0x0BC");
    row("in-digits-delete", -1, 3, Qt::Key_Delete, true, "0xA0C");
    row("in-digits-digit", -1, 4, Qt::Key_1, true, "0xAB1");
    row("in-digits-shift", -1, 4, Qt::Key_Shift, true, "0xABC");
    row("in-digits-return", -1, 4, Qt::Key_Return, true, "0xABC");
    row("in-digits-escape", -1, 4, Qt::Key_Escape, true, "0xABC");
    row("at-end-digit", -1, 5, Qt::Key_1, true, "0xABC");
    row("selected-from-0-left", 0, 5, Qt::Key_Left, true, "0xABC");
    row("selected-from-0-right", 0, 5, Qt::Key_Right, true, "0xABC");
    row("selected-from-0-delete", 0, 5, Qt::Key_Delete, false, "0xABC");
    row("selected-from-0-backspace", 0, 5, Qt::Key_Backspace, false, "0xABC");
    row("selected-from-0-digit", 0, 5, Qt::Key_1, false, "0xABC");
    row("selected-from-1-left", 1, 3, Qt::Key_Left, true, "0xABC");
    row("selected-from-1-delete", 1, 3, Qt::Key_Delete, false, "0xABC");
    row("selected-from-1-digit", 1, 3, Qt::Key_1, false, "0xABC");
    row("selected-from-2-backspace", 2, 5, Qt::Key_Backspace, true, "0x000");
    row("selected-from-2-delete", 2, 4, Qt::Key_Delete, true, "0x00C");
    row("selected-from-2-digit", 2, 5, Qt::Key_1, true, "0x100");
    row("selected-from-3-backspace", 3, 5, Qt::Key_Backspace, true, "0xA00");
    row("selected-from-3-digit", 3, 5, Qt::Key_1, true, "0xA10");
}

void tst_InitialValueLineKeys::keysFollowTheTable()
{
    QFETCH(int, selectionStart);
    QFETCH(int, cursor);
    QFETCH(int, key);
    QFETCH(bool, passes);
    QFETCH(QString, shown);

    PageFixture fixture(coreOfWidths({12}));
    fixture.show();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    line->setText("0xABC");
    line->setCursorPosition(cursor);
    if (selectionStart >= 0)
        line->setSelection(selectionStart, cursor - selectionStart);
    const int cursorBefore = line->cursorPosition();

    QSignalSpy modified(fixture.page, SIGNAL(modified()));
    QTest::keyClick(line, Qt::Key(key));
    QCOMPARE(modified.count(), passes ? 1 : 0);
    QCOMPARE(line->displayText(), shown);
    if (!passes)
        QCOMPARE(line->cursorPosition(), cursorBefore);
}

void tst_InitialValueLineKeys::modifiedComesAheadOfTheKey()
{
    PageFixture fixture(coreOfWidths({4}));
    fixture.show();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    line->setCursorPosition(2);

    QStringList shown;
    connect(fixture.page, &ProbePortsOptionWidget::modified, this,
            [&] { shown.append(line->displayText()); });
    QTest::keyClick(line, Qt::Key_7);
    QTest::keyClick(line, Qt::Key_Left);
    QCOMPARE(shown, QStringList({"0x0", "0x7"}));
}

void tst_InitialValueLineKeys::allSelectedTextCantBeTypedOver()
{
    PageFixture fixture(coreOfWidths({8}));
    fixture.show();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    line->selectAll();

    QSignalSpy modified(fixture.page, SIGNAL(modified()));
    QTest::keyClicks(line, "12");
    QTest::keyClick(line, Qt::Key_Delete);
    QCOMPARE(modified.count(), 0);
    QCOMPARE(line->displayText(), QString("0x00"));
    QTest::keyClick(line, Qt::Key_Right);
    QCOMPARE(modified.count(), 1);
    QVERIFY(!line->hasSelectedText());
}

void tst_InitialValueLineKeys::typingOverASelectedDigit()
{
    PageFixture fixture(coreOfWidths({8}));
    fixture.show();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    typeDigits(line, "AB");
    line->setSelection(2, 1);
    QTest::keyClick(line, Qt::Key_4);
    QCOMPARE(line->displayText(), QString("0x4B"));
}

void tst_InitialValueLineKeys::returnCommitsNothing()
{
    PageFixture fixture(coreOfWidths({8}));
    fixture.show();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    QSignalSpy finished(line, SIGNAL(editingFinished()));
    typeDigits(line, "5A");
    QTest::keyClick(line, Qt::Key_Return);
    QTest::keyClick(line, Qt::Key_Enter);
    QCOMPARE(fixture.bits(0), QString("00000000"));
    fixture.leaveLines();
    QCOMPARE(fixture.bits(0), QString("01011010"));
    QCOMPARE(finished.count(), 0);
}

void tst_InitialValueLineKeys::windowShortcutsStayAheadOfTheLine()
{
    PageFixture fixture(coreOfWidths({8}));
    fixture.show();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    typeDigits(line, "AB");
    line->setCursorPosition(2);

    QShortcut shortcut(QKeySequence(Qt::Key_Delete), fixture.widget.get());
    QSignalSpy activated(&shortcut, SIGNAL(activated()));
    QTest::keyClick(fixture.widget->windowHandle(), Qt::Key_Delete);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(line->displayText(), QString("0xAB"));
}

void tst_InitialValueLineKeys::wipedPrefixComesBackWithTheCommit()
{
    PageFixture fixture(coreOfWidths({8}));
    fixture.show();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    typeDigits(line, "AB");
    line->setCursorPosition(4);
    QTest::keyClick(line, Qt::Key_Backspace, Qt::ControlModifier);
    QCOMPARE(line->displayText(), QString("0000"));

    fixture.leaveLines();
    QCOMPARE(fixture.value(0), QString("0x00"));
    QCOMPARE(fixture.bits(0), QString("00000000"));
}

MOLK_TEST_MAIN(tst_InitialValueLineKeys)

#include "tst_initialvalueline_keys.moc"
