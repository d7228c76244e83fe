// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QStringList>
#include <QVariant>

/// Adds \a line to what the test reads: the libraries and the test share no symbols, so the news
/// go through the application object.
inline void tell(const QString &line)
{
    qApp->setProperty("news", qApp->property("news").toStringList() << line);
}

/// An object for the host's pool that says when it goes.
class Pooled : public QObject
{
public:
    explicit Pooled(const QString &name) { setObjectName(name); }
    ~Pooled() override { tell("deleted " + objectName()); }
};
