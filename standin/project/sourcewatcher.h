// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

namespace Standin {

/// Tells when the content of files changes, however that comes about: written in place, replaced by
/// renaming, removed, or brought back.
///
/// The file system's signs only make it look; what counts is whether the bytes differ from those it
/// saw last. Signs are gathered for a tenth of a second, so that a file that is emptied and written
/// anew counts once.
class HOST_EXPORT SourceWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SourceWatcher(QObject *parent = nullptr);

    /// Watches the files \a paths, absolute, and no others. What they hold now is the content that
    /// changes are told from; for files watched before, it stays what was seen last.
    void setFiles(const QStringList &paths);

signals:
    /// The content of \a path differs from what it was, or the file has gone or come back.
    void modified(const QString &path);

private slots:
    void onFileChanged(const QString &path);
    void onDirectoryChanged();
    void look();

private:
    void watch(const QString &path);
    void watchDirectoryOf(const QString &path);

    QFileSystemWatcher watcher;
    QTimer timer;
    QHash<QString, QByteArray> contents; // a digest for each file; null for one that isn't there
    QSet<QString> missing; // files that can't be watched for now, their directories are
    QSet<QString> due;
};

} // namespace Standin
