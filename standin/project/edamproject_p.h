// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "project/edamfile.h"
#include "project/edamproject.h"
#include "project/sourcewatcher.h"

#include <QHash>
#include <QVector>

namespace Standin {

struct EdamProject::Private
{
    EdamFileState file;
    EdamContents contents;
    QHash<QString, int> positions; // of each path's first entry
    QString overridingTop;
    std::unique_ptr<SourceWatcher> watcher;
    bool hasUnsavedChanges = false;

    QString absolute(const QString &name) const;
    int position(const QString &name) const { return positions.value(absolute(name), -1); }
    void index();
    void refreshWatch();
    bool change(const YamlNode &root, QString *error);

    /// change(), unless the editing of \a root has failed on parts that it shares.
    bool finish(bool edited, const YamlNode &root, QString *error);

    /// Sets \a found to the positions of \a names, ascending, each once.
    /// \return false with a sentence in \a error if one isn't in the project.
    bool find(const QStringList &names, QVector<int> *found, QString *error) const;
};

void sendEvent(const QString &name, const QVariantMap &values);

} // namespace Standin
