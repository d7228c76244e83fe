// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduledefinition.h"

#include "hostglobal.h"

#include <QString>
#include <QVector>

#include <vector>

namespace FATHOM {
class RtlNetlist;
}

namespace Standin {

/// Makes netlists without a front end, for tests and demonstrations.
///
/// Levels are named by handles, the top level's is 0. Nets, buses and levels stand in the order in
/// which they were added. Full path names join levels with "/"; a bus reads `q[7:0]`, its bit
/// `q[7]`:
///
///     NetlistBuilder builder("top");
///     const int u0 = builder.addLevel(0, "u0", "uart");
///     builder.addNet(0, "clk", NoProbeOut);
///     builder.addBus(u0, "q", 7, 0);
///     std::unique_ptr<FATHOM::RtlNetlist> netlist(builder.build());
///     // top/clk, top/u0/q[7:0] with top/u0/q[7] ... top/u0/q[0]
class HOST_EXPORT NetlistBuilder
{
public:
    /// \param topModule name of the top module, which is the name of the top level too.
    explicit NetlistBuilder(const QString &topModule = QStringLiteral("top"));

    /// Adds a level below \a parent, an instance \a name of \a module.
    ///
    /// \return its handle; -1 if \a parent is no handle or the name is empty or taken there.
    int addLevel(int parent, const QString &name, const QString &module);

    /// Adds a net without a range.
    ///
    /// \return false if \a level is no handle or the name is empty or taken there.
    bool addNet(int level, const QString &name, NetFlags flags = NetFlags());

    /// Adds a bus `name[left:right]`, all of whose bits have the same flags.
    ///
    /// \return false if \a level is no handle, the name is empty or taken there, or the bus would
    ///         have more than ModuleDefinition::MaximumSize bits.
    bool addBus(int level, const QString &name, int left, int right, NetFlags flags = NetFlags());

    /// Adds a bus with flags bit by bit, the leftmost first. The bus itself then has NoProbeIn if
    /// all bits have it, and NoProbeOut if any bit has it.
    ///
    /// \return as addBus(); false also if there are not as many flags as bits.
    bool addMixedBus(int level, const QString &name, int left, int right,
                     const QVector<NetFlags> &bitFlags);

    /// What RtlNetlist::usesJtag will be; false unless set.
    void setUsesJtag(bool uses);

    /// A new netlist of what was added so far. The builder can go on, and build again.
    ///
    /// \return the netlist, which the caller owns; never null.
    FATHOM::RtlNetlist *build() const;

private:
    bool isLevel(int handle) const;

    std::vector<ModuleDefinition> levels;
    bool jtag = false;
};

} // namespace Standin
