// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "host/host.h"
#include "initialvalueline.h"
#include "molkcore.h"
#include "molkoptionwidget.h"
#include "probeportsoptionwidget.h"
#include "signalitems.h"

#include <QTreeWidget>

#include <functional>
#include <memory>

/// Signals of these widths: single nets, and buses where there is more than one bit.
QList<MOLK::SignalItem> signalsOfWidths(const QList<int> &widths);

/// A core with a Probe In for each entry of \a probeIns and a Probe Out for each of \a probeOuts,
/// both one at least.
std::unique_ptr<MOLK::MolkCore> makeCore(const QList<QList<MOLK::SignalItem>> &probeIns,
                                         const QList<QList<MOLK::SignalItem>> &probeOuts);

/// A core with one Probe Out of signals that have these widths, and with \a value.
std::unique_ptr<MOLK::MolkCore> coreOfWidths(const QList<int> &widths,
                                             const QString &value = "0x0");

/// Types \a digits over the digits of a line, from the first one on.
void typeDigits(MOLK::InitialValueLine *line, const QString &digits);

/// Runs \a act in an event loop of its own, and after it everything that \a act has posted. Slots
/// that run in the application always stand in such a loop, and what they delete late outlives any
/// message box that they open.
void runInLoop(const std::function<void()> &act);

/// The page of a core with a host behind it.
struct PageFixture
{
    explicit PageFixture(std::unique_ptr<MOLK::MolkCore> shownCore,
                         FATHOM::RtlNetlist *netlist = nullptr);

    /// Shows the page in a window of its own and waits until it is active.
    void show();

    /// A child of the page by its object name.
    template<typename Child>
    Child *child(const char *name) const
    {
        return page->findChild<Child *>(QLatin1String(name));
    }

    MOLK::InitialValueLine *line(int port) const;

    /// What the line of a Probe Out reads.
    QString value(int port) const;

    /// The bits of a Probe Out as its labels show them, joined by "|".
    QString bits(int port) const;

    /// Moves the focus away from the value lines, which commits.
    void leaveLines();

    /// Calls a private slot as a connection does.
    void call(const char *slot);
    void call(const char *slot, QTreeWidgetItem *item);

    /// Selects a row by a click of the mouse.
    void click(QTreeWidgetItem *row);

    /// Double-clicks a row as a user does, with the click ahead of it.
    void doubleClick(QTreeWidgetItem *row);

    Standin::Host host;
    std::unique_ptr<MOLK::MolkCore> core;
    std::unique_ptr<MOLK::MolkOptionWidget> widget;
    MOLK::ProbePortsOptionWidget *page;
    QTreeWidget *treeProbeIn;
    QTreeWidget *treeProbeOut;
    QTreeWidget *treeValue;
};
