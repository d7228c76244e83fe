// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "alikenames.h"
#include "blockcount.h"
#include "literalvalidation.h"
#include "testmain.h"
#include "validationcores.h"

#include "netlist/netlistbuilder.h"

#include "fathom/rtlnetlist.h"

#include <QRandomGenerator>

#include <memory>

using namespace MOLK;

/// Whatever a configuration holds, the quick way to judge it answers as the plain one does, and its
/// costs grow no faster than the names.
class tst_ValidationScale : public QObject
{
    Q_OBJECT

private slots:
    void randomConfigurationsAreJudgedAsByThePlainWay();
    void namesThatAreAlikeToAHashAreToldApart();
    void costsGrowWithTheNames_data();
    void costsGrowWithTheNames();
};

static QString randomName(QRandomGenerator &random)
{
    static const QStringList names = {"",     "a",   "A",      "top/a", "top/A", "top/b",  "top/q",
                                      "%1",   "%2",  "\"",     "q[1]",  "q[0]",  "q[1:0]", "top/",
                                      "<b>a", "a b", "\u00e4", "z",     "clk",   "rst",    "none"};
    return names.at(int(random.bounded(names.size())));
}

static QList<SignalItem> randomItems(QRandomGenerator &random)
{
    QList<SignalItem> items;
    for (int n = int(random.bounded(5)); n > 0; --n) {
        SignalItem item = net(randomName(random));
        for (int bits = int(random.bounded(4)) - 1; bits > 0; --bits)
            item.members.append(net(randomName(random)));
        items.append(item);
    }
    return items;
}

void tst_ValidationScale::randomConfigurationsAreJudgedAsByThePlainWay()
{
    Standin::NetlistBuilder builder("top");
    builder.addNet(0, "a");
    builder.addNet(0, "b", Standin::NoProbeIn);
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
    int withFaults = 0;

    for (quint32 seed = 0; seed < 5000; ++seed) {
        QRandomGenerator random(seed);
        Cores cores;
        for (int n = int(random.bounded(5)); n > 0; --n) {
            MolkCore *core = cores.add();
            core->id = int(random.bounded(20));
            core->useUserClock = random.bounded(2) == 1;
            core->setUserClockName(randomName(random));
            core->getProbeIn(0)->setSignalNet(randomItems(random));
            for (int ports = int(random.bounded(4)); ports > 0; --ports)
                drive(core, int(random.bounded(6)), randomItems(random));
        }

        const FATHOM::RtlNetlist *given = random.bounded(4) ? netlist.get() : nullptr;
        const QStringList wanted = literalFaults(cores.cores, given);
        if (cores.faults(given) != wanted)
            QCOMPARE(cores.faults(given), QStringList(QString("seed %1").arg(seed)) + wanted);
        withFaults += wanted.isEmpty() ? 0 : 1;
    }

    // Both kinds came up often.
    QVERIFY(withFaults > 500);
    QVERIFY(withFaults < 4900);
}

void tst_ValidationScale::namesThatAreAlikeToAHashAreToldApart()
{
    QList<SignalItem> items;
    for (int i = 0; i < 4096; ++i)
        items.append(net(alikeName(i)));
    items.append(items.at(17));
    Cores cores;
    drive(cores.add(), 0, items);

    QCOMPARE(cores.faults(), literalFaults(cores.cores, nullptr));
    QCOMPARE(cores.faults().size(), 1);
}

// Distinct names, names that were made to meet in a hash table, each name twice, one name for all.
static QString nameOfShape(const QString &shape, int number)
{
    if (shape == "alike")
        return alikeName(number);
    return QString("top/q%1").arg(shape == "twice" ? number / 2 : shape == "one" ? 0 : number);
}

void tst_ValidationScale::costsGrowWithTheNames_data()
{
    QTest::addColumn<QString>("shape");

    for (const char *shape : {"distinct", "alike", "twice", "one"})
        QTest::newRow(shape) << QString::fromLatin1(shape);
}

void tst_ValidationScale::costsGrowWithTheNames()
{
    QFETCH(QString, shape);
    const auto cost = [&shape](int names) {
        QList<SignalItem> items;
        for (int i = 0; i < names; ++i)
            items.append(net(nameOfShape(shape, i)));
        Cores cores;
        drive(cores.add(), 0, items);
        const BlockCount counted;
        const QStringList faults = cores.faults();
        return counted.blocks();
    };
    const qint64 small = cost(2048);
    QVERIFY(small > 2048);
    QVERIFY2(cost(20480) < 13 * small, "ten times the names cost more than 13 times as much");
}

MOLK_TEST_GUILESS_MAIN(tst_ValidationScale)
#include "tst_validationscale.moc"
