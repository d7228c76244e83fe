// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "plainpage.h"

namespace Plain {

Page::Page(const Core &shownCore)
    : core(shownCore)
    , clock(shownCore.clock)
    , useClock(shownCore.useClock)
{
    for (const Port &port : core.outs) {
        lines.append(ValueLine(port));
        outsExpanded.append(false);
    }
    for (int i = 0; i < core.ins.size(); ++i)
        insExpanded.append(false);
    refreshIns();
}

void Page::addIn()
{
    core.ins.append(Port());
    shownIns.append(Items());
    insExpanded.append(false);
}

void Page::addOut()
{
    core.outs.append(Port());
    lines.append(ValueLine());
    outsExpanded.append(false);
    refreshOuts();
}

void Page::removeIn(int port)
{
    core.ins.removeAt(port);
    shownIns.removeAt(port);
    insExpanded.removeAt(port);
}

void Page::removeOut(int port)
{
    core.outs.removeAt(port);
    lines.removeAt(port);
    outsExpanded.removeAt(port);
}

void Page::dropShownRow(int port, int signal, int bit)
{
    if (bit < 0)
        shownIns[port].removeAt(signal);
    else
        shownIns[port][signal].members.removeAt(bit);
}

void Page::refreshIns()
{
    shownIns.clear();
    for (const Port &port : core.ins)
        shownIns.append(port.items);
}

void Page::refreshOuts()
{
    for (int i = 0; i < lines.size(); ++i)
        lines[i].refresh(core.outs.at(i).items);
}

void Page::setIn(int port, const Items &items)
{
    core.ins[port].items = items;
    refreshIns();
    insExpanded[port] = true;
}

void Page::setOut(int port, const Items &items)
{
    core.outs[port].items = items;
    refreshOuts();
    outsExpanded[port] = true;
}

void Page::store()
{
    core.clock = clock;
    core.useClock = useClock;
    for (int i = 0; i < lines.size(); ++i)
        core.outs[i].value = lines.at(i).text;
}

} // namespace Plain
