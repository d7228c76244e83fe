// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcessEnvironment>

/// The environment for a program whose streams are compared: settings and run-time files lie in
/// \a folder, and sanitizers say nothing unless they find something.
inline QProcessEnvironment childEnvironment(const QString &folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", folder);
    environment.insert("XDG_RUNTIME_DIR", folder);
    environment.insert("LSAN_OPTIONS", environment.value("LSAN_OPTIONS") + ":print_suppressions=0");
    return environment;
}
