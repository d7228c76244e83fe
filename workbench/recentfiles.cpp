// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "recentfiles.h"

#include <QFileInfo>
#include <QSettings>

namespace Workbench {

RecentFiles::RecentFiles(const QString &settingsKey, QObject *parent)
    : QObject(parent)
    , key(settingsKey)
{
}

QStringList RecentFiles::paths() const
{
    return QSettings().value(key).toStringList().mid(0, Most);
}

void RecentFiles::add(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QStringList list = paths();
    list.removeAll(absolute);
    list.prepend(absolute);
    store(list.mid(0, Most));
}

void RecentFiles::remove(const QString &path)
{
    QStringList list = paths();
    if (list.removeAll(QFileInfo(path).absoluteFilePath()) > 0)
        store(list);
}

void RecentFiles::clear()
{
    store(QStringList());
}

void RecentFiles::store(const QStringList &paths)
{
    QSettings().setValue(key, paths);
    emit changed();
}

} // namespace Workbench
