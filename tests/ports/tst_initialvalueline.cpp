// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "pagefixture.h"
#include "testwidgetsmain.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QRegExpValidator>
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
    void endOfEditingWouldCommit();
    void contextMenuIsOff();
    void pageMayGoWhileTheMessageStands();
    void deletedLineTakesItsLabelsAlong();
    void commitAfterThePageIsGoneIsHarmless();
};

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
    fixture.leaveLines();
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
    fixture.leaveLines();
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
    runInLoop([&] { fixture.leaveLines(); });

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
    runInLoop([&] { fixture.leaveLines(); });
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
    fixture.leaveLines();
    QCOMPARE(commits, 2);
    QCOMPARE(fixture.bits(0), QString("10010000"));
}

// The mask never lets the signal come, which is why it takes a call here.
void tst_InitialValueLine::endOfEditingWouldCommit()
{
    PageFixture fixture(coreOfWidths({8}));
    fixture.line(0)->setText("0x5A");
    QVERIFY(QMetaObject::invokeMethod(fixture.line(0), "editingFinished"));
    QCOMPARE(fixture.bits(0), QString("01011010"));
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
