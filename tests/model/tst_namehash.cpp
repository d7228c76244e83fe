// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "alikenames.h"
#include "namehash.h"
#include "testmain.h"

#include <QSet>

using MOLK::nameHash;

/// Names that were made to meet in a hash table don't, and nothing of a name is left out.
class TestNameHash : public QObject
{
    Q_OBJECT

private slots:
    void equalNamesHaveEqualHashes();
    void everyUnitCounts_data();
    void everyUnitCounts();
    void lengthCounts();
    void lowestBitsAreSpread_data();
    void lowestBitsAreSpread();
};

void TestNameHash::equalNamesHaveEqualHashes()
{
    const QString name("top/u_core/q");
    QCOMPARE(nameHash(QString("top/u_core/").append(QLatin1Char('q'))), nameHash(name));
    QCOMPARE(nameHash(QString("")), nameHash(QString()));
}

void TestNameHash::everyUnitCounts_data()
{
    QTest::addColumn<int>("length");

    for (int length : {1, 7, 8, 9, 16, 55})
        QTest::addRow("%d-units", length) << length;
}

void TestNameHash::everyUnitCounts()
{
    QFETCH(int, length);
    QSet<uint> hashes{nameHash(QString(length, QLatin1Char('n')))};
    for (int i = 0; i < length; ++i) {
        for (const QChar other : {QChar('o'), QChar('\0'), QChar(0x6E00)}) {
            QString name(length, QLatin1Char('n'));
            name[i] = other;
            hashes.insert(nameHash(name));
        }
    }
    // Two of a handful of names meet in one of millions of runs.
    QCOMPARE(hashes.size(), 3 * length + 1);
}

void TestNameHash::lengthCounts()
{
    QSet<uint> hashes;
    for (int length = 0; length < 40; ++length)
        hashes.insert(nameHash(QString(length, QChar('\0'))));
    QCOMPARE(hashes.size(), 40);
}

void TestNameHash::lowestBitsAreSpread_data()
{
    QTest::addColumn<bool>("alike");

    QTest::newRow("counted-names") << false;
    QTest::newRow("names-alike-to-qHash") << true;
}

void TestNameHash::lowestBitsAreSpread()
{
    QFETCH(bool, alike);
    QVERIFY(qHash(alikeName(1)) == qHash(alikeName(2)));

    // As many names as places leave 1/e of the places empty, by chance.
    const int places = 1 << 16;
    QVector<int> names(places, 0);
    for (int i = 0; i < places; ++i) {
        const QString name = alike ? alikeName(i) : QString("top/u_core/q[%1]").arg(i);
        ++names[int(nameHash(name) % places)];
    }
    const int empty = names.count(0);
    QVERIFY2(empty > places * 0.36 && empty < places * 0.376, qPrintable(QString::number(empty)));
    QVERIFY(*std::max_element(names.cbegin(), names.cend()) < 16);
}

MOLK_TEST_GUILESS_MAIN(TestNameHash)
#include "tst_namehash.moc"
