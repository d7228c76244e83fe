// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modellines.h"

#include "molkcore.h"

static void addSignals(QStringList *lines, const QList<MOLK::SignalItem> &items, int depth)
{
    for (const MOLK::SignalItem &item : items) {
        const QString alias = item.alias.isNull() ? QString("null") : '"' + item.alias + '"';
        // Built by hand: arg() would take a name with %1 in it for a place to fill.
        lines->append(QString(depth * 2, QLatin1Char(' ')) + '"' + item.name + "\" alias=" + alias
                      + " selectable=" + QString::number(item.selectable) + " found="
                      + QString::number(item.found) + " kind=" + QString::number(item.kind));
        addSignals(lines, item.members, depth + 1);
    }
}

QStringList modelLines(const QList<MOLK::MolkCore *> &cores)
{
    QStringList lines;
    for (const MOLK::MolkCore *core : cores) {
        lines.append("core " + QString::number(core->id) + " module=\"" + core->getModuleName()
                     + "\" clock=\"" + core->getUserClockName()
                     + "\" useUserClock=" + QString::number(core->useUserClock));
        const QList<MOLK::ProbeIn *> probeIns = core->getAllProbeIns();
        for (const MOLK::ProbeIn *port : probeIns) {
            lines.append("  in " + QString::number(port->number));
            addSignals(&lines, port->getSignalNet(), 2);
        }
        const QList<MOLK::ProbeOut *> probeOuts = core->getAllProbeOuts();
        for (const MOLK::ProbeOut *port : probeOuts) {
            lines.append("  out " + QString::number(port->number) + " value=\"" + port->getValue()
                         + '"');
            addSignals(&lines, port->getSignalNet(), 2);
        }
    }
    return lines;
}
