// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/yosysfacts.h"

#include <algorithm>

namespace Standin {

template<typename Act>
void YosysFacts::eachBit(const YosysBits &bits, Act act) const
{
    for (quint32 i = 0; i < bits.count; ++i)
        act(design->bits[bits.begin + i], i);
}

static quint32 highestBit(const YosysDesign &design, const YosysModule &module)
{
    qint32 highest = 0;
    const auto see = [&](const YosysBits &bits) {
        for (quint32 i = 0; i < bits.count; ++i)
            highest = std::max(highest, design.bits[bits.begin + i]);
    };
    for (const YosysPort &port : module.ports)
        see(port.bits);
    for (const YosysNet &net : module.nets)
        see(net.bits);
    for (const YosysCell &cell : module.cells) {
        for (const YosysPort &port : cell.ports)
            see(port.bits);
    }
    return quint32(highest);
}

YosysFacts::YosysFacts(YosysDesign *wholeDesign, const YosysModule &yosysModule,
                       const std::vector<YosysSummary> &childSummaries)
    : design(wholeDesign)
    , module(yosysModule)
    , summaries(childSummaries)
    , facts(highestBit(*wholeDesign, yosysModule) + 1, 0)
{
    addPorts();
    for (const YosysCell &cell : module.cells)
        addCell(cell);
}

void YosysFacts::add(qint32 bit, int fact)
{
    if (bit >= 0)
        facts[std::size_t(bit)] = BitFacts(facts[std::size_t(bit)] | fact);
}

void YosysFacts::drive(qint32 bit, int fact)
{
    if (bit < 0)
        return;
    const bool isSecond = facts[std::size_t(bit)] & (Driven | DrivenFromOutside);
    add(bit, fact | Driven | (isSecond ? DrivenTwice : 0));
}

void YosysFacts::addPorts()
{
    for (const YosysPort &port : module.ports) {
        if (port.direction == PortDirection::Out)
            continue;
        const int fact = DrivenFromOutside | (port.direction == PortDirection::InOut ? LetsGo : 0);
        eachBit(port.bits, [&](qint32 bit, quint32) { add(bit, fact); });
    }
}

void YosysFacts::addTopPorts()
{
    topFlags.assign(facts.size(), 0);
    for (const YosysPort &port : module.ports) {
        eachBit(port.bits, [&](qint32 bit, quint32) {
            if (bit < 0)
                return;
            const NetFlags flags =
                flagsOfTopPort(facts[std::size_t(bit)], port.direction != PortDirection::Out);
            topFlags[std::size_t(bit)] |= quint8(int(flags));
        });
    }
}

void YosysFacts::addCell(const YosysCell &cell)
{
    const QString type = design->names.string(cell.type);
    const int child = design->moduleByName.value(cell.type, -1);
    if (cell.isInterface || type == QLatin1String("$scopeinfo"))
        return;
    if (child >= 0 && summaries[std::size_t(child)].isKnown)
        addInstance(cell, summaries[std::size_t(child)]);
    else if (child < 0 && type.startsWith(QLatin1Char('$')))
        addInternalCell(cell, type);
    else
        addBlackBox(cell);
}

static bool isClockPin(const YosysCell &cell, const QString &type, QStringView pin)
{
    if (pin == QLatin1String("CLK"))
        return cell.readIsClocked || !type.startsWith(QLatin1String("$mem"));
    if (pin == QLatin1String("RD_CLK"))
        return cell.readIsClocked;
    if (pin == QLatin1String("WR_CLK"))
        return cell.writeIsClocked;
    // The gates of the fine-grained library, latches apart.
    return pin == QLatin1String("C") && type.startsWith(QLatin1String("$_"));
}

void YosysFacts::addInternalCell(const YosysCell &cell, const QString &type)
{
    const bool isCheck = type == QLatin1String("$print") || type == QLatin1String("$check");
    bool letsGo = type == QLatin1String("$tribuf") || type == QLatin1String("$_TBUF_");
    const bool isChoice = type == QLatin1String("$mux") || type == QLatin1String("$pmux");
    for (const YosysPort &port : cell.ports) {
        if (isChoice && port.direction == PortDirection::In)
            eachBit(port.bits, [&](qint32 bit, quint32) {
                letsGo = letsGo || bit == YosysDesign::HighImpedance;
            });
    }
    for (const YosysPort &port : cell.ports) {
        int fact = InFabric;
        if (!isCheck && port.direction == PortDirection::In
            && isClockPin(cell, type, design->names.text(port.name)))
            fact |= ClocksRegister;
        if (port.direction == PortDirection::Out && letsGo)
            fact |= LetsGo;
        eachBit(port.bits, [&](qint32 bit, quint32) {
            if (port.direction == PortDirection::Out)
                drive(bit, fact | DrivenByLogic);
            else
                add(bit, fact);
        });
    }
}

void YosysFacts::addInstance(const YosysCell &cell, const YosysSummary &child)
{
    for (const YosysPort &port : cell.ports) {
        const auto inside = child.ports.constFind(port.name);
        if (inside == child.ports.constEnd())
            continue;
        eachBit(port.bits, [&](qint32 bit, quint32 i) {
            if (i >= inside->bits.size())
                return;
            const BitFacts own = inside->bits[i];
            const bool isOut = inside->direction == PortDirection::Out;
            add(bit, own & (ClocksRegister | OnPin | InFabric));
            if (inside->direction == PortDirection::InOut)
                add(bit, LetsGo | MaybeDriven);
            else if (isOut && isConstant(own))
                drive(bit, DrivenByConstant);
            else if (isOut && (own & Driven))
                drive(bit, DrivenByLogic | (own & LetsGo));
            else if (isOut && (own & (MaybeDriven | OnPin | DrivenFromOutside)))
                add(bit, MaybeDriven);
        });
    }
}

void YosysFacts::addBlackBox(const YosysCell &cell)
{
    for (const YosysPort &port : cell.ports) {
        eachBit(port.bits, [&](qint32 bit, quint32) {
            add(bit, OnPin);
            if (port.direction == PortDirection::Out)
                drive(bit, DrivenByLogic);
        });
    }
}

YosysSummary YosysFacts::summary() const
{
    YosysSummary result;
    result.isKnown = true;
    for (const YosysPort &port : module.ports) {
        YosysSummary::Port &known = result.ports[port.name];
        known.direction = port.direction;
        eachBit(port.bits, [&](qint32 bit, quint32) {
            const bool isFixed = bit == YosysDesign::Zero || bit == YosysDesign::One;
            known.bits.push_back(bit >= 0      ? facts[std::size_t(bit)]
                                     : isFixed ? BitFacts(DrivenByConstant)
                                               : BitFacts(0));
        });
    }
    return result;
}

NetFlags YosysFacts::flags(qint32 bit) const
{
    if (bit == YosysDesign::Zero || bit == YosysDesign::One)
        return NoProbeIn | NoProbeOut;
    if (bit < 0)
        return NoProbeIn;
    NetFlags result = flagsOf(facts[std::size_t(bit)]);
    if (!topFlags.empty())
        result |= NetFlags(QFlag(topFlags[std::size_t(bit)]));
    return result;
}

} // namespace Standin
