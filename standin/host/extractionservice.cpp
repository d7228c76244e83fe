// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The net extraction service that plug-ins call: the script's answer, or else the real extraction.

#include "host/calllog.h"
#include "host/host.h"
#include "host/scriptedextraction.h"

#include "fathom/extraction.h"

namespace FATHOM {

static void readModules(QStringList &topModules, QStringList &modules, QStringList &messages,
                        QMap<QString, QVariant> &info, QWidget *parent)
{
    Q_UNUSED(parent)
    Standin::record("catchRtlModules top=" + info.value("Top").toString());
    if (Standin::isRefused("catchRtlModules")) {
        messages.append("ERROR: The net extraction service refused the call.");
        return;
    }

    Standin::Host *host = Standin::Host::instance();
    if (host && host->extraction().answerModules(topModules, modules, messages))
        return;
    messages.append("ERROR: No front end can read the design.");
}

static void readNets(RtlNetlist **netlist, QStringList &log, QWidget *parent)
{
    Q_UNUSED(parent)
    Standin::record("catchRtlNetsWithProgressDialog");
    if (Standin::isRefused("catchRtlNetsWithProgressDialog")) {
        *netlist = nullptr;
        return;
    }

    Standin::Host *host = Standin::Host::instance();
    if (host && host->extraction().answerNetlist(netlist, log))
        return;
    log.append("ERROR: No front end can read the design.");
}

static void report(const QStringList &log)
{
    if (const Standin::Host *host = Standin::Host::instance())
        host->reportDesignLog(log);
}

void catchRtlModules(QStringList &topModules, QStringList &modules, QStringList &messages,
                     QMap<QString, QVariant> &info, QWidget *parent)
{
    readModules(topModules, modules, messages, info, parent);
    report(messages);
}

void catchRtlNetsWithProgressDialog(RtlNetlist **netlist, QStringList &log, QWidget *parent)
{
    readNets(netlist, log, parent);
    if (!log.isEmpty())
        report(log);
}

} // namespace FATHOM
