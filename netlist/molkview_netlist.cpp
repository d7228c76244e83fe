// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// How a view gets the design's netlist from the host.

#include "molkview.h"

#include "designrefusal.h"
#include "messagedlg.h"
#include "modal.h"
#include "molkview_p.h"
#include "retirement.h"

#include "fathom/extraction.h"
#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"
#include "te/designmanager.h"
#include "te/taskengine.h"

#include <QDebug>
#include <QDir>
#include <QPointer>

#include <memory>

namespace MOLK {

static const TE::DesignManager *designManager()
{
    return TE::TaskEngine::instance()->designManager();
}

static void showRefusal(QWidget *view, const DesignRefusal &refusal)
{
    showMessage(view, QMessageBox::Critical, refusal.title, refusal.text);
}

static void showErrors(QWidget *view, const QStringList &messages)
{
    auto *dialog = new MessageDlg(view);
    dialog->setWindowTitle("Design files contain some errors.");
    dialog->setMessages(messages);
    execAndDelete(dialog);
}

bool MolkView::readRtlNetlist()
{
    const QPointer<MolkView> guard(this);
    d->setRtlNetlist(nullptr);

    QMap<QString, QVariant> info = designManager()->getSourceFileInfo();
    const QString top = info.value("Top").toString();
    if (info.value("Files").toList().isEmpty()) {
        showRefusal(this, {"Error", "Design files are not exist."});
        return false;
    }

    QStringList topModules;
    QStringList modules;
    QStringList messages;
    getRtlModules(info, topModules, modules, messages);
    if (!guard)
        return false;
    if (reportsError(messages)) {
        showErrors(this, messages);
        return false;
    }
    const DesignRefusal modulesFault = modulesRefusal(top, topModules, modules);
    if (!modulesFault.isEmpty()) {
        showRefusal(this, modulesFault);
        return false;
    }

    std::unique_ptr<FATHOM::RtlNetlist> netlist(updateRtlNetlist());
    if (!guard)
        return false;
    if (!netlist || !netlist->top) {
        qDebug() << "the host delivered no netlist";
        return false;
    }
    const DesignRefusal netlistFault = netlistRefusal(top, netlist->top->name(), netlist->usesJtag);
    if (!netlistFault.isEmpty()) {
        netlist.reset();
        showRefusal(this, netlistFault);
        return false;
    }

    d->setRtlNetlist(netlist.release());
    return true;
}

FATHOM::RtlNetlist *MolkView::updateRtlNetlist()
{
    FATHOM::RtlNetlist *netlist = nullptr;
    QStringList log;
    const NestedLoop loop(nullptr);
    FATHOM::catchRtlNetsWithProgressDialog(&netlist, log, nullptr);
    return netlist;
}

void MolkView::getRtlModules(QMap<QString, QVariant> &info, QStringList &topModules,
                             QStringList &modules, QStringList &messages)
{
    const NestedLoop loop(nullptr);
    FATHOM::catchRtlModules(topModules, modules, messages, info, nullptr);
}

QStringList MolkView::includePaths()
{
    const QStringList option = designManager()->getOptionValue("IncludePath").toStringList();
    QStringList paths;
    for (const QString &path : option) {
        paths.append(QDir::isRelativePath(path)
                         ? QDir::cleanPath(designManager()->workingDir() + "/" + path)
                         : path);
    }
    return paths;
}

} // namespace MOLK
