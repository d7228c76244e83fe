// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <sys/types.h>

/// Makes a file grow while somebody reads it: from the first read on, by whichever process, a
/// process of its own appends text that isn't XML, as fast as it can and up to half a gibibyte,
/// until this object ends.
class GrowingFile
{
    Q_DISABLE_COPY(GrowingFile)

public:
    /// Watches \a path, a file that exists.
    explicit GrowingFile(const QString &path);
    ~GrowingFile();

    /// \return whether the file is watched, and so will grow.
    bool isWatched() const { return writer > 0; }

private:
    pid_t writer = -1;
};
