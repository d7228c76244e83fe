// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

namespace Workbench {

/// The files that were opened last, newest first, kept in the user's settings. Several workbenches
/// that run at the same time share the list.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    static constexpr int Most = 10;

    /// \param settingsKey where the list is kept.
    explicit RecentFiles(const QString &settingsKey, QObject *parent = nullptr);

    /// Absolute paths, at most Most of them; files that are gone are left in.
    QStringList paths() const;

    /// Puts \a path in front.
    void add(const QString &path);

    void remove(const QString &path);
    void clear();

signals:
    void changed();

private:
    void store(const QStringList &paths);

    QString key;
};

} // namespace Workbench
