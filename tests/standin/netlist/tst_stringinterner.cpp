// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "meetingnames.h"
#include "netlist/stringinterner.h"
#include "testmain.h"

#include <QTest>

using Standin::StringInterner;

class TestStringInterner : public QObject
{
    Q_OBJECT

private slots:
    void textsAreNumberedAsTheyComeFirst();
    void textsAreToldApart_data();
    void textsAreToldApart();
    void clearingForgetsAll();
};

void TestStringInterner::textsAreNumberedAsTheyComeFirst()
{
    StringInterner names;
    QCOMPARE(names.intern(u"clk"), 0U);
    QCOMPARE(names.intern(u""), 1U);
    QCOMPARE(names.intern(u"clk"), 0U);
    QCOMPARE(names.intern(QStringView()), 1U);
    QCOMPARE(names.intern(u"clj"), 2U);
    QCOMPARE(names.count(), 3U);
    QCOMPARE(names.string(0), QString("clk"));
    QCOMPARE(names.string(1), QString(""));
    QVERIFY(names.contains(u"clj"));
    QVERIFY(!names.contains(u"cl"));
    QVERIFY(!names.contains(u"cli"));
}

void TestStringInterner::textsAreToldApart_data()
{
    QTest::addColumn<QStringList>("texts");

    QStringList numbered;
    for (int number = 0; number < 5000; ++number)
        numbered.append("top/u_core/net_" + QString::number(number));
    QTest::newRow("numbered") << numbered;

    // All units that a text can end in, halves of characters too.
    QStringList endings;
    for (uint unit = 0; unit < 0x10000; ++unit)
        endings.append("net" + QString(QChar(unit)));
    QTest::newRow("all-endings") << endings;

    QStringList lengths;
    for (int length = 0; length < 500; ++length)
        lengths.append(QString(length, QLatin1Char('a')));
    QTest::newRow("all-lengths") << lengths;

    const auto [one, other] = meetingNames();
    QVERIFY(!one.isNull());
    QTest::newRow("of-one-hash") << QStringList{one, other};
}

void TestStringInterner::textsAreToldApart()
{
    QFETCH(QStringList, texts);
    StringInterner names;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < texts.size(); ++i) {
            QCOMPARE(names.contains(texts.at(i)), round == 1);
            QCOMPARE(names.intern(texts.at(i)), quint32(i));
        }
    }
    for (int i = 0; i < texts.size(); ++i)
        QCOMPARE(names.text(quint32(i)), QStringView(texts.at(i)));
}

void TestStringInterner::clearingForgetsAll()
{
    StringInterner names;
    names.intern(u"clk");
    names.clear();
    QVERIFY(!names.contains(u"clk"));
    QCOMPARE(names.count(), 0U);
    QCOMPARE(names.intern(u"rst"), 0U);
}

MOLK_TEST_GUILESS_MAIN(TestStringInterner)

#include "tst_stringinterner.moc"
