// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "initialvalue.h"
#include "testmain.h"

#include <QRandomGenerator>

using namespace MOLK;

class tst_InitialValue : public QObject
{
    Q_OBJECT

private slots:
    void digitsCoverTheBits_data();
    void digitsCoverTheBits();
    void effectiveWidthCountsFromTheHighestSetBit_data();
    void effectiveWidthCountsFromTheHighestSetBit();
    void fittingKeepsTheNumber_data();
    void fittingKeepsTheNumber();
    void resizingKeepsBitsAtTheirPlaceFromTheLeft_data();
    void resizingKeepsBitsAtTheirPlaceFromTheLeft();
    void takingSplitsAValueFromTheLeft();
    void takingTooMuchGivesZerosAndDropsTheRest();
    void keysSpareThePrefix_data();
    void keysSpareThePrefix();
    void randomValuesAgreeWithTheStepByStepReading();
};

static QString randomBits(QRandomGenerator &random, int size)
{
    QString bits;
    for (int i = 0; i < size; ++i)
        bits += random.bounded(2) ? '1' : '0';
    return bits;
}

void tst_InitialValue::digitsCoverTheBits_data()
{
    QTest::addColumn<int>("bitCount");
    QTest::addColumn<int>("digits");
    QTest::addColumn<QString>("mask");

    QTest::newRow("none") << 0 << 1 << "NN>H;0";
    QTest::newRow("one") << 1 << 1 << "NN>H;0";
    QTest::newRow("full-digit") << 4 << 1 << "NN>H;0";
    QTest::newRow("first-of-second-digit") << 5 << 2 << "NN>HH;0";
    QTest::newRow("six") << 6 << 2 << "NN>HH;0";
    QTest::newRow("full-second-digit") << 8 << 2 << "NN>HH;0";
    QTest::newRow("ten") << 10 << 3 << "NN>HHH;0";
    QTest::newRow("widest-port") << 256 << 64 << "NN>" + QString(64, 'H') + ";0";
}

void tst_InitialValue::digitsCoverTheBits()
{
    QFETCH(int, bitCount);
    QFETCH(int, digits);
    QFETCH(QString, mask);

    QCOMPARE(digitCount(bitCount), digits);
    QCOMPARE(valueMask(bitCount), mask);
}

void tst_InitialValue::effectiveWidthCountsFromTheHighestSetBit_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<int>("width");

    QTest::newRow("nothing") << "" << 0;
    QTest::newRow("zeros") << "0000" << 0;
    QTest::newRow("lowest-bit") << "0001" << 1;
    QTest::newRow("highest-bit") << "1000" << 4;
    QTest::newRow("inside") << "00100110" << 6;
}

void tst_InitialValue::effectiveWidthCountsFromTheHighestSetBit()
{
    QFETCH(QString, bits);
    QFETCH(int, width);

    QCOMPARE(effectiveWidth(bits), width);
}

void tst_InitialValue::fittingKeepsTheNumber_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("fitted");

    QTest::newRow("as-it-is") << "101" << 3 << "101";
    QTest::newRow("zeros-added") << "101" << 6 << "000101";
    QTest::newRow("zeros-dropped") << "00111111" << 6 << "111111";
    QTest::newRow("all-zeros-dropped") << "0000" << 0 << "";
    QTest::newRow("from-nothing") << "" << 2 << "00";
    QTest::newRow("nothing-from-nothing") << "" << 0 << "";
}

void tst_InitialValue::fittingKeepsTheNumber()
{
    QFETCH(QString, bits);
    QFETCH(int, width);
    QFETCH(QString, fitted);

    QCOMPARE(fittedBits(bits, width), fitted);
}

void tst_InitialValue::resizingKeepsBitsAtTheirPlaceFromTheLeft_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<int>("kept");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("resized");

    QTest::newRow("same") << "10100101" << 8 << 8 << "10100101";
    QTest::newRow("grows-at-the-low-end") << "1111" << 4 << 8 << "11110000";
    QTest::newRow("shrinks-at-the-low-end") << "10100101" << 8 << 4 << "1010";
    QTest::newRow("filling-bits-are-dropped") << "00011010" << 5 << 5 << "11010";
    QTest::newRow("filling-bits-then-growth") << "00011010" << 5 << 7 << "1101000";
    QTest::newRow("filling-bits-then-loss") << "00011010" << 5 << 2 << "11";
    QTest::newRow("to-nothing") << "1111" << 4 << 0 << "";
    QTest::newRow("from-nothing") << "0000" << 0 << 3 << "000";
    QTest::newRow("nothing-to-nothing") << "" << 0 << 0 << "";
}

void tst_InitialValue::resizingKeepsBitsAtTheirPlaceFromTheLeft()
{
    QFETCH(QString, bits);
    QFETCH(int, kept);
    QFETCH(int, width);
    QFETCH(QString, resized);

    QCOMPARE(resizedBits(bits, kept, width), resized);
}

void tst_InitialValue::takingSplitsAValueFromTheLeft()
{
    int position = 0;
    QCOMPARE(takeBits("110101", position, 2), QString("11"));
    QCOMPARE(position, 2);
    QCOMPARE(takeBits("110101", position, 4), QString("0101"));
    QCOMPARE(position, 6);
}

void tst_InitialValue::takingTooMuchGivesZerosAndDropsTheRest()
{
    int position = 1;
    QCOMPARE(takeBits("111", position, 3), QString("000"));
    QCOMPARE(position, 3);
    QCOMPARE(takeBits("111", position, 1), QString("0"));
}

void tst_InitialValue::keysSpareThePrefix_data()
{
    QTest::addColumn<int>("selectionStart");
    QTest::addColumn<bool>("textSelected");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("passes");

    const auto row = [](const char *name, int selectionStart, bool selected, int cursor, int key,
                        bool passes) {
        QTest::newRow(name) << selectionStart << selected << cursor << key << passes;
    };
    const QList<int> keys = {Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Backspace,
                             Qt::Key_Delete, Qt::Key_Return, Qt::Key_Shift,
                             Qt::Key_Home,   Qt::Key_A,      Qt::Key_0};
    for (const int key : keys) {
        const bool arrow = key == Qt::Key_Left || key == Qt::Key_Right;
        const bool backspace = key == Qt::Key_Backspace;
        const QByteArray name = QByteArray::number(key, 16);
        row("cursor-0-key-" + name, -1, false, 0, key, arrow);
        row("cursor-1-key-" + name, -1, false, 1, key, arrow);
        row("cursor-2-key-" + name, -1, false, 2, key, !backspace);
        row("cursor-3-key-" + name, -1, false, 3, key, true);
        row("cursor-9-key-" + name, -1, false, 9, key, true);
        for (const int cursor : {0, 2, 4}) {
            const QByteArray at = QByteArray::number(cursor) + "-key-" + name;
            row("selection-0-cursor-" + at, 0, true, cursor, key, arrow);
            row("selection-1-cursor-" + at, 1, true, cursor, key, arrow);
            row("selection-2-cursor-" + at, 2, true, cursor, key, true);
            row("empty-selection-2-cursor-" + at, 2, false, cursor, key, !backspace);
            row("selection-3-cursor-" + at, 3, true, cursor, key, true);
        }
    }
}

void tst_InitialValue::keysSpareThePrefix()
{
    QFETCH(int, selectionStart);
    QFETCH(bool, textSelected);
    QFETCH(int, cursor);
    QFETCH(int, key);
    QFETCH(bool, passes);

    QCOMPARE(keySparesPrefix(selectionStart, textSelected, cursor, key), passes);
}

// The same results told by moving characters one after the other.
static QString stepwiseResized(QString bits, int kept, int width)
{
    while (bits.size() > kept)
        bits.remove(0, 1);
    while (bits.size() > width)
        bits.chop(1);
    for (int i = kept; i < width; ++i)
        bits.append('0');
    return bits;
}

static QStringList stepwiseCommit(QString bits, const QList<int> &widths)
{
    int total = 0;
    for (const int width : widths)
        total += width;
    while (!bits.isEmpty() && bits.front() == '0')
        bits.remove(0, 1);
    if (bits.size() > total)
        return {};
    while (bits.size() < total)
        bits.prepend('0');
    QStringList labels;
    for (const int width : widths) {
        labels.append(bits.left(width));
        bits.remove(0, width);
    }
    return labels;
}

static QStringList commit(const QString &bits, const QList<int> &widths)
{
    int total = 0;
    for (const int width : widths)
        total += width;
    if (effectiveWidth(bits) > total)
        return {};
    const QString fitted = fittedBits(bits, total);
    QStringList labels;
    int position = 0;
    for (const int width : widths)
        labels.append(takeBits(fitted, position, width));
    return labels;
}

void tst_InitialValue::randomValuesAgreeWithTheStepByStepReading()
{
    QRandomGenerator random(20240607);
    for (int i = 0; i < 20000; ++i) {
        const QString bits = randomBits(random, random.bounded(24));
        const int kept = random.bounded(bits.size() + 1);
        const int width = random.bounded(30);
        QCOMPARE(resizedBits(bits, kept, width), stepwiseResized(bits, kept, width));

        QList<int> widths;
        for (int left = random.bounded(6); left > 0; --left)
            widths.append(1 + random.bounded(7));
        QCOMPARE(commit(bits, widths), stepwiseCommit(bits, widths));
    }
}

MOLK_TEST_GUILESS_MAIN(tst_InitialValue)

#include "tst_initialvalue.moc"
