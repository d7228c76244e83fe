// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "resources.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMetaMethod>
#include <QWidget>

#include <malloc.h>

// Nothing of ours goes on in other threads, so the numbers stand still while they are read.
static qint64 allocatedBytes()
{
    const struct mallinfo2 info = ::mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
}

static int watchesOf(const QString &descriptor)
{
    QFile info("/proc/self/fdinfo/" + descriptor);
    if (!info.open(QIODevice::ReadOnly))
        return 0;
    return info.readAll().count("inotify wd:");
}

Resources resourcesNow()
{
    Resources now = {};
    const QStringList descriptors = QDir("/proc/self/fd").entryList(QDir::Files | QDir::System);
    now.files = descriptors.size();
    for (const QString &descriptor : descriptors)
        now.watches += watchesOf(descriptor);
    now.widgets = QApplication::allWidgets().size();
    now.temporaryFiles =
        QDir::temp()
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
            .size();
    now.allocatedBytes = allocatedBytes();
    return now;
}

namespace {

// Says aloud what every object knows.
struct Sender : QObject
{
    using QObject::receivers;
};

} // namespace

int receiversOf(const QList<QObject *> &senders)
{
    int count = 0;
    for (const QObject *sender : senders) {
        const QMetaObject *type = sender->metaObject();
        for (int i = 0; i < type->methodCount(); ++i) {
            const QMetaMethod method = type->method(i);
            if (method.methodType() != QMetaMethod::Signal)
                continue;
            const QByteArray signal = '2' + method.methodSignature();
            count += (sender->*(&Sender::receivers))(signal.constData());
        }
    }
    return count;
}
