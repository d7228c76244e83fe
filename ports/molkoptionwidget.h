// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QTabWidget>

namespace FATHOM {
class RtlNetlist;
}

namespace MOLK {

class MolkCore;
class ProbePortsOptionWidget;

/// The page of one core: tabs with its settings. There is one tab, "Probe Ports".
///
/// The page borrows its core and its netlist. Its destructor touches neither, so that a page may
/// die after them, but between two calls both must be alive.
class MolkOptionWidget : public QTabWidget
{
    Q_OBJECT

public:
    /// Makes the page of \a core and loads it; modifed() isn't emitted meanwhile.
    ///
    /// \param core core to show; not null, stays the caller's.
    /// \param netlist design in which nets are searched; may be null, stays the caller's.
    /// \param parent may be null.
    MolkOptionWidget(MolkCore *core, FATHOM::RtlNetlist *netlist, QWidget *parent);
    ~MolkOptionWidget() override;

    /// Writes to the core what only widgets hold: the initial values as they are displayed, also
    /// one that is still being typed, the name of the user clock and whether it is used. Nothing is
    /// checked and nothing is emitted.
    void storeToModel();

    /// Makes \a netlist, which may be null, the design in which nets are searched from here on. The
    /// Probe In rows are made anew, and a dialog open on a Probe Out closes as if cancelled;
    /// modifed() isn't emitted.
    void setNetlist(FATHOM::RtlNetlist *netlist);

signals:
    /// The user has changed something that a save would write.
    void modifed();

public:
    MolkCore *core; ///< The core shown; not owned.

private:
    FATHOM::RtlNetlist *netlist;
    ProbePortsOptionWidget *probePorts;
};

} // namespace MOLK
