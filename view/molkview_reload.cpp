// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// What a view does when its file changes on disk, or goes away.

#include "molkview.h"

#include "modal.h"
#include "molkcore.h"
#include "molkfile.h"
#include "molkoptionwidget.h"
#include "molkview_p.h"
#include "reloadbanner.h"
#include "retirement.h"

#include <QFile>
#include <QFileSystemWatcher>
#include <QPointer>
#include <QTimer>

namespace MOLK {

// Whoever writes a file rarely does it in one step, so the question waits until they are done.
static constexpr int SettleMilliseconds = 500;

void MolkView::onFileChange()
{
    if (d->reloadPending)
        return;
    d->reloadPending = true;
    QTimer::singleShot(SettleMilliseconds, this, SLOT(checkForReload()));
}

void MolkView::checkForReload()
{
    ReloadBanner *banner;
    if (QFile::exists(d->file)) {
        banner = new ReloadBanner(ReloadBanner::FileChanged, d->file, this);
        connect(banner, SIGNAL(reload()), this, SLOT(onBannerReload()));
        connect(banner, SIGNAL(cancel()), this, SLOT(onBannerCancel()));
    } else {
        banner = new ReloadBanner(ReloadBanner::FileRemoved, d->file, this);
        connect(banner, SIGNAL(keepIt()), this, SLOT(onBannerKeep()));
        connect(banner, SIGNAL(closeIt()), this, SLOT(onBannerClose()));
    }
    d->showBanner(banner);
}

void MolkView::onBannerReload()
{
    const QPointer<MolkView> guard(this);
    if (reloadMolkFile()) {
        // A file that was replaced has left the watcher, so the watch begins anew.
        d->watcher->removePath(d->file);
        d->watcher->addPath(d->file);
        d->takeDownBanner(sender());
        d->reloadPending = false;
        return;
    }
    if (!guard)
        return;
    showMessage(this, QMessageBox::Warning, "Reload Molk", "Invalid MOLK file.");
    if (guard)
        onBannerClose();
}

void MolkView::onBannerCancel()
{
    d->takeDownBanner(sender());
    d->reloadPending = false;
}

void MolkView::onBannerKeep()
{
    onBannerCancel();
}

void MolkView::onBannerClose()
{
    d->takeDownBanner(sender());
    d->reloadPending = false;
    d->closeWithoutQuestion();
}

// False if the file isn't fit to be read, with nothing touched then, or if the view is gone.
bool MolkView::reloadMolkFile()
{
    if (!d->commitValue() || !checkMOLKFile(d->file))
        return false;

    while (!d->optionWidgets.isEmpty()) {
        MolkOptionWidget *page = d->optionWidgets.takeLast();
        removeMolkOptionWidget(page);
        // A line of the page may be what called us, through a box that it has open.
        if (!retire(page))
            page->deleteLater();
    }
    qDeleteAll(d->cores);
    d->cores = readMOLKConfigFromXml(d->file, nullptr, nullptr);
    d->makePages();
    changeMolkWidget(0);
    return true;
}

} // namespace MOLK
