// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "literalmatcher.h"

#include "testmain.h"

#include <QRandomGenerator>

using namespace MOLK;

class TestLiteralMatcher : public QObject
{
    Q_OBJECT

private slots:
    void textsAreFoundAtEveryPlace_data();
    void textsAreFoundAtEveryPlace();
    void anEmptyTextIsEverywhere();
    void answersEqualIndexOf();
    void otherCharactersThanAsciiAreTold();
};

void TestLiteralMatcher::textsAreFoundAtEveryPlace_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one-character") << "q";
    QTest::newRow("letters") << "Fifo";
    QTest::newRow("others") << "[3:0]";
    QTest::newRow("longer-than-a-block") << "u_core/u_fifo/write_pointer";
}

void TestLiteralMatcher::textsAreFoundAtEveryPlace()
{
    QFETCH(QString, text);
    const LiteralMatcher exact(text, Qt::CaseSensitive);
    const LiteralMatcher any(text, Qt::CaseInsensitive);
    for (int before = 0; before < 40; ++before) {
        for (int after = 0; after < 20; ++after) {
            const QString name = QString(before, '.') + text + QString(after, '.');
            QVERIFY(exact.isIn(name));
            QVERIFY(any.isIn(name.toUpper()));
            QVERIFY(any.isIn(name.toLower()));
            QString cut = name;
            cut.remove(before + text.size() - 1, 1);
            QVERIFY(!exact.isIn(cut));
            QVERIFY(!any.isIn(cut));
        }
    }
}

void TestLiteralMatcher::anEmptyTextIsEverywhere()
{
    QVERIFY(LiteralMatcher().isIn("a"));
    QVERIFY(LiteralMatcher().isIn(""));
    QVERIFY(LiteralMatcher("", Qt::CaseInsensitive).isIn("a"));
}

void TestLiteralMatcher::answersEqualIndexOf()
{
    QRandomGenerator random(44);
    const QString alphabets[] = {"ab", "aAbB[{@`",
                                 QString::fromUtf8("kK\u212asS\u017f\u00e9\u00c9"),
                                 QString::fromUtf8("a\u0161A\u0141\u0100b")};
    const auto word = [&random](const QString &alphabet, int most) {
        QString text;
        for (int count = int(random.bounded(most + 1)); count > 0; --count)
            text += alphabet.at(int(random.bounded(alphabet.size())));
        return text;
    };
    static const int rounds = 550000; // Two pairs each.
    int found = 0;
    for (int round = 0; round < rounds; ++round) {
        const QString &alphabet = alphabets[random.bounded(4)];
        const QString text = word(alphabet, random.bounded(4) ? 3 : 12);
        const QString name = word(alphabet, 40);
        for (auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
            const bool expected = name.indexOf(text, 0, sensitivity) != -1;
            if (LiteralMatcher(text, sensitivity).isIn(name) != expected)
                QFAIL(qPrintable(text + " in " + name));
            found += expected ? 1 : 0;
        }
    }
    QVERIFY(found > rounds / 5);
    QVERIFY(found < rounds + rounds / 2);
}

void TestLiteralMatcher::otherCharactersThanAsciiAreTold()
{
    using Answer = LiteralMatcher::Answer;
    const LiteralMatcher matcher("net", Qt::CaseInsensitive);
    for (int size = 0; size < 30; ++size) {
        const QString plain(size, 'x');
        QCOMPARE(matcher.lookInAscii(plain), Answer::No);
        QCOMPARE(matcher.lookInAscii(plain + "NET"), Answer::Yes);
        for (int at = 0; at < size; ++at) {
            QString other = plain;
            other[at] = QChar(0x80 + at);
            QCOMPARE(matcher.lookInAscii(other), Answer::NotAscii);
        }
    }
}

MOLK_TEST_GUILESS_MAIN(TestLiteralMatcher)

#include "tst_literalmatcher.moc"
