// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/progress.h"
#include "frontend/toolbox.h"
#include "testmain.h"
#include "tooltest.h"

#include <QFile>
#include <QSignalSpy>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using Standin::ToolOutcome;

/// Milliseconds that processes may take on a machine that is busy with others. What must not end by
/// itself takes longer.
static const int patience = 60000;

/// Tools run with limits, and leave nothing behind.
class tst_ToolRunner : public ToolTest
{
    Q_OBJECT

private slots:
    void exitCodeAndOutputComeBack();
    void argumentsReachNoShell();
    void environmentIsClean();
    void inputIsEmpty();
    void missingProgramIsReported();
    void crashIsReported();
    void timeOutKillsTheGroup();
    void cancelKillsTheGroup();
    void applicationThatDiesTakesTheToolAlong_data();
    void applicationThatDiesTakesTheToolAlong();
    void cancelledBeforeTheStartRunsNothing();
    void quittingKillsTheTool();
    void memoryIsLimited();
    void fileLengthIsLimited();
    void crashLeavesNoCore();
    void eventLoopTurns();
    void workBesideTurnsTheEventLoop();
    void failuresAreDescribed_data();
    void failuresAreDescribed();
    void toolIsFound();
    void identityChangesWithTheProgram();
};

static bool isAlive(const QByteArray &pid)
{
    return ::kill(pid.trimmed().toInt(), 0) == 0 || errno != ESRCH;
}

/// A script that leaves a child behind which outlives its parent unless the group is killed, and
/// says who it is. The child becomes the kernel's to reap, so it is gone once it is killed.
static QString lingering()
{
    return "sleep 600 & echo $! > child.tmp; mv child.tmp child; wait";
}

void tst_ToolRunner::exitCodeAndOutputComeBack()
{
    Standin::Progress progress;
    const Standin::ToolResult result =
        Standin::runTool(shell("echo good; echo bad >&2; exit 3"), limits, progress);
    QCOMPARE(result.outcome, ToolOutcome::Finished);
    QCOMPARE(result.exitCode, 3);
    QVERIFY(!result.succeeded());
    QCOMPARE(content("out"), QByteArray("good\n"));
    QCOMPARE(content("err"), QByteArray("bad\n"));
    QVERIFY(Standin::runTool(shell("true"), limits, progress).succeeded());
}

void tst_ToolRunner::argumentsReachNoShell()
{
    Standin::Progress progress;
    Standin::ToolCommand command = shell("");
    command.program = "/usr/bin/printf";
    command.arguments = QStringList{"%s|", "a b", "$HOME", "`touch x`", "$(touch x)", ";touch x",
                                    "\"",  "'",   "*",     "-n",        "\n"};
    QVERIFY(Standin::runTool(command, limits, progress).succeeded());
    QCOMPARE(content("out"), QByteArray("a b|$HOME|`touch x`|$(touch x)|;touch x|\"|'|*|-n|\n|"));
    QVERIFY(!QFile::exists(directory.filePath("x")));
}

void tst_ToolRunner::environmentIsClean()
{
    qputenv("MOLK_SECRET", "x");
    Standin::Progress progress;
    Standin::ToolCommand command = shell("");
    command.program = "/usr/bin/env";
    command.arguments.clear();
    QVERIFY(Standin::runTool(command, limits, progress).succeeded());
    QList<QByteArray> variables = content("out").trimmed().split('\n');
    std::sort(variables.begin(), variables.end());
    const QByteArray path = QFile::encodeName(directory.path());
    QCOMPARE(variables,
             (QList<QByteArray>{"HOME=" + path, "LC_ALL=C.UTF-8", "PATH=/usr/bin:/bin",
                                "TMPDIR=" + path}));
    qunsetenv("MOLK_SECRET");
}

void tst_ToolRunner::inputIsEmpty()
{
    Standin::Progress progress;
    QVERIFY(Standin::runTool(shell("cat; echo end"), limits, progress).succeeded());
    QCOMPARE(content("out"), QByteArray("end\n"));
}

void tst_ToolRunner::missingProgramIsReported()
{
    Standin::Progress progress;
    Standin::ToolCommand command = shell("");
    command.program = "/nonexistent/tool";
    QCOMPARE(Standin::runTool(command, limits, progress).outcome, ToolOutcome::NotStarted);
}

void tst_ToolRunner::crashIsReported()
{
    Standin::Progress progress;
    const Standin::ToolResult result = Standin::runTool(shell("kill -SEGV $$"), limits, progress);
    QCOMPARE(result.outcome, ToolOutcome::Crashed);
    QCOMPARE(result.exitCode, SIGSEGV);
}

void tst_ToolRunner::timeOutKillsTheGroup()
{
    Standin::Progress progress;
    Standin::ToolLimits brief = limits;
    QFile::remove(directory.filePath("child"));
    QByteArray child;
    // A busy machine may need more than a second until the tool has left a child behind.
    for (brief.seconds = 1; child.isEmpty(); brief.seconds *= 2) {
        QCOMPARE(Standin::runTool(shell(lingering()), brief, progress).outcome,
                 ToolOutcome::TimedOut);
        child = content("child");
    }
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(child), patience);
}

void tst_ToolRunner::cancelKillsTheGroup()
{
    Standin::Progress progress;
    QFile::remove(directory.filePath("child"));
    QTimer poll;
    connect(&poll, &QTimer::timeout, &progress, [&] {
        if (QFile::exists(directory.filePath("child")))
            progress.cancel();
    });
    poll.start(5);
    QCOMPARE(Standin::runTool(shell(lingering()), limits, progress).outcome,
             ToolOutcome::Cancelled);
    const QByteArray child = content("child");
    QVERIFY(!child.isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(child), patience);
}

void tst_ToolRunner::applicationThatDiesTakesTheToolAlong_data()
{
    QTest::addColumn<bool>("confined");
    QTest::newRow("plain") << false;
    QTest::newRow("confined") << true;
}

void tst_ToolRunner::applicationThatDiesTakesTheToolAlong()
{
    QFETCH(bool, confined);
    // The number that a confined process has for itself isn't the one that others know it by, so it
    // is known by the file that it holds a lock on.
    const QString lock = directory.filePath("lock");
    QFile::remove(directory.filePath("locked"));
    const QString script = "exec 9>>lock; flock -x 9; touch locked; exec sleep 600";
    const pid_t application = ::fork();
    if (application == 0) {
        Standin::Progress progress;
        Standin::ToolBox tools((Standin::ExtractionOptions()));
        QStringList log;
        if (confined)
            tools.runConfined(shell(script), progress, &log);
        else
            tools.run(shell(script), progress);
        ::_exit(1);
    }
    QVERIFY(application > 0);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(directory.filePath("locked")), patience);
    QFile file(lock);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(::flock(file.handle(), LOCK_EX | LOCK_NB) != 0);

    QCOMPARE(::kill(application, SIGKILL), 0);
    QCOMPARE(::waitpid(application, nullptr, 0), application);
    QTRY_VERIFY_WITH_TIMEOUT(::flock(file.handle(), LOCK_EX | LOCK_NB) == 0, patience);
}

void tst_ToolRunner::cancelledBeforeTheStartRunsNothing()
{
    Standin::Progress progress;
    QSignalSpy spy(&progress, SIGNAL(cancelled()));
    progress.cancel();
    progress.cancel();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(Standin::runTool(shell("touch started"), limits, progress).outcome,
             ToolOutcome::Cancelled);
    QVERIFY(!QFile::exists(directory.filePath("started")));
}

void tst_ToolRunner::quittingKillsTheTool()
{
    Standin::Progress progress;
    QTimer::singleShot(50, QCoreApplication::instance(), SLOT(quit()));
    QCOMPARE(Standin::runTool(shell("sleep 600"), limits, progress).outcome,
             ToolOutcome::Cancelled);
    QVERIFY(progress.isCancelled());
    // Until an event loop of the application has run, no other loop would.
    QTimer::singleShot(0, QCoreApplication::instance(), SLOT(quit()));
    QCoreApplication::exec();
}

void tst_ToolRunner::memoryIsLimited()
{
    Standin::Progress progress;
    Standin::ToolLimits small = limits;
    small.memoryBytes = qint64(64) << 20;
    // dd takes its block as one piece of memory.
    const Standin::ToolCommand command = shell("dd if=/dev/zero of=/dev/null bs=200M count=1");
    QVERIFY(!Standin::runTool(command, small, progress).succeeded());
    QVERIFY(Standin::runTool(command, limits, progress).succeeded());
}

void tst_ToolRunner::fileLengthIsLimited()
{
    Standin::Progress progress;
    Standin::ToolLimits small = limits;
    small.fileBytes = 1 << 20;
    Standin::ToolCommand command = shell("");
    command.program = "/bin/dd";
    command.arguments =
        QStringList{"if=/dev/zero", "of=" + directory.filePath("big"), "bs=1M", "count=4"};
    const Standin::ToolResult result = Standin::runTool(command, small, progress);
    QCOMPARE(result.outcome, ToolOutcome::Crashed);
    QCOMPARE(result.exitCode, SIGXFSZ);
    QVERIFY(QFile(directory.filePath("big")).size() <= 1 << 20);
}

void tst_ToolRunner::crashLeavesNoCore()
{
    rlimit before{};
    QCOMPARE(::getrlimit(RLIMIT_CORE, &before), 0);
    const rlimit most{before.rlim_max, before.rlim_max};
    ::setrlimit(RLIMIT_CORE, &most);
    Standin::Progress progress;
    const bool succeeded = Standin::runTool(shell("ulimit -c"), limits, progress).succeeded();
    ::setrlimit(RLIMIT_CORE, &before);
    QVERIFY(succeeded);
    QCOMPARE(content("out"), QByteArray("0\n"));
}

void tst_ToolRunner::eventLoopTurns()
{
    Standin::Progress progress;
    // The tool goes on until the loop has turned twice.
    QTimer timer;
    int turns = 0;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (++turns == 2)
            QVERIFY(QFile(directory.filePath("turned")).open(QIODevice::WriteOnly));
    });
    timer.start(1);
    const QString script = "until [ -e turned ]; do sleep 0.01; done";
    QVERIFY(Standin::runTool(shell(script), limits, progress).succeeded());
    QVERIFY(turns >= 2);
}

void tst_ToolRunner::workBesideTurnsTheEventLoop()
{
    QTimer timer;
    std::atomic_bool turned{false};
    connect(&timer, &QTimer::timeout, this, [&] { turned = true; });
    timer.start(1);
    bool done = false;
    Standin::runBeside([&] {
        while (!turned)
            QThread::yieldCurrentThread();
        done = true;
    });
    QVERIFY(done);
}

void tst_ToolRunner::failuresAreDescribed_data()
{
    QTest::addColumn<int>("outcome");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, ToolOutcome outcome, int code, const char *text) {
        QTest::newRow(name) << int(outcome) << code << QString::fromLatin1(text);
    };
    row("exit-code", ToolOutcome::Finished, 3, "tool failed with exit code 3");
    row("missing", ToolOutcome::NotStarted, -1, "/bin/tool can't be started: is it installed?");
    row("crash", ToolOutcome::Crashed, SIGSEGV, "tool crashed (signal 11)");
    row("abort", ToolOutcome::Crashed, SIGABRT, "tool crashed (signal 6)");
    row("memory", ToolOutcome::OutOfMemory, SIGABRT, "tool gave up; it may use 4096 MB of memory");
    row("processor-time", ToolOutcome::Crashed, SIGXCPU,
        "tool was stopped after 120 s of processor time");
    row("output", ToolOutcome::Crashed, SIGXFSZ, "tool was stopped: it wrote more than 2048 MB");
    row("time-out", ToolOutcome::TimedOut, -1, "tool was stopped after 120 s");
    row("cancelled", ToolOutcome::Cancelled, -1, "cancelled");
}

void tst_ToolRunner::failuresAreDescribed()
{
    QFETCH(int, outcome);
    QFETCH(int, exitCode);
    const Standin::ToolResult result{ToolOutcome(outcome), exitCode};
    QTEST(Standin::describeFailure("/bin/tool", result, limits), "text");
}

void tst_ToolRunner::toolIsFound()
{
    QCOMPARE(Standin::findTool("/a/b", "sh"), QString("/a/b"));
    QVERIFY(QFile::exists(Standin::findTool(QString(), "sh")));
    QCOMPARE(Standin::findTool(QString(), "no-such-tool"), QString("/usr/bin/no-such-tool"));
}

void tst_ToolRunner::identityChangesWithTheProgram()
{
    const QString path = directory.filePath("tool");
    QVERIFY(Standin::toolIdentity(path).isEmpty());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("one");
    file.close();
    const QByteArray one = Standin::toolIdentity(path);
    QVERIFY(file.open(QIODevice::Append));
    file.write("two");
    file.close();
    QVERIFY(!one.isEmpty());
    QVERIFY(Standin::toolIdentity(path) != one);
}

MOLK_TEST_GUILESS_MAIN(tst_ToolRunner)
#include "tst_toolrunner.moc"
