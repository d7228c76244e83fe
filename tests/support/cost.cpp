// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "cost.h"

#include <QFile>
#include <QTest>

// The number behind `key` in a list of keys and numbers that the system makes up.
static qint64 valueIn(const QString &path, const QByteArray &key)
{
    QFile list(path);
    if (list.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = list.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith(key + ':'))
                return line.mid(key.size() + 1).simplified().split(' ').first().toLongLong();
        }
    }
    QTest::qFail("the system can't tell " + key, __FILE__, __LINE__);
    return 0;
}

// Starts to count the peak anew, as far as the system does that.
static void resetPeak()
{
    QFile references("/proc/self/clear_refs");
    if (references.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        references.write("5");
}

Cost costOf(const std::function<void()> &work)
{
    resetPeak();
    const qint64 memoryBefore = valueIn("/proc/self/status", "VmRSS");
    const qint64 readBefore = valueIn("/proc/self/io", "rchar");
    work();
    return {valueIn("/proc/self/io", "rchar") - readBefore,
            valueIn("/proc/self/status", "VmHWM") - memoryBefore};
}
