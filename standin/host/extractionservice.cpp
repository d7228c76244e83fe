// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The net extraction service that plug-ins call: the script's answer, or else the real extraction.

#include "frontend/extraction.h"
#include "host/calllog.h"
#include "host/host.h"
#include "host/scriptedextraction.h"

#include "core/viewmanager.h"
#include "fathom/extraction.h"

namespace FATHOM {

// Without a host there is no script, and the real extraction serves all the same.
static Standin::Extraction *realExtraction()
{
    if (Standin::Host *host = Standin::Host::instance())
        return &host->realExtraction();
    static Standin::Extraction nobodys;
    return &nobodys;
}

// A progress dialog belongs to a window, whether or not the caller has one at hand.
static QWidget *dialogParent(QWidget *parent)
{
    return parent ? parent : Core::ViewManager::dialogParent();
}

static void readModules(QStringList &topModules, QStringList &modules, QStringList &messages,
                        const QMap<QString, QVariant> &info, QWidget *parent)
{
    Standin::record("catchRtlModules top=" + info.value("Top").toString());
    if (Standin::isRefused("catchRtlModules")) {
        messages.append("ERROR: The net extraction service refused the call.");
        return;
    }

    Standin::Host *host = Standin::Host::instance();
    if (host && host->extraction().answerModules(topModules, modules, messages, info))
        return;
    realExtraction()->catchModules(topModules, modules, messages, info, dialogParent(parent));
}

static void readNets(RtlNetlist **netlist, QStringList &log, QWidget *parent)
{
    Standin::record("catchRtlNetsWithProgressDialog");
    if (Standin::isRefused("catchRtlNetsWithProgressDialog")) {
        *netlist = nullptr;
        return;
    }

    Standin::Host *host = Standin::Host::instance();
    if (host && host->extraction().answerNetlist(netlist, log))
        return;
    realExtraction()->catchNets(netlist, log, dialogParent(parent));
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
