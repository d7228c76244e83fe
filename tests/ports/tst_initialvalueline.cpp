// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "pagefixture.h"
#include "testwidgetsmain.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QRegExpValidator>
#include <QShortcut>
#include <QSignalSpy>

using namespace MOLK;

class tst_InitialValueLine : public QObject
{
    Q_OBJECT

private slots:
    void newLineReadsZero();
    void bitsAreThoseOfTheLabels();
    void maskTakesAText_data();
    void maskTakesAText();
    void maskOfAGivenWidthIgnoresLabels();
    void validatorNeverAccepts();
    void focusLossCommitsAValue_data();
    void focusLossCommitsAValue();
    void tooWideValueIsRefused_data();
    void tooWideValueIsRefused();
    void refusalNamesTheNumberOfTheMoment();
    void commitRunsTwiceAtALossOfFocus();
    void returnCommitsNothing();
    void endOfEditingWouldCommit();
    void keysFollowTheTable_data();
    void keysFollowTheTable();
    void modifiedComesAheadOfTheKey();
    void allSelectedTextCantBeTypedOver();
    void typingOverASelectedDigit();
    void windowShortcutsStayAheadOfTheLine();
    void wipedPrefixComesBackWithTheCommit();
    void contextMenuIsOff();
    void pageMayGoWhileTheMessageStands();
    void deletedLineTakesItsLabelsAlong();
    void commitAfterThePageIsGoneIsHarmless();
};

// A page with one Probe Out of signals that have these widths.
static std::unique_ptr<MolkCore> coreOfWidths(const QList<int> &widths)
{
    QList<SignalItem> items;
    for (int i = 0; i < widths.size(); ++i) {
        const QString name = QString("top/s%1").arg(i);
        items.append(widths.at(i) == 1 ? net(name) : bus(name, widths.at(i)));
    }
    return makeCore({{}}, {items});
}

// Types digits over all digits of a line that has the focus.
static void typeDigits(InitialValueLine *line, const QString &digits)
{
    line->setCursorPosition(2);
    QTest::keyClicks(line, digits);
}

static void leave(PageFixture &fixture)
{
    fixture.treeProbeIn->setFocus();
}

void tst_InitialValueLine::newLineReadsZero()
{
    const InitialValueLine line(7, nullptr, nullptr);

    QCOMPARE(line.displayText(), QString("0x0"));
    QCOMPARE(line.inputMask(), QString("NN>H;0"));
    QCOMPARE(line.index, 7);
    QVERIFY(line.labels.isEmpty());
    QCOMPARE(line.bitCount(), 0);
    QCOMPARE(line.bitString(), QString());
    QCOMPARE(line.minimumHeight(), 20);
    QCOMPARE(line.maximumHeight(), 20);
    QVERIFY(line.isEnabled());
}

void tst_InitialValueLine::bitsAreThoseOfTheLabels()
{
    InitialValueLine line(0, nullptr, nullptr);
    line.labels = {new QLabel("1"), new QLabel("0110"), new QLabel("01")};

    QCOMPARE(line.bitCount(), 7);
    QCOMPARE(line.bitString(), QString("1011001"));
    line.updateInputMask();
    QCOMPARE(line.inputMask(), QString("NN>HH;0"));
    QCOMPARE(line.displayText(), QString("0x00"));
}

void tst_InitialValueLine::maskTakesAText_data()
{
    QTest::addColumn<int>("bitCount");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");

    QTest::newRow("zero") << 4 << "0x0"
                          << "0x0";
    QTest::newRow("lower-case") << 8 << "0xab"
                                << "0xAB";
    QTest::newRow("too-short-is-filled-at-the-right") << 8 << "0xF"
                                                      << "0xF0";
    QTest::newRow("too-long-is-cut-at-the-right") << 8 << "0x123"
                                                  << "0x12";
    QTest::newRow("empty") << 8 << ""
                           << "0000";
    QTest::newRow("no-prefix") << 8 << "FF"
                               << "FF00";
    QTest::newRow("garbage") << 8 << "garbage"
                             << "gaBA";
    QTest::newRow("no-digits") << 8 << "0xZZ"
                               << "0x00";
    QTest::newRow("blank") << 8 << "0x 12"
                           << "0x12";
    QTest::newRow("no-bits") << 0 << "0xA"
                             << "0xA";
}

void tst_InitialValueLine::maskTakesAText()
{
    QFETCH(int, bitCount);
    QFETCH(QString, text);
    QFETCH(QString, shown);

    InitialValueLine line(0, nullptr, nullptr);
    line.updateInputMask(bitCount);
    line.setText(text);
    QCOMPARE(line.displayText(), shown);
}

void tst_InitialValueLine::maskOfAGivenWidthIgnoresLabels()
{
    InitialValueLine line(0, nullptr, nullptr);
    line.labels = {new QLabel("1")};
    line.setText("0xA");

    line.updateInputMask(10);
    QCOMPARE(line.inputMask(), QString("NN>HHH;0"));
    QCOMPARE(line.displayText(), QString("0xA00"));
}

void tst_InitialValueLine::validatorNeverAccepts()
{
    InitialValueLine line(0, nullptr, nullptr);
    const auto *validator = line.findChild<QRegExpValidator *>();

    QVERIFY(validator);
    QCOMPARE(validator->regExp().pattern(), QString("[A-F0-9]"));
    QCOMPARE(validator->regExp().caseSensitivity(), Qt::CaseSensitive);
    QCOMPARE(validator->regExp().patternSyntax(), QRegExp::RegExp);
    for (const char *text : {"0x0", "0xF", "F", "", "0000"}) {
        line.setText(QLatin1String(text));
        QVERIFY2(!line.hasAcceptableInput(), text);
    }
}

void tst_InitialValueLine::focusLossCommitsAValue_data()
{
    QTest::addColumn<QList<int>>("widths");
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("bits");
    QTest::addColumn<QString>("shown");

    QTest::newRow("one-bit") << QList<int>{1} << "1"
                             << "1"
                             << "0x1";
    QTest::newRow("four-bits") << QList<int>{4} << "F"
                               << "1111"
                               << "0xF";
    QTest::newRow("greatest-of-five") << QList<int>{5} << "1F"
                                      << "11111"
                                      << "0x1F";
    QTest::newRow("greatest-of-six") << QList<int>{2, 4} << "3F"
                                     << "11|1111"
                                     << "0x3F";
    QTest::newRow("leading-zeros") << QList<int>{2, 4} << "05"
                                   << "00|0101"
                                   << "0x05";
    QTest::newRow("eight-bits") << QList<int>{8} << "FF"
                                << "11111111"
                                << "0xFF";
    QTest::newRow("greatest-of-ten") << QList<int>{1, 8, 1} << "3FF"
                                     << "1|11111111|1"
                                     << "0x3FF";
    QTest::newRow("zeros") << QList<int>{3, 1, 2} << "00"
                           << "000|0|00"
                           << "0x00";
    QTest::newRow("lower-case-digits") << QList<int>{8} << "ab"
                                       << "10101011"
                                       << "0xAB";
    QTest::newRow("other-letters-are-refused") << QList<int>{8} << "gA-z5"
                                               << "10100101"
                                               << "0xA5";
}

void tst_InitialValueLine::focusLossCommitsAValue()
{
    QFETCH(QList<int>, widths);
    QFETCH(QString, digits);
    QFETCH(QString, bits);
    QFETCH(QString, shown);

    PageFixture fixture(coreOfWidths(widths));
    fixture.show();
    fixture.line(0)->setFocus();
    typeDigits(fixture.line(0), digits);
    QVERIFY(fixture.bits(0) != bits || !bits.contains('1'));

    QSignalSpy modified(fixture.page, SIGNAL(modified()));
    leave(fixture);
    QCOMPARE(fixture.bits(0), bits);
    QCOMPARE(fixture.value(0), shown);
    QCOMPARE(modified.count(), 0);
    QCOMPARE(fixture.core->getProbeOut(0)->getValue(), QString("0x0"));
}

void tst_InitialValueLine::tooWideValueIsRefused_data()
{
    QTest::addColumn<QList<int>>("widths");
    QTest::addColumn<QString>("digits");

    QTest::newRow("one-bit") << QList<int>{1} << "2";
    QTest::newRow("five-bits") << QList<int>{5} << "20";
    QTest::newRow("six-bits") << QList<int>{2, 4} << "7F";
    QTest::newRow("six-bits-all-ones") << QList<int>{2, 4} << "FF";
    QTest::newRow("ten-bits") << QList<int>{10} << "400";
}

void tst_InitialValueLine::tooWideValueIsRefused()
{
    QFETCH(QList<int>, widths);
    QFETCH(QString, digits);

    PageFixture fixture(coreOfWidths(widths));
    fixture.show();
    fixture.line(0)->setFocus();
    typeDigits(fixture.line(0), QString(digits.size(), '0').replace(digits.size() - 1, 1, "1"));
    leave(fixture);
    const QString goodValue = fixture.value(0);
    const QString goodBits = fixture.bits(0);
    QVERIFY(goodBits.endsWith('1'));

    ModalDriver driver;
    driver.expectMessage(
        "Error", "Value '" + digits + "' for Probe Out0 Initial Value exceeds the effective width.",
        QMessageBox::Ok);
    fixture.line(0)->setFocus();
    typeDigits(fixture.line(0), digits);
    QStringList shownWhenTold;
    connect(fixture.page, &ProbePortsOptionWidget::modified, this,
            [&] { shownWhenTold.append(fixture.value(0)); });
    runInLoop([&] { leave(fixture); });

    // The edit is told after the message, ahead of the return to the last good value.
    QVERIFY(driver.done());
    QCOMPARE(shownWhenTold, QStringList("0x" + digits));
    QCOMPARE(fixture.bits(0), goodBits);
    QCOMPARE(fixture.value(0), goodValue);

    // The platform leaves it to the window manager to activate the window again.
    QApplication::setActiveWindow(fixture.widget.get());
    QCOMPARE(QApplication::focusWidget(), fixture.treeProbeIn);
}

void tst_InitialValueLine::refusalNamesTheNumberOfTheMoment()
{
    PageFixture fixture(coreOfWidths({6}));
    fixture.show();
    fixture.line(0)->index = 12;
    fixture.line(0)->setFocus();
    typeDigits(fixture.line(0), "7F");

    ModalDriver driver;
    driver.expectDialog<QMessageBox>([](QMessageBox *box) {
        QCOMPARE(box->text(),
                 QString("Value '7F' for Probe Out12 Initial Value exceeds the effective width."));
        QCOMPARE(box->windowTitle(), QString("Error"));
        QCOMPARE(box->icon(), QMessageBox::Information);
        QCOMPARE(box->buttons().size(), 1);
        QVERIFY(qobject_cast<InitialValueLine *>(box->parentWidget()));
        box->button(QMessageBox::Ok)->click();
    });
    runInLoop([&] { leave(fixture); });
    QVERIFY(driver.done());
}

void tst_InitialValueLine::commitRunsTwiceAtALossOfFocus()
{
    PageFixture fixture(coreOfWidths({8}));
    fixture.show();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    typeDigits(line, "9");

    // Each commit writes the text anew, which moves the cursor to the end.
    int commits = 0;
    connect(line, &QLineEdit::cursorPositionChanged, this, [&](int, int position) {
        if (position != 4)
            return;
        ++commits;
        line->setCursorPosition(2);
    });
    leave(fixture);
    QCOMPARE(commits, 2);
    QCOMPARE(fixture.bits(0), QString("10010000"));
}

void tst_InitialValueLine::returnCommitsNothing()
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
    leave(fixture);
    QCOMPARE(fixture.bits(0), QString("01011010"));
    QCOMPARE(finished.count(), 0);
}

// The mask never lets the signal come, which is why it takes a call here.
void tst_InitialValueLine::endOfEditingWouldCommit()
{
    PageFixture fixture(coreOfWidths({8}));
    fixture.line(0)->setText("0x5A");
    QVERIFY(QMetaObject::invokeMethod(fixture.line(0), "editingFinished"));
    QCOMPARE(fixture.bits(0), QString("01011010"));
}

void tst_InitialValueLine::keysFollowTheTable_data()
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

void tst_InitialValueLine::keysFollowTheTable()
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

void tst_InitialValueLine::modifiedComesAheadOfTheKey()
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

void tst_InitialValueLine::allSelectedTextCantBeTypedOver()
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

void tst_InitialValueLine::typingOverASelectedDigit()
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

void tst_InitialValueLine::windowShortcutsStayAheadOfTheLine()
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

void tst_InitialValueLine::wipedPrefixComesBackWithTheCommit()
{
    PageFixture fixture(coreOfWidths({8}));
    fixture.show();
    InitialValueLine *line = fixture.line(0);
    line->setFocus();
    typeDigits(line, "AB");
    line->setCursorPosition(4);
    QTest::keyClick(line, Qt::Key_Backspace, Qt::ControlModifier);
    QCOMPARE(line->displayText(), QString("0000"));

    leave(fixture);
    QCOMPARE(fixture.value(0), QString("0x00"));
    QCOMPARE(fixture.bits(0), QString("00000000"));
}

void tst_InitialValueLine::contextMenuIsOff()
{
    const InitialValueLine line(0, nullptr, nullptr);
    QCOMPARE(line.contextMenuPolicy(), Qt::NoContextMenu);
}

void tst_InitialValueLine::pageMayGoWhileTheMessageStands()
{
    PageFixture fixture(coreOfWidths({6}));
    QWidget window;
    QLineEdit elsewhere(&window);
    fixture.widget->setParent(&window);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    fixture.line(0)->setFocus();
    typeDigits(fixture.line(0), "7F");

    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { fixture.widget.reset(); });
    runInLoop([&] { elsewhere.setFocus(); });
    QVERIFY(driver.done());
    QVERIFY(!fixture.widget);
}

void tst_InitialValueLine::deletedLineTakesItsLabelsAlong()
{
    auto *line = new InitialValueLine(0, nullptr, nullptr);
    const QPointer<QLabel> label = new QLabel("1");
    line->labels.append(label);
    delete line;
    QVERIFY(!label);
}

void tst_InitialValueLine::commitAfterThePageIsGoneIsHarmless()
{
    auto core = coreOfWidths({4});
    Standin::Host host;
    auto page = std::make_unique<ProbePortsOptionWidget>(core.get(), nullptr, nullptr);
    InitialValueLine line(0, page.get(), nullptr);
    page.reset();

    QTest::keyClick(&line, Qt::Key_Left);
    QVERIFY(QMetaObject::invokeMethod(&line, "onTextChange"));
    QCOMPARE(line.displayText(), QString("0x0"));
}

MOLK_TEST_MAIN(tst_InitialValueLine)

#include "tst_initialvalueline.moc"
