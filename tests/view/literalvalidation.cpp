// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "literalvalidation.h"

#include "molkcore.h"

#include "fathom/rtlnet.h"
#include "fathom/rtlnetlist.h"

#include <QMap>

using namespace MOLK;

QStringList literalFaults(const QList<MolkCore *> &cores, const FATHOM::RtlNetlist *netlist)
{
    QStringList messages;
    QMap<QString, QStringList> drivers;
    for (int i = 0; i < cores.size(); ++i) {
        const MolkCore *core = cores.at(i);
        const QString prefix = QString("Molk %1: ").arg(core->id);
        if (core->getAvailableProbeIns().isEmpty() && core->getAvailableProbeOuts().isEmpty())
            messages += prefix + "At least one Probe In port or Probe Out port should be enabled";
        const QList<ProbeOut *> outs = core->getAvailableProbeOuts();
        for (const ProbeOut *out : outs) {
            const QStringList names = out->singleSignals();
            for (const QString &name : names)
                drivers[name] += QString("molk_%1->Probe Out%2").arg(i).arg(out->number);
        }
        if (!core->useUserClock)
            continue;
        if (core->getUserClockName().isEmpty())
            messages += prefix + "No synchronization clock specified";
        else if (!netlist || !netlist->findNet(core->getUserClockName()))
            messages += prefix + "The output probe synchronizes with user clock does not exist";
        else if (netlist->findNet(core->getUserClockName())->noProbeIn)
            messages += prefix + "Invalid user clock selected for output probe synchronization";
    }

    for (auto it = drivers.cbegin(); it != drivers.cend(); ++it) {
        if (it.value().size() < 2)
            continue;
        QString list;
        for (const QString &description : it.value()) {
            list += description;
            list += ", ";
        }
        list.remove(list.size() - 1, 2);
        messages += QString("ERROR:Signal \"%1\" has multiple drivers(%2)").arg(it.key(), list);
    }
    return messages;
}
