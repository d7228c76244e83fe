// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduletable.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"

#include <QFile>
#include <QTemporaryFile>

#include <cstdint>
#include <cstdlib>
#include <memory>

/// The name of a file with these bytes; the same for every call.
inline QString fileWith(const std::uint8_t *data, std::size_t size)
{
    static QTemporaryFile file;
    if (!file.isOpen() && !file.open())
        std::abort();
    file.resize(0);
    file.seek(0);
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.flush();
    return file.fileName();
}

/// Ends the program unless the netlist of \a table finds its first nets by their names.
inline void checkElaboration(Standin::ModuleTable table)
{
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(Standin::elaborate(std::move(table)));
    if (!netlist)
        return;
    // A few bytes can tell of millions of nets; the first ones are as good as all.
    QList<FATHOM::RtlNet *> nets = netlist->top->singleNetsIncludeSub().mid(0, 200);
    for (const FATHOM::RtlNetBus *bus : netlist->top->netbusesIncludeSub().mid(0, 20))
        nets += bus->nets().mid(0, 20);
    for (FATHOM::RtlNet *net : nets) {
        if (netlist->findNet(net->fullPathName()) != net)
            std::abort();
    }
}
