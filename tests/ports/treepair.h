// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "initialvalueline.h"
#include "signalitem.h"
#include "valuetree.h"

#include <functional>

/// A tree of initial values, and a plain QTreeWidget that went through the same row by row.
///
/// Whatever is done to one is done to the other, and then they have to look the same.
class TreePair
{
public:
    TreePair();

    /// Runs \a act on both trees and turns the loop.
    void each(const std::function<void(QTreeWidget *)> &act);

    /// Shows both and waits until their window is active.
    void show();

    /// Appends a port with the value \a bits, `0` and `1`, most significant first.
    void addPort(const QList<MOLK::SignalItem> &items, const QString &bits);

    /// Replaces the signals of a port, in one go here and row by row there.
    void setSignals(int port, const QList<MOLK::SignalItem> &items, const QString &bits);

    void removePort(int port);

    /// The line of a port.
    static MOLK::InitialValueLine *line(QTreeWidget *tree, int port);

    QWidget window;
    MOLK::ValueTree *ours;
    QTreeWidget *plain;
    QLineEdit *elsewhere; ///< Has the focus at first.
};

/// \a count signals, each third one a bus of four bits.
QList<MOLK::SignalItem> manySignals(int count);
