// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/bitfacts.h"
#include "netlist/yosysmodule.h"

namespace Standin {

/// What the modules above have to know of a module: facts of the bits of its ports, the lowest
/// first, by the name of the port.
struct YosysSummary
{
    struct Port
    {
        PortDirection direction = PortDirection::None;
        std::vector<BitFacts> bits;
    };

    bool isKnown = false; ///< False for black boxes.
    QHash<quint32, Port> ports;
};

/// What is known of the bits of a module, by their numbers.
class YosysFacts
{
public:
    /// \param childSummaries by the number of the module in the design.
    YosysFacts(YosysDesign *wholeDesign, const YosysModule &yosysModule,
               const std::vector<YosysSummary> &childSummaries);

    /// Adds what holds for the ports of the top module alone.
    void addTopPorts();

    YosysSummary summary() const;

    /// Flags of a bit, which may be one of those without a number.
    NetFlags flags(qint32 bit) const;

private:
    void addPorts();
    void addCell(const YosysCell &cell);
    void addInternalCell(const YosysCell &cell, const QString &type);
    void addInstance(const YosysCell &cell, const YosysSummary &child);
    void addBlackBox(const YosysCell &cell);
    void add(qint32 bit, int fact);
    void drive(qint32 bit, int fact);
    template<typename Act>
    void eachBit(const YosysBits &bits, Act act) const;

    YosysDesign *design;
    const YosysModule &module;
    const std::vector<YosysSummary> &summaries;
    std::vector<BitFacts> facts;
    std::vector<quint8> topFlags; ///< NetFlags of the bits of top ports; empty elsewhere.
};

} // namespace Standin
