// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testmain.h"

#include "project/edamproject.h"

#include "qutil/ieventhandler.h"

#include <QByteArray>
#include <QStringList>
#include <QTemporaryDir>

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

    /// Writes \a text to the project file, and opens it.
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

/// A project of one Verilog and one VHDL file.
const QByteArray plainProject = "name: x\n"
                                "files:\n"
                                "  - name: a.v\n"
                                "    file_type: verilogSource-2005\n"
                                "  - name: b.vhd\n"
                                "    file_type: vhdlSource\n";
