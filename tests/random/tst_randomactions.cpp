// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "player.h"
#include "shrinker.h"
#include "stage.h"

#include "testwidgetsmain.h"

#include <QElapsedTimer>

#include <cstdio>

/// Plays random actions on the plug-in and on a plain model of it.
///
/// MOLK_RANDOM_STEPS sets how many, MOLK_RANDOM_SEED where to begin. Each session is one to three
/// files that are opened, edited, closed and reopened beside each other; its seed alone repeats it,
/// by MOLK_RANDOM_SEED and at most as many steps as a session has.
class TestRandomActions : public QObject
{
    Q_OBJECT

private slots:
    void shrinkerLeavesOutWhatDoesNotMatter();
    void pluginBehavesAsThePlainModel();
};

// The offscreen platform drops drags; this one runs them, without a display either.
static const bool platformIsSet = qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");

// The number of steps decides how long it takes; a test function's usual limit is five minutes.
static const bool limitIsSet = qputenv("QTEST_FUNCTION_TIMEOUT", "86400000");

static const int stepsOfASession = 200;

static int stepsWanted()
{
    const int steps = qEnvironmentVariableIntValue("MOLK_RANDOM_STEPS");
    return steps > 0 ? steps : 5000;
}

static quint64 firstSeed()
{
    const QByteArray seed = qgetenv("MOLK_RANDOM_SEED");
    return seed.isEmpty() ? 1 : seed.toULongLong();
}

static QString report(Stage *stage, quint64 seed, const QList<Step> &steps, const QString &fault,
                      const QString &lastStep)
{
    // A shorter sequence may fail in a worse way, so what is known is said at once.
    fprintf(stderr, "seed %llu: %s\n  in step: %s\n", static_cast<unsigned long long>(seed),
            qPrintable(fault), qPrintable(lastStep));
    const auto fails = [stage, seed](const QList<Step> &fewer) {
        return !Player(stage, seed).play(fewer).isEmpty();
    };
    const QList<Step> fewest = shortest(steps, fails, 400);
    Player last(stage, seed);
    const QString lastFault = last.play(fewest);
    QStringList lines = {"seed " + QString::number(seed) + ": " + fault,
                         "shortest sequence, " + QString::number(fewest.size()) + " steps:"};
    const QStringList story = last.story();
    for (int i = 0; i < story.size(); ++i)
        lines.append("  " + QString::number(i) + ": " + story.at(i));
    lines.append(lastFault);
    return lines.join('\n');
}

void TestRandomActions::shrinkerLeavesOutWhatDoesNotMatter()
{
    QList<Step> steps;
    for (int i = 0; i < 100; ++i)
        steps.append({i, 0});
    const auto needsTwo = [](const QList<Step> &rest) {
        int found = 0;
        for (const Step &step : rest)
            found += step.action == 17 || step.action == 80;
        return found == 2;
    };
    const QList<Step> fewest = shortest(steps, needsTwo, 1000);
    QCOMPARE(fewest.size(), 2);
    QCOMPARE(fewest.at(0).action, 17);
    QCOMPARE(fewest.at(1).action, 80);
}

void TestRandomActions::pluginBehavesAsThePlainModel()
{
    QVERIFY(platformIsSet && limitIsSet);
    Stage stage;
    int left = stepsWanted();
    QElapsedTimer time;
    time.start();
    for (quint64 seed = firstSeed(); left > 0; ++seed) {
        Dice dice(seed);
        const QList<Step> steps = Player::randomSteps(dice, qMin(left, stepsOfASession));
        left -= steps.size();
        // Standing in the log before it begins, a session that crashes can be repeated.
        if (qEnvironmentVariableIsSet("MOLK_RANDOM_TRACE"))
            fprintf(stderr, "session %llu, %lld ms\n", static_cast<unsigned long long>(seed),
                    static_cast<long long>(time.elapsed()));
        Player player(&stage, seed);
        const QString fault = player.play(steps);
        if (!fault.isEmpty()) {
            const QString last = player.story().last();
            QFAIL(report(&stage, seed, steps, fault, last).toLocal8Bit().constData());
        }
    }
}

MOLK_TEST_MAIN(TestRandomActions)
#include "tst_randomactions.moc"
