// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "childprocess.h"

#include <QFile>
#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

static const unsigned secondsToHang = 60;

[[noreturn]] static void runAndTell(const std::function<QString()> &work, int descriptor)
{
    ::alarm(secondsToHang);
    // A crash is to be one at once, without the handlers of the test library.
    for (int signal : {SIGSEGV, SIGBUS, SIGABRT, SIGILL, SIGFPE})
        std::signal(signal, SIG_DFL);
    QString text = work();
    if (text.isEmpty() && QTest::currentTestFailed())
        text = "a check failed or a warning came";
    const QByteArray bytes = text.toUtf8();
    const bool told = ::write(descriptor, bytes.constData(), std::size_t(bytes.size())) >= 0;
    ::_exit(bytes.isEmpty() && told ? 0 : 1);
}

QString inChild(const std::function<QString()> &work)
{
    int ends[2];
    if (::pipe(ends) != 0)
        return "no pipe";
    const pid_t child = ::fork();
    if (child == 0)
        runAndTell(work, ends[1]);
    ::close(ends[1]);
    QFile pipe;
    pipe.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    const QString text = QString::fromUtf8(pipe.readAll());

    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        return "no process";
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        return "hangs";
    if (WIFSIGNALED(status))
        return QString("ended by signal %1").arg(WTERMSIG(status));
    return WEXITSTATUS(status) != 0 && text.isEmpty() ? QString("ends early") : text;
}
