// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "project/sourcewatcher.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Standin {

static const int gatherMilliseconds = 100;

// No source is that long; reading it each time would stall the user interface.
static const qint64 mostBytes = qint64(64) << 20;

static QByteArray digest(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return QByteArray();

    QCryptographicHash hash(QCryptographicHash::Sha1);
    QFile file(path);
    if (info.size() > mostBytes)
        hash.addData(QByteArray::number(info.lastModified().toMSecsSinceEpoch()));
    else if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return QByteArray();
    return hash.result();
}

SourceWatcher::SourceWatcher(QObject *parent)
    : QObject(parent)
{
    timer.setSingleShot(true);
    timer.setInterval(gatherMilliseconds);
    connect(&timer, SIGNAL(timeout()), this, SLOT(look()));
    connect(&watcher, SIGNAL(fileChanged(QString)), this, SLOT(onFileChanged(QString)));
    connect(&watcher, SIGNAL(directoryChanged(QString)), this, SLOT(onDirectoryChanged()));
}

void SourceWatcher::setFiles(const QStringList &paths)
{
    // What stays is left alone, since a sign that is under way would be lost with its watch.
    const QSet<QString> wanted(paths.cbegin(), paths.cend());
    const QStringList before = contents.keys();
    for (const QString &path : before) {
        if (wanted.contains(path))
            continue;
        contents.remove(path);
        missing.remove(path);
        due.remove(path);
        watcher.removePath(path);
    }
    for (const QString &path : wanted) {
        if (contents.contains(path))
            continue;
        watch(path);
        contents.insert(path, digest(path));
    }
}

void SourceWatcher::watch(const QString &path)
{
    if (!QFileInfo(path).isFile() || !watcher.addPath(path))
        missing.insert(path);
    watchDirectoryOf(path);
}

// A file that isn't there is announced by the nearest directory that is.
void SourceWatcher::watchDirectoryOf(const QString &path)
{
    QString directory = QFileInfo(path).path();
    while (!QFileInfo(directory).isDir() && directory != QFileInfo(directory).path())
        directory = QFileInfo(directory).path();
    watcher.addPath(directory);
}

void SourceWatcher::onFileChanged(const QString &path)
{
    if (!contents.contains(path))
        return;
    due.insert(path);
    if (!timer.isActive())
        timer.start();
}

void SourceWatcher::onDirectoryChanged()
{
    if (missing.isEmpty())
        return;
    due.unite(missing);
    if (!timer.isActive())
        timer.start();
}

void SourceWatcher::look()
{
    const QSet<QString> looking = std::exchange(due, {});
    QStringList changed;
    for (const QString &path : looking) {
        // A replaced file is another one to the file system. The watch comes before the look, so
        // that a change in between isn't lost.
        watcher.removePath(path);
        missing.remove(path);
        watch(path);
        const QByteArray now = digest(path);
        QByteArray &before = contents[path];
        if (now == before)
            continue;
        before = now;
        changed.append(path);
    }

    changed.sort();
    for (const QString &path : qAsConst(changed))
        emit modified(path);
}

} // namespace Standin
