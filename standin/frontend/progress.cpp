// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/progress.h"

#include <QEventLoop>
#include <QThread>

#include <memory>

namespace Standin {

Progress::Progress(QObject *parent)
    : QObject(parent)
{
}

Progress::~Progress() = default;

void Progress::enterStage(const QString &text)
{
    emit stageChanged(text);
}

void Progress::cancel()
{
    if (stopped)
        return;
    stopped = true;
    emit cancelled();
}

void runBeside(const std::function<void()> &work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    QEventLoop loop;
    QObject::connect(thread.get(), SIGNAL(finished()), &loop, SLOT(quit()));
    thread->start();
    loop.exec();
    // The loop also ends when the application quits; the work is bounded, so it is waited for.
    thread->wait();
}

} // namespace Standin
