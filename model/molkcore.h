// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "probein.h"
#include "probeout.h"

#include <QList>
#include <QString>

namespace MOLK {

/// One inserted core: its Probe In and Probe Out ports and its user clock.
///
///   MolkCore
///     ProbeIn 0, 1, ...      each with a list of SignalItem
///     ProbeOut 0, 1, ...     each with a list of SignalItem and an initial value
///
/// Made with new, destroyed with delete, never copied. It owns its ports; the pointers that it
/// hands out are borrowed, and die with the port's removal or with the core. The model keeps no
/// limits of its own: how many cores, ports and signals there may be is the editor's business.
class MolkCore
{
public:
    /// Makes a core with one Probe In and one Probe Out, both numbered 0 and without signals, with
    /// empty names and without user clock.
    ///
    /// \param coreId the core's number, counted from 0.
    explicit MolkCore(int coreId);
    ~MolkCore();

    /// All ports of a direction, in port order.
    QList<ProbeIn *> getAllProbeIns() const;
    QList<ProbeOut *> getAllProbeOuts() const;

    /// The ports of a direction that are in use, that is those with a width above 0, in port order.
    QList<ProbeIn *> getAvailableProbeIns() const;
    QList<ProbeOut *> getAvailableProbeOuts() const;

    /// The port at position \a index, null if there is none.
    ProbeIn *getProbeIn(int index) const;
    ProbeOut *getProbeOut(int index) const;

    /// Full path name of the net that Probe Outs synchronise to; may be empty, and is kept while
    /// useUserClock is false.
    QString getUserClockName() const;

    /// Name of the design's top module as last set.
    QString getModuleName() const;

    /// Appends a port without signals.
    ///
    /// \param number the new port's number; by convention the current count.
    void addProbeIn(int number);
    void addProbeOut(int number);

    /// Destroys the port at position \a index and closes the gap without renumbering the others. An
    /// \a index at which there is no port, such as -1, does nothing.
    void removeProbeIn(int index);
    void removeProbeOut(int index);

    /// Renumbers all ports of a direction, so that each number equals the position.
    void updateProbeIn();
    void updateProbeOut();

    void setUserClockName(QString name);
    void setModuleName(QString name);

    /// The core's number; the view keeps it equal to the core's position in its list.
    int id;

private:
    Q_DISABLE_COPY(MolkCore)

    QList<ProbeIn *> probeIns;
    QList<ProbeOut *> probeOuts;
    QString moduleName;
    QString userClockName;

public:
    /// True when Probe Outs are synchronised with the user clock.
    bool useUserClock = false;
};

} // namespace MOLK
