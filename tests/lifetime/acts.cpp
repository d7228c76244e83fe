// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "acts.h"

#include "scene.h"

#include "molkoptionwidget.h"
#include "molkviewmanager.h"
#include "reloadbanner.h"

#include <QAction>
#include <QFile>
#include <QPushButton>
#include <QTreeWidget>

using namespace MOLK;

// A view that is being opened takes part as well.
static MolkView *viewOf(const Scene &scene)
{
    return scene.view ? scene.view.data() : Scene::anyView();
}

static void press(MolkView *view, const QString &button)
{
    const QList<ReloadBanner *> banners = view->findChildren<ReloadBanner *>();
    if (!banners.isEmpty())
        child<QPushButton>(banners.last(), button)->click();
}

static void doNothing(Scene &) {}

static void dropViews(Scene &scene)
{
    scene.bench.host.documentArea()->dropAllViews();
}

// A host may do so without a word, but only with a view that it has been given.
static void deleteView(Scene &scene)
{
    delete scene.view;
}

static void closePage(Scene &scene)
{
    if (!scene.view)
        return;
    QWidget *page = scene.view->parentWidget();
    page->setAttribute(Qt::WA_DeleteOnClose, true);
    page->close();
}

// The question about saving is answered with Ok.
static void closeAndSave(Scene &scene)
{
    if (scene.view)
        Core::ViewManager::closeView(scene.view);
}

static int shownCore(const Scene &scene)
{
    return documentOf(scene.view)->optionWidgets.indexOf(scene.page());
}

static void removeShownCore(Scene &scene)
{
    if (scene.view)
        documentOf(scene.view)->removeCore(shownCore(scene));
}

static void removeOtherCore(Scene &scene)
{
    if (scene.view)
        documentOf(scene.view)->removeCore(documentOf(scene.view)->cores.size() - 1);
}

static void addCore(Scene &scene)
{
    if (scene.view)
        documentOf(scene.view)->addCore(documentOf(scene.view)->cores.size());
}

static void removePorts(Scene &scene)
{
    if (!scene.view)
        return;
    for (const QString &direction : {QString("ProbeIn"), QString("ProbeOut")}) {
        QTreeWidget *rows = scene.tree("tree" + direction);
        child<QPushButton>(scene.page(), QString("btn%1Add").arg(direction))->click();
        rows->setCurrentItem(rows->topLevelItem(0));
        child<QPushButton>(scene.page(), QString("btn%1Remove").arg(direction))->click();
    }
}

static void reloadFile(Scene &scene)
{
    if (!scene.view)
        return;
    scene.writeOther(3);
    scene.view->checkForReload();
    press(scene.view, "btnA");
}

static void reloadDamagedFile(Scene &scene)
{
    if (!scene.view)
        return;
    scene.bench.write("a.molk", "<MOLK_CONFIG>");
    scene.view->checkForReload();
    press(scene.view, "btnA");
}

static void closeRemovedFile(Scene &scene)
{
    if (!scene.view)
        return;
    QFile::remove(scene.file);
    scene.view->checkForReload();
    press(scene.view, "btnB");
}

static void raiseDesignBanner(const Scene &scene)
{
    const QVariantMap values = {{"option", "TopModule"}};
    const_cast<Standin::Host &>(scene.bench.host)
        .events()
        .send(Standin::Event("TE.Option.Change", values));
}

static void reloadDesign(Scene &scene)
{
    MolkView *view = viewOf(scene);
    if (!view)
        return;
    raiseDesignBanner(scene);
    press(view, "btnA");
}

static void reloadRefusedDesign(Scene &scene)
{
    MolkView *view = viewOf(scene);
    if (!view)
        return;
    raiseDesignBanner(scene);
    scene.bench.host.design().setSourceFiles({});
    press(view, "btnA");
}

static void readDesign(Scene &scene)
{
    if (MolkView *view = viewOf(scene))
        view->readRtlNetlist();
}

static void saveView(Scene &scene)
{
    if (scene.view)
        scene.view->save();
}

static void shutDownPlugin(Scene &scene)
{
    scene.shutDownPlugin();
}

static void shutDownHost(Scene &scene)
{
    scene.shutDownPlugin();
    scene.bench.host.shutDown();
}

static QStringList all(const QStringList &edits)
{
    return edits;
}

static QStringList none(const QStringList &)
{
    return QStringList();
}

static QStringList allButFirst(const QStringList &edits)
{
    return edits.size() > 1 ? QStringList(edits.mid(1)) : edits;
}

static QStringList allButLast(const QStringList &edits)
{
    return edits.size() > 1 ? QStringList(edits.mid(0, edits.size() - 1)) : edits;
}

static QStringList ofOtherFile(const QStringList &edits)
{
    return edits.isEmpty() ? edits : QStringList({"other 0", "other 1", "other 2"});
}

const QList<LifetimeAct> &lifetimeActs()
{
    static const QList<LifetimeAct> acts = {
        {"nothing", doNothing, all, false, false, false},
        {"host-drops-views", dropViews, none, true, false, false},
        {"host-deletes-view", deleteView, none, true, false, false},
        {"page-closes", closePage, none, true, false, false},
        {"view-is-saved-and-closed", closeAndSave, all, true, true, false},
        {"shown-core-goes", removeShownCore, allButFirst, false, false, false},
        {"last-core-goes", removeOtherCore, allButLast, false, false, false},
        {"core-comes", addCore, all, false, false, false},
        {"ports-go", removePorts, all, false, false, false},
        {"file-is-reloaded", reloadFile, ofOtherFile, false, false, false},
        {"damaged-file-is-reloaded", reloadDamagedFile, none, true, false, false},
        {"removed-file-is-closed", closeRemovedFile, none, true, false, false},
        {"design-is-reloaded", reloadDesign, all, false, false, true},
        {"refused-design-is-reloaded", reloadRefusedDesign, none, true, false, true},
        {"design-is-read-in-between", readDesign, all, false, false, true},
        {"view-is-saved", saveView, all, false, true, false},
        {"plug-in-is-shut-down", shutDownPlugin, all, false, false, false},
        {"host-is-shut-down", shutDownHost, none, true, false, false},
    };
    return acts;
}
