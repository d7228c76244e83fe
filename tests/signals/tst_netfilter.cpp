// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "blockcount.h"
#include "designs.h"
#include "filters.h"

#include "hierarchymatch.h"
#include "netmatcher.h"

#include "testmain.h"

#include <QRandomGenerator>

using namespace MOLK;

class TestNetFilter : public QObject
{
    Q_OBJECT

private slots:
    void modesTestTheFullName_data();
    void modesTestTheFullName();
    void emptyPatternPassesEverythingInEveryMode();
    void invalidExpressionsPassNothing_data();
    void invalidExpressionsPassNothing();
    void scopeDecidesWhatIsSearched_data();
    void scopeDecidesWhatIsSearched();
    void busesComeByTheirOwnNameAlone();
    void nothingIsFoundWithoutANetlist();
    void whatTheListsHeldIsGone();
    void literalMatchesEqualIndexOf();
    void expressionMatchesEqualExactMatch();
    void searchCostsGrowWithTheNames();
};

static const QStringList allNames{"top/clk",
                                  "top/Rst.n",
                                  "top/u_core/busy",
                                  "top/u_core/valid",
                                  "top/u_core/u_fifo/full_4x",
                                  "top/u_core/u_fifo/wr*en",
                                  "top/u_pad/ready",
                                  "top/data[3:0]",
                                  "top/ctl[1:2]",
                                  "top/u_core/q[1:0]",
                                  "top/u_core/u_fifo/mem[2:0]"};

void TestNetFilter::modesTestTheFullName_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("caseSensitive");
    QTest::addColumn<QStringList>("names");

    const auto row = [](const char *name, const QString &pattern, const QString &mode,
                        bool caseSensitive, const QStringList &names) {
        QTest::newRow(name) << pattern << mode << caseSensitive << names;
    };
    row("normal-anywhere", "u_pad/re", "normal", false, {"top/u_pad/ready"});
    row("normal-ignores-case", "RST", "normal", false, {"top/Rst.n"});
    row("normal-minds-case", "rst", "normal", true, {});
    row("normal-dot-is-plain", "t.n", "normal", true, {"top/Rst.n"});
    row("normal-star-is-plain", "r*e", "normal", true, {"top/u_core/u_fifo/wr*en"});
    row("normal-blanks-count", " clk", "normal", false, {});
    row("normal-brackets", "q[1", "normal", false, {"top/u_core/q[1:0]"});
    row("wildcard-needs-the-whole-name", "clk", "wildcard", false, {});
    row("wildcard-without-wildcards", "top/clk", "wildcard", false, {"top/clk"});
    row("wildcard-stars-at-both-ends", "*_fifo/*", "wildcard", false,
        {"top/u_core/u_fifo/full_4x", "top/u_core/u_fifo/wr*en", "top/u_core/u_fifo/mem[2:0]"});
    row("wildcard-question-mark", "top/?lk", "wildcard", false, {"top/clk"});
    row("wildcard-class", "*/[cv]*l[ki]*", "wildcard", true, {"top/clk", "top/u_core/valid"});
    row("wildcard-backslash-escapes", "*data\\[3:0\\]", "wildcard", true, {"top/data[3:0]"});
    row("wildcard-ignores-case", "*RST*", "wildcard", false, {"top/Rst.n"});
    row("wildcard-minds-case", "*RST*", "wildcard", true, {});
    row("expression-needs-the-whole-name", "clk|ready", "expression", false, {});
    row("expression-alternatives", ".*(clk|ready)", "expression", false,
        {"top/clk", "top/u_pad/ready"});
    row("expression-repeats", "top(/u_[a-z]+)+/[a-z]+", "expression", true,
        {"top/u_core/busy", "top/u_core/valid", "top/u_pad/ready"});
    row("expression-minds-case", ".*rst.*", "expression", true, {});
    row("expression-longest-alternative-wins", "top/c(l|lk)", "expression", true, {"top/clk"});
}

void TestNetFilter::modesTestTheFullName()
{
    QFETCH(QString, pattern);
    QFETCH(QString, mode);
    QFETCH(bool, caseSensitive);
    QFETCH(QStringList, names);
    const Design design = searchDesign();
    const NetFilter filter =
        filterFor(pattern, mode, caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive);
    QCOMPARE(found(design, everywhere(filter, design)), names);
}

void TestNetFilter::emptyPatternPassesEverythingInEveryMode()
{
    const Design design = searchDesign();
    for (const QString &mode : allModes)
        QCOMPARE(found(design, everywhere(filterFor("", mode), design)), allNames);
}

void TestNetFilter::invalidExpressionsPassNothing_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("mode");
    QTest::newRow("open-group") << "top/clk("
                                << "expression";
    QTest::newRow("nothing-to-repeat") << "*"
                                       << "expression";
    QTest::newRow("reversed-count") << "a{2,1}"
                                    << "expression";
    QTest::newRow("open-class") << "top/[c"
                                << "wildcard";
}

void TestNetFilter::invalidExpressionsPassNothing()
{
    QFETCH(QString, pattern);
    QFETCH(QString, mode);
    const Design design = searchDesign();
    QCOMPARE(found(design, everywhere(filterFor(pattern, mode), design)), QStringList());
}

void TestNetFilter::scopeDecidesWhatIsSearched_data()
{
    QTest::addColumn<QString>("scope");
    QTest::addColumn<bool>("withSub");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("top-alone") << "" << false
                               << QStringList{"top/clk", "top/Rst.n", "top/data[3:0]",
                                              "top/ctl[1:2]"};
    QTest::newRow("top-with-all") << "" << true << allNames;
    QTest::newRow("level-alone") << "u_core" << false
                                 << QStringList{"top/u_core/busy", "top/u_core/valid",
                                                "top/u_core/q[1:0]"};
    QTest::newRow("level-with-its-own")
        << "u_core" << true
        << QStringList{"top/u_core/busy",           "top/u_core/valid",
                       "top/u_core/u_fifo/full_4x", "top/u_core/u_fifo/wr*en",
                       "top/u_core/q[1:0]",         "top/u_core/u_fifo/mem[2:0]"};
    QTest::newRow("empty-level") << "u_core/u_idle" << true << QStringList();
}

void TestNetFilter::scopeDecidesWhatIsSearched()
{
    QFETCH(QString, scope);
    QFETCH(bool, withSub);
    QFETCH(QStringList, names);
    const Design design = searchDesign();
    NetFilter filter;
    filter.advanced = true;
    filter.scope = levelAt(design, scope);
    filter.includeSubentries = withSub;
    QCOMPARE(found(design, filter), names);

    filter.advanced = false; // The scope doesn't count then.
    QCOMPARE(found(design, filter),
             QStringList({"top/clk", "top/Rst.n", "top/data[3:0]", "top/ctl[1:2]"}));
}

void TestNetFilter::busesComeByTheirOwnNameAlone()
{
    const Design design = searchDesign();
    QCOMPARE(found(design, everywhere(filterFor("data[3]", "normal"), design)), QStringList());
    QCOMPARE(found(design, everywhere(filterFor("data[3:", "normal"), design)),
             QStringList("top/data[3:0]"));
}

void TestNetFilter::nothingIsFoundWithoutANetlist()
{
    const Design design = searchDesign();
    QList<FATHOM::RtlNet *> nets = design->top->singleNets();
    QList<FATHOM::RtlNetBus *> buses = design->top->netbuses();
    collectNets(nullptr, NetFilter(), nets, buses);
    QVERIFY(nets.isEmpty());
    QVERIFY(buses.isEmpty());

    NetFilter filter;
    filter.advanced = true;
    QCOMPARE(found(design, filter), QStringList());
}

void TestNetFilter::whatTheListsHeldIsGone()
{
    const Design design = searchDesign();
    QList<FATHOM::RtlNet *> nets = design->top->singleNets();
    QList<FATHOM::RtlNetBus *> buses = design->top->netbuses();
    collectNets(design.get(), everywhere(filterFor("ready", "normal"), design), nets, buses);
    QCOMPARE(nets.size(), 1);
    QVERIFY(buses.isEmpty());
}

// Words out of few characters, upper and lower case, with some beyond ASCII and beyond Latin-1.
static QString randomWord(QRandomGenerator &random, int most)
{
    static const QString alphabet = QString::fromUtf8("aAbBcC_/01[]:.*?kK\u212a\u017f\u00e9\u00c9");
    QString word;
    const int length = int(random.bounded(most + 1));
    for (int i = 0; i < length; ++i)
        word.append(alphabet.at(int(random.bounded(alphabet.size()))));
    return word;
}

void TestNetFilter::literalMatchesEqualIndexOf()
{
    QRandomGenerator random(62);
    for (int round = 0; round < 60000; ++round) {
        const Qt::CaseSensitivity sensitivity =
            random.bounded(2) ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const QString pattern = randomWord(random, 4);
        const QString name = randomWord(random, 24);
        const NetMatcher matcher(filterFor(pattern, "normal", sensitivity));
        const bool expected = name.indexOf(pattern, 0, sensitivity) != -1;
        QVERIFY2(matcher.matches(name) == expected, qPrintable(pattern + " in " + name));
    }
}

static QString randomPattern(QRandomGenerator &random)
{
    static const QStringList parts{"a",    "B",    "c_",    "/", "*",   "?",    ".*",  ".",
                                   "[ab]", "[^c]", "(a|b)", "+", "\\[", "x{2}", "\\d", "|",
                                   "(",    ")",    "$",     "^", "[",   "]",    "\\",  "k"};
    QString pattern;
    const int length = 1 + int(random.bounded(5));
    for (int i = 0; i < length; ++i)
        pattern.append(parts.at(int(random.bounded(parts.size()))));
    return pattern;
}

void TestNetFilter::expressionMatchesEqualExactMatch()
{
    QRandomGenerator random(63);
    for (int round = 0; round < 8000; ++round) {
        const QString mode = allModes.at(1 + int(random.bounded(2)));
        const Qt::CaseSensitivity sensitivity =
            random.bounded(2) ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const NetFilter filter = filterFor(randomPattern(random), mode, sensitivity);
        const NetMatcher matcher(filter);
        for (int k = 0; k < 8; ++k) {
            const QString name = randomWord(random, k);
            const bool expected =
                QRegExp(filter.pattern, filter.caseSensitivity, filter.syntax).exactMatch(name);
            QVERIFY2(matcher.matches(name) == expected,
                     qPrintable(mode + " " + filter.pattern + " on " + name));
        }
    }
}

static Design wideDesign(int nets)
{
    Standin::NetlistBuilder builder("top");
    const int levels = nets / 64;
    for (int i = 0; i < levels; ++i) {
        const int level = builder.addLevel(0, QString("u%1").arg(i), "m");
        for (int k = 0; k < 32; ++k) {
            builder.addNet(level, QString("net_%1").arg(k));
            builder.addBus(level, QString("bus_%1").arg(k), 1, 0);
        }
    }
    return Design(builder.build());
}

void TestNetFilter::searchCostsGrowWithTheNames()
{
    const auto cost = [](int nets) {
        const Design design = wideDesign(nets);
        QList<FATHOM::RtlNet *> foundNets;
        QList<FATHOM::RtlNetBus *> foundBuses;
        const BlockCount counted;
        for (const QString &mode : allModes) {
            for (const QString &pattern : QStringList{"", "net_1", "*net*", ".*(net|bus)_.*"}) {
                const NetFilter filter = everywhere(filterFor(pattern, mode), design);
                collectNets(design.get(), filter, foundNets, foundBuses);
                matchHierarchy(filter);
            }
        }
        return counted.blocks();
    };
    const qint64 small = cost(640);
    QVERIFY(small > 640);
    QVERIFY2(cost(6400) < 12 * small, "ten times the names cost more than 12 times as much");
}

MOLK_TEST_GUILESS_MAIN(TestNetFilter)

#include "tst_netfilter.moc"
