// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "blockcount.h"

#include "expression.h"
#include "expressionmatcher.h"

#include "testmain.h"

#include <QRandomGenerator>

using namespace MOLK;

class TestExpressionMatcher : public QObject
{
    Q_OBJECT

private slots:
    void partsThatAreTakenApart_data();
    void partsThatAreTakenApart();
    void requiredTextIsTheLongestThatMustStand_data();
    void requiredTextIsTheLongestThatMustStand();
    void answersEqualExactMatch_data();
    void answersEqualExactMatch();
    void answersEqualExactMatchOnAnyCharacters();
    void manyStatesAreForgotten();
    void longExpressionsAreMatchedToo();
    void costsGrowWithTheNames();
};

void TestExpressionMatcher::partsThatAreTakenApart_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("wildcard");
    QTest::addColumn<bool>("covered");
    const auto row = [](const char *name, const QString &pattern, bool wildcard, bool covered) {
        QTest::newRow(name) << pattern << wildcard << covered;
    };
    row("literal", "top/u0/clk", false, true);
    row("dots-and-quantifiers", ".*a+b?.", false, true);
    row("group-of-alternatives", ".*(valid|ready).*3", false, true);
    row("group-without-capture", "(?:ab)+", false, true);
    row("class-of-ranges", "[a-z_0-9]+", false, true);
    row("negated-class", "[^ab]*", false, true);
    row("escaped-bracket", "q\\[3\\]", false, true);
    row("bracket-closed-only", "a]", false, false);
    row("wildcard", "*_4?", true, true);
    row("wildcard-class", "*[0-3]*", true, true);
    row("wildcard-escape", "*q\\[3\\]", true, true);
    row("wildcard-specials-are-plain", "a.b+(c)$", true, true);

    row("counts", "a{2}", false, false);
    row("anchors", "^top$", false, false);
    row("lookahead", "(?=a).*", false, false);
    row("back-reference", "(a)\\1", false, false);
    row("class-escape", "\\d+", false, false);
    row("repeated-repetition", "(a*)*", false, false);
    row("two-quantifiers", "a**", false, false);
    row("empty-alternative", "a|", false, false);
    row("escape-in-a-class", "[\\]a]", false, false);
    row("beyond-ascii", QString::fromUtf8("\u00e9"), false, false);
    row("invalid", "(a", false, false);
    row("wildcard-trailing-backslash", "a\\", true, false);
    row("wildcard-two-backslashes", "a\\\\b", true, false);
    row("wildcard-empty-class", "[]a]", true, false);
}

void TestExpressionMatcher::partsThatAreTakenApart()
{
    QFETCH(QString, pattern);
    QFETCH(bool, wildcard);
    QFETCH(bool, covered);
    Expression expression;
    QCOMPARE(parseExpression(pattern, Qt::CaseSensitive,
                             wildcard ? QRegExp::WildcardUnix : QRegExp::RegExp, &expression),
             covered);
}

void TestExpressionMatcher::requiredTextIsTheLongestThatMustStand_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("required");
    QTest::newRow("between-dots") << ".*fifo_full.*"
                                  << "fifo_full";
    QTest::newRow("longest-of-two") << "ab.*cdef.gh"
                                    << "cdef";
    QTest::newRow("escaped") << ".*q\\[3\\]"
                             << "q[3]";
    QTest::newRow("optional-character") << "abx?cd"
                                        << "ab";
    QTest::newRow("repeated-character") << "abcd*ef"
                                        << "abc";
    QTest::newRow("groups-do-not-count") << "a(bcd)e"
                                         << "a";
    QTest::newRow("alternatives-outside") << "abc|def"
                                          << "";
    QTest::newRow("alternatives-in-a-group") << "ab(c|d)efg"
                                             << "efg";
    QTest::newRow("classes-do-not-count") << "a[bc]de"
                                          << "de";
}

void TestExpressionMatcher::requiredTextIsTheLongestThatMustStand()
{
    QFETCH(QString, pattern);
    QFETCH(QString, required);
    Expression expression;
    QVERIFY(parseExpression(pattern, Qt::CaseSensitive, QRegExp::RegExp, &expression));
    QCOMPARE(expression.required, required);
}

namespace {

/// Random expressions of a grammar that holds what is covered and some of what isn't, and names
/// that stand a chance of matching them.
class RandomText
{
public:
    explicit RandomText(quint32 seed)
        : random(seed)
    {
    }

    int below(int limit) { return int(random.bounded(limit)); }

    QString one(const QStringList &choices) { return choices.at(below(choices.size())); }

    QString expression(int depth = 0)
    {
        QString text = sequence(depth);
        while (below(6) == 0)
            text += "|" + sequence(depth);
        return text;
    }

    QString wildcard()
    {
        static const QStringList parts{"a",    "b",    "ab", "B", "/",  "*",   "*",   "?", "[ab]",
                                       "[^a]", "[!a]", "[",  "]", "\\", "\\*", "\\[", "1", ".",
                                       "(",    ")",    "|",  "{", "}",  "+",   "$",   "^"};
        QString text;
        for (int count = 1 + below(6); count > 0; --count)
            text += one(parts);
        return text;
    }

    QString name(const QString &alphabet)
    {
        QString text;
        for (int count = below(9); count > 0; --count)
            text += alphabet.at(below(alphabet.size()));
        return text;
    }

private:
    QString sequence(int depth)
    {
        QString text;
        for (int count = below(40) == 0 ? 0 : 1 + below(4); count > 0; --count)
            text += atom(depth) + quantifier();
        return text;
    }

    QString quantifier()
    {
        static const QStringList quantifiers{"",  "",  "",  "",  "",    "*",
                                             "+", "?", "*", "?", "{2}", "*?"};
        return one(quantifiers);
    }

    QString atom(int depth)
    {
        static const QStringList atoms{
            "a",   "b",   "A", "ab",  "/",   "1",      ".", ".", "[ab]", "[a-c]", "[^a]", "[A1]",
            "\\[", "\\.", "]", "\\d", "\\w", "[a\\]]", "-", "^", "$",    "[^b-]", "[/-1]"};
        if (depth < 3 && below(5) == 0)
            return one({"(", "(", "(?:", "(?=", ""}) + expression(depth + 1) + ")";
        return one(atoms);
    }

    QRandomGenerator random;
};

} // namespace

void TestExpressionMatcher::answersEqualExactMatch_data()
{
    QTest::addColumn<bool>("wildcard");
    QTest::addColumn<bool>("caseSensitive");
    QTest::newRow("wildcard") << true << true;
    QTest::newRow("wildcard-any-case") << true << false;
    QTest::newRow("expression") << false << true;
    QTest::newRow("expression-any-case") << false << false;
}

namespace {

// What has been compared so far.
struct Compared
{
    int expressions = 0;
    int covered = 0;
    int invalid = 0;
    int pairs = 0;
    int matches = 0;
};

} // namespace

static void compareAnswers(const QString &pattern, Qt::CaseSensitivity sensitivity,
                           QRegExp::PatternSyntax syntax, const QStringList &names,
                           Compared *compared)
{
    const ExpressionMatcher matcher(pattern, sensitivity, syntax);
    const QRegExp expression(pattern, sensitivity, syntax);
    ++compared->expressions;
    compared->covered += matcher.isCovered() ? 1 : 0;
    compared->invalid += expression.isValid() ? 0 : 1;
    for (const QString &name : names) {
        const bool expected = expression.exactMatch(name);
        ++compared->pairs;
        compared->matches += expected ? 1 : 0;
        if (matcher.matches(name) != expected) {
            const QString what = QString("%1 on %2: syntax %3, sensitivity %4, wanted %5")
                                     .arg(pattern, name)
                                     .arg(int(syntax))
                                     .arg(int(sensitivity))
                                     .arg(int(expected));
            QTest::qFail(qPrintable(what), __FILE__, __LINE__);
        }
    }
}

// A comparison of QRegExp with itself, or of answers that are all alike, would say nothing.
static void checkCompared(const Compared &compared, int wantedPairs)
{
    QCOMPARE(compared.pairs, wantedPairs);
    QVERIFY(compared.covered > compared.expressions / 5);
    QVERIFY(compared.invalid > compared.expressions / 50);
    QVERIFY(compared.matches > compared.pairs / 50);
    QVERIFY(compared.matches < compared.pairs / 2);
}

// All comparisons together are more than a million pairs.
void TestExpressionMatcher::answersEqualExactMatch()
{
    QFETCH(bool, wildcard);
    QFETCH(bool, caseSensitive);
    RandomText random(wildcard ? 31 : 32);
    Compared compared;
    static const int rounds = 11000;
    for (int round = 0; round < rounds && !QTest::currentTestFailed(); ++round) {
        const QString pattern = wildcard ? random.wildcard() : random.expression();
        const auto sensitivity = caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const auto syntax = wildcard ? QRegExp::WildcardUnix : QRegExp::RegExp;
        QStringList names;
        for (int k = 0; k < 25; ++k)
            names.append(random.name("aAbBc/1[]."));
        compareAnswers(pattern, sensitivity, syntax, names, &compared);
    }
    checkCompared(compared, rounds * 25);
}

void TestExpressionMatcher::answersEqualExactMatchOnAnyCharacters()
{
    RandomText random(33);
    const QString alphabet =
        QString::fromUtf8("abk\u212aS\u017f\u00e9\u00c9\u0130i\n\u1e9e\u00df\t");
    Compared compared;
    static const int rounds = 10000;
    for (int round = 0; round < rounds && !QTest::currentTestFailed(); ++round) {
        const bool wildcard = random.below(2);
        const QString pattern = wildcard ? random.wildcard() : random.expression();
        QStringList names;
        for (int k = 0; k < 8; ++k)
            names.append(random.name(alphabet));
        compareAnswers(random.one({pattern, pattern + "*k", "[^s]*" + pattern, "i" + pattern}),
                       random.below(2) ? Qt::CaseSensitive : Qt::CaseInsensitive,
                       wildcard ? QRegExp::WildcardUnix : QRegExp::RegExp, names, &compared);
    }
    checkCompared(compared, rounds * 8);
}

void TestExpressionMatcher::manyStatesAreForgotten()
{
    // The state has to remember where each of the last fifteen characters was an "a".
    const QString pattern = ".*a" + QString(14, '.');
    RandomText random(34);
    QStringList names;
    for (int k = 0; k < 400; ++k) {
        QString name;
        for (int i = 0; i < 100; ++i)
            name += random.name("ab").left(1);
        names.append(name);
    }
    Compared compared;
    compareAnswers(pattern, Qt::CaseSensitive, QRegExp::RegExp, names, &compared);
    QVERIFY(compared.covered);
}

void TestExpressionMatcher::longExpressionsAreMatchedToo()
{
    Compared compared;
    const QString path = QString("u_level/").repeated(60);
    for (int size : {200, 255, 256, 257, 400}) {
        const QString name = path.left(size);
        compareAnswers(name, Qt::CaseSensitive, QRegExp::WildcardUnix, {name, name + "x", path},
                       &compared);
        compareAnswers(name.left(size - 2) + ".*", Qt::CaseInsensitive, QRegExp::RegExp,
                       {name, name.left(size - 3), path.toUpper()}, &compared);
    }
    QCOMPARE(compared.pairs, 30);
}

void TestExpressionMatcher::costsGrowWithTheNames()
{
    const auto cost = [](int count) {
        QStringList names;
        for (int i = 0; i < count; ++i)
            names.append(QString("top/u%1/net_%2").arg(i % 77).arg(i));
        const BlockCount counted;
        for (const QString &pattern : QStringList{"*_4?", "*net*", "*[02468]"}) {
            const ExpressionMatcher matcher(pattern, Qt::CaseInsensitive, QRegExp::WildcardUnix);
            for (const QString &name : qAsConst(names))
                matcher.matches(name);
        }
        return counted.blocks();
    };
    const qint64 small = cost(1000);
    QVERIFY(small > 1000);
    QVERIFY(cost(10000) < 11 * small);
}

MOLK_TEST_GUILESS_MAIN(TestExpressionMatcher)

#include "tst_expressionmatcher.moc"
