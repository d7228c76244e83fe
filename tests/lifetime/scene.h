// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "viewbench.h"

#include <QPointer>
#include <QStringList>

#include <memory>

class QTreeWidget;

namespace MOLK {
class InitialValueLine;
class MolkInserterPlugin;
class MolkOptionWidget;
} // namespace MOLK

/// What the file of a scene holds.
struct Configuration
{
    int cores = 2;
    int probeIns = 1;  ///< Of each core.
    int probeOuts = 1; ///< Of each core; the first one drives a net.
};

/// The real plug-in in a real host with one view on a file of several cores, and an unsaved edit in
/// each of them.
///
/// The edit of core k is the text "edit k" in the line of the user clock: it lies in the page alone
/// until a save, and nothing but that text tells the cores apart.
class Scene
{
public:
    Scene();
    ~Scene();

    Q_DISABLE_COPY(Scene)

    /// Writes the file; its clocks are "saved k".
    void write(const Configuration &configuration);

    /// Opens the file through the plug-in and makes the edits.
    void open();

    /// Writes another configuration of \a cores cores in the file's place, as another program does;
    /// their clocks are "other k".
    void writeOther(int cores) const;

    /// Ends the manager and what the plug-in has given to the host.
    void shutDownPlugin();

    /// Any view there is, also one that is still being opened; null if there is none.
    static MOLK::MolkView *anyView();

    /// The page that is shown.
    MOLK::MolkOptionWidget *page() const;

    /// The tree \a name on the page that is shown.
    QTreeWidget *tree(const QString &name) const;

    /// The names of the cores.
    QTreeWidget *coreTree() const;

    /// The line of the first Probe Out on the page that is shown.
    MOLK::InitialValueLine *line() const;

    /// What is out of step in the view: cores, pages, lines of the tree, star; empty if nothing
    /// is or there is no view.
    QString disorder() const;

    /// The edits that a save writes now; each core that couldn't be saved for want of a signal gets
    /// one.
    QStringList savedEdits();

    /// The edits that the file on disk holds; one text "damaged" if it can't be read.
    QStringList editsOnDisk() const;

    ViewBench bench;
    QString file;
    QPointer<MOLK::MolkView> view;
    QStringList failures;

private:
    std::unique_ptr<MOLK::MolkInserterPlugin> plugin;
    bool isUp = true;
};
