// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "acts.h"
#include "childprocess.h"
#include "loops.h"
#include "testwidgetsmain.h"
#include "turnloop.h"

#include <QTimer>

/// Views, pages, dialogs and netlists end at each moment at which a nested event loop runs, and
/// neither crash nor hang nor lose what was edited.
///
/// All cases together take minutes, so a usual run takes each fifth of them, which meets each loop
/// and each act; with MOLK_FULL set in the environment all are run.
///
/// Each case runs in a process of its own, made by fork: the plug-in can be shut down only once in
/// a process, and a case that crashes is one line in the list of failures.
class TestLifetime : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void viewsMayEndInside_data();
    void viewsMayEndInside();
};

// The offscreen platform drops drags; this one runs them, without a display either.
static const bool platformIsSet = qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");

// What differs from the edits that should be there, beyond what the loop's own end may change.
static QString lostEdits(const LoopCase &loop, QStringList expected, QStringList found)
{
    for (const QString &edit : QStringList(expected)) {
        if (found.removeOne(edit))
            expected.removeOne(edit);
    }
    if (expected.size() <= loop.mayChange)
        return QString();
    return "lost " + expected.join(", ") + ", found " + found.join(", ");
}

static void judge(Scene &scene, const LoopCase &loop, const LifetimeAct &act)
{
    if (!scene.disorder().isEmpty())
        scene.failures.append(scene.disorder());
    if (loop.opensView) {
        if (scene.view)
            scene.savedEdits();
        return;
    }

    const bool isIgnored = (loop.forbidsSave && act.saves) || (loop.readsDesign && act.readsDesign);
    if (scene.view && act.endsView && !loop.mayEnd && !isIgnored)
        scene.failures.append("the view is still there");
    if (!scene.view && !act.endsView && !loop.mayEnd)
        scene.failures.append("the view is gone");
    if (!scene.view && loop.mayEnd)
        return;

    QStringList before;
    for (int i = 0; i < loop.configuration.cores; ++i)
        before.append(QString("edit %1").arg(i));
    const QStringList found = scene.view ? scene.savedEdits() : scene.editsOnDisk();
    const QString lost = lostEdits(loop, act.keeps(before), found);
    if (!lost.isEmpty())
        scene.failures.append(lost);
}

static QString play(const LoopCase &loop, const LifetimeAct &act, const QString &answer)
{
    QStringList failures;
    {
        LoopDriver driver;
        Scene scene;
        scene.write(loop.configuration);
        if (!loop.opensView)
            scene.open();
        driver.setWay(loop.way);
        driver.setAct([&] { act.run(scene); },
                      [&](QWidget *window) { answerLoop(window, answer); });
        QTimer::singleShot(0, &driver, [&] {
            if (scene.failures.isEmpty())
                loop.run(scene, driver);
            QCoreApplication::quit();
        });
        QCoreApplication::exec();
        turnLoop();
        if (!driver.isReached())
            scene.failures.append("the loop wasn't reached");
        judge(scene, loop, act);
        failures = scene.failures;
    }
    return failures.join("; ");
}

void TestLifetime::initTestCase()
{
    QVERIFY(platformIsSet);
    QCOMPARE(QGuiApplication::platformName(), QString("minimal"));
}

void TestLifetime::viewsMayEndInside_data()
{
    QTest::addColumn<int>("loop");
    QTest::addColumn<int>("act");
    QTest::addColumn<QString>("answer");
    const QList<LoopCase> loops = nestedLoops();
    const QList<LifetimeAct> &acts = lifetimeActs();
    const int stride = qEnvironmentVariableIsSet("MOLK_FULL") ? 1 : 5;
    int count = 0;
    for (int loop = 0; loop < loops.size(); ++loop) {
        for (int act = 0; act < acts.size(); ++act) {
            for (const QString &answer : loops.at(loop).answers) {
                if (count++ % stride != 0)
                    continue;
                const QString name =
                    loops.at(loop).name + '/' + QLatin1String(acts.at(act).name) + '/' + answer;
                QTest::newRow(qPrintable(name)) << loop << act << answer;
            }
        }
    }
}

void TestLifetime::viewsMayEndInside()
{
    QFETCH(int, loop);
    QFETCH(int, act);
    QFETCH(QString, answer);
    static const QList<LoopCase> loops = nestedLoops();
    const auto work = [&] {
        return play(loops.at(loop), lifetimeActs().at(act), answer);
    };
    QCOMPARE(inChild(work), QString());
}

MOLK_TEST_MAIN(TestLifetime)
#include "tst_lifetime.moc"
