// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "plainvalue.h"

namespace Plain {

/// A core and what its page shows of it, which isn't always the same: values and clock settings
/// reach the core at a save alone, and rows may be missing until the next refresh.
class Page
{
public:
    explicit Page(const Core &shownCore = Core());

    void addIn();
    void addOut();
    void removeIn(int port);
    void removeOut(int port);

    /// Takes a row below a Probe In out of the tree alone; \a bit is -1 for the signal itself.
    void dropShownRow(int port, int signal, int bit);

    /// Builds the rows below the Probe Ins anew.
    void refreshIns();

    void setIn(int port, const Items &items);
    void setOut(int port, const Items &items);

    /// What a save puts from the page into the core.
    void store();

    Core core;
    QList<Items> shownIns;
    QList<bool> insExpanded;
    QList<bool> outsExpanded;
    QList<ValueLine> lines;
    QString clock;
    bool useClock = false;

private:
    void refreshOuts();
};

} // namespace Plain
