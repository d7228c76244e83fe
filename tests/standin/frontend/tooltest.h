// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "frontend/toolrunner.h"

#include <QFile>
#include <QObject>
#include <QTemporaryDir>

/// Base of the tests that run tools: a directory for them, with the shell as the tool.
class ToolTest : public QObject
{
    Q_OBJECT

protected:
    /// A run of the shell in the directory, with its output and errors in "out" and "err".
    Standin::ToolCommand shell(const QString &script) const
    {
        Standin::ToolCommand command;
        command.program = "/bin/sh";
        command.arguments = QStringList{"-c", script};
        command.directory = directory.path();
        command.outputFile = directory.filePath("out");
        command.errorFile = directory.filePath("err");
        return command;
    }

    /// What a file of the directory holds; null if there is none.
    QByteArray content(const QString &name) const
    {
        QFile file(directory.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir directory;
    Standin::ToolLimits limits;
};
