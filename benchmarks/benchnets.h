// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"

#include <memory>
#include <vector>

/// A netlist that holds its names ready, so that a benchmark measures what uses them and not how a
/// host makes them. One level holds all. Names have 54 characters, as in large designs.
class BenchNetlist
{
public:
    /// \param buses number of buses of 32 bits each.
    BenchNetlist(int singles, int buses)
    {
        for (int i = 0; i < buses; ++i) {
            auto bus = std::make_unique<Bus>();
            bus->full = name(i, "data_bus_r%1[31:0]");
            for (int k = 0; k < 32; ++k)
                bus->bits.append(newNet(name(i, "data_bus_r%1") + QString("[%1]").arg(k)));
            top.buses.append(bus.get());
            allBuses.push_back(std::move(bus));
        }
        for (int i = 0; i < singles; ++i)
            top.nets.append(newNet(name(i, "ctrl_signal_valid_q%1")));
        netlist.top = &top;
    }

    FATHOM::RtlNetlist *get() const { return &netlist; }

private:
    struct Net : FATHOM::RtlNet
    {
        QString name() const override { return full.mid(full.lastIndexOf('/') + 1); }
        QString fullPathName() const override { return full; }

        QString full;
    };
    struct Bus : FATHOM::RtlNetBus
    {
        QString BusName() const override { return full.mid(full.lastIndexOf('/') + 1); }
        QString fullBusName() const override { return full; }
        QList<FATHOM::RtlNet *> nets() const override { return bits; }

        QString full;
        QList<FATHOM::RtlNet *> bits;
    };
    struct Top : FATHOM::Hierachy
    {
        QString name() const override { return "top"; }
        QString module() const override { return "top"; }
        QList<FATHOM::Hierachy *> children() const override { return {}; }
        QList<FATHOM::RtlNet *> singleNets() const override { return nets; }
        QList<FATHOM::RtlNetBus *> netbuses() const override { return buses; }
        QList<FATHOM::RtlNet *> singleNetsIncludeSub() const override { return nets; }
        QList<FATHOM::RtlNetBus *> netbusesIncludeSub() const override { return buses; }

        QList<FATHOM::RtlNet *> nets;
        QList<FATHOM::RtlNetBus *> buses;
    };
    struct Netlist : FATHOM::RtlNetlist
    {
        FATHOM::RtlNet *findNet(const QString &) const override { return nullptr; }
    };

    static QString name(int i, const char *last)
    {
        return QString("top/u_cpu%1/u_core%2/u_pipe%3/u_stage%4/")
                   .arg(i % 4)
                   .arg(i / 4 % 8)
                   .arg(i / 32 % 16)
                   .arg(i / 512 % 64)
            + QString::fromLatin1(last).arg(i, 6, 10, QLatin1Char('0'));
    }

    FATHOM::RtlNet *newNet(const QString &full)
    {
        auto net = std::make_unique<Net>();
        net->full = full;
        allNets.push_back(std::move(net));
        return allNets.back().get();
    }

    mutable Netlist netlist;
    Top top;
    std::vector<std::unique_ptr<Net>> allNets;
    std::vector<std::unique_ptr<Bus>> allBuses;
};
