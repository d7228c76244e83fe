// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>

/// Whether this machine lets bubblewrap confine a program. Containers often don't; where it does,
/// a tool that runs without is a fault.
inline bool machineConfines()
{
    return QProcess::execute("bwrap",
                             {"--ro-bind", "/", "/", "--dev", "/dev", "--tmpfs", "/tmp",
                              "--unshare-all", "--die-with-parent", "--new-session", "--",
                              "/bin/true"})
        == 0;
}
