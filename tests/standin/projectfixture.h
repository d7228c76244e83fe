// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testmain.h"

#include "project/edamproject.h"

#include "qutil/ieventhandler.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

#include <memory>

/// Hears all events of a project, and sees what the project says at that moment.
class EventList : public QUtil::IEventHandler
{
public:
    EventList();
    ~EventList() override;

    void handleIEvent(const QUtil::IEvent *event) override;

    /// The events so far, one line each, as "TE.File.Add file=/a.v". The list is empty afterwards.
    QStringList take() { return std::exchange(lines, {}); }

    const Standin::EdamProject *project = nullptr;
    int filesAtEvent = -1;

private:
    QStringList lines;
};

/// A folder with the project file "x.eda.yml", and the events that come from it. Whatever can't be
/// done fails the running test.
class ProjectFixture
{
public:
    ProjectFixture();

    /// Writes \a text to the project file, and returns its path.
    QString write(const QByteArray &text);

    /// Writes \a text to the project file, and opens it. A warning is a failure too.
    std::unique_ptr<Standin::EdamProject> open(const QByteArray &text);

    /// What the project file holds.
    QByteArray read() const;

    /// Makes the empty file \a name and its directories, and returns its path.
    QString touch(const QString &name);

    QString in(const QString &name) const { return directory.filePath(name); }

    QTemporaryDir directory;
    EventList events;
    QString error;
};

/// Base of the tests of projects: each test function begins with a fresh folder.
class ProjectTest : public QObject
{
    Q_OBJECT

protected:
    std::unique_ptr<ProjectFixture> x;

private slots:
    void init() { x = std::make_unique<ProjectFixture>(); }
    void cleanup() { x.reset(); }
};

/// The paths of the files that the extraction is told of.
QStringList pathsIn(const QMap<QString, QVariant> &designInfo);

/// A project of one Verilog and one VHDL file.
const QByteArray plainProject = "name: x\n"
                                "files:\n"
                                "  - name: a.v\n"
                                "    file_type: verilogSource-2005\n"
                                "  - name: b.vhd\n"
                                "    file_type: vhdlSource\n";
