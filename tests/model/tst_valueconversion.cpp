// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testmain.h"
#include "valueconversion.h"
#include "valuereference.h"

#include <QRandomGenerator>

/// Values as text become bits and bits become digits, whatever the text is.
class TestValueConversion : public QObject
{
    Q_OBJECT

private slots:
    void hexadecimalBecomesBits_data();
    void hexadecimalBecomesBits();
    void bitsBecomeHexadecimal_data();
    void bitsBecomeHexadecimal();
    void everyCharacterCountsAsTheReferenceSays();
    void randomTextsEqualTheReference();
    void bothWaysTogetherKeepTheDigits();
    void hugeTextsAreConvertedToo();
};

void TestValueConversion::hexadecimalBecomesBits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("bits");

    QTest::newRow("null") << QString() << "";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("one-character") << "F"
                                   << "";
    QTest::newRow("prefix-alone") << "0x"
                                  << "";
    QTest::newRow("zero") << "0x0"
                          << "0000";
    QTest::newRow("one") << "0x1"
                         << "0001";
    QTest::newRow("leading-zeros-stay") << "0x00F"
                                        << "000000001111";
    QTest::newRow("all-digits")
        << "0x0123456789ABCDEF"
        << "0000000100100011010001010110011110001001101010111100110111101111";
    QTest::newRow("lower-case") << "0xabcdef"
                                << "101010111100110111101111";
    QTest::newRow("upper-case-prefix") << "0XF"
                                       << "1111";
    QTest::newRow("prefix-places-hold-digits") << "FFF"
                                               << "1111";
    QTest::newRow("prefix-places-are-blank") << "  A"
                                             << "1010";
    QTest::newRow("bad-digits-count-as-zero") << "0xGZ-F"
                                              << "0000000000001111";
    QTest::newRow("blank-counts-as-zero") << "0x 1"
                                          << "00000001";
    QTest::newRow("other-digits-count-as-zero")
        << QString("0x") + QChar(0x0661) + QChar(0xFF11) << "00000000";
    QTest::newRow("nul-counts-as-zero") << QString("0x") + QChar(0) + "1"
                                        << "00000001";
}

void TestValueConversion::hexadecimalBecomesBits()
{
    QFETCH(QString, text);
    QFETCH(QString, bits);
    QCOMPARE(MOLK::stringHextoBinfor0x(text), bits);
    QCOMPARE(ValueReference::hexToBits(text), bits);
}

void TestValueConversion::bitsBecomeHexadecimal_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<QString>("hex");

    QTest::newRow("null") << QString() << "";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("one-zero") << "0"
                              << "0";
    QTest::newRow("one-one") << "1"
                             << "1";
    QTest::newRow("two") << "11"
                         << "3";
    QTest::newRow("three") << "101"
                           << "5";
    QTest::newRow("four") << "1111"
                          << "F";
    QTest::newRow("five") << "11000"
                          << "18";
    QTest::newRow("leading-zeros-stay") << "000000001010"
                                        << "00A";
    QTest::newRow("all-digits")
        << "0000000100100011010001010110011110001001101010111100110111101111"
        << "0123456789ABCDEF";
    QTest::newRow("others-count-as-zero") << "1x1 "
                                          << "A";
    QTest::newRow("other-ones-count-as-zero") << QString(QChar(0x0661)) + "1"
                                              << "1";
    QTest::newRow("256-ones") << QString(256, QLatin1Char('1')) << QString(64, QLatin1Char('F'));
    QTest::newRow("257-ones") << QString(257, QLatin1Char('1'))
                              << "1" + QString(64, QLatin1Char('F'));
}

void TestValueConversion::bitsBecomeHexadecimal()
{
    QFETCH(QString, bits);
    QFETCH(QString, hex);
    QCOMPARE(MOLK::stringBintoHex(bits), hex);
    QCOMPARE(ValueReference::bitsToHex(bits), hex);
}

void TestValueConversion::everyCharacterCountsAsTheReferenceSays()
{
    for (int code = 0; code <= 0xFFFF; ++code) {
        const QString hex = QString("0x") + QChar(code);
        if (MOLK::stringHextoBinfor0x(hex) != ValueReference::hexToBits(hex))
            QFAIL(qPrintable(QString("as a digit: U+%1").arg(code, 4, 16)));
        const QString bits(QChar(code) + QString("1"));
        if (MOLK::stringBintoHex(bits) != ValueReference::bitsToHex(bits))
            QFAIL(qPrintable(QString("as a bit: U+%1").arg(code, 4, 16)));
    }
}

void TestValueConversion::randomTextsEqualTheReference()
{
    QRandomGenerator random(5);
    const QString characters = "0123456789ABCDEFabcdef01010101xX gG";
    for (int round = 0; round < 5000; ++round) {
        QString text;
        for (int i = random.bounded(300); i > 0; --i)
            text += characters.at(random.bounded(characters.size()));
        QCOMPARE(MOLK::stringHextoBinfor0x(text), ValueReference::hexToBits(text));
        QCOMPARE(MOLK::stringBintoHex(text), ValueReference::bitsToHex(text));
    }
}

void TestValueConversion::bothWaysTogetherKeepTheDigits()
{
    const QString digits = "00F0123456789ABCDEF";
    QCOMPARE(MOLK::stringBintoHex(MOLK::stringHextoBinfor0x("0x" + digits)), digits);
}

void TestValueConversion::hugeTextsAreConvertedToo()
{
    const int digits = 4 * 1024 * 1024;
    const QString bits = MOLK::stringHextoBinfor0x("0x" + QString(digits, QLatin1Char('a')));
    QCOMPARE(bits.size(), digits * 4);
    QVERIFY(bits.startsWith("10101010"));
    QCOMPARE(MOLK::stringBintoHex(bits), QString(digits, QLatin1Char('A')));
}

MOLK_TEST_GUILESS_MAIN(TestValueConversion)
#include "tst_valueconversion.moc"
