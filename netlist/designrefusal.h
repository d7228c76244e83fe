// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

namespace MOLK {

/// Why a design can't be worked with, as a message box tells it. The default is no refusal.
struct DesignRefusal
{
    QString title;
    QString text;

    bool isEmpty() const { return text.isEmpty(); }
};

/// Whether \a messages, the log of the design's parser, holds a line that begins with "ERROR".
bool reportsError(const QStringList &messages);

/// Judges the modules of a design, which must have exactly one top module.
///
/// \param top the top module that the user has set; empty if none is.
/// \param topModules the candidates for the top module.
/// \param modules all modules of the design.
DesignRefusal modulesRefusal(const QString &top, const QStringList &topModules,
                             const QStringList &modules);

/// Judges an extracted netlist.
///
/// \param top the top module that the user has set; empty if none is.
/// \param received the name of the netlist's top module.
/// \param usesJtag the design uses the primitive that the cores need for themselves.
DesignRefusal netlistRefusal(const QString &top, const QString &received, bool usesJtag);

} // namespace MOLK
