// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "te/designmanager.h"
#include "te/flowmanager.h"

#include <QHash>
#include <QStringList>

namespace Standin {

class EdamProject;

/// The host's design and flow services: answers from the open project, unless a test has set an
/// answer of its own.
class HOST_EXPORT Design : public TE::DesignManager, public TE::FlowManager
{
public:
    /// Becomes what TE::TaskEngine hands out, until it is destroyed.
    Design();
    ~Design() override;

    QMap<QString, QVariant> getSourceFileInfo() const override;
    QVariant getOptionValue(const QString &name) const override;
    QString workingDir() const override;
    TE::DesignFile getFileInfo(const QString &path) const override;

    /// The file of the kind "RES.netlist" is "results/<project>.netlist" below workingDir().
    QString resultFile(const QString &kind) override;

    /// Makes \a project, which isn't owned and may be null, the one that is asked.
    void setProject(const EdamProject *project);

    /// Sets the whole answer of getSourceFileInfo().
    void setSourceFileInfo(const QMap<QString, QVariant> &info);

    /// Sets the answer of getSourceFileInfo() to the files \a paths and the top module \a top,
    /// which isn't set if it is null.
    void setSourceFiles(const QStringList &paths, const QString &top = QString());

    /// Sets one answer of getOptionValue(); an invalid \a value says that the option isn't set.
    void setOptionValue(const QString &name, const QVariant &value);

    void setWorkingDir(const QString &dir);

    /// Sets the answer of getFileInfo() for the path of \a file.
    void setFileInfo(const TE::DesignFile &file);

    /// Sets one answer of resultFile().
    void setResultFile(const QString &kind, const QString &path);

    /// Takes all answers back that were set.
    void clearAnswers();

private:
    const EdamProject *project = nullptr;
    bool hasSourceFileInfo = false;
    QMap<QString, QVariant> sourceFileInfo;
    QHash<QString, QVariant> options;
    QString directory;
    QHash<QString, TE::DesignFile> files;
    QHash<QString, QString> results;
};

} // namespace Standin
