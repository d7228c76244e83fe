// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The net extraction service that plug-ins call: the script's answer, or else the real extraction.

#include "frontend/extraction.h"
#include "host/calllog.h"
#include "host/host.h"
#include "host/scriptedextraction.h"

#include "fathom/extraction.h"

namespace FATHOM {

// Plug-ins name no parent for the progress dialog; it belongs in front of the window all the same.
static QWidget *dialogParent(Standin::Host *host, QWidget *parent)
{
    return parent ? parent : host->mainWindow();
}

static void readModules(QStringList &topModules, QStringList &modules, QStringList &messages,
                        QMap<QString, QVariant> &info, QWidget *parent)
{
    Standin::record("catchRtlModules top=" + info.value("Top").toString());
    if (Standin::isRefused("catchRtlModules")) {
        messages.append("ERROR: The net extraction service refused the call.");
        return;
    }

    Standin::Host *host = Standin::Host::instance();
    if (!host) {
        messages.append("ERROR: There is no host.");
        return;
    }
    if (host->extraction().answerModules(topModules, modules, messages))
        return;
    host->realExtraction().catchModules(topModules, modules, messages, info,
                                        dialogParent(host, parent));
}

static void readNets(RtlNetlist **netlist, QStringList &log, QWidget *parent)
{
    Standin::record("catchRtlNetsWithProgressDialog");
    if (Standin::isRefused("catchRtlNetsWithProgressDialog")) {
        *netlist = nullptr;
        return;
    }

    Standin::Host *host = Standin::Host::instance();
    if (host && !host->extraction().answerNetlist(netlist, log))
        host->realExtraction().catchNets(netlist, log, dialogParent(host, parent));
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
