// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QtGlobal>

class QObject;

/// What a process holds at a moment, apart from what lies unused in the allocator.
struct Resources
{
    qint64 allocatedBytes; ///< What the C library's allocator has handed out.
    int files;             ///< Open file descriptors.
    int watches;           ///< Watches of all inotify descriptors.
    int widgets;           ///< All of the application's.
    int temporaryFiles;    ///< Entries of the directory for temporary files.
};

/// Takes stock now.
Resources resourcesNow();

/// How many receivers the signals of \a senders have.
int receiversOf(const QList<QObject *> &senders);
