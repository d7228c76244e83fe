// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "blockcount.h"
#include "nameorder.h"
#include "testmain.h"

#include <QRandomGenerator>

#include <algorithm>
#include <numeric>

using namespace MOLK;

class TestNameOrder : public QObject
{
    Q_OBJECT

private slots:
    void namesComeInTheOrderOfQString_data();
    void namesComeInTheOrderOfQString();
    void randomNamesComeInTheOrderOfQString();
    void costGrowsWithTheNames();
};

static QVector<int> order(const QStringList &names)
{
    QVector<const QString *> pointers;
    for (const QString &name : names)
        pointers.append(&name);
    return nameOrder(pointers);
}

// What the order is by definition.
static QVector<int> plainOrder(const QStringList &names)
{
    QVector<int> positions(names.size());
    std::iota(positions.begin(), positions.end(), 0);
    std::stable_sort(positions.begin(), positions.end(),
                     [&](int a, int b) { return names.at(a) < names.at(b); });
    return positions;
}

static QStringList numbered(const QString &begin, int count, const QString &end)
{
    QStringList names;
    for (int i = count; i > 0; --i)
        names.append(begin + QString::number(i) + end);
    return names;
}

void TestNameOrder::namesComeInTheOrderOfQString_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList("a");
    QTest::newRow("few") << QStringList({"b", "a", "", "B", "ab"});
    QTest::newRow("one beginning") << numbered("top/u_core/u_alu/result", 50, "");
    QTest::newRow("one end") << numbered("", 50, "/top/u_core/u_alu/result");

    QStringList beginnings;
    for (int length = 0; length < 60; ++length)
        beginnings.prepend(QString("top/a_name").repeated(6).left(length));
    QTest::newRow("beginnings of each other") << beginnings;

    QTest::newRow("each many times") << numbered("a", 12, "").mid(0, 5) + numbered("a", 12, "")
            + numbered("a", 12, "") + QStringList(QVector<QString>(30, "same").toList());
    QTest::newRow("units above a surrogate") << numbered("n", 10, QString(QChar(0xFFFD)))
            + numbered("n", 10, "\U0001F600") + numbered("n", 10, QString(QChar(0xD7FF)));

    QStringList withNul;
    for (int i = 0; i < 40; ++i)
        withNul.prepend("bus" + QString(i % 20, QChar(0)) + QString(i % 2, 'x'));
    QTest::newRow("units of 0") << withNul;
}

void TestNameOrder::namesComeInTheOrderOfQString()
{
    QFETCH(QStringList, names);
    QCOMPARE(order(names), plainOrder(names));
}

void TestNameOrder::randomNamesComeInTheOrderOfQString()
{
    QRandomGenerator random(1);
    for (int round = 0; round < 300; ++round) {
        QStringList names;
        const int count = random.bounded(200);
        const QString letters = QString("ab/[") + QChar(0) + QChar(0xE9) + QChar(0xFFFF);
        for (int i = 0; i < count; ++i) {
            QString name = names.isEmpty()
                ? ""
                : names.at(random.bounded(names.size())).left(random.bounded(40));
            for (int j = random.bounded(10); j > 0; --j)
                name.append(letters.at(random.bounded(1 + random.bounded(letters.size()))));
            names.append(name);
        }
        QVERIFY2(order(names) == plainOrder(names), qPrintable(names.join('\n')));
    }
}

void TestNameOrder::costGrowsWithTheNames()
{
    const auto cost = [](int count) {
        const QStringList names = numbered(QString("level/").repeated(100), count, "");
        const BlockCount counted;
        order(names);
        return counted.blocks();
    };
    const qint64 small = cost(1000);
    // What the names have in common is read here, and so counted.
    QVERIFY(small > 600 * 1000);
    QVERIFY2(cost(10000) < 12 * small, "ten times the names cost more than 12 times as much");
}

MOLK_TEST_GUILESS_MAIN(TestNameOrder)
#include "tst_nameorder.moc"
