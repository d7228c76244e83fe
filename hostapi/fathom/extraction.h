// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QMap>
#include <QStringList>
#include <QVariant>

class QWidget;

namespace FATHOM {

class RtlNetlist;

/// Parses the design named by \a info. A nested event loop may run meanwhile.
///
/// \param topModules comes in empty; receives the candidates for the top module.
/// \param modules comes in empty; receives the modules below the top module that \a info names
///        under "Top", or all modules if it names none. Empty if no module was found, in particular
///        if there is no module of that name.
/// \param messages comes in empty; receives the parser's log in order. A line that reports an error
///        begins with "ERROR".
/// \param info the design information map of TE::DesignManager::getSourceFileInfo().
/// \param parent parent of any window that the service shows; may be null.
HOST_EXPORT void catchRtlModules(QStringList &topModules, QStringList &modules,
                                 QStringList &messages, QMap<QString, QVariant> &info,
                                 QWidget *parent);

/// Extracts the nets of the design that catchRtlModules() has just read, behind a progress dialog
/// in which a nested event loop runs.
///
/// \param netlist receives a new netlist, which the caller owns. It is set in every case: what
///        could not be extracted is missing in it.
/// \param log receives what the front end had to say.
/// \param parent parent of the progress dialog; may be null.
HOST_EXPORT void catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &log,
                                                QWidget *parent);

} // namespace FATHOM
