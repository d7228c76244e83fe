// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "scene.h"

#include "initialvalueline.h"
#include "molkcore.h"
#include "molkfile.h"
#include "molkinserterplugin.h"
#include "molkoptionwidget.h"
#include "molkviewmanager.h"
#include "probeportsoptionwidget.h"
#include "signalitems.h"
#include "turnloop.h"

#include "dev/devicearg.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>

using namespace MOLK;

Scene::Scene()
    : plugin(std::make_unique<MolkInserterPlugin>())
{
    bench.host.setRecording(false);
    if (!plugin->initialize())
        failures.append("the plug-in doesn't start");
    bench.host.documentArea()->resize(900, 600);
    bench.host.documentArea()->show();
    QApplication::setActiveWindow(bench.host.documentArea());
}

Scene::~Scene()
{
    bench.host.documentArea()->dropAllViews();
    turnLoop();
    shutDownPlugin();
}

void Scene::shutDownPlugin()
{
    if (isUp)
        plugin->shutdown();
    isUp = false;
}

static void writeClocks(const QString &file, const Configuration &configuration,
                        const QString &clock)
{
    QList<MolkCore *> cores;
    for (int i = 0; i < configuration.cores; ++i) {
        auto *core = new MolkCore(i);
        for (int port = 1; port < configuration.probeIns; ++port)
            core->addProbeIn(port);
        for (int port = 1; port < configuration.probeOuts; ++port)
            core->addProbeOut(port);
        core->getProbeIn(0)->setSignalNet({net("top/clk"), net("top/u0/ready")});
        core->getProbeOut(0)->setSignalNet({net(QString("top/driven_%1").arg(i))});
        core->setUserClockName(QString("%1 %2").arg(clock).arg(i));
        cores.append(core);
    }
    if (!writeMOLKConfigToXml(cores, file))
        QTest::qFail("can't write the file of the scene", __FILE__, __LINE__);
    qDeleteAll(cores);
}

void Scene::write(const Configuration &configuration)
{
    file = bench.path("a.molk");
    writeClocks(file, configuration, "saved");
}

void Scene::open()
{
    MolkViewManager::openMolkView(file, DEV::DeviceArg());
    view = MolkViewManager::instance()->molkViews().value(0);
    if (!view) {
        failures.append("the view doesn't open");
        return;
    }
    const QList<MolkOptionWidget *> pages = documentOf(view)->optionWidgets;
    for (int i = 0; i < pages.size(); ++i) {
        pages.at(i)
            ->findChild<QLineEdit *>("lineEditUserClock")
            ->setText(QString("edit %1").arg(i));
    }
    turnLoop();
}

void Scene::writeOther(int cores) const
{
    Configuration configuration;
    configuration.cores = cores;
    writeClocks(file, configuration, "other");
}

MolkView *Scene::anyView()
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (auto *found = qobject_cast<MolkView *>(widget))
            return found;
    }
    return nullptr;
}

MolkOptionWidget *Scene::page() const
{
    const QTreeWidget *cores = coreTree();
    return documentOf(view)->optionWidgets.value(cores->indexOfTopLevelItem(cores->currentItem()));
}

QTreeWidget *Scene::tree(const QString &name) const
{
    return page()->findChild<QTreeWidget *>(name);
}

QTreeWidget *Scene::coreTree() const
{
    return view->findChild<QWidget *>("dockWidget")->findChild<QTreeWidget *>("treeWidget");
}

InitialValueLine *Scene::line() const
{
    QTreeWidget *values = tree("treeValue");
    return qobject_cast<InitialValueLine *>(values->itemWidget(values->topLevelItem(0), 0));
}

QString Scene::disorder() const
{
    if (!view)
        return QString();
    const auto *document = documentOf(view);
    const QTreeWidget *tree = coreTree();
    const int count = document->cores.size();
    if (count == 0)
        return "there is no core";
    if (document->optionWidgets.size() != count || tree->topLevelItemCount() != count)
        return "cores, pages and lines don't match";
    for (int i = 0; i < count; ++i) {
        const MolkOptionWidget *shown = document->optionWidgets.at(i);
        if (document->cores.at(i)->id != i || shown->core != document->cores.at(i))
            return QString("core %1 isn't that of its page").arg(i);
        if (tree->topLevelItem(i)->text(0) != QString("molk_%1").arg(i))
            return QString("line %1 is misnamed").arg(i);
    }
    if (document->modified != view->windowTitle().endsWith(" *"))
        return "the star is wrong";
    return QString();
}

QStringList Scene::savedEdits()
{
    for (MolkCore *core : qAsConst(documentOf(view)->cores)) {
        if (core->getAvailableProbeIns().isEmpty() && core->getAvailableProbeOuts().isEmpty())
            core->getProbeIn(0)->setSignalNet({net("top/clk")});
    }
    if (!documentOf(view)->saveFile())
        failures.append("the view can't be saved");
    if (view && (view->isModified() || view->windowTitle() != "a.molk"))
        failures.append("the saved view is still marked");
    return editsOnDisk();
}

QStringList Scene::editsOnDisk() const
{
    bool ok = false;
    const QList<MolkCore *> cores = readMOLKConfigFromXml(file, &ok, nullptr);
    QStringList edits;
    for (const MolkCore *core : cores)
        edits.append(core->getUserClockName());
    qDeleteAll(cores);
    return ok ? edits : QStringList("damaged");
}
