// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "comparison.h"

#include "molkcore.h"
#include "molkoptionwidget.h"

#include <QStackedWidget>
#include <QTreeWidget>

#include <memory>

constexpr int PortCount = 64;
constexpr int SignalsOfAPort = 256;
constexpr int LabelCount = PortCount * SignalsOfAPort;
constexpr int PageCount = 16;

/// Lets everything happen that was posted, late deletions and painting included.
void settle();

/// As many single nets as a port takes, named after \a port.
QList<MOLK::SignalItem> fullPort(int port);

/// A core with \a ports full Probe Outs, and one Probe In without signals.
std::unique_ptr<MOLK::MolkCore> makeFullCore(int ports);

/// What any page pays: making the labels and rows of one page of full Probe Outs alone, a label
/// and two rows a signal, in no view. What was made goes outside the measurement.
Side barePage();

/// What \a count pages pay in this way, one after the other.
Duration barePages(int count);

/// A page of full Probe Outs in a stack in a shown window, as a view has it.
class ShownPage
{
public:
    explicit ShownPage(int ports = PortCount);

    void build();
    void clear();
    void expandAll() const;
    void collapseAll() const;
    void refresh() const;

    QTreeWidget *tree(const char *name) const;

    std::unique_ptr<MOLK::MolkCore> core;
    QStackedWidget stack;
    MOLK::MolkOptionWidget *page = nullptr;
};
