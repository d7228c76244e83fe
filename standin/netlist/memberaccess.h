// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/modulefacts.h"

#include <set>
#include <tuple>

namespace Standin {

/// Finds out what modules do with the members of other ones: mostly of interfaces, which they reach
/// through instances of their own or through ports, and so on upwards.
///
/// An interface has one definition for all its instances, so what is known of it is what is known
/// of any of them.
class MemberAccess
{
public:
    /// \param moduleOrder the numbers of the modules in use, each behind those below it.
    MemberAccess(RawDesign *wholeDesign, const QHash<quint32, int> &modulesByName,
                 const std::vector<int> &moduleOrder);

    /// What others know of the members of the module with this number.
    const std::vector<MemberFact> &factsOf(int module) const { return facts[std::size_t(module)]; }

private:
    // A fact of a member of what a port leads to: port, names on the way there, member, element,
    // lowest bit, width, exactness and fact.
    using Access =
        std::tuple<quint32, std::vector<quint32>, quint32, quint32, qint32, qint32, bool, BitFacts>;

    void collect(int number);
    void add(int number, const RawEntry &entry, const RawSegment &operand, BitFacts fact);
    void add(int number, const std::vector<quint32> &steps, quint32 member,
             const RawSegment &operand, BitFacts fact);
    quint32 portOf(int child, const RawConnection &connection) const;
    void inherit(int number, const RawInstance &instance, int child, const Access &access);
    std::vector<quint32> stepsTo(quint32 dotted);
    const QHash<quint32, int> &instancesOf(int number);

    RawDesign *design;
    const QHash<quint32, int> &moduleByName;
    std::vector<std::vector<MemberFact>> facts;
    std::vector<std::set<Access>> accesses;     ///< Through the ports of each module.
    std::vector<QHash<quint32, int>> instances; ///< Of each module by name, once asked for.
};

} // namespace Standin
