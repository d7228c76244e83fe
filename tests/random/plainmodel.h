// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/// What a configuration is, as values alone. Nothing here uses the code under test.
namespace Plain {

struct Signal
{
    QString name = QString("");
    QString alias;
    QList<Signal> members;
    bool selectable = true;
    bool found = true;
    int kind = -1;

    QString text() const { return alias.isEmpty() ? name : alias; }
    int width() const { return members.isEmpty() ? 1 : members.size(); }
};

using Items = QList<Signal>;

int widthOf(const Items &items);

/// The names of all single nets, buses taken apart.
QStringList singleNames(const Items &items);

struct Port
{
    Items items;
    QString value = "0x0"; ///< Of Probe Outs alone.
};

struct Core
{
    QString module;
    QString clock;
    bool useClock = false;
    QList<Port> ins = {Port()};
    QList<Port> outs = {Port()};
};

using Configuration = QList<Core>;

/// The bytes that a configuration is written as.
QByteArray fileText(const Configuration &configuration);

/// The model in the lines of modelLines().
QStringList linesOf(const Configuration &configuration);

} // namespace Plain
