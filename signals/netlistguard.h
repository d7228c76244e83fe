// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

namespace FATHOM {
class RtlNetlist;
}

namespace MOLK {

/// A borrowed netlist that turns null when the netlist ends.
///
/// A netlist is replaced in some nested event loop at any time, also under an open dialog that
/// borrows it. So dialogs hold it in a guard and ask get() before each use, and whoever owns a
/// netlist calls endNetlist(). A new netlist that happens to get the address of an old one isn't
/// mistaken for it. User interface thread only.
class NetlistGuard
{
public:
    /// Guards \a borrowed, which may be null.
    explicit NetlistGuard(FATHOM::RtlNetlist *borrowed);
    ~NetlistGuard();

    /// The netlist, or null once it has ended.
    FATHOM::RtlNetlist *get() const { return netlist; }

private:
    Q_DISABLE_COPY(NetlistGuard)
    friend void endNetlist(FATHOM::RtlNetlist *netlist);

    FATHOM::RtlNetlist *netlist;
};

/// Turns every guard of \a netlist null, then deletes it. The owner of a netlist ends it by this
/// and by nothing else; null is let through.
void endNetlist(FATHOM::RtlNetlist *netlist);

} // namespace MOLK
