// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// What a view does when the project's design changes.

#include "molkview.h"

#include "molkview_p.h"
#include "reloadbanner.h"

#include "qutil/eventmanager.h"
#include "qutil/ievent.h"
#include "te/designmanager.h"
#include "te/taskengine.h"

#include <QPointer>

namespace MOLK {

static QStringList designEvents()
{
    return {"TE.File.Add",         "TE.File.Remove",   "TE.File.Change.Enable",
            "TE.File.Change.Type", "TE.File.Modified", "TE.Option.Change"};
}

// The kinds 2, 3 and 4 hold RTL.
static bool isRtlKind(int kind)
{
    return unsigned(kind) - 2u < 3u;
}

static bool isRtlOfDesign(const QString &path)
{
    const TE::DesignFile file = TE::TaskEngine::instance()->designManager()->getFileInfo(path);
    return isRtlKind(file.type) && file.enable;
}

namespace {
enum class Change {
    None,
    DesignFiles,
    TopModule,
};
} // namespace

static Change optionChange(const QString &option)
{
    if (option == "IncludePath" || option == "Verilog_Standard")
        return Change::DesignFiles;
    if (option == "TopModule")
        return Change::TopModule;
    return Change::None;
}

static bool isFileChange(const QUtil::IEvent *event, const QString &name)
{
    if (name == "TE.File.Add" || name == "TE.File.Modified")
        return isRtlOfDesign(event->get("file").toString());
    if (name == "TE.File.Remove")
        return isRtlKind(event->get("type").toInt()) && event->get("enable").toBool();
    if (name == "TE.File.Change.Enable")
        return isRtlKind(event->get("type").toInt());
    if (name == "TE.File.Change.Type") {
        const int type = event->get("type").toInt();
        const int previous = event->get("previous").toInt();
        return isRtlKind(type) || isRtlKind(previous);
    }
    return false;
}

static Change designChange(const QUtil::IEvent *event)
{
    const QString name = event->type();
    if (name == "TE.Option.Change")
        return optionChange(event->get("option").toString());
    return isFileChange(event, name) ? Change::DesignFiles : Change::None;
}

void MolkView::subscribeEvent()
{
    const QStringList names = designEvents();
    for (const QString &name : names)
        QUtil::EventManager::instance()->subscribe(this, name);
}

void MolkView::unsubscribeEvent()
{
    const QStringList names = designEvents();
    for (const QString &name : names)
        QUtil::EventManager::instance()->unsubscribe(this, name);
}

void MolkView::handleIEvent(const QUtil::IEvent *event)
{
    if (designChanged)
        return;
    switch (designChange(event)) {
    case Change::None:
        break;
    case Change::DesignFiles:
        designFileChanged();
        break;
    case Change::TopModule:
        topModuleChanged();
        break;
    }
}

void MolkView::designFileChanged()
{
    askForRtlReload("Design files changed. Do you want to reload?");
}

void MolkView::topModuleChanged()
{
    askForRtlReload("Top module changed. Do you want to reload?");
}

void MolkView::askForRtlReload(const QString &question)
{
    designChanged = true;
    auto *banner = new ReloadBanner(ReloadBanner::FileChanged, QString(), this);
    connect(banner, SIGNAL(reload()), this, SLOT(onRtlReload()));
    connect(banner, SIGNAL(cancel()), this, SLOT(onReloadCancel()));
    d->showBanner(banner);
    banner->setBannerText(question);
}

void MolkView::onRtlReload()
{
    d->takeDownBanner(sender());
    const QPointer<MolkView> guard(this);
    const bool read = readRtlNetlist();
    if (!guard)
        return;
    if (read)
        designChanged = false;
    else
        d->closeWithoutQuestion();
}

void MolkView::onReloadCancel()
{
    d->takeDownBanner(sender());
    designChanged = false;
}

} // namespace MOLK
