// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/bitfacts.h"
#include "netlist/rawdesign.h"

namespace Standin {

/// What is known of the bits of a port, in stretches of equal facts from the lowest bit.
struct PortFacts
{
    struct Run
    {
        quint32 end; ///< One behind its last bit; it begins where the one ahead ends.
        BitFacts facts;
    };

    int pin = 0;
    PortDirection direction = PortDirection::None;
    quint32 width = 0;
    std::vector<Run> runs;
};

/// What the modules above have to know of a module.
struct ModuleSummary
{
    bool isKnown = false;            ///< False for black boxes.
    QHash<quint32, PortFacts> ports; ///< By the name of the port.
    QHash<int, quint32> portsByPin;

    const PortFacts *port(quint32 name, int pin) const;
};

/// A fact that another module knows of a member, mostly of an interface.
struct MemberFact
{
    quint32 member;    ///< Name of the variable.
    RawSegment target; ///< Its entry means nothing here.
    BitFacts fact;
};

/// Brings together what the text of a module, its children and other modules tell of its bits.
class ModuleFacts
{
public:
    /// The children's summaries, by the number of their module in the design.
    using Summaries = std::vector<ModuleSummary>;

    /// \param modulesByName number of each module in the design.
    ModuleFacts(RawDesign *wholeDesign, const RawModule &rawModule,
                const QHash<quint32, int> &modulesByName, const Summaries &childSummaries);

    void add(const std::vector<MemberFact> &facts);

    /// Works out all facts. To be called once.
    void settle();

    ModuleSummary summary() const;

    /// Facts of a variable: its elements from the lowest index, innermost fastest, and in each the
    /// bits from the lowest; null if the variable is no net.
    const BitFacts *of(std::size_t variable) const;
    quint32 bits(std::size_t variable) const { return begins[variable + 1] - begins[variable]; }

    /// Whether a variable is to be listed: it has bits, isn't a memory, and isn't there for the
    /// text's sake only.
    static bool isNet(const RawVariable &variable, const NetShape &shape);

private:
    struct Target
    {
        int variable = -1; ///< -1 if the operand is no net of this module.
        FactSpan span{};
    };

    bool locate(const RawSegment &operand, std::size_t variable, quint32 *begin,
                quint32 *end) const;
    void addTarget(const RawSegment &operand, BitFacts fact, quint32 driver);
    void addText();
    void addAssignments();
    void addAssignedParts(const RawAssignment &assignment, qint64 total, qint64 unknownWidth);
    void addArguments();
    void addConnections();
    void connectBlackBox(const RawConnection &connection);
    void connect(const RawInstance &instance, const RawConnection &connection,
                 const PortFacts &port);
    void connectPart(const RawSegment &part, quint32 begin, quint32 end, BitFacts facts,
                     const PortFacts &port);
    qint64 width(const RawSegment &part) const;
    void spreadClocks();

    RawDesign *design;
    const RawModule &module;
    const QHash<quint32, int> &moduleByName;
    const Summaries &summaries;
    std::vector<const NetShape *> shapes; ///< By variable; null if it is no net.
    std::vector<quint32> begins;
    std::vector<Target> targets;
    std::vector<std::pair<RawSegment, RawSegment>> aliases; ///< Nets that are one.
    std::vector<BitFacts> facts;
    quint32 drivers;
};

} // namespace Standin
