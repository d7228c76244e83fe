// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkviewmanager.h"

#include "modal.h"
#include "molkview.h"

#include "core/actionmanager.h"
#include "core/viewmanager.h"
#include "dev/devicearg.h"
#include "te/flowmanager.h"
#include "te/taskengine.h"

#include <QAction>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QStringList>

#include <algorithm>

namespace MOLK {

namespace {

struct MolkViewManagerPrivate
{
    void updateSaveAction() const;
    MolkView *viewOf(const QString &absolutePath) const;
    bool knows(const QObject *view) const;
    void forget(const QObject *view);

    QAction *saveAction = nullptr;
    MolkView *currentView = nullptr; // Stays when a view of another kind becomes active.
    QList<MolkView *> views;
    bool hasCurrentView = false;
    QStringList opening; // Absolute paths whose view is being opened, in a nested event loop.
};

} // namespace

// Made when the library is loaded, so that the manager is there before the plug-in's first call.
// clazy:excludeall=non-pod-global-static
static MolkViewManagerPrivate *d = new MolkViewManagerPrivate;
static MolkViewManager *manager = new MolkViewManager;

static QString managerContext()
{
    return "MOLK.MolkViewManager.Context";
}

static QString absolutePath(const QString &fileName)
{
    return QFileInfo(fileName).absoluteFilePath();
}

void MolkViewManagerPrivate::updateSaveAction() const
{
    if (!hasCurrentView) {
        saveAction->setEnabled(false);
        return;
    }
    const QString title = currentView->windowTitle();
    saveAction->setText(QString("&Save \"%1\"").arg(title));
    saveAction->setToolTip(QString("Save \"%1\"").arg(title));
    saveAction->setEnabled(currentView->isModified());
}

MolkView *MolkViewManagerPrivate::viewOf(const QString &path) const
{
    for (MolkView *view : views) {
        if (absolutePath(view->file()) == path)
            return view;
    }
    return nullptr;
}

// Compares the pointer only, as forget() does, since the view may be in its destructor.
bool MolkViewManagerPrivate::knows(const QObject *view) const
{
    return currentView == view
        || std::any_of(views.begin(), views.end(), [view](MolkView *v) { return v == view; });
}

void MolkViewManagerPrivate::forget(const QObject *view)
{
    for (int i = views.size() - 1; i >= 0; --i) {
        if (views.at(i) == view)
            views.removeAt(i);
    }
    if (currentView == view) {
        currentView = nullptr;
        hasCurrentView = false;
    }
    updateSaveAction();
}

MolkViewManager::MolkViewManager() = default;

MolkViewManager::~MolkViewManager() = default;

MolkViewManager *MolkViewManager::instance()
{
    return manager;
}

void MolkViewManager::initialize()
{
    d->saveAction = new QAction(this);
    Core::ActionManager::registerAction(d->saveAction, "Core.Action.Save", managerContext());
    d->saveAction->setEnabled(false);

    connect(d->saveAction, SIGNAL(triggered()), this, SLOT(onActSave()));
    Core::ViewManager *viewManager = Core::ViewManager::instance();
    connect(viewManager, SIGNAL(viewActiveted(Core::IView *)), this,
            SLOT(onCurrentViewChanged(Core::IView *)));
    connect(viewManager, SIGNAL(viewClosed(Core::IView *)), this,
            SLOT(onMolkViewClosed(Core::IView *)));
}

void MolkViewManager::deinit()
{
    d->views.clear();
    delete d;
    delete this;
}

bool MolkViewManager::openMolkView(const QString &fileName, const DEV::DeviceArg &device)
{
    const QString path = absolutePath(fileName);
    if (MolkView *view = d->viewOf(path)) {
        Core::ViewManager::showView(view);
        return true;
    }
    // The host asked once more, from inside the event loop of a box or of the extraction.
    if (d->opening.contains(path))
        return true;

    const QPointer<MolkViewManager> guard(manager);
    auto *view = new MolkView(nullptr);
    QString error;
    const QString resultFile = TE::TaskEngine::instance()->flowManager()->resultFile("RES.netlist");
    d->opening.append(path);
    const bool opened = view->open(fileName, resultFile, &error);
    // The plug-in may have been shut down meanwhile.
    if (!guard) {
        delete view;
        return true;
    }
    d->opening.removeOne(path);
    if (!opened) {
        if (!error.isEmpty())
            showMessage(Core::ViewManager::dialogParent(), QMessageBox::Critical, "Error", error);
        delete view;
        return true;
    }

    qDebug() << "create molk view: " << view;
    view->setDevice(device.device());
    d->views.append(view);
    connect(view, SIGNAL(modificationStatusChanged(bool)), manager, SLOT(onMolkViewModified(bool)));
    connect(view, SIGNAL(destroyed(QObject *)), manager, SLOT(onViewDestroyed(QObject *)));
    Core::ViewManager::registerContext(view, managerContext(), true);
    Core::ViewManager::showView(view);
    return true;
}

bool MolkViewManager::closeMolkView(const QString &fileName)
{
    MolkView *view = d->viewOf(absolutePath(fileName));
    if (!view)
        return false;
    Core::ViewManager::closeView(view);
    return true;
}

QList<MolkView *> MolkViewManager::molkViews() const
{
    return d->views;
}

void MolkViewManager::onCurrentViewChanged(Core::IView *view)
{
    auto *molkView = qobject_cast<MolkView *>(view);
    if (molkView)
        d->currentView = molkView;
    d->hasCurrentView = molkView != nullptr;
    d->updateSaveAction();
}

void MolkViewManager::onMolkViewClosed(Core::IView *view)
{
    if (const auto *molkView = qobject_cast<MolkView *>(view))
        d->forget(molkView);
}

// A host may delete a view without reporting that it was closed. If it did report, the action has
// been refreshed and doesn't follow the views' titles a second time.
void MolkViewManager::onViewDestroyed(QObject *view)
{
    if (d->knows(view))
        d->forget(view);
}

void MolkViewManager::onMolkViewModified(bool modified)
{
    Q_UNUSED(modified)
    if (sender() == d->currentView && qobject_cast<MolkView *>(sender()))
        d->updateSaveAction();
}

void MolkViewManager::onActSave()
{
    if (d->currentView && d->currentView->isModified())
        d->currentView->save();
}

} // namespace MOLK
