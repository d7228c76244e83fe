// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "plainfile.h"

#include "molkformat.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MOLK {

bool isUsableFileName(const QString &fileName)
{
    return !fileName.isEmpty() && !fileName.contains(QChar('\0'));
}

static QString openDescriptor(QFile *file, int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return "this is no regular file";
    if (status.st_size > Format::maximumFileSize) {
        return QString("the file is larger than the limit of %1 MiB")
            .arg(Format::maximumFileSize / (1024 * 1024));
    }
    // Files that the system makes up, as below /proc, say that they hold nothing. They may well
    // never end, so they are taken at their word.
    if (status.st_size == 0)
        return "the file is empty";
    // Who reads it has a buffer of his own.
    const QIODevice::OpenMode mode = QIODevice::ReadOnly | QIODevice::Unbuffered;
    if (!file->open(descriptor, mode, QFileDevice::AutoCloseHandle))
        return "the file can't be read: " + file->errorString();
    return QString();
}

QString openPlainFile(QFile *file)
{
    if (!isUsableFileName(file->fileName()) || !QFileInfo::exists(file->fileName()))
        return "there is no such file";
    if (!QFileInfo(file->fileName()).isFile())
        return "this is no regular file";

    // The name may come to mean something else between this look and the opening. Without blocking
    // even a pipe that was slipped in is opened at once, and the look at what was opened refuses
    // it.
    const QByteArray path = QFile::encodeName(file->fileName());
    const int descriptor = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0)
        return "the file can't be opened: " + qt_error_string(errno);
    const QString cause = openDescriptor(file, descriptor);
    if (!cause.isEmpty())
        ::close(descriptor);
    return cause;
}

} // namespace MOLK
