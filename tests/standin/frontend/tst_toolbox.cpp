// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "confinement.h"
#include "frontend/progress.h"
#include "frontend/toolbox.h"
#include "testmain.h"
#include "tooltest.h"

#include <QDir>
#include <QTemporaryFile>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

/// Confined tools, and what is said where they can't be confined.
class tst_ToolBox : public ToolTest
{
    Q_OBJECT

private slots:
    void confinedToolWritesOnlyInItsDirectory();
    void confinedToolReachesNothingElse();
    void confinedToolEndsAsByItself_data();
    void confinedToolEndsAsByItself();
    void missingConfinementIsSaidOnce();
    void confinementThatFailsIsSaid();
};

/// Where the machine can't confine, the tool has to run all the same, which the next test shows.
void tst_ToolBox::confinedToolWritesOnlyInItsDirectory()
{
    const QTemporaryDir outside(QDir::currentPath() + "/molk-test-XXXXXX");
    QVERIFY(outside.isValid());
    Standin::ToolBox tools((Standin::ExtractionOptions()));
    Standin::Progress progress;
    QStringList log;
    const QString canary = outside.filePath("canary");
    const Standin::ToolResult result =
        tools.runConfined(shell("touch inside; touch '" + canary + "'"), progress, &log);
    QVERIFY(QFile::exists(directory.filePath("inside")));
    QCOMPARE(log.isEmpty(), machineConfines());
    if (log.isEmpty()) {
        QVERIFY(!result.succeeded());
        QVERIFY(!QFile::exists(canary));
    } else {
        QVERIFY(log.first().startsWith("WARNING: bubblewrap"));
        QVERIFY(result.succeeded());
    }
}

namespace {

/// A server on this machine that takes connections and leaves them.
class LocalServer
{
public:
    LocalServer()
        : descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto *any = reinterpret_cast<sockaddr *>(&address);
        if (::bind(descriptor, any, length) == 0 && ::listen(descriptor, 8) == 0
            && ::getsockname(descriptor, any, &length) == 0)
            port = ntohs(address.sin_port);
    }

    ~LocalServer() { ::close(descriptor); }

    Q_DISABLE_COPY(LocalServer)

    int port = 0;

private:
    int descriptor;
};

} // namespace

/// Each act works for a tool that isn't confined, which shows that it is one.
void tst_ToolBox::confinedToolReachesNothingElse()
{
    const LocalServer server;
    QVERIFY(server.port > 0);
    QTemporaryFile other("/tmp/molk-test-XXXXXX");
    QVERIFY(other.open());
    const QStringList acts = {
        QString("bash -c 'exec 3<>/dev/tcp/127.0.0.1/%1'").arg(server.port),
        "test -e " + other.fileName(),
        QString("kill -0 %1").arg(::getpid()),
        "touch " + QDir::homePath() + "/molk-test-canary",
    };
    const QString canary = QDir::homePath() + "/molk-test-canary";
    Standin::ToolBox tools((Standin::ExtractionOptions()));
    Standin::Progress progress;
    for (const QString &act : acts) {
        QStringList log;
        QVERIFY2(tools.run(shell(act), progress).succeeded(), qPrintable(act));
        QFile::remove(canary);
        const bool works = tools.runConfined(shell(act), progress, &log).succeeded();
        if (!machineConfines()) {
            QFile::remove(canary);
            return;
        }
        QVERIFY2(!works, qPrintable(act));
        QVERIFY(!QFile::exists(canary));
    }
}

void tst_ToolBox::confinedToolEndsAsByItself_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("success") << "true";
    QTest::newRow("failure") << "exit 3";
    QTest::newRow("crash") << "kill -SEGV $$";
    QTest::newRow("processor-time") << "kill -XCPU $$";
    QTest::newRow("output") << "ulimit -f 1; exec dd if=/dev/zero of=big bs=1M count=1";
}

void tst_ToolBox::confinedToolEndsAsByItself()
{
    QFETCH(QString, script);
    Standin::Progress progress;
    Standin::ToolBox tools((Standin::ExtractionOptions()));
    QStringList log;
    const Standin::ToolResult plain = tools.run(shell(script), progress);
    const Standin::ToolResult confined = tools.runConfined(shell(script), progress, &log);
    QCOMPARE(confined.outcome, plain.outcome);
    QCOMPARE(confined.exitCode, plain.exitCode);
    QCOMPARE(confined.succeeded(), script == "true");
}

void tst_ToolBox::missingConfinementIsSaidOnce()
{
    Standin::ExtractionOptions options;
    options.bubblewrap = "/nonexistent/bwrap";
    Standin::ToolBox tools(options);
    Standin::Progress progress;
    QStringList log;
    QVERIFY(tools.runConfined(shell("true"), progress, &log).succeeded());
    QVERIFY(tools.runConfined(shell("true"), progress, &log).succeeded());
    QCOMPARE(log,
             QStringList("WARNING: bubblewrap is missing or can't be used here, so GHDL runs "
                         "without confinement; VHDL from a source that you don't trust could "
                         "write to your files"));
    QCOMPARE(tools.runs(), 2);
}

void tst_ToolBox::confinementThatFailsIsSaid()
{
    Standin::ExtractionOptions options;
    options.bubblewrap = "/bin/false";
    Standin::ToolBox tools(options);
    Standin::Progress progress;
    QStringList log;
    QVERIFY(tools.runConfined(shell("true"), progress, &log).succeeded());
    QCOMPARE(log.size(), 1);
}

MOLK_TEST_GUILESS_MAIN(tst_ToolBox)
#include "tst_toolbox.moc"
