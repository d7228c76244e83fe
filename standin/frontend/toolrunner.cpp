// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/toolrunner.h"

#include "frontend/progress.h"

#include <QDateTime>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace Standin {

static void limit(__rlimit_resource resource, qint64 soft, qint64 hard)
{
    // A hard limit that is lower already stays: raising it needs rights that we may not have.
    rlimit now{};
    if (::getrlimit(resource, &now) != 0)
        return;
    const rlimit next{std::min(rlim_t(soft), now.rlim_max), std::min(rlim_t(hard), now.rlim_max)};
    ::setrlimit(resource, &next);
}

/// A process in a group of its own with the limits set. What the child does between fork and exec
/// is restricted to plain system calls.
class LimitedProcess : public QProcess
{
public:
    explicit LimitedProcess(const ToolLimits &limitsOfRun)
        : limits(limitsOfRun)
        , parent(::getpid())
    {
    }

    void killGroup()
    {
        const pid_t group = pid_t(processId());
        if (group <= 0)
            return;
        // The child may not have come to its own group yet, so it is named itself as well.
        ::kill(-group, SIGKILL);
        ::kill(group, SIGKILL);
    }

protected:
    void setupChildProcess() override
    {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        // The parent may have died before the line above took hold.
        if (::getppid() != parent)
            ::_exit(127);
        if (limits.memoryBytes > 0)
            limit(RLIMIT_AS, limits.memoryBytes, limits.memoryBytes);
        if (limits.fileBytes > 0)
            limit(RLIMIT_FSIZE, limits.fileBytes, limits.fileBytes);
        // At the hard limit the signal is an unspecific one, so it lies a little above.
        limit(RLIMIT_CPU, limits.seconds, limits.seconds + 5);
        limit(RLIMIT_CORE, 0, 0);
    }

private:
    ToolLimits limits;
    pid_t parent;
};

static QProcessEnvironment cleanEnvironment(const QString &directory)
{
    // File names that hold a dollar sign are looked up in the environment by some tools, so nothing
    // of ours is in it.
    QProcessEnvironment environment;
    environment.insert("PATH", "/usr/bin:/bin");
    environment.insert("LC_ALL", "C.UTF-8");
    environment.insert("HOME", directory);
    environment.insert("TMPDIR", directory);
    return environment;
}

static void redirect(QProcess *process, const ToolCommand &command)
{
    const QString null = QProcess::nullDevice();
    process->setStandardInputFile(null);
    process->setStandardOutputFile(command.outputFile.isEmpty() ? null : command.outputFile);
    process->setStandardErrorFile(command.errorFile.isEmpty() ? null : command.errorFile);
}

// What the C++ library writes when nobody catches that there is no memory.
static bool saysThatMemoryIsWanting(const QString &errorFile)
{
    static constexpr int LastWords = 4096;
    QFile file(errorFile);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    file.seek(qMax<qint64>(0, file.size() - LastWords));
    return file.read(LastWords).contains("std::bad_alloc");
}

ToolResult runTool(const ToolCommand &command, const ToolLimits &limits, Progress &progress)
{
    ToolResult result;
    if (progress.isCancelled()) {
        result.outcome = ToolOutcome::Cancelled;
        return result;
    }

    LimitedProcess process(limits);
    process.setWorkingDirectory(command.directory);
    process.setProcessEnvironment(cleanEnvironment(command.directory));
    redirect(&process, command);

    QEventLoop loop;
    QTimer clock;
    clock.setSingleShot(true);
    QObject::connect(&process, SIGNAL(finished(int, QProcess::ExitStatus)), &loop, SLOT(quit()));
    QObject::connect(&process, SIGNAL(errorOccurred(QProcess::ProcessError)), &loop, SLOT(quit()));
    QObject::connect(&progress, SIGNAL(cancelled()), &loop, SLOT(quit()));
    QObject::connect(&clock, SIGNAL(timeout()), &loop, SLOT(quit()));

    clock.start(limits.seconds * 1000);
    process.start(command.program, command.arguments);
    if (process.state() != QProcess::NotRunning)
        loop.exec();

    // A crash is reported ahead of the end; a failed start leaves nothing to wait for.
    if (process.error() == QProcess::Crashed)
        process.waitForFinished(-1);
    if (process.state() != QProcess::NotRunning) {
        const bool timedOut = !clock.isActive() && !progress.isCancelled();
        process.killGroup();
        process.waitForFinished(-1);
        result.outcome = timedOut ? ToolOutcome::TimedOut : ToolOutcome::Cancelled;
        // When the application quits, nothing that belongs to this reading must go on either.
        if (!timedOut)
            progress.cancel();
        return result;
    }
    if (process.error() == QProcess::FailedToStart)
        return result;
    result.exitCode = process.exitCode();
    if (process.exitStatus() == QProcess::NormalExit)
        result.outcome = ToolOutcome::Finished;
    else if (result.exitCode == SIGABRT && saysThatMemoryIsWanting(command.errorFile))
        result.outcome = ToolOutcome::OutOfMemory;
    else
        result.outcome = ToolOutcome::Crashed;
    return result;
}

bool ranIntoLimit(const ToolResult &result)
{
    if (result.outcome != ToolOutcome::Crashed)
        return result.outcome == ToolOutcome::OutOfMemory;
    return result.exitCode == SIGXCPU || result.exitCode == SIGXFSZ || result.exitCode == SIGKILL;
}

static QString describeCrash(const QString &name, int signal, const ToolLimits &limits)
{
    switch (signal) {
    case SIGXCPU:
        return QString("%1 was stopped after %2 s of processor time").arg(name).arg(limits.seconds);
    case SIGXFSZ:
        return QString("%1 was stopped: it wrote more than %2 MB")
            .arg(name)
            .arg(limits.fileBytes >> 20);
    default:
        return QString("%1 crashed (signal %2)").arg(name).arg(signal);
    }
}

QString describeFailure(const QString &program, const ToolResult &result, const ToolLimits &limits)
{
    const QString name = QFileInfo(program).fileName();
    switch (result.outcome) {
    case ToolOutcome::Finished:
        return QString("%1 failed with exit code %2").arg(name).arg(result.exitCode);
    case ToolOutcome::Crashed:
        return describeCrash(name, result.exitCode, limits);
    case ToolOutcome::OutOfMemory:
        return QString("%1 gave up; it may use %2 MB of memory")
            .arg(name)
            .arg(limits.memoryBytes >> 20);
    case ToolOutcome::NotStarted:
        return QString("%1 can't be started: is it installed?").arg(program);
    case ToolOutcome::TimedOut:
        return QString("%1 was stopped after %2 s").arg(name).arg(limits.seconds);
    case ToolOutcome::Cancelled:
        break;
    }
    return "cancelled";
}

QString findTool(const QString &configured, const QString &name)
{
    if (!configured.isEmpty())
        return configured;
    const QString fallback = "/usr/bin/" + name;
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? fallback : found;
}

QByteArray toolIdentity(const QString &path)
{
    const QFileInfo program(path);
    if (!program.isFile())
        return QByteArray();
    return program.canonicalFilePath().toUtf8() + '\0' + QByteArray::number(program.size()) + '\0'
        + QByteArray::number(program.lastModified().toMSecsSinceEpoch());
}

} // namespace Standin
