// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commandline.h"

#include "host/host.h"
#include "host/molkbridge.h"

#include <memory>

namespace Workbench {

class MainWindow;

/// The plug-in library to load if none is named: the first of these that is there, below the
/// program's directory.
///
///     ../plugin/libMolkInserterPlugin.so      a build tree
///     ../lib/molk/libMolkInserterPlugin.so    an installed workbench
///     ../<libdir>/molk/libMolkInserterPlugin.so   the same, where libraries have a folder of their
///                                                 own for each architecture
///
/// \return the canonical path; empty if there is none.
QString findPlugin();

/// Host, plug-in and main window, brought up and taken down in the order that they need.
///
/// It may be destroyed at any moment at which no nested event loop runs, with views open, modified
/// or not: the views leave, the plug-in is shut down, then the window and the host go.
class Runtime
{
public:
    Runtime();
    ~Runtime();

    Q_DISABLE_COPY_MOVE(Runtime)

    /// Loads the plug-in that \a line names, or else the one that findPlugin() finds, makes the
    /// window and opens the project or the design. Nothing is shown, and no documents are opened.
    ///
    /// \param error receives why it can't go on, as text for stderr.
    bool start(const CommandLine &line, QString *error);

    Standin::Host &services() { return host; }

    /// Null before start().
    MainWindow *window() const { return mainWindow.get(); }

private:
    bool loadPlugin(const QString &file, QString *error);
    bool openDesign(const CommandLine &line, QString *error);

    Standin::Host host;
    Standin::MolkBridge bridge;
    std::unique_ptr<MainWindow> mainWindow;
};

} // namespace Workbench
