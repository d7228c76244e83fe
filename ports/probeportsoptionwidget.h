// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qutil/ieventhandler.h"

#include <QWidget>

class QScrollBar;
class QTreeWidgetItem;

namespace FATHOM {
class RtlNetlist;
}

namespace MOLK {

namespace Ui {
class ProbePortsOptionWidget;
}

class InitialValueLine;
class MolkCore;

/// The tab on which the ports of one core, their initial values and the user clock are edited.
///
/// Ports and signals go into the core at the moment of the edit. Initial values, the name of the
/// user clock and whether it is used live in the widgets until storeToModel().
///
/// The row of port i is the top-level row i of its tree; no row points into the core:
///
///     treeProbeIn                  treeProbeOut             treeValue
///     - "Probe In0"                - "Probe Out0"           - an InitialValueLine
///       - a signal, with its item    - a signal, with item    - a QLabel with its bits
///         - a bit of a bus           - ...                    - ...
///     - ...                        - ...                    - ...
///
/// treeProbeOut and treeValue have the same rows at all times, and look like one table.
class ProbePortsOptionWidget : public QWidget, public QUtil::IEventHandler
{
    Q_OBJECT

public:
    /// Makes the page of \a core and loads it. modified() may be emitted meanwhile.
    ///
    /// \param core core to show; not null, stays the caller's, touched by no destructor.
    /// \param netlist design in which nets are searched; may be null, stays the caller's.
    /// \param parent may be null.
    ProbePortsOptionWidget(MolkCore *core, FATHOM::RtlNetlist *netlist, QWidget *parent);
    ~ProbePortsOptionWidget() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

    /// Changes nothing: no host event concerns this page.
    void handleIEvent(const QUtil::IEvent *event) override;

    /// Writes to the core what only widgets hold: the initial values as they are displayed, the
    /// name of the user clock and whether it is used. Nothing is checked and nothing is emitted.
    void storeToModel();

    /// Stores \a netlist, which may be null, makes the Probe In rows anew and emits
    /// netlistChanged(). The Probe Out rows stay.
    void setNetlist(FATHOM::RtlNetlist *netlist);

    /// Makes all signal rows of treeProbeIn anew from the core. Emits nothing.
    void refreshProbeInSignals();

    /// Makes all signal rows of treeProbeOut and all bit labels of treeValue anew from the core.
    ///
    /// Each line keeps its value. The first time, its low bits are what counts: a value that is too
    /// wide is cut off at the top. Later on a bit keeps its position from the left, so that a port
    /// that grows gets zeros in its new low bits, and one that shrinks loses its low bits. The line
    /// of a port without signals is disabled and reads 0x0. Expansion stays. Emits nothing.
    void refreshProbeOutSignals();

signals:
    /// The user has changed something that a save would write.
    void modified();

    /// setNetlist() has stored another netlist.
    void netlistChanged();

    /// Reserved for the implementation settings of a core; nothing emits it yet.
    void ImpleChanged();

private slots:
    void editProbeIn(QTreeWidgetItem *item, int col);
    void editProbeOut(QTreeWidgetItem *item, int col);
    void onProbeOutClicked(QTreeWidgetItem *item, int col);
    void onValueTreeClicked(QTreeWidgetItem *item, int col);
    void onProbeOutTreeCollapsed(QTreeWidgetItem *item);
    void onProbeOutTreeExpanded(QTreeWidgetItem *item);
    void onValueTreeCollapsed(QTreeWidgetItem *item);
    void onValueTreeExpanded(QTreeWidgetItem *item);
    void onAddProbeIn();
    void onRemoveProbeIn();
    void onAddProbeOut();
    void onRemoveProbeOut();
    void onCheckUserClock();
    void onScrollProbeOutChanged();
    void onScrollInitialValueChanged();
    void onbtnUserClock();

private:
    InitialValueLine *valueLine(int index) const;
    void setUpTrees();
    void setUpControls();
    void setClockControlsEnabled(bool enabled);
    void appendProbeInRow(int number);
    InitialValueLine *appendProbeOutRows(int number);
    void removeProbeOutRows(int index);
    void removeSignalRows(int index);
    void addSignalRows(int index);
    void warn(const QString &text);

    Ui::ProbePortsOptionWidget *ui;
    MolkCore *core;
    FATHOM::RtlNetlist *netlist;
    QScrollBar *probeOutScrollBar;
    QScrollBar *valueScrollBar;
};

} // namespace MOLK
